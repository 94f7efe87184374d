#pragma once

#include "controls/Menu.h"

namespace ktrv::forms {

/// The item menus of the address book. The window sets their Click handlers.
struct ItemMenus {
  ItemMenus();

  controls::Menu mnuContactContext;       ///< context menu of the tree
  controls::Menu mnuPropertyContextmenu;  ///< clipboard commands; never shown
  controls::Menu mnuTest;                 ///< never shown

  /// Shows only those items of the tree's menu that apply to this kind of node at the server. No
  /// effect for an unknown kind.
  void ShowFor(StringView nodeKind);

  /// Finds the item in all three menus. \throws Error ElementNotFound
  controls::MenuItem& Item(StringView name);
};

}  // namespace ktrv::forms
