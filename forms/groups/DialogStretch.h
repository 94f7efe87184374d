#pragma once

#include <vector>

#include "controls/Form.h"

namespace ktrv::forms {

/// An inner size in twips; without a width, none.
struct DialogSize {
  int Width = 0;
  int Height = 0;
};

/// Fits the controls of a dialog to its size, if the user makes it larger than designed. What is
/// right of a line moves, and what crosses it becomes wider; lines share the growth. Below the row
/// line the same holds for heights. Buttons keep their size.
class DialogStretch {
 public:
  /// The present size and bounds are the design. The form must outlive the object. All in twips.
  DialogStretch(controls::Form& form, std::vector<int> columnLines, int rowLine);

  /// Places the controls for the present size of the form; never smaller than the design.
  void Fit();

 private:
  struct Placed {
    controls::Control* Control;
    controls::Rectangle Bounds;
  };
  controls::Rectangle BoundsFor(const Placed& placed, int width, int height) const;
  /// How far a vertical edge moves. \param width growth of the dialog
  int MoveOfX(int x, int width) const;
  int MoveOfY(int y, int height) const { return y > rowLine_ ? height : 0; }

  controls::Form& form_;
  const std::vector<int> columnLines_;
  const int rowLine_;
  const int width_;
  const int height_;
  std::vector<Placed> placed_;
};

}  // namespace ktrv::forms
