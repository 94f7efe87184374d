#include <windows.h>
#include <uxtheme.h>

#include <algorithm>
#include <string>
#include <vector>

#include "controls/Form.h"
#include "controls/Input.h"
#include "controls/Label.h"
#include "controls/TextBox.h"
#include "controls/ToolBar.h"
#include "windows/base/Guard.h"
#include "windows/base/Module.h"
#include "windows/base/WideText.h"
#include "windows/controls/Band.h"
#include "windows/controls/ControlWindow.h"
#include "windows/controls/Drawing.h"
#include "windows/controls/FormWindow.h"
#include "windows/controls/Keys.h"
#include "windows/controls/Mnemonic.h"
#include "windows/controls/WindowFactory.h"

namespace ktrv::windows {

namespace {

constexpr UINT kToolBarBand = 0;
constexpr UINT kSecondBand = 1;

BYTE StyleOf(const controls::ToolBar::Button& button) {
  const int style = BTNS_BUTTON | BTNS_AUTOSIZE | BTNS_SHOWTEXT;
  return static_cast<BYTE>(button.DropDown ? style | BTNS_DROPDOWN : style);
}

constexpr UINT_PTR kSubclass = 0x4B54;

/// The toolbar is not the control's own window, which is the cool bar around it.
LRESULT CALLBACK DescribeToolBar(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                 DWORD_PTR) {
  if (message == WM_GETOBJECT) {
    const LRESULT object =
        Guard<LRESULT>(0, [&] { return DescribeControl(window, wParam, lParam); });
    if (object) return object;
  }
  if (message == WM_NCDESTROY) RemoveWindowSubclass(window, &DescribeToolBar, kSubclass);
  return DefSubclassProc(window, message, wParam, lParam);
}

/// A cool bar; the toolbar and the box of the second band are its children.
class ToolBarWindow final : public Peer<controls::ToolBarPeer> {
 public:
  ToolBarWindow(FormWindow& form, controls::ToolBar& bar) : Peer(form, bar), bar_(bar) {
    Create(REBARCLASSNAMEW,
           RBS_VARHEIGHT | RBS_FIXEDORDER | CCS_NODIVIDER | CCS_NOPARENTALIGN | CCS_NORESIZE |
               WS_CLIPCHILDREN,
           WS_EX_TOOLWINDOW | WS_EX_CONTROLPARENT);
    // The theme's background would be visible around the second band, which has none.
    SetWindowTheme(Handle(), L"", L"");
    MakeToolBar();
    OnFormResized();
  }

  void BoundsChanged() override {}
  void ButtonsChanged() override {
    if (!toolbar_) return;
    const auto& buttons = bar_.Buttons();
    const auto present = SendMessageW(toolbar_, TB_BUTTONCOUNT, 0, 0);
    if (present == static_cast<LRESULT>(buttons.size())) {
      for (std::size_t i = 0; i < buttons.size(); ++i) {
        SendMessageW(toolbar_, TB_ENABLEBUTTON, i + 1, buttons[i].Enabled);
      }
      return;
    }
    if (present > 0) MakeImages();
    while (SendMessageW(toolbar_, TB_DELETEBUTTON, 0, 0)) {
    }
    for (std::size_t i = 0; i < buttons.size(); ++i) {
      const std::wstring caption = ToWide(buttons[i].Caption);
      TBBUTTON button{};
      button.iBitmap = static_cast<int>(i);
      button.idCommand = static_cast<int>(i) + 1;
      button.fsState = buttons[i].Enabled ? TBSTATE_ENABLED : 0;
      button.fsStyle = StyleOf(buttons[i]);
      button.iString = reinterpret_cast<INT_PTR>(caption.c_str());
      SendMessageW(toolbar_, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button));
    }
    FitToolBar();
  }

  void OnFormRealised() override {
    if (bar_.BandLabel() && bar_.BandBox()) MakeBand();
  }
  void OnFormResized() override {
    if (!Handle()) return;
    const int width = Owner().InnerSize().cx;
    SetWindowPos(Handle(), nullptr, 0, 0, width, static_cast<int>(Send(RB_GETBARHEIGHT)),
                 SWP_NOZORDER | SWP_NOACTIVATE);
    const int height = static_cast<int>(Send(RB_GETBARHEIGHT));
    SetWindowPos(Handle(), nullptr, 0, 0, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
    bar_.Move(CurrentScale().ToTwips(RECT{0, 0, width, height}));
  }
  bool TakeMnemonic(wchar_t letter) override {
    // A letter alone must not press a button that does not have the focus.
    if (!(HeldKeys() & controls::ShiftMask::Alt)) return false;
    const auto& buttons = bar_.Buttons();
    for (std::size_t i = 0; i < buttons.size(); ++i) {
      if (!buttons[i].Enabled || !IsMnemonicIn(ToWide(buttons[i].Caption).c_str(), letter))
        continue;
      // The focus stays where it is, because the command applies to the pane that has it.
      PostMessageW(Handle(), WM_COMMAND, MAKEWPARAM(i + 1, BN_CLICKED),
                   reinterpret_cast<LPARAM>(toolbar_));
      return true;
    }
    return false;
  }
  HWND DescribedWindow() const override { return toolbar_; }
  AccessiblePart Describe() const override { return {.Role = ROLE_SYSTEM_TOOLBAR}; }
  int PartCount() const override { return static_cast<int>(bar_.Buttons().size()); }
  AccessiblePart Part(int number) const override {
    const auto& button = bar_.Buttons()[static_cast<std::size_t>(number - 1)];
    AccessiblePart told{.Role = button.DropDown ? ROLE_SYSTEM_SPLITBUTTON : ROLE_SYSTEM_PUSHBUTTON,
                        .State = button.Enabled ? 0 : STATE_SYSTEM_UNAVAILABLE,
                        .Name = SpokenCaption(ToWide(button.Caption)),
                        .Description = ToWide(button.ToolTip)};
    SendMessageW(toolbar_, TB_GETITEMRECT, static_cast<WPARAM>(number - 1),
                 reinterpret_cast<LPARAM>(&told.Place));
    return told;
  }
  void OnScaleChanged() override {
    SendMessageW(toolbar_, WM_SETFONT, reinterpret_cast<WPARAM>(Owner().Font()), TRUE);
    MakeImages();
    FitToolBar();
    if (band_) LayOutBand();
  }

 protected:
  std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
    if (message == WM_COMMAND && reinterpret_cast<HWND>(lParam) == toolbar_) {
      const std::size_t index = LOWORD(wParam) - 1U;
      if (!IsWindowEnabled(Owner().Handle())) return 0;  // an access key before a box was opened
      if (index < bar_.Buttons().size()) bar_.UserClicks(String(bar_.Buttons()[index].Key));
      return 0;
    }
    if (message == WM_NOTIFY && reinterpret_cast<NMHDR*>(lParam)->hwndFrom == toolbar_) {
      return OnBarNotify(*reinterpret_cast<NMHDR*>(lParam));
    }
    return std::nullopt;
  }

 private:
  void MakeToolBar() {
    // Not in the tab order, as usual for toolbars: the commands have keys, access keys and menus,
    // and the focus stays on their target.
    toolbar_ = CreateWindowExW(0, TOOLBARCLASSNAMEW, nullptr,
                               WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | TBSTYLE_FLAT |
                                   TBSTYLE_LIST | TBSTYLE_TOOLTIPS | TBSTYLE_TRANSPARENT |
                                   CCS_NODIVIDER | CCS_NOPARENTALIGN | CCS_NORESIZE,
                               0, 0, 0, 0, Handle(), nullptr, ThisModule(), nullptr);
    SetWindowSubclass(toolbar_, &DescribeToolBar, kSubclass, 0);
    SendMessageW(toolbar_, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    SendMessageW(toolbar_, TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_DRAWDDARROWS);
    SendMessageW(toolbar_, WM_SETFONT, reinterpret_cast<WPARAM>(Owner().Font()), FALSE);
    MakeImages();
    ButtonsChanged();
  }
  void MakeImages() {
    std::vector<controls::Image> pictures;
    for (const auto& button : bar_.Buttons()) pictures.push_back(button.Picture);
    UniqueImageList former =
        std::exchange(images_, DrawImageList(pictures, CurrentScale().Units(16)));
    SendMessageW(toolbar_, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(images_.Get()));
    const int padding = CurrentScale().Units(8);
    SendMessageW(toolbar_, TB_SETPADDING, 0, MAKELPARAM(padding, padding));
  }
  void MakeBand() {
    band_ = CreateBand(Handle());
    for (auto* peer : {dynamic_cast<ControlWindow*>(bar_.BandLabel()->Display()),
                       dynamic_cast<ControlWindow*>(bar_.BandBox()->Display())}) {
      if (peer) SetParent(peer->Handle(), band_);
    }
    LayOutBand();
  }
  void LayOutBand() {
    const auto* label = dynamic_cast<ControlWindow*>(bar_.BandLabel()->Display());
    const auto* box = dynamic_cast<ControlWindow*>(bar_.BandBox()->Display());
    if (!label || !box) return;
    constexpr int kDefaultWidth = 3000;  // twips
    const int width = bar_.BandBox()->Width() > 0 ? bar_.BandBox()->Width() : kDefaultWidth;
    const SIZE least =
        LayOutLabelAndBox(label->Handle(), box->Handle(), Owner().Font(), CurrentScale(), width);
    SetBandChild(kSecondBand, band_, least, 0);
    // The first band is as wide as its buttons; the second gets the rest.
    Send(RB_MINIMIZEBAND, kToolBarBand);
    Send(RB_MAXIMIZEBAND, kSecondBand, FALSE);
    OnFormResized();
  }
  void FitToolBar() {
    SIZE size{};
    SendMessageW(toolbar_, TB_AUTOSIZE, 0, 0);
    SendMessageW(toolbar_, TB_GETMAXSIZE, 0, reinterpret_cast<LPARAM>(&size));
    SetBandChild(kToolBarBand, toolbar_, size, 0);
  }
  void SetBandChild(UINT band, HWND child, SIZE least, UINT style) {
    REBARBANDINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = RBBIM_CHILD | RBBIM_CHILDSIZE | RBBIM_STYLE | RBBIM_SIZE;
    info.fStyle = RBBS_NOGRIPPER | style;
    info.hwndChild = child;
    info.cxMinChild = static_cast<UINT>(least.cx);
    info.cyMinChild = static_cast<UINT>(least.cy);
    info.cyChild = info.cyMinChild;
    info.cyMaxChild = info.cyMinChild;
    info.cx = static_cast<UINT>(least.cx);
    const bool isNew = band >= static_cast<UINT>(Send(RB_GETBANDCOUNT));
    Send(isNew ? RB_INSERTBANDW : RB_SETBANDINFOW, band, &info);
  }
  std::optional<LRESULT> OnBarNotify(NMHDR& header) {
    if (header.code == TBN_DROPDOWN) {
      DropDown(reinterpret_cast<NMTOOLBARW&>(header).iItem);
      return TBDDRET_DEFAULT;
    }
    if (header.code == TBN_GETINFOTIPW) {
      auto& tip = reinterpret_cast<NMTBGETINFOTIPW&>(header);
      const auto index = static_cast<std::size_t>(tip.iItem - 1);
      if (index >= bar_.Buttons().size()) return 0;
      lstrcpynW(tip.pszText, ToWide(bar_.Buttons()[index].ToolTip).c_str(), tip.cchTextMax);
      return 0;
    }
    return std::nullopt;
  }
  void DropDown(int command) {
    const auto index = static_cast<std::size_t>(command - 1);
    if (index >= bar_.Buttons().size()) return;
    RECT place{};
    SendMessageW(toolbar_, TB_GETRECT, static_cast<WPARAM>(command),
                 reinterpret_cast<LPARAM>(&place));
    MapWindowPoints(toolbar_, Owner().Handle(), reinterpret_cast<POINT*>(&place), 2);
    bar_.UserDropsDown(String(bar_.Buttons()[index].Key), CurrentScale().ToTwips(place.left),
                       CurrentScale().ToTwips(place.bottom));
  }

  controls::ToolBar& bar_;
  UniqueImageList images_;
  HWND toolbar_ = nullptr;
  HWND band_ = nullptr;  ///< parent of the label and box in the second band; null without one
};

}  // namespace

std::unique_ptr<controls::ToolBarPeer> WindowFactory::Make(controls::ToolBar& control) {
  return std::make_unique<ToolBarWindow>(form_, control);
}

}  // namespace ktrv::windows
