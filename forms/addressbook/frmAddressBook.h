#pragma once

#include <functional>
#include <optional>

#include "controls/FlexGrid.h"
#include "controls/Form.h"
#include "controls/Label.h"
#include "controls/Menu.h"
#include "controls/PictureBox.h"
#include "controls/ProgressBar.h"
#include "controls/StatusBar.h"
#include "controls/TextBox.h"
#include "controls/ToolBar.h"
#include "controls/TreeView.h"
#include "forms/addressbook/ContactDrag.h"
#include "forms/addressbook/ContactList.h"
#include "forms/addressbook/FindBox.h"
#include "forms/addressbook/FolderTree.h"
#include "forms/addressbook/ItemCommands.h"
#include "forms/addressbook/ItemMenus.h"
#include "forms/addressbook/SelectionPanel.h"
#include "forms/addressbook/Splitter.h"

namespace ktrv::forms {

/// The address book window: the tree of folders and groups on the left, the contacts of the current
/// node on the right. Modeless; can be closed and shown again.
class frmAddressBook final : public controls::Form {
 public:
  /// The editors must outlive the window.
  frmAddressBook(Workplace place, Editors& editors);
  ~frmAddressBook() override;

  controls::ToolBar tlbMain{*this};
  /// The cool bar with toolbar and find box is part of the ToolBar control.
  controls::ToolBar& clbMainBar = tlbMain;
  controls::Label lblFind{*this, {}, u"&Find:"};
  controls::TextBox txtFind{*this, {}};
  controls::Label lblFolders;
  controls::TreeView tvwContacts;
  controls::PictureBox picSlider;
  controls::Label lblContacts;
  controls::FlexGrid vsfContacts;
  controls::PictureBox picShadow;
  controls::StatusBar StatusBar1{*this};
  controls::ProgressBar ProgressBar1{*this, {}};

  /// Rebuilds the tree. A failure is logged; nodes added before it stay.
  void LoadTreeView() { folderTree_.Build(); }
  /// Reloads the grid for the current node. A failure is logged and shown in the status bar.
  void LoadContacts();
  /// Sorts the grid by the column with this key and moves the sort indicator there.
  void ChangeSortOrder(StringView columnKey, controls::SortOrder order);

  /// Lays out the panes for the size of the window.
  void ResizeControls();
  /// Places the progress bar in a panel of the status bar. \param panel 1-based
  void PlaceProgressBar(controls::StatusBar& statusBar, controls::ProgressBar& progressBar,
                        int panel);

  // Item commands. Failures are logged.
  /// Creates a group or a contact at the current node. \param kind "GR" for a group
  void ContactNew(StringView kind) { commands_.New(kind); }
  /// Opens the tree's selected node or the grid's current row in its editor.
  void ContactProperties() { commands_.Properties(); }
  /// Deletes the tree's selected node or the grid's selected rows. Deletion of many rows continues
  /// after it returns.
  void ContactDelete() { commands_.Delete(); }
  /// Makes contacts of the list members of the group with this key. Continues after it returns.
  void AddToGroup(const String& key, const std::vector<ListedItem>& items) {
    commands_.AddMembers(key, items);
  }
  /// Shows the context menu of the current node. \param x, y twips in the client area; without
  /// both, at the pointer
  void ShowItemContextMenu(std::optional<int> x = {}, std::optional<int> y = {});
  /// Copies the selected rows of the grid to the clipboard, as text with headings.
  void Copy();
  /// No effect: items cannot be pasted.
  void Paste() {}

  ItemMenus Menus;
  bool IsDeleting() const { return commands_.IsDeleting(); }
  bool IsAdding() const { return commands_.IsAdding(); }

  /// The workplace of the window. Its connection may be replaced before the window is shown.
  Workplace& Place() { return place_; }
  const CurrentNode& Current() const { return folderTree_.Current(); }
  /// The recordset of the grid; null unless a list is shown.
  database::Recordset* rsUserContacts() const { return contactList_.Rows(); }
  const ContactList& List() const { return contactList_; }

 protected:
  void Form_Load() override;
  void Form_Resize() override;
  void Form_QueryUnload() override;

 private:
  void ConnectToolBar();
  void ConnectMenus();
  /// Shows a menu whose items act at the current node.
  void ShowMenu(controls::Menu& menu, std::optional<controls::Screen::Point> at);
  /// A menu item's handler: runs the command unless another node became current while the menu was
  /// open, e.g. because the tree was rebuilt after a deletion.
  std::function<void()> MenuClick(std::function<void()> command);
  void ConnectTree();
  void ConnectGrid();
  void ConnectSplitter();

  void tlbMain_ButtonClick(StringView key);
  void tlbMain_ButtonDropDown(StringView key, int x, int y);
  void ConnectFind();
  void ConnectKeys();
  void txtFind_Change();
  /// F3: goes on with the text in the find box; without one, to the box.
  void FindNext(bool backward);
  /// Puts the focus into the find box and selects its text.
  void ToFindBox();
  void ToList();
  void tvwContacts_NodeClick(const controls::TreeNode& node);
  void tvwContacts_KeyDown(std::int16_t keyCode);
  void tvwContacts_MouseUp(controls::MouseButton button, int x, int y);
  void vsfContacts_AfterSort(int column, controls::SortOrder order);
  void vsfContacts_KeyDown(std::int16_t keyCode, std::int16_t shift);
  void vsfContacts_MouseUp(controls::MouseButton button, int row);
  void picSlider_MouseDown();
  void picSlider_MouseMove(int x);
  void picSlider_MouseUp();

  int PanesTop() const;
  /// Names the list's pane: says when its contacts cannot be changed here.
  void ShowKindOfList();
  /// The window may not become so narrow that the list or the bar is out of reach.
  void LimitWidth();
  /// Sets the right pane's width to the rest of the window.
  void PlaceRightPane();
  /// Runs an event procedure and traps its failures.
  template <class Body>
  void Event(StringView procedure, Body&& body);

  Workplace place_;
  FolderTree folderTree_;
  ContactList contactList_;
  SelectionPanel panel_;
  FindBox find_;
  Splitter splitter_;
  ItemCommands commands_;
  ContactDrag drag_{vsfContacts, tvwContacts};
  controls::Menu mnuNew_;
  std::optional<String> menuPlace_;  ///< while a menu is open: the node that was current before
};

}  // namespace ktrv::forms
