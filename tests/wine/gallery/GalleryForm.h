#pragma once

#include "controls/FlexGrid.h"
#include "controls/Form.h"
#include "controls/Label.h"
#include "controls/Menu.h"
#include "controls/PictureBox.h"
#include "controls/ProgressBar.h"
#include "controls/StatusBar.h"
#include "controls/TextBox.h"
#include "controls/ToolBar.h"
#include "controls/TreeView.h"

namespace ktrv::gallery {

/// Shows the controls side by side with made-up content.
class GalleryForm final : public controls::Form {
 public:
  explicit GalleryForm(controls::Screen& screen);

  controls::ToolBar Tools{*this};
  controls::Label FindLabel{*this, {0, 0, 900, 255}, u"&Find:"};
  controls::TextBox Find{*this, {0, 0, 3000, 300}};
  controls::TreeView Tree;
  controls::PictureBox Slider{*this, {3000, 600, 50, 4000}, controls::MousePointer::SizeWestEast};
  controls::PictureBox Shadow{*this, {3000, 600, 25, 4000}};
  controls::FlexGrid Grid{*this, {3050, 600, 6000, 4000}};
  controls::StatusBar Status{*this};
  controls::ProgressBar Progress{*this, {0, 0, 1000, 200}};
  controls::Menu Popup;

 protected:
  void Form_Load() override;
  void Form_Resize() override;

 private:
  void FillTree();
  void FillGrid();
};

}  // namespace ktrv::gallery
