#pragma once

#include <functional>
#include <vector>

#include "common/Text.h"

namespace ktrv::controls {

/// One item of a popup menu.
struct MenuItem {
  String Name{};
  String Caption{};  ///< "-" is a separator
  bool Visible = true;
  bool Enabled = true;
  std::function<void()> Click{};
};

/// A menu that pops up. Items keep their place; invisible ones are left out when it is shown.
struct Menu {
  String Caption{};
  std::vector<MenuItem> Items{};

  /// Null when there is no item of this name.
  MenuItem* Find(StringView name);
};

}  // namespace ktrv::controls
