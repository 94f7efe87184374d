#include "services/ModalDialogs.h"

#include <algorithm>

namespace ktrv {

void ModalDialogs::Show(Kind kind, controls::Form& dialog) {
  // Nested dialogs close in reverse order.
  struct Restore {
    std::vector<Shown>& All;
    ~Restore() { All.pop_back(); }
  };
  shown_.push_back({kind, &dialog});
  const Restore restore{shown_};
  dialog.ShowModal();
}

std::vector<controls::Form*> ModalDialogs::Open() const {
  std::vector<Shown> ordered(shown_.rbegin(), shown_.rend());
  std::stable_sort(ordered.begin(), ordered.end(),
                   [](const Shown& left, const Shown& right) { return left.What < right.What; });
  std::vector<controls::Form*> dialogs;
  dialogs.reserve(ordered.size());
  for (const Shown& each : ordered) dialogs.push_back(each.Dialog);
  return dialogs;
}

}  // namespace ktrv
