#include "controls/Menu.h"

#include <algorithm>

namespace ktrv::controls {

MenuItem* Menu::Find(StringView name) {
  const auto found = std::find_if(Items.begin(), Items.end(),
                                  [&](const MenuItem& item) { return item.Name == name; });
  return found == Items.end() ? nullptr : &*found;
}

}  // namespace ktrv::controls
