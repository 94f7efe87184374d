#pragma once

#include "controls/CheckBox.h"
#include "controls/ComboBox.h"
#include "controls/CommandButton.h"
#include "controls/Form.h"
#include "controls/Label.h"
#include "controls/TextBox.h"
#include "data/FolderQueries.h"
#include "forms/folder/FolderRequest.h"
#include "services/PreparedCommands.h"
#include "services/Workplace.h"

namespace ktrv::forms {

using FolderCommand = data::FolderQueries::Name;
using FolderCommands = PreparedCommands<FolderCommand>;

/// The dialog in which a shared folder is made or given a new name, and in which a folder is mapped
/// to a category of remote contacts.
///
/// Opened for anything but a shared or a remote folder it has no commands: it opens, and every step
/// that needs one is logged. A folder that could not be loaded is not saved.
class frmSelectFolder final : public controls::Form {
 public:
  frmSelectFolder(Workplace place, FolderRequest request);
  ~frmSelectFolder() override;

  /// What it leaves, once it is closed.
  FolderResult Result() const { return {type_, saved_}; }

  controls::Label lblFolderName{*this, {180, 180, 5640, 270}, u"Folder Name"};
  controls::TextBox txtFolderName{*this, {180, 465, 5640, 345}, 50};
  controls::CheckBox chkRemoteFolder{
      *this, {180, 960, 5640, 315}, u"Map this folder to Contacts available in TALVERO"};
  controls::Label lblRemoterFolderView{
      *this, {180, 1425, 5640, 270}, u"Show contacts belonging to the following category"};
  controls::ComboBox cboRemoteFolderView{*this, {180, 1710, 5640, 345}};
  controls::CommandButton cmdOK{
      *this, {3060, 2265, 1320, 420}, u"&OK", controls::CommandButton::Key::Enter};
  controls::CommandButton cmdCancel{
      *this, {4500, 2265, 1320, 420}, u"&Cancel", controls::CommandButton::Key::Escape};

  const FolderCommands& Commands() const { return commands_; }

 protected:
  /// \throws Error when the connection cannot be opened; the opener logs it.
  void Form_Load() override;

 private:
  void PrepareCommand();
  void LoadRemoteFolderViews();
  bool Populate_Data();
  bool Validate_Data();
  bool Save_Data();

  void chkRemoteFolder_Click();
  void txtFolderName_GotFocus();
  void cmdOK_Click();
  void cmdCancel_Click();

  bool HasCommands() const;
  bool IsNotLoaded() const;
  String ChosenCategory() const;  ///< empty of a folder that is not remote
  void ShowCategory(const String& category);
  bool HasNameAndCategory();
  /// The folder that stands in the way of saving; closed when nothing is to be asked.
  database::Recordset Rival();
  static bool IsThere(const database::Recordset& rival);
  void ComplainOf(const database::Recordset& rival);
  /// Writes the folder, unless one stands in the way. \return that one. \throws Error
  database::Recordset Write();
  void WriteChanges(const String& name, const String& category);
  /// The folder as it is now; closed when there are no commands for it. \throws Error also when it
  /// was not changed
  database::Recordset ReadBack();
  void Complain(StringView message, controls::Control& about);

  Workplace place_;
  const FolderRequest request_;
  FolderCommands commands_{place_.Database};
  TypeOfFolder type_;  ///< as asked for, then as the check box says
  /// The name and the category that the user found when the folder was loaded.
  struct Shown {
    String Name;
    String Category;
  };
  Shown written_;               ///< by the last change
  std::optional<Shown> shown_;  ///< none of a new folder and of one that could not be loaded
  std::optional<SavedFolder> saved_;
};

}  // namespace ktrv::forms
