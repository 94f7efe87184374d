#pragma once

#include <functional>
#include <vector>

#include "common/Text.h"

namespace ktrv::controls {

/// An item of a popup menu.
struct MenuItem {
  String Name{};
  String Caption{};  ///< "-": separator
  bool Visible = true;
  bool Enabled = true;
  std::function<void()> Click{};
};

/// A popup menu. Invisible items are skipped when it is shown.
struct Menu {
  String Caption{};
  std::vector<MenuItem> Items{};

  /// The item with this name; null if there is none.
  MenuItem* Find(StringView name);
};

}  // namespace ktrv::controls
