#include "controls/StatusBar.h"

#include <utility>

#include "common/Error.h"

namespace ktrv::controls {
namespace {

template <class Panels>
auto& At(Panels& panels, int panel) {
  if (panel < 1 || panel > static_cast<int>(panels.size())) {
    throw Error(ErrorNumber::SubscriptOutOfRange, u"Index out of bounds");
  }
  return panels[static_cast<std::size_t>(panel - 1)];
}

}  // namespace

StatusBar::StatusBar(Form& form) : ControlOf(form, {}) {}

const StatusBar::Panel& StatusBar::PanelAt(int panel) const {
  return At(panels_, panel);
}

int StatusBar::AddPanel(Panel panel) {
  panels_.push_back(std::move(panel));
  if (peer_) peer_->PanelsChanged();
  return PanelCount();
}

void StatusBar::RemovePanel(int panel) {
  At(panels_, panel);
  panels_.erase(panels_.begin() + (panel - 1));
  if (peer_) peer_->PanelsChanged();
}

void StatusBar::SetPanelText(int panel, String text) {
  At(panels_, panel).Text = std::move(text);
  if (peer_) peer_->PanelTextChanged(panel);
}

}  // namespace ktrv::controls
