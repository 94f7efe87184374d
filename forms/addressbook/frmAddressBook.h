#pragma once

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
#include "forms/addressbook/ContactList.h"
#include "forms/addressbook/FolderTree.h"
#include "forms/addressbook/ItemCommands.h"
#include "forms/addressbook/ItemMenus.h"
#include "forms/addressbook/Splitter.h"

namespace ktrv::forms {

/// The window in which the address book is browsed and edited: the tree of folders and groups on
/// the left, the contacts of the chosen node on the right. Shown modeless; the same window can be
/// closed and shown again.
class frmAddressBook final : public controls::Form {
 public:
  /// The editors must outlive the window.
  frmAddressBook(Workplace place, Editors& editors);
  ~frmAddressBook() override;

  controls::ToolBar tlbMain{*this};
  /// The cool bar that holds the toolbar and the find box is one control with the toolbar.
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

  /// Builds the tree anew. A failure is logged; the nodes added before it stay.
  void LoadTreeView();
  /// Loads the grid for the current node anew. A failure is logged and told in the status bar.
  void LoadContacts();
  /// Sorts the grid by the column of this key and shows the sort indicator there.
  void ChangeSortOrder(StringView columnKey, controls::SortOrder order);

  /// Lays the panes out for the window's size.
  void ResizeControls();
  /// Puts the progress bar into the status bar's panel, counted from 1.
  void PlaceProgressBar(controls::StatusBar& statusBar, controls::ProgressBar& progressBar,
                        int panel);

  // The item commands. A failure of one is logged.
  /// Makes a group or a contact where the current node says. \param kind "GR" for a group
  void ContactNew(StringView kind) { commands_.New(kind); }
  /// Opens the tree's current node or the grid's current row in its editor.
  void ContactProperties() { commands_.Properties(); }
  /// Deletes the tree's current node or the grid's selected rows; many rows go on being deleted
  /// after it returned.
  void ContactDelete() { commands_.Delete(); }
  /// Shows the current node's menu at this place, twips from the form's inner corner, or at the
  /// pointer when neither is given.
  void ShowItemContextMenu(std::optional<int> x = {}, std::optional<int> y = {});
  /// Puts the grid's selected rows on the clipboard, as text with headings.
  void Copy();
  /// Does nothing: what was copied is made into no item.
  void Paste() {}

  ItemMenus Menus;
  bool IsDeleting() const { return commands_.IsDeleting(); }

  /// What it works with. Its connection can be given to it before it is shown.
  Workplace& Place() { return place_; }
  const CurrentNode& Current() const { return folderTree_.Current(); }
  /// The result that the grid shows; null before the first load and after a failed one.
  database::Recordset* rsUserContacts() const { return contactList_.Rows(); }
  const ContactList& List() const { return contactList_; }

 protected:
  void Form_Load() override;
  void Form_Resize() override;
  void Form_QueryUnload() override;

 private:
  void ConnectToolBar();
  void ConnectMenus();
  void ConnectTree();
  void ConnectGrid();
  void ConnectSplitter();

  void tlbMain_ButtonClick(StringView key);
  void tlbMain_ButtonDropDown(StringView key, int x, int y);
  void txtFind_Change();
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
  /// Gives the right pane the width that the left pane and the bar leave.
  void PlaceRightPane();
  /// Traps the failures of one event procedure.
  template <class Body>
  void Event(StringView procedure, Body&& body);

  Workplace place_;
  FolderTree folderTree_;
  ContactList contactList_;
  Splitter splitter_;
  ItemCommands commands_;
  controls::Menu mnuNew_;
};

}  // namespace ktrv::forms
