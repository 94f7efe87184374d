#include "forms/folder/frmSelectFolder.h"

#include <algorithm>
#include <utility>

#include "data/IdText.h"
#include "database/Conversion.h"
#include "database/DataError.h"
#include "database/Transaction.h"

namespace ktrv::forms {
namespace {

namespace Notice {
constexpr StringView kCannotSave =
    u"A folder cannot be saved here. Folders are added and changed in the address book.";
constexpr StringView kNotLoaded =
    u"The folder could not be loaded, so it cannot be saved. Please open it again.";
constexpr StringView kNotSaved = u"The folder was not saved. The log says why.";
constexpr StringView kUnknown =
    u"It is unknown whether the folder was saved; see the log. OK looks for it first.";
}  // namespace Notice

controls::Form::Design DialogDesign() {
  return {.Caption = u"New Folder", .Width = 6000, .Height = 3330};
}

}  // namespace

frmSelectFolder::frmSelectFolder(Workplace place, FolderRequest request)
    : Form(place.Services.Screen, DialogDesign()),
      place_(std::move(place)),
      request_(std::move(request)),
      type_(request_.FolderType) {
  // Initially the check box is cleared and the list disabled.
  cboRemoteFolderView.SetEnabled(false);
  chkRemoteFolder.Click = [this] { chkRemoteFolder_Click(); };
  txtFolderName.GotFocus = [this] { txtFolderName_GotFocus(); };
  cmdOK.Click = [this] { cmdOK_Click(); };
  cmdCancel.Click = [this] { cmdCancel_Click(); };
}

frmSelectFolder::~frmSelectFolder() {
  Unload();
}

void frmSelectFolder::Form_Load() {
  shown_.clear();
  const Wait wait(*this);
  canSave_ = HasCommands();
  Tell({});
  if (HasCommands()) place_.Database.Open();
  PrepareCommand();
  LoadRemoteFolderViews();
  if (request_.Mode == ModeOfOperation::Modify) {
    if (!Populate_Data()) Tell(Notice::kNotLoaded);
    SetCaption(u"Edit Folder");
    chkRemoteFolder.SetEnabled(false);  // the type of a folder cannot be changed
  } else {
    SetCaption(u"Add Folder");
    chkRemoteFolder.SetEnabled(true);
    // The check box decides on the type, also for a folder opened as remote. A folder of type local
    // is never written.
    if (HasCommands()) chkRemoteFolder_Click();
  }
}

bool frmSelectFolder::HasCommands() const {
  return type_ == TypeOfFolder::SharedFolder || type_ == TypeOfFolder::SharedRemoteFolder;
}

void frmSelectFolder::PrepareCommand() {
  place_.Services.Trap(
      u"KTRVAddressBook: Error occurred. Sub:PrepareCommand(), Module: frmSelectFolder", [&] {
        if (HasCommands()) commands_.Prepare(data::FolderQueries::All());
      });
}

void frmSelectFolder::LoadRemoteFolderViews() {
  place_.Services.Trap(
      u"KTRVAddressBook: Error occurred. Sub:LoadRemoteFolderViews(), Module: frmSelectFolder",
      [&] {
        database::Recordset categories = commands_.Execute(FolderCommand::Categories);
        if (categories.EndOfFile()) return;
        for (; !categories.EndOfFile(); categories.MoveNext()) {
          cboRemoteFolderView.AddItem(ToText(categories.Field(u"CATEGORY")));
        }
        // The second category is the default. With only one category this fails, which is logged,
        // and none is selected.
        cboRemoteFolderView.SetListIndex(1);
      });
}

bool frmSelectFolder::Populate_Data() {
  return place_.Services.Trap(
      u"KTRVAddressBook: Error occurred. Sub:Populate_Data(), Module: frmSelectFolder", false, [&] {
        // Rejects other texts, because some engines convert a text that only starts with digits.
        const String id = data::WithId(u"{id}", request_.FolderIdText);
        const auto folder = commands_.Execute(FolderCommand::FolderById, {id});
        txtFolderName.SetText(String(Trim(ToText(folder.Field(u"NAME")))));
        const bool isRemote = Trim(ToText(folder.Field(u"TYPE"))) == u"R";
        chkRemoteFolder.SetChecked(isRemote);
        chkRemoteFolder_Click();  // also if the box has not changed
        if (isRemote) ShowCategory(ToText(folder.Field(u"REMOTE_CONTACTS_CATEGORY")));
        shown_.push_back({txtFolderName.Text(), ChosenCategory()});
        return true;
      });
}

void frmSelectFolder::ShowCategory(const String& category) {
  // A mapped category that TALVERO no longer has is added to the list. Otherwise the default would
  // stay selected, and saving would change the mapping.
  if (!category.empty() && cboRemoteFolderView.IndexOf(category) < 0) {
    cboRemoteFolderView.AddItem(category);
  }
  cboRemoteFolderView.SetText(category);
}

bool frmSelectFolder::Validate_Data() {
  return place_.Services.Trap(
      u"KTRVAddressBook: Error occurred. Sub:Validate_Data(), Module: frmSelectFolder", false, [&] {
        if (!HasNameAndCategory()) return false;
        const database::Recordset rival = Rival();
        if (!IsThere(rival) || IsThere(FindCreated())) return true;
        ComplainOf(rival);
        return false;
      });
}

bool frmSelectFolder::IsThere(const database::Recordset& folder) {
  return folder.State() != database::ObjectState::Closed && !folder.EndOfFile();
}

void frmSelectFolder::ComplainOf(const database::Recordset& rival) {
  if (type_ == TypeOfFolder::SharedRemoteFolder) {
    Complain(u"Another folder (" + ToText(rival.Field(u"NAME")) +
                 u") is already mapped to the selected Remote Contact Category.\r\n"
                 u"You can map only one folder to each Remote Contact Category.",
             cboRemoteFolderView);
  } else {
    Complain(u"A folder with that name already exists. Please use a different folder name.",
             txtFolderName);
  }
}

bool frmSelectFolder::HasNameAndCategory() {
  if (Trim(txtFolderName.Text()).empty()) {
    Complain(u"Please enter the Folder Name.", txtFolderName);
    return false;
  }
  if (chkRemoteFolder.Checked() && cboRemoteFolderView.Text().empty()) {
    Complain(u"Please select the TALVERO contacts to display in this folder.", cboRemoteFolderView);
    return false;
  }
  return true;
}

database::Recordset frmSelectFolder::Rival() {
  // The name of a shared folder must be unique among all folders. A remote folder needs only a
  // unique category.
  const String name(Trim(txtFolderName.Text()));
  const String& category = cboRemoteFolderView.Text();
  const bool isNew = request_.Mode == ModeOfOperation::Add;
  if (type_ == TypeOfFolder::SharedFolder) {
    return isNew ? commands_.Execute(FolderCommand::NameExists, {name})
                 : commands_.Execute(FolderCommand::NameExistsOther, {name, request_.FolderIdText});
  }
  if (type_ == TypeOfFolder::SharedRemoteFolder) {
    return isNew ? commands_.Execute(FolderCommand::CategoryMapped, {category})
                 : commands_.Execute(FolderCommand::CategoryMappedOther,
                                     {category, request_.FolderIdText});
  }
  return database::Recordset(place_.Database.Environment);
}

bool frmSelectFolder::Save_Data() {
  return place_.Services.Trap(
      u"KTRVAddressBook: Error occurred. Sub:Save_Data(), Module: frmSelectFolder", false, [&] {
        if (IsNotLoaded()) {
          // Saving boxes that never showed the folder would erase its name and mapping.
          throw Error(ErrorNumber::NoCurrentRecord,
                      u"The folder could not be loaded, so it is not saved either.");
        }
        database::Recordset row = FindCreated();
        if (!IsThere(row)) {
          if (const auto rival = Write(); IsThere(rival)) {
            ComplainOf(rival);
            return false;
          }
          row = ReadBack();
        }
        saved_ = {ToText(row.Field(u"ID")), ToText(row.Field(u"NAME")), ToText(row.Field(u"TYPE")),
                  ToText(row.Field(u"REMOTE_CONTACTS_CATEGORY"))};
        return true;
      });
}

database::Recordset frmSelectFolder::Write() {
  // Without commands the caller fails on this closed recordset, so no local folder is written.
  if (!HasCommands()) return database::Recordset(place_.Database.Environment);
  // Another user may have taken the name since the last check. The message is shown after the
  // transaction has released its locks.
  database::Transaction transaction(place_.Database.Open());
  if (auto rival = Rival(); IsThere(rival)) return rival;
  const String category = ChosenCategory();
  const String name(Trim(txtFolderName.Text()));
  shown_.push_back({txtFolderName.Text(), category});
  try {
    if (request_.Mode == ModeOfOperation::Modify) {
      WriteChanges(name, category);
    } else {
      commands_.Execute(FolderCommand::InsertFolder,
                        {TypeLetter(), name, std::int64_t{place_.User.Id}, category});
    }
    transaction.Commit();
  } catch (...) {
    if (transaction.RollBack()) shown_.pop_back();
    throw;
  }
  return database::Recordset(place_.Database.Environment);
}

void frmSelectFolder::WriteChanges(const String& name, const String& category) {
  // The statement writes both columns. A column that the user has not changed keeps its present
  // value: blanks around the name, the category of a folder that shows none, changes by other
  // users.
  const auto now = commands_.Execute(FolderCommand::FolderById, {request_.FolderIdText});
  if (now.EndOfFile()) {
    // It was deleted, so it holds nothing of an earlier save.
    shown_.erase(shown_.begin() + 1, shown_.end() - 1);
    throw database::DataError(ErrorNumber::NoCurrentRecord);
  }
  const auto isKept = [&](auto member) {
    return std::all_of(shown_.begin(), shown_.end(),
                       [&](const Shown& each) { return each.*member == shown_.back().*member; });
  };
  written_.Name = ToText(isKept(&Shown::Name) ? now.Field(u"NAME") : Variant(name));
  const Variant newCategory =
      isKept(&Shown::Category) ? now.Field(u"REMOTE_CONTACTS_CATEGORY") : category;
  written_.Category = ToText(newCategory);
  commands_.Execute(FolderCommand::UpdateFolder,
                    {written_.Name, newCategory, request_.FolderIdText});
}

database::Recordset frmSelectFolder::FindCreated() {
  database::Recordset folder(place_.Database.Environment);
  const String name(Trim(txtFolderName.Text()));
  const String category = ChosenCategory();
  const bool wasTried = std::any_of(shown_.begin(), shown_.end(), [&](const Shown& each) {
    return Trim(each.Name) == name && each.Category == category;
  });
  if (request_.Mode != ModeOfOperation::Add || !wasTried) return folder;
  folder = commands_.Execute(FolderCommand::FolderByName, {name});
  const auto isOurs = [&] {
    return Trim(ToText(folder.Field(u"TYPE"))) == TypeLetter() &&
           database::IsHeld(ToText(folder.Field(u"REMOTE_CONTACTS_CATEGORY")), category);
  };
  while (!folder.EndOfFile() && !isOurs()) folder.MoveNext();
  return folder;
}

database::Recordset frmSelectFolder::ReadBack() {
  if (!HasCommands()) return database::Recordset(place_.Database.Environment);
  if (request_.Mode == ModeOfOperation::Add) {
    return commands_.Execute(FolderCommand::FolderByName, {String(Trim(txtFolderName.Text()))});
  }
  auto row = commands_.Execute(FolderCommand::FolderById, {request_.FolderIdText});
  // No row was affected. Some engines report that also for an update without changes, and some
  // drivers cannot tell. So compare the row.
  const std::int64_t affected = commands_.At(FolderCommand::UpdateFolder).RecordsAffected();
  if (affected <= 0 &&
      !(database::IsHeld(ToText(row.Field(u"NAME")), written_.Name) &&
        database::IsHeld(ToText(row.Field(u"REMOTE_CONTACTS_CATEGORY")), written_.Category))) {
    if (affected == 0) shown_.pop_back();  // nothing was written
    throw database::DataError(ErrorNumber::RowChanged);
  }
  return row;
}

String frmSelectFolder::TypeLetter() const {
  return chkRemoteFolder.Checked() ? u"R" : u"S";
}

String frmSelectFolder::ChosenCategory() const {
  return chkRemoteFolder.Checked() ? cboRemoteFolderView.Text() : String();
}

bool frmSelectFolder::IsNotLoaded() const {
  return request_.Mode == ModeOfOperation::Modify && shown_.empty();
}

bool frmSelectFolder::IsInDoubt() const {
  return shown_.size() > (request_.Mode == ModeOfOperation::Modify ? 1u : 0u);
}

void frmSelectFolder::chkRemoteFolder_Click() {
  const bool isRemote = chkRemoteFolder.Checked();
  cboRemoteFolderView.SetEnabled(isRemote);
  type_ = isRemote ? TypeOfFolder::SharedRemoteFolder : TypeOfFolder::SharedFolder;
}

void frmSelectFolder::txtFolderName_GotFocus() {
  txtFolderName.Select(0, static_cast<int>(txtFolderName.Text().size()));
}

void frmSelectFolder::cmdOK_Click() {
  // No validation if the folder was not loaded: the save will be refused anyway.
  const Wait wait(*this);
  complained_ = false;
  const bool valid = IsNotLoaded() || Validate_Data();
  if (valid && Save_Data()) {
    Unload();
  } else if (complained_) {
    Tell({});
  } else {
    Tell(IsNotLoaded() ? Notice::kNotLoaded : IsInDoubt() ? Notice::kUnknown : Notice::kNotSaved);
  }
}

void frmSelectFolder::cmdCancel_Click() {
  Unload();  // without a saved folder
}

void frmSelectFolder::Tell(StringView notice) {
  lblNotice.SetCaption(String(canSave_ ? notice : Notice::kCannotSave));
}

void frmSelectFolder::Complain(StringView message, controls::Control& about) {
  complained_ = true;
  place_.Services.ShowMessage(message, MessageStyle::Exclamation);
  about.SetFocus();
}

}  // namespace ktrv::forms
