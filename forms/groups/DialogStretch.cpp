#include "forms/groups/DialogStretch.h"

#include <algorithm>
#include <utility>

#include "controls/CommandButton.h"

namespace ktrv::forms {

DialogStretch::DialogStretch(controls::Form& form, std::vector<int> columnLines, int rowLine)
    : form_(form),
      columnLines_(std::move(columnLines)),
      rowLine_(rowLine),
      width_(form.ScaleWidth()),
      height_(form.ScaleHeight()) {
  for (controls::Control* control : form.Controls()) {
    placed_.push_back({control, control->Bounds()});
  }
}

void DialogStretch::Fit() {
  const int width = std::max(form_.ScaleWidth() - width_, 0);
  const int height = std::max(form_.ScaleHeight() - height_, 0);
  for (const Placed& placed : placed_) placed.Control->Move(BoundsFor(placed, width, height));
}

controls::Rectangle DialogStretch::BoundsFor(const Placed& placed, int width, int height) const {
  controls::Rectangle bounds = placed.Bounds;
  const int right = MoveOfX(bounds.Left + bounds.Width, width);
  const int bottom = MoveOfY(bounds.Top + bounds.Height, height);
  const bool keepsSize = dynamic_cast<const controls::CommandButton*>(placed.Control);
  const int left = keepsSize ? right : MoveOfX(bounds.Left, width);
  const int top = keepsSize ? bottom : MoveOfY(bounds.Top, height);
  bounds.Left += left;
  bounds.Top += top;
  bounds.Width += right - left;
  bounds.Height += bottom - top;
  return bounds;
}

int DialogStretch::MoveOfX(int x, int width) const {
  const auto passed = std::ranges::count_if(columnLines_, [x](int line) { return line < x; });
  return width * static_cast<int>(passed) / static_cast<int>(columnLines_.size());
}

}  // namespace ktrv::forms
