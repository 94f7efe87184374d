#include "tests/scripthost/UiObject.h"

#include <windows.h>
#include <commctrl.h>

#include "tests/scripthost/ControlText.h"
#include "tests/scripthost/MessagePump.h"
#include "tests/scripthost/ScriptFailure.h"
#include "tests/scripthost/UiInput.h"
#include "tests/scripthost/UiMenus.h"
#include "tests/scripthost/WindowSearch.h"

namespace ktrv::scripthost {
namespace {

constexpr LONG kPatience = 30000;  // milliseconds

// Windows keeps handles within 32 bits, so that a script's number holds one.
HWND Handle(const Arguments& arguments) {
  return reinterpret_cast<HWND>(static_cast<LONG_PTR>(arguments.Number(0)));
}

Value FromHandle(HWND window) {
  return Value(static_cast<LONG>(reinterpret_cast<LONG_PTR>(window)));
}

void Await(const std::function<bool()>& condition, LONG milliseconds, const std::wstring& what) {
  if (!MessagePump::RunUntil(condition, static_cast<unsigned long>(milliseconds))) {
    throw ScriptFailure{L"Waited in vain for " + what};
  }
}

Value AwaitWindow(const std::function<HWND()>& search, LONG milliseconds,
                  const std::wstring& what) {
  HWND found = nullptr;
  Await([&] { return (found = search()) != nullptr; }, milliseconds, what);
  return FromHandle(found);
}

POINT PointOf(const Arguments& arguments) {
  return {arguments.Number(1), arguments.Number(2)};
}

POINT MiddleOf(const RECT& area) {
  return {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
}

/// The area of the row that the measure gives, scrolled into view; waited for until there is one.
template <class Measure>
RECT AreaOfRow(const Arguments& arguments, Measure measure) {
  const HWND list = Handle(arguments);
  const LONG row = arguments.Number(1);
  RECT area = {};
  const auto isThere = [&] {
    ListView_EnsureVisible(list, row, FALSE);
    return measure(list, row, area) != 0;
  };
  Await(isThere, kPatience, L"the row " + std::to_wstring(row));
  return area;
}

POINT RowAt(const Arguments& arguments) {
  const RECT label = AreaOfRow(arguments, [](HWND list, LONG row, RECT& area) {
    return ListView_GetItemRect(list, row, &area, LVIR_LABEL);
  });
  return {label.left + 5, MiddleOf(label).y};
}

POINT CellAt(const Arguments& arguments) {
  return MiddleOf(AreaOfRow(arguments, [&](HWND list, LONG row, RECT& area) {
    return ListView_GetSubItemRect(list, row, arguments.Number(2), LVIR_BOUNDS, &area);
  }));
}

POINT NodeAt(HWND tree, const std::wstring& name) {
  RECT area = {};
  const auto isThere = [&] {
    const HTREEITEM node = ControlText::Node(tree, name);
    if (node == nullptr) return false;
    TreeView_EnsureVisible(tree, node);
    return TreeView_GetItemRect(tree, node, &area, TRUE) != 0;
  };
  Await(isThere, kPatience, L"the node " + name);
  return MiddleOf(area);
}

POINT NodeAt(const Arguments& arguments) {
  return NodeAt(Handle(arguments), arguments.Text(1));
}

}  // namespace

UiObject::UiObject() {
  OfferSearch();
  OfferReading();
  OfferInput();
  OfferMenus();
}

void UiObject::OfferSearch() {
  Offer(L"Window", [](const Arguments& arguments) {
    const std::wstring title = arguments.Text(0);
    return AwaitWindow([&] { return WindowSearch::TopLevel(title); },
                       arguments.Number(1, kPatience), L"the window " + title);
  });
  Offer(L"AnyWindow", [](const Arguments& arguments) {
    const std::wstring title = arguments.Text(0);
    return AwaitWindow([&] { return WindowSearch::AnyTopLevel(title); },
                       arguments.Number(1, kPatience), L"the window " + title);
  });
  Offer(L"IsShown", [](const Arguments& arguments) {
    return Value(WindowSearch::TopLevel(arguments.Text(0)) != nullptr);
  });
  Offer(L"WaitGone", [](const Arguments& arguments) -> Value {
    const HWND window = Handle(arguments);
    Await([=] { return !IsWindowVisible(window); }, arguments.Number(1, kPatience),
          L"the end of a window");
    return {};
  });
  Offer(L"Child", [](const Arguments& arguments) {
    const std::wstring name = arguments.Text(1);
    const LONG ordinal = arguments.Number(2, 0);
    return AwaitWindow([&] { return WindowSearch::ChildOfClass(Handle(arguments), name, ordinal); },
                       kPatience, L"a child of class " + name);
  });
  Offer(L"ChildWithText", [](const Arguments& arguments) {
    const std::wstring text = arguments.Text(1);
    return AwaitWindow([&] { return WindowSearch::ChildWithText(Handle(arguments), text); },
                       kPatience, L"a child with the text " + text);
  });
}

void UiObject::OfferReading() {
  Offer(L"Text",
        [](const Arguments& arguments) { return Value(WindowSearch::Text(Handle(arguments))); });
  Offer(L"WaitText", [](const Arguments& arguments) -> Value {
    const std::wstring text = arguments.Text(1);
    std::wstring found;
    const auto isThere = [&] { return (found = WindowSearch::Text(Handle(arguments))) == text; };
    if (!MessagePump::RunUntil(isThere,
                               static_cast<unsigned long>(arguments.Number(2, kPatience)))) {
      throw ScriptFailure{L"Waited in vain for the text " + text + L"; it is " + found};
    }
    return {};
  });
  Offer(L"IsEnabled",
        [](const Arguments& arguments) { return Value(IsWindowEnabled(Handle(arguments)) != 0); });
  Offer(L"Rows",
        [](const Arguments& arguments) { return Value(ControlText::Rows(Handle(arguments))); });
  Offer(L"RowCount", [](const Arguments& arguments) {
    return Value(static_cast<LONG>(ListView_GetItemCount(Handle(arguments))));
  });
  Offer(L"WaitRows", [](const Arguments& arguments) -> Value {
    const LONG count = arguments.Number(1);
    Await([&] { return ListView_GetItemCount(Handle(arguments)) == count; },
          arguments.Number(2, kPatience), std::to_wstring(count) + L" rows");
    return {};
  });
  Offer(L"Panel", [](const Arguments& arguments) {
    wchar_t text[256] = L"";
    SendMessageW(Handle(arguments), SB_GETTEXTW, static_cast<WPARAM>(arguments.Number(1) - 1),
                 reinterpret_cast<LPARAM>(text));
    return Value(std::wstring_view(text));
  });
  Offer(L"SetPanel", [](const Arguments& arguments) -> Value {
    SendMessageW(Handle(arguments), SB_SETTEXTW, static_cast<WPARAM>(arguments.Number(1) - 1),
                 reinterpret_cast<LPARAM>(arguments.Text(2).c_str()));
    return {};
  });
  Offer(L"SelectedRow", [](const Arguments& arguments) {
    return Value(static_cast<LONG>(ListView_GetNextItem(Handle(arguments), -1, LVNI_SELECTED)));
  });
  Offer(L"TopRow", [](const Arguments& arguments) {
    return Value(static_cast<LONG>(ListView_GetTopIndex(Handle(arguments))));
  });
  Offer(L"FocusClass", [](const Arguments& arguments) {
    return Value(WindowSearch::FocusClass(Handle(arguments)));
  });
  Offer(L"Left", [](const Arguments& arguments) {
    return Value(WindowSearch::PlaceInParent(Handle(arguments)).left);
  });
  Offer(L"Width", [](const Arguments& arguments) {
    RECT area = {};
    GetClientRect(Handle(arguments), &area);
    return Value(area.right);
  });
  Offer(L"Height", [](const Arguments& arguments) {
    RECT area = {};
    GetClientRect(Handle(arguments), &area);
    return Value(area.bottom);
  });
  Offer(L"IsExpanded", [](const Arguments& arguments) {
    const HWND tree = Handle(arguments);
    const HTREEITEM node = ControlText::Node(tree, arguments.Text(1));
    return Value((TreeView_GetItemState(tree, node, TVIS_EXPANDED) & TVIS_EXPANDED) != 0);
  });
  Offer(L"IsSelected", [](const Arguments& arguments) {
    const HWND tree = Handle(arguments);
    return Value(ControlText::Node(tree, arguments.Text(1)) == TreeView_GetSelection(tree));
  });
  Offer(L"Nodes",
        [](const Arguments& arguments) { return Value(ControlText::Nodes(Handle(arguments))); });
}

void UiObject::OfferInput() {
  const auto offer = [this](const wchar_t* name, void (*act)(const Arguments&)) {
    Offer(name, [act](const Arguments& arguments) -> Value {
      act(arguments);
      return {};
    });
  };
  offer(L"SetText", [](const Arguments& arguments) {
    SendMessageW(Handle(arguments), WM_SETTEXT, 0,
                 reinterpret_cast<LPARAM>(arguments.Text(1).c_str()));
  });
  offer(L"Click", [](const Arguments& arguments) { UiInput::ClickMiddle(Handle(arguments)); });
  offer(L"ClickAt", [](const Arguments& arguments) {
    UiInput::Click(Handle(arguments), PointOf(arguments), 0);
  });
  offer(L"ClickTool", [](const Arguments& arguments) {
    const HWND bar = Handle(arguments);
    RECT area = {};
    SendMessageW(bar, TB_GETITEMRECT, static_cast<WPARAM>(arguments.Number(1)),
                 reinterpret_cast<LPARAM>(&area));
    UiInput::Click(bar, {area.left + 10, MiddleOf(area).y}, 0);
  });
  offer(L"RightClickAt", [](const Arguments& arguments) {
    UiInput::RightClick(Handle(arguments), PointOf(arguments));
  });
  offer(L"DoubleClickAt", [](const Arguments& arguments) {
    UiInput::DoubleClick(Handle(arguments), PointOf(arguments));
  });
  offer(L"ClickRow", [](const Arguments& arguments) {
    UiInput::Click(Handle(arguments), RowAt(arguments), static_cast<UINT>(arguments.Number(2, 0)));
  });
  offer(L"PointAtCell",
        [](const Arguments& arguments) { UiInput::Point(Handle(arguments), CellAt(arguments)); });
  offer(L"RightClickRow", [](const Arguments& arguments) {
    UiInput::RightClick(Handle(arguments), RowAt(arguments));
  });
  offer(L"DoubleClickRow", [](const Arguments& arguments) {
    UiInput::DoubleClick(Handle(arguments), RowAt(arguments));
  });
  offer(L"ClickNode", [](const Arguments& arguments) {
    UiInput::Click(Handle(arguments), NodeAt(arguments), 0);
  });
  offer(L"RightClickNode", [](const Arguments& arguments) {
    UiInput::RightClick(Handle(arguments), NodeAt(arguments));
  });
  offer(L"Type",
        [](const Arguments& arguments) { UiInput::Type(Handle(arguments), arguments.Text(1)); });
  offer(L"Press", [](const Arguments& arguments) {
    UiInput::Press(Handle(arguments), static_cast<WORD>(arguments.Number(1)),
                   static_cast<UINT>(arguments.Number(2, 0)));
  });
  offer(L"Hold", [](const Arguments& arguments) {
    UiInput::Hold(Handle(arguments), static_cast<WORD>(arguments.Number(1)),
                  static_cast<int>(arguments.Number(2)));
  });
  offer(L"ClickToolArrow", [](const Arguments& arguments) {
    const HWND bar = Handle(arguments);
    RECT area = {};
    SendMessageW(bar, TB_GETITEMRECT, static_cast<WPARAM>(arguments.Number(1)),
                 reinterpret_cast<LPARAM>(&area));
    UiInput::Click(bar, {area.right - 5, MiddleOf(area).y}, 0);
  });
  offer(L"PressAlt", [](const Arguments& arguments) {
    UiInput::PressAlt(Handle(arguments), static_cast<WORD>(arguments.Number(1)));
  });
  offer(L"Drag", [](const Arguments& arguments) {
    UiInput::Drag(Handle(arguments), PointOf(arguments),
                  {arguments.Number(3), arguments.Number(4)});
  });
  // DragRow list, row, tree, node
  offer(L"DragRow", [](const Arguments& arguments) {
    const HWND list = Handle(arguments);
    const HWND tree = reinterpret_cast<HWND>(static_cast<LONG_PTR>(arguments.Number(2)));
    POINT to = NodeAt(tree, arguments.Text(3));
    MapWindowPoints(tree, list, &to, 1);
    POINT from = RowAt(arguments);
    from.x += 20;  // after a click on the row this is no double click
    UiInput::Drag(list, from, to);
  });
  offer(L"BringToFront", [](const Arguments& arguments) {
    const HWND window = Handle(arguments);
    UiInput::BringToFront(window);
    if (!MessagePump::RunUntil([=] { return UiInput::IsInFront(window); }, kPatience)) {
      throw ScriptFailure{UiInput::WhatIsInFrontOf(window)};
    }
  });
  offer(L"Command", [](const Arguments& arguments) {
    PostMessageW(Handle(arguments), WM_COMMAND, static_cast<WPARAM>(arguments.Number(1)), 0);
  });
  offer(L"Close",
        [](const Arguments& arguments) { PostMessageW(Handle(arguments), WM_CLOSE, 0, 0); });
}

void UiObject::OfferMenus() {
  const auto awaitMenu = [] {
    HMENU menu = nullptr;
    Await([&] { return (menu = UiMenus::Popup()) != nullptr; }, kPatience, L"a menu");
    return menu;
  };
  const auto awaitNone = [] {
    Await([] { return UiMenus::Popup() == nullptr; }, kPatience, L"the end of a menu");
  };
  Offer(L"Menu",
        [=](const Arguments&) { return Value(std::wstring_view(UiMenus::Items(awaitMenu()))); });
  Offer(L"Choose", [=](const Arguments& arguments) -> Value {
    if (!UiMenus::Choose(awaitMenu(), arguments.Text(0))) {
      throw ScriptFailure{L"The menu has no item " + arguments.Text(0)};
    }
    awaitNone();
    return {};
  });
  Offer(L"CloseMenu", [=](const Arguments&) -> Value {
    awaitMenu();
    UiInput::PressAnywhere(VK_ESCAPE);
    awaitNone();
    return {};
  });
  Offer(L"BoxLooks",
        [](const Arguments& arguments) { return Value(UiMenus::BoxLooks(Handle(arguments))); });
  Offer(L"Clipboard", [](const Arguments&) { return Value(UiMenus::ClipboardText()); });
}

}  // namespace ktrv::scripthost
