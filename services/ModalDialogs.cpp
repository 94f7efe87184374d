#include "services/ModalDialogs.h"

#include <algorithm>

#include "common/ScopeExit.h"

namespace ktrv {

void ModalDialogs::Show(Kind kind, controls::Form& dialog) {
  shown_.push_back({kind, &dialog});
  // Nested dialogs close in reverse order.
  const ScopeExit closed([this] { shown_.pop_back(); });
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
