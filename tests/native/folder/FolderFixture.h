#pragma once

#include "forms/folder/frmSelectFolder.h"
#include "tests/native/support/DialogFixture.h"
#include "tests/native/support/OnDemand.h"

namespace ktrv::tests {

inline constexpr StringView kFolderRows =
    u"SELECT ID, TYPE, NAME, PARENTFOLDERID, USER_ID, REMOTE_CONTACTS_CATEGORY FROM SMS_ABFOLDERS "
    u"ORDER BY ID";

/// The folder editor, loaded and not shown.
class FolderFixture : public DialogFixture {
 protected:
  void Categories(std::initializer_list<StringView> names) {
    for (const StringView name : names) {
      database.Run({u"INSERT INTO ZUL$CONTACTS_CATEGORY VALUES ('" + String(name) + u"')"});
    }
  }
  /// \param columns id, type, name, parent, user and category, as in a VALUES list
  void Folder(StringView columns) {
    database.Run(
        {u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME, PARENTFOLDERID, USER_ID, "
         u"REMOTE_CONTACTS_CATEGORY) VALUES (" +
         String(columns) + u")"});
  }
  forms::frmSelectFolder& Add() {
    form->Load();
    return *form;
  }
  forms::frmSelectFolder& Edit(String id) {
    request.Mode = ModeOfOperation::Modify;
    request.FolderIdText = std::move(id);
    form->Load();
    return *form;
  }
  /// What the host's record holds once the dialog has closed.
  String Saved() {
    session.Take(form->Result());
    return session.SavedFolderId + u"|" + session.SavedFolderName + u"|" + session.SavedFolderType +
           u"|" + session.SavedFolderCategory;
  }
  int ErrorsIn(StringView procedure) const {
    return ErrorsLogged(u"KTRVAddressBook: Error occurred. Sub:" + String(procedure) +
                        u"(), Module: frmSelectFolder");
  }

  forms::FolderRequest request;
  OnDemand<forms::frmSelectFolder> form{
      [this] { return std::make_unique<forms::frmSelectFolder>(session.Place(), request); }};
};

}  // namespace ktrv::tests
