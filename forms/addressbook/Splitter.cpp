#include "forms/addressbook/Splitter.h"

#include <algorithm>

namespace ktrv::forms {
namespace {

/// Minimum width of either pane, in twips.
constexpr int kMargin = 1000;

}  // namespace

Splitter::Splitter(controls::PictureBox& bar, controls::PictureBox& shadow)
    : bar_(bar), shadow_(shadow) {
  shadow_.SetVisible(false);
}

void Splitter::Press() {
  dragging_ = true;
}

void Splitter::Drag(int x, int innerWidth) {
  if (!dragging_) return;
  const int rightLimit = std::max(innerWidth - kMargin, kMargin);
  // At a limit the shadow stops until the pointer is on the other side of the bar.
  if (shadow_.Left() >= rightLimit && x >= 0) {
    shadow_.SetLeft(rightLimit);
    return;
  }
  if (shadow_.Left() <= kMargin && x <= 0) {
    shadow_.SetLeft(kMargin);
    return;
  }
  shadow_.SetVisible(true);
  shadow_.SetLeft(std::clamp(bar_.Left() + x, kMargin, rightLimit));
}

void Splitter::Release() {
  dragging_ = false;
  shadow_.SetVisible(false);
  bar_.SetLeft(shadow_.Left());
}

}  // namespace ktrv::forms
