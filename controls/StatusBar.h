#pragma once

#include <vector>

#include "controls/Control.h"

namespace ktrv::controls {

class StatusBarPeer : public ControlPeer {
 public:
  /// Panels came, went or changed their width.
  virtual void PanelsChanged() = 0;
  /// \param panel 1-based
  virtual void PanelTextChanged(int panel) = 0;
};

/// The bar at the bottom of a form, in panels counted from 1. It lies at the form's bottom edge
/// whatever its bounds say; its height is the font's.
class StatusBar final : public ControlOf<StatusBarPeer> {
 public:
  struct Panel {
    String Text{};
    int Width = 0;         ///< twips; the least width when it springs
    bool Springs = false;  ///< takes the width that the others leave
  };

  explicit StatusBar(Form& form);

  int PanelCount() const { return static_cast<int>(panels_.size()); }
  /// \throws Error SubscriptOutOfRange, as the others that take a panel number.
  const Panel& PanelAt(int panel) const;
  /// \return the new panel's number
  int AddPanel(Panel panel);
  void RemovePanel(int panel);
  void SetPanelText(int panel, String text);

  void Realise(PeerFactory& factory) override;

 private:
  std::vector<Panel> panels_;
};

}  // namespace ktrv::controls
