#pragma once

#include <string>

#include "controls/ToolBar.h"
#include "windows/controls/ControlWindow.h"
#include "windows/controls/Drawing.h"

namespace ktrv::windows {

/// The cool bar; the toolbar and the second band's box are windows inside it.
class ToolBarWindow final : public Peer<controls::ToolBarPeer> {
 public:
  ToolBarWindow(FormWindow& form, controls::ToolBar& bar);

  void BoundsChanged() override {}
  void ButtonsChanged() override;

  void OnFormRealised() override;
  void OnFormResized() override;
  void OnScaleChanged() override;

 protected:
  std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  void MakeToolBar();
  void MakeImages();
  void MakeBand();
  void LayOutBand();
  void FitToolBar();
  void SetBandChild(UINT band, HWND child, SIZE least, UINT style);
  std::optional<LRESULT> OnBarNotify(NMHDR& header);
  void DropDown(int command);

  controls::ToolBar& bar_;
  UniqueImageList images_;
  HWND toolbar_ = nullptr;
  HWND band_ = nullptr;  ///< holds the second band's label and box; null without one
};

}  // namespace ktrv::windows
