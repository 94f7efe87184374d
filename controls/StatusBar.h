#pragma once

#include <vector>

#include "controls/Control.h"

namespace ktrv::controls {

class StatusBarPeer : public ControlPeer {
 public:
  /// Panels were added, removed or resized.
  virtual void PanelsChanged() = 0;
  /// \param panel 1-based
  virtual void PanelTextChanged(int panel) = 0;
};

/// The status bar of a form, with panels numbered from 1. Always at the bottom edge; its height
/// depends on the font. Its bounds are ignored.
class StatusBar final : public ControlOf<StatusBar, StatusBarPeer> {
 public:
  struct Panel {
    String Text{};
    int Width = 0;  ///< twips
    /// Takes its share of the remaining width; gives up as much if the bar is too narrow.
    bool Springs = false;
  };

  explicit StatusBar(Form& form);

  int PanelCount() const { return static_cast<int>(panels_.size()); }
  /// \throws Error SubscriptOutOfRange, as all members with a panel number do
  const Panel& PanelAt(int panel) const;
  /// \return the number of the new panel
  int AddPanel(Panel panel);
  void RemovePanel(int panel);
  void SetPanelText(int panel, String text);

 private:
  std::vector<Panel> panels_;
};

}  // namespace ktrv::controls
