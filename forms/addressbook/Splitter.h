#pragma once

#include "controls/PictureBox.h"

namespace ktrv::forms {

/// The bar between two panes, and the shadow that follows the pointer while the bar is dragged.
class Splitter {
 public:
  Splitter(controls::PictureBox& bar, controls::PictureBox& shadow);

  void Press();
  /// Handles a mouse move. \param x twips from the bar's left edge. \param innerWidth of the
  /// window, in twips
  void Drag(int x, int innerWidth);
  /// Ends dragging and moves the bar to the shadow.
  void Release();
  bool IsDragging() const { return dragging_; }

 private:
  controls::PictureBox& bar_;
  controls::PictureBox& shadow_;
  bool dragging_ = false;
};

}  // namespace ktrv::forms
