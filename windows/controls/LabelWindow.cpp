#include "controls/Label.h"
#include "windows/controls/ControlWindow.h"
#include "windows/controls/WindowFactory.h"

namespace ktrv::windows {

namespace {

class LabelWindow final : public Peer<controls::LabelPeer> {
 public:
  LabelWindow(FormWindow& form, controls::Label& label) : Peer(form, label), label_(label) {
    Create(WC_STATICW, SS_LEFT);
    TextChanged();
  }

  void TextChanged() override { ShowText(label_.Caption()); }
  bool ShowsCaption() const override { return true; }
  AccessiblePart Describe() const override {
    return {.Role = ROLE_SYSTEM_STATICTEXT, .State = STATE_SYSTEM_READONLY};
  }

 private:
  controls::Label& label_;
};

}  // namespace

std::unique_ptr<controls::LabelPeer> WindowFactory::Make(controls::Label& control) {
  return std::make_unique<LabelWindow>(form_, control);
}

}  // namespace ktrv::windows
