#pragma once

#include "controls/Menu.h"

namespace ktrv::forms {

/// The menus of the address book's items. Who shows them sets their items' Click.
struct ItemMenus {
  ItemMenus();

  controls::Menu mnuContactContext;       ///< of the tree
  controls::Menu mnuPropertyContextmenu;  ///< holds the clipboard's commands; nothing pops it up
  controls::Menu mnuTest;                 ///< never shown

  /// Leaves the tree's menu what can be done with a node of this kind at the server; a kind that no
  /// node has changes nothing.
  void ShowFor(StringView nodeKind);

  /// The item of this name in any of the menus. \throws Error ElementNotFound
  controls::MenuItem& Item(StringView name);
};

}  // namespace ktrv::forms
