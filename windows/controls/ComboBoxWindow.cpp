#include "controls/ComboBox.h"
#include "windows/base/WideText.h"
#include "windows/controls/ControlWindow.h"
#include "windows/controls/WindowFactory.h"

namespace ktrv::windows {

namespace {

class ComboBoxWindow final : public Peer<controls::ComboBoxPeer> {
 public:
  ComboBoxWindow(FormWindow& form, controls::ComboBox& control)
      : Peer(form, control), combo_(control) {
    Create(WC_COMBOBOXW, WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST);
    ItemsChanged();
  }

  void ItemsChanged() override {
    int shown = static_cast<int>(Send(CB_GETCOUNT));
    // Items are appended one by one. Only after a removal the list is rebuilt.
    if (shown > combo_.ListCount() || shown + 1 < combo_.ListCount()) {
      Send(CB_RESETCONTENT);
      shown = 0;
    }
    for (; shown < combo_.ListCount(); ++shown) {
      Send(CB_ADDSTRING, 0, ToWide(combo_.List(shown)).c_str());
    }
    SelectionChanged();
  }
  void SelectionChanged() override {
    if (Send(CB_GETCURSEL) != combo_.ListIndex()) {
      Send(CB_SETCURSEL, static_cast<WPARAM>(combo_.ListIndex()));
    }
  }
  void BackColorChanged() override { PaintNow(); }
  void OnCommand(WORD code) override {
    // Without CBN_SELCHANGE the pointer selects an item of the list that is dropped down, and Esc
    // the former one.
    if (code == CBN_SELCHANGE || code == CBN_CLOSEUP) {
      combo_.UserChooses(static_cast<int>(Send(CB_GETCURSEL)));
    }
  }
  AccessiblePart Describe() const override {
    const bool isOpen = Send(CB_GETDROPPEDSTATE) != 0;
    return {
        .Role = ROLE_SYSTEM_COMBOBOX,
        .State = STATE_SYSTEM_HASPOPUP | (isOpen ? STATE_SYSTEM_EXPANDED : STATE_SYSTEM_COLLAPSED),
        .Value = ToWide(combo_.Text())};
  }
  std::optional<std::uint32_t> BackColor() const override { return combo_.BackColor(); }

 private:
  int ExtraHeight() const override {
    // The height of a combo box includes its drop-down list.
    return CurrentScale().Units(220);
  }

  controls::ComboBox& combo_;
};

}  // namespace

std::unique_ptr<controls::ComboBoxPeer> WindowFactory::Make(controls::ComboBox& control) {
  return std::make_unique<ComboBoxWindow>(form_, control);
}

}  // namespace ktrv::windows
