#include <objbase.h>
#include <oleacc.h>

#include <array>
#include <exception>
#include <future>
#include <utility>

#include "controls/CheckBox.h"
#include "controls/ComboBox.h"
#include "controls/DatePicker.h"
#include "controls/Frame.h"
#include "controls/UpDown.h"
#include "forms/contact/frmNewContact.h"
#include "forms/folder/frmSelectFolder.h"
#include "forms/groups/frmGroupsNew.h"
#include "tests/wine/accessibility/Heard.h"
#include "tests/wine/addressbook/BookWindow.h"

namespace ktrv::windows {
namespace {

template <class Wanted>
bool Is(const controls::Control& control) {
  return dynamic_cast<const Wanted*>(&control) != nullptr;
}

LONG RoleOf(const controls::Control& control) {
  using namespace controls;
  if (Is<CheckBox>(control)) return ROLE_SYSTEM_CHECKBUTTON;
  if (Is<ComboBox>(control)) return ROLE_SYSTEM_COMBOBOX;
  if (Is<CommandButton>(control)) return ROLE_SYSTEM_PUSHBUTTON;
  if (Is<DatePicker>(control)) return ROLE_SYSTEM_DROPLIST;
  if (Is<FlexGrid>(control)) return ROLE_SYSTEM_LIST;
  if (Is<Frame>(control)) return ROLE_SYSTEM_GROUPING;
  if (Is<Label>(control)) return ROLE_SYSTEM_STATICTEXT;
  if (Is<PictureBox>(control)) return ROLE_SYSTEM_SEPARATOR;
  if (Is<ProgressBar>(control)) return ROLE_SYSTEM_PROGRESSBAR;
  if (Is<StatusBar>(control)) return ROLE_SYSTEM_STATUSBAR;
  if (Is<TextBox>(control)) return ROLE_SYSTEM_TEXT;
  if (Is<ToolBar>(control)) return ROLE_SYSTEM_TOOLBAR;
  if (Is<TreeView>(control)) return ROLE_SYSTEM_OUTLINE;
  return Is<UpDown>(control) ? ROLE_SYSTEM_SPINBUTTON : 0;
}

/// As hosts have it, on each thread that asks.
class Com {
 public:
  Com() { CoInitialize(nullptr); }
  ~Com() { CoUninitialize(); }
  Com(const Com&) = delete;
  Com& operator=(const Com&) = delete;
};

/// What is heard in the address book's window and its dialogs.
class AScreenReader : protected Com, public BookWindow {
 protected:
  /// Every control of the form has its role and state, and what can have the keyboard has a name.
  static void Walk(const controls::Form& form) {
    EXPECT_EQ(Hear(WindowOf(form)).Name,
              std::wstring(form.Caption().begin(), form.Caption().end()));
    int controls = 0;
    for (const HWND window : WindowsIn(WindowOf(form))) {
      const ControlWindow* control = ControlWindow::From(window);
      if (!control) continue;
      ++controls;
      const HWND shown = control->DescribedWindow();
      const Heard heard = Hear(shown);
      const std::string about =
          testing::PrintToString(heard.Name) + " of " + testing::PrintToString(ClassOf(shown));
      EXPECT_EQ(heard.Role, RoleOf(control->Shown())) << about;
      const bool isReachable = GetWindowLongPtrW(shown, GWL_STYLE) & WS_TABSTOP;
      if (isReachable || Is<controls::ProgressBar>(control->Shown())) {
        EXPECT_FALSE(heard.Name.empty()) << about;
        EXPECT_EQ(heard.Name.find(L'&'), std::wstring::npos) << about;
      }
      EXPECT_EQ(heard.Is(STATE_SYSTEM_UNAVAILABLE), !IsWindowEnabled(shown)) << about;
      EXPECT_EQ(heard.Is(STATE_SYSTEM_INVISIBLE), !IsWindowVisible(shown)) << about;
      EXPECT_EQ(heard.Is(STATE_SYSTEM_FOCUSED), GetFocus() == shown) << about;
    }
    EXPECT_EQ(controls, static_cast<int>(form.Controls().size()));
  }
  template <class Control>
  static std::wstring NameOf(const Control& control) {
    return Hear(WindowOf(control)).Name;
  }
  static std::vector<std::wstring> Names(const std::vector<Heard>& parts) {
    std::vector<std::wstring> names;
    for (const Heard& part : parts) names.push_back(part.Name);
    return names;
  }

 private:
  static std::vector<HWND> WindowsIn(HWND form) {
    std::vector<HWND> windows;
    EnumChildWindows(form, &Collect, reinterpret_cast<LPARAM>(&windows));
    return windows;
  }
  static BOOL CALLBACK Collect(HWND window, LPARAM windows) {
    reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
    return TRUE;
  }
  static std::wstring ClassOf(HWND window) {
    std::array<wchar_t, 64> name{};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return name.data();
  }
};

TEST_F(AScreenReader, HearsTheControlsOfTheAddressBook) {
  Walk(form_);
  EXPECT_EQ(NameOf(form_.txtFind), L"Find:");
  EXPECT_EQ(NameOf(form_.tvwContacts), L"Folders");
  EXPECT_EQ(NameOf(form_.vsfContacts), L"Contacts");
}

TEST_F(AScreenReader, HearsTheNodesOfTheTree) {
  form_.tvwContacts.SetFocus();
  Pump();
  const std::vector<Heard> nodes = HearParts(Tree());
  ASSERT_EQ(static_cast<int>(nodes.size()), form_.tvwContacts.Count());
  const LONG current = HearFocus(Tree());
  ASSERT_GT(current, 0);
  for (int number = 1; number <= form_.tvwContacts.Count(); ++number) {
    const controls::TreeNode& node = form_.tvwContacts.At(number);
    const Heard& heard = nodes[static_cast<std::size_t>(number - 1)];
    EXPECT_EQ(heard.Name, std::wstring(node.Text.begin(), node.Text.end()));
    EXPECT_EQ(heard.Role, ROLE_SYSTEM_OUTLINEITEM);
    EXPECT_EQ(heard.Is(STATE_SYSTEM_EXPANDED), node.Expanded && !node.Children.empty());
    EXPECT_EQ(heard.Is(STATE_SYSTEM_COLLAPSED), !node.Expanded && !node.Children.empty());
    EXPECT_EQ(heard.Is(STATE_SYSTEM_SELECTED), number == current);
    EXPECT_EQ(heard.Is(STATE_SYSTEM_FOCUSED), number == current);
    EXPECT_EQ(heard.Value, node.Parent ? (node.Parent->Parent ? L"2" : L"1") : L"0");
    if (heard.Is(STATE_SYSTEM_INVISIBLE)) continue;
    EXPECT_EQ(HearAtMiddleOf(Tree(), number), number);
  }
}

TEST_F(AScreenReader, HearsTheRowsOfTheListAndWhatTheyAre) {
  form_.vsfContacts.SetFocus();
  form_.vsfContacts.SetRow(7);
  Pump();
  const std::vector<Heard> rows = HearParts(List());
  ASSERT_EQ(static_cast<int>(rows.size()), Rows());
  EXPECT_EQ(rows[6].Name, L"Name 59");
  EXPECT_EQ(rows[6].Description, L"Mobile No: 07, Group");
  EXPECT_EQ(rows[5].Description, L"Mobile No: 06, Contact");
  EXPECT_TRUE(rows[6].Is(STATE_SYSTEM_SELECTED | STATE_SYSTEM_FOCUSED));
  EXPECT_FALSE(rows[5].Is(STATE_SYSTEM_SELECTED));
  EXPECT_EQ(rows[6].Role, ROLE_SYSTEM_LISTITEM);
  EXPECT_EQ(HearFocus(List()), 7);
  EXPECT_EQ(HearFocus(Tree()), -1);
}

TEST_F(AScreenReader, HearsTheToolsAndThePanels) {
  const HWND bar = ControlWindow::From(WindowOf(form_.tlbMain))->DescribedWindow();
  const std::vector<Heard> tools = HearParts(bar);
  EXPECT_EQ(Names(tools),
            (std::vector<std::wstring>{L"New", L"Properties", L"Delete", L"Refresh"}));
  EXPECT_EQ(tools[0].Role, ROLE_SYSTEM_SPLITBUTTON);
  EXPECT_EQ(tools[1].Role, ROLE_SYSTEM_PUSHBUTTON);
  for (const Heard& tool : tools) EXPECT_FALSE(tool.Description.empty()) << tool.Name;
  form_.vsfContacts.SelectRows(1, 3);
  Pump();
  EXPECT_EQ(HearParts(WindowOf(form_.StatusBar1)).at(1).Name, L"3 selected");
}

TEST_F(AScreenReader, HearsTheContactEditor) {
  forms::frmNewContact editor(session_.Place(), {.SharedMode = TypeOfContact::SharedContact});
  editor.Show();
  Pump();
  Walk(editor);
  EXPECT_EQ(NameOf(editor.txtFname), L"First");
  EXPECT_EQ(NameOf(editor.dtBirthday), L"Birthday");
  EXPECT_EQ(NameOf(editor.cboSex), L"Sex");
  EXPECT_EQ(NameOf(editor.UpDnLast), L"Age");
  EXPECT_EQ(NameOf(editor.fraAddress), L"Address");
  EXPECT_TRUE(Hear(WindowOf(editor.cmdSave)).Is(STATE_SYSTEM_DEFAULT));
  EXPECT_FALSE(Hear(WindowOf(editor.cmdCancel)).Is(STATE_SYSTEM_DEFAULT));
  const Heard shared = Hear(WindowOf(editor.chkContacts));
  EXPECT_EQ(shared.Name, L"This is a Shared Contact");
  EXPECT_TRUE(shared.Is(STATE_SYSTEM_CHECKED | STATE_SYSTEM_UNAVAILABLE));
  editor.txtCity.SetText(u"Berlin");
  editor.cboSex.SetListIndex(2);
  EXPECT_EQ(Hear(WindowOf(editor.txtCity)).Value, L"Berlin");
  EXPECT_EQ(Hear(WindowOf(editor.cboSex)).Value, L"Female");
  EXPECT_FALSE(Hear(WindowOf(editor.dtBirthday)).Is(STATE_SYSTEM_CHECKED));
  editor.dtBirthday.SetValue(ParseDateTime(u"1990-02-28"));
  EXPECT_TRUE(Hear(WindowOf(editor.dtBirthday)).Is(STATE_SYSTEM_CHECKED));
  EXPECT_NE(Hear(WindowOf(editor.dtBirthday)).Value.find(L"1990"), std::wstring::npos);
}

TEST_F(AScreenReader, HearsTheFolderEditor) {
  forms::frmSelectFolder editor(session_.Place(), {});
  editor.Show();
  Pump();
  Walk(editor);
  EXPECT_EQ(NameOf(editor.txtFolderName), L"Folder Name");
  const Heard category = Hear(WindowOf(editor.cboRemoteFolderView));
  EXPECT_EQ(category.Name, L"Show contacts belonging to the following category");
  EXPECT_TRUE(category.Is(STATE_SYSTEM_UNAVAILABLE));
}

TEST_F(AScreenReader, HearsTheGroupEditorAndThePicker) {
  for (const LoadGroupFor use : {LoadGroupFor::AddModify, LoadGroupFor::SelectReceipient}) {
    forms::frmGroupsNew dialog(session_.Place(),
                               {.LoadGroupFor = use, .GroupType = TypeOfGroup::SharedGroup});
    dialog.Show();
    Pump();
    Walk(dialog);
    EXPECT_EQ(NameOf(dialog.cboContactType), L"Source");
    EXPECT_EQ(NameOf(dialog.vsfFolderContacts), L"Contacts");
    EXPECT_EQ(NameOf(dialog.vsfGroupContacts), L"Members");
    EXPECT_EQ(NameOf(dialog.txtFind), L"Type Name or select from list");
    EXPECT_EQ(NameOf(dialog.cmdSelect), L"Select ->");
  }
}

TEST_F(AScreenReader, HearsAMessageBox) {
  auto heard = std::async(std::launch::async, [] {
    HWND box = nullptr;
    const ULONGLONG deadline = GetTickCount64() + 5000;
    while (!(box = FindWindowW(L"#32770", L"Heard")) && GetTickCount64() < deadline) Sleep(10);
    while (box && !IsWindowVisible(box) && GetTickCount64() < deadline) Sleep(10);
    std::array<std::wstring, 3> names;
    if (!box) return names;
    const Com com;
    try {
      constexpr int kText = 0xFFFF;
      names = {Hear(box).Name, Hear(GetDlgItem(box, kText)).Name,
               Hear(GetDlgItem(box, IDYES)).Name};
    } catch (const std::exception&) {
      names[0] = L"nothing";
    }
    PostMessageW(box, WM_COMMAND, IDYES, 0);
    return names;
  });
  screen_.ShowMessage(u"Delete it?", u"Heard", MB_YESNO);
  EXPECT_EQ(heard.get(), (std::array<std::wstring, 3>{L"Heard", L"Delete it?", L"Yes"}));
}

TEST_F(AScreenReader, OutlivesTheWindow) {
  auto editor = std::make_unique<forms::frmNewContact>(session_.Place(), forms::ContactRequest{});
  editor->Show();
  Pump();
  IAccessible* box = nullptr;
  ASSERT_EQ(AccessibleObjectFromWindow(WindowOf(editor->cmdSave), static_cast<DWORD>(OBJID_CLIENT),
                                       __uuidof(IAccessible), reinterpret_cast<void**>(&box)),
            S_OK);
  editor.reset();
  Pump();
  LONG count = 0;
  EXPECT_TRUE(FAILED(box->get_accChildCount(&count)));
  EXPECT_EQ(box->Release(), 0U);
}

}  // namespace
}  // namespace ktrv::windows
