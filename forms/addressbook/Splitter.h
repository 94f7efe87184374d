#pragma once

#include "controls/PictureBox.h"

namespace ktrv::forms {

/// The bar between two panes and the shadow that follows the pointer while it is dragged.
class Splitter {
 public:
  Splitter(controls::PictureBox& bar, controls::PictureBox& shadow);

  void Press();
  /// The pointer moved. \param x twips from the bar's left edge. \param innerWidth of the window.
  void Drag(int x, int innerWidth);
  /// Puts the bar where the shadow is.
  void Release();
  bool IsDragging() const { return dragging_; }

 private:
  controls::PictureBox& bar_;
  controls::PictureBox& shadow_;
  bool dragging_ = false;
};

}  // namespace ktrv::forms
