#include "controls/CheckBox.h"
#include "controls/CommandButton.h"
#include "controls/Label.h"
#include "forms/contact/frmNewContact.h"
#include "forms/folder/frmSelectFolder.h"
#include "forms/groups/frmGroupsNew.h"
#include "tests/wine/addressbook/BookWindow.h"

namespace ktrv::windows {
namespace {

struct Look {
  int Dpi = 96;
  int Larger = 0;  ///< percent by which the user has enlarged the message font
};

/// The user's message font, until the end of the test.
class LargerFont {
 public:
  explicit LargerFont(int percent) {
    former_.cbSize = sizeof former_;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof former_, &former_, 0);
    NONCLIENTMETRICSW larger = former_;
    larger.lfMessageFont.lfHeight = MulDiv(former_.lfMessageFont.lfHeight, 100 + percent, 100);
    Set(larger);
  }
  ~LargerFont() { Set(former_); }
  LargerFont(const LargerFont&) = delete;
  LargerFont& operator=(const LargerFont&) = delete;

 private:
  static void Set(NONCLIENTMETRICSW& metrics) {
    SystemParametersInfoW(SPI_SETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    // As the system tells when the choice is kept in the user's profile.
    SendMessageW(HWND_BROADCAST, WM_SETTINGCHANGE, SPI_SETNONCLIENTMETRICS, 0);
    Pump();
  }
  NONCLIENTMETRICSW former_{};
};

/// Every text of the windows, at the resolutions and font sizes that users have.
class EveryLabel : public BookWindow, public testing::WithParamInterface<Look> {
 protected:
  /// As Windows tells when the user moves the window to another monitor.
  static void GoToDpi(const controls::Form& form) {
    constexpr UINT kDpiChanged = 0x02E0;  // WM_DPICHANGED
    const int dpi = GetParam().Dpi;
    RECT place{};
    GetWindowRect(WindowOf(form), &place);
    place.right = place.left + MulDiv(place.right - place.left, dpi, 96);
    place.bottom = place.top + MulDiv(place.bottom - place.top, dpi, 96);
    SendMessageW(WindowOf(form), kDpiChanged, MAKEWPARAM(dpi, dpi),
                 reinterpret_cast<LPARAM>(&place));
    Pump();
  }
  /// The room that the text needs within this width.
  static SIZE Needed(HWND window, const std::wstring& text, int width) {
    const HDC target = GetDC(window);
    const HGDIOBJ former =
        SelectObject(target, reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)));
    RECT area{0, 0, width, 0};
    DrawTextW(target, text.c_str(), static_cast<int>(text.size()), &area,
              DT_CALCRECT | DT_WORDBREAK);
    SelectObject(target, former);
    ReleaseDC(window, target);
    return {area.right, area.bottom};
  }
  /// What the window paints beside its text: a check box, the frame of a button.
  static SIZE Beside(const controls::Control& control, int dpi) {
    if (dynamic_cast<const controls::CheckBox*>(&control)) return {MulDiv(18, dpi, 96), 0};
    if (dynamic_cast<const controls::CommandButton*>(&control)) {
      return {MulDiv(8, dpi, 96), MulDiv(4, dpi, 96)};
    }
    return {};
  }
  static bool ShowsText(const controls::Control& control) {
    return dynamic_cast<const controls::CheckBox*>(&control) ||
           dynamic_cast<const controls::CommandButton*>(&control) ||
           dynamic_cast<const controls::Label*>(&control);
  }
  static BOOL CALLBACK Check(HWND window, LPARAM) {
    const ControlWindow* control = ControlWindow::From(window);
    if (!control || !ShowsText(control->Shown())) return TRUE;
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)), L'\0');
    GetWindowTextW(window, text.data(), static_cast<int>(text.size()) + 1);
    RECT inside{};
    GetClientRect(window, &inside);
    const SIZE beside = Beside(control->Shown(), GetParam().Dpi);
    const SIZE needed = Needed(window, text, inside.right - beside.cx);
    EXPECT_LE(needed.cx + beside.cx, inside.right) << testing::PrintToString(text);
    EXPECT_LE(needed.cy + beside.cy, inside.bottom) << testing::PrintToString(text);
    return TRUE;
  }
  static void AllFit(const controls::Form& form) {
    GoToDpi(form);
    EnumChildWindows(WindowOf(form), &Check, 0);
  }
  static void Fits(controls::Label& label, StringView text) {
    label.SetCaption(String(text));
    Check(WindowOf(label), 0);
  }

  LargerFont font_{GetParam().Larger};
};

TEST_P(EveryLabel, OfTheAddressBookIsWhole) {
  AllFit(form_);
}

TEST_P(EveryLabel, OfTheContactEditorIsWhole) {
  forms::frmNewContact editor(session_.Place(), {.SharedMode = TypeOfContact::SharedContact});
  editor.Show();
  Pump();
  AllFit(editor);
  for (controls::Control* control : editor.Controls()) {
    if (control->GotFocus) control->GotFocus();
    Check(WindowOf(editor.lblNotice), 0);
  }
  for (const StringView notice :
       {u"The contact could not be loaded, so it cannot be saved. Please open it again.",
        u"It is unknown whether the contact was saved; see the log. OK looks for it first.",
        u"The contact was not saved. The log says why."}) {
    Fits(editor.lblNotice, notice);
  }
}

TEST_P(EveryLabel, OfTheFolderEditorIsWhole) {
  forms::frmSelectFolder editor(session_.Place(), {});
  editor.Show();
  Pump();
  AllFit(editor);
  for (const StringView notice :
       {u"A folder cannot be saved here. Folders are added and changed in the address book.",
        u"The folder could not be loaded, so it cannot be saved. Please open it again.",
        u"It is unknown whether the folder was saved; see the log. OK looks for it first.",
        u"The folder was not saved. The log says why."}) {
    Fits(editor.lblNotice, notice);
  }
}

TEST_P(EveryLabel, OfTheGroupEditorAndThePickerIsWhole) {
  for (const LoadGroupFor use : {LoadGroupFor::AddModify, LoadGroupFor::SelectReceipient}) {
    forms::frmGroupsNew dialog(session_.Place(),
                               {.LoadGroupFor = use, .GroupType = TypeOfGroup::SharedGroup});
    dialog.Show();
    Pump();
    AllFit(dialog);
  }
}

INSTANTIATE_TEST_SUITE_P(Looks, EveryLabel,
                         testing::Values(Look{96, 0}, Look{144, 0}, Look{192, 0}, Look{96, 50},
                                         Look{144, 100}),
                         [](const testing::TestParamInfo<Look>& look) {
                           return "At" + std::to_string(look.param.Dpi) + "Dpi" +
                                  std::to_string(look.param.Larger) + "Larger";
                         });

/// A window that is open while the user chooses another font.
class AnOpenWindow : public BookWindow {};

TEST_F(AnOpenWindow, GrowsWithAFontThatTheUserEnlarges) {
  forms::frmNewContact editor(session_.Place(), {});
  editor.Show();
  Pump();
  RECT former{};
  GetClientRect(WindowOf(editor), &former);
  RECT larger{};
  {
    const LargerFont font(50);
    GetClientRect(WindowOf(editor), &larger);
    RECT button{};
    GetWindowRect(WindowOf(editor.cmdCancel), &button);
    MapWindowPoints(nullptr, WindowOf(editor), reinterpret_cast<POINT*>(&button), 2);
    EXPECT_LE(button.right, larger.right);
    EXPECT_GT(button.right, former.right);
  }
  EXPECT_GT(larger.right, former.right * 5 / 4);
  RECT again{};
  GetClientRect(WindowOf(editor), &again);
  EXPECT_EQ(again.right, former.right);
}

/// The user's choice of high contrast, until the end of the test.
class HighContrast {
 public:
  HighContrast() {
    former_.cbSize = sizeof former_;
    SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof former_, &former_, 0);
    Set(former_.dwFlags | HCF_HIGHCONTRASTON);
  }
  ~HighContrast() { Set(former_.dwFlags); }
  HighContrast(const HighContrast&) = delete;
  HighContrast& operator=(const HighContrast&) = delete;

  static bool IsOn() {
    HIGHCONTRASTW contrast{};
    contrast.cbSize = sizeof contrast;
    SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0);
    return contrast.dwFlags & HCF_HIGHCONTRASTON;
  }

 private:
  void Set(DWORD flags) {
    HIGHCONTRASTW contrast = former_;
    contrast.dwFlags = flags;
    SystemParametersInfoW(SPI_SETHIGHCONTRAST, sizeof contrast, &contrast, 0);
  }
  HIGHCONTRASTW former_{};
};

/// The find box after a text that nobody has.
class ANotFoundText : public BookWindow {
 protected:
  ANotFoundText() {
    form_.txtFind.UserTypes(u"nobody");
    Settle();
  }
  COLORREF Color() const {
    const HWND box = WindowOf(form_.txtFind);
    const HDC target = GetDC(box);
    SendMessageW(GetParent(box), WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(target),
                 reinterpret_cast<LPARAM>(box));
    const COLORREF shown = GetBkColor(target);
    ReleaseDC(box, target);
    return shown;
  }
};

TEST_F(ANotFoundText, IsToldByColourAndInWords) {
  EXPECT_NE(Color(), GetSysColor(COLOR_WINDOW));
  EXPECT_EQ(form_.StatusBar1.PanelAt(2).Text, u"Not found: nobody");
}

TEST_F(ANotFoundText, IsToldInWordsOnlyInHighContrast) {
  const HighContrast contrast;
  if (!HighContrast::IsOn()) GTEST_SKIP() << "this system has no high contrast";
  EXPECT_EQ(Color(), GetSysColor(COLOR_WINDOW));
}

}  // namespace
}  // namespace ktrv::windows
