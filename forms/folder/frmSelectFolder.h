#pragma once

#include <optional>
#include <vector>

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

/// The folder editor: creates or renames a shared folder, or maps a folder to a category of remote
/// contacts.
///
/// If it is opened for a local folder it has no commands, and each step that needs one is logged as
/// a failure. A folder that could not be loaded is not saved.
class frmSelectFolder final : public controls::Form {
 public:
  frmSelectFolder(Workplace place, FolderRequest request);
  ~frmSelectFolder() override;

  /// The result; final after the dialog has closed.
  FolderResult Result() const { return {type_, saved_}; }

  controls::Label lblFolderName{*this, {180, 180, 5640, 270}, u"Folder Name"};
  controls::TextBox txtFolderName{*this, {180, 465, 5640, 345}, 50};
  controls::CheckBox chkRemoteFolder{
      *this, {180, 960, 5640, 315}, u"Map this folder to Contacts available in TALVERO"};
  controls::Label lblRemoterFolderView{
      *this, {180, 1425, 5640, 270}, u"Show contacts belonging to the following category"};
  controls::ComboBox cboRemoteFolderView{*this, {180, 1710, 5640, 345}};
  controls::CommandButton cmdOK{
      *this, {3060, 2730, 1320, 420}, u"&OK", controls::CommandButton::Key::Enter};
  controls::CommandButton cmdCancel{
      *this, {4500, 2730, 1320, 420}, u"&Cancel", controls::CommandButton::Key::Escape};
  /// Why the folder cannot be saved, or was not.
  controls::Label lblNotice{*this, {180, 2160, 5640, 510}, u""};

  const FolderCommands& Commands() const { return commands_; }

 protected:
  /// \throws Error when the connection cannot be opened; the opener logs it
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
  bool IsInDoubt() const;         ///< whether it is unknown if a save is stored
  String TypeLetter() const;      ///< of a new folder
  String ChosenCategory() const;  ///< empty unless the box is checked
  void ShowCategory(const String& category);
  bool HasNameAndCategory();
  /// The existing folder that prevents saving, as a recordset; closed when nothing has to be
  /// checked.
  database::Recordset Rival();
  static bool IsThere(const database::Recordset& folder);
  void ComplainOf(const database::Recordset& rival);
  /// Writes the folder, unless another one prevents it. \return that one. \throws Error
  database::Recordset Write();
  void WriteChanges(const String& name, const String& category);
  /// The new folder as an earlier save of unknown outcome has stored it; closed or without a row if
  /// there is none. \throws Error
  database::Recordset FindCreated();
  /// The saved folder's row; closed if there are no commands. \throws Error also if the update
  /// changed no row
  database::Recordset ReadBack();
  /// Shows the notice, unless the folder cannot be saved at all.
  void Tell(StringView notice);
  void Complain(StringView message, controls::Control& about);

  Workplace place_;
  const FolderRequest request_;
  FolderCommands commands_{place_.Database};
  TypeOfFolder type_;  ///< as requested, then selected by the check box
  /// Name and category in the controls.
  struct Shown {
    String Name;
    String Category;
  };
  Shown written_;  ///< values of the last update
  /// What the folder may hold: as loaded, then as in each save that may be stored. The first is
  /// missing for a new folder and if loading failed.
  std::vector<Shown> shown_;
  std::optional<SavedFolder> saved_;
  bool canSave_ = false;     ///< whether the dialog was opened for a type with commands
  bool complained_ = false;  ///< whether a message has told the user why OK saved nothing
};

}  // namespace ktrv::forms
