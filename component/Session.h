#pragma once

#include <cstdint>
#include <memory>
#include <utility>

#include "common/TextCollection.h"
#include "forms/HostRecord.h"
#include "services/Workplace.h"

namespace ktrv {

/// The host's record of one thread: the arguments of its calls and the results it reads back.
/// Windows and dialogs do not use it; they get a copy of their arguments, and their results are
/// stored here.
struct Session final : forms::HostRecord {
  /// Screen and system must outlive the session.
  Session(controls::Screen& screen, OperatingSystem& system, database::Environment environment);
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  ktrv::Services Services;
  BookDatabase Database;

  // The published names of the members above.
  String& LogFilePath = Services.LogFilePath;
  ktrv::Logger& Logger = Services.Logger;
  std::unique_ptr<database::Connection>& SessionConnection = Database.Connection;
  String& SessionConnectionString = Database.ConnectionString;
  String& DbType = Database.DbType;

  // User and run mode.
  std::int32_t SessionUserId = 0;
  UserType IsAdmin = UserType::GeneralUser;
  RunApplicationAt RunAt = RunApplicationAt::RuntAtClient;
  TypeOfContact SharedMode = TypeOfContact::LocalContact;
  std::int16_t InitDone = 0;

  // Contact editor.
  String EditContactId;
  String PresetContactName;
  String PresetMobileNo;
  String SavedContactId;
  String SavedContactName;
  String SavedContactMobile;
  String SavedContactEmail;
  String SavedContactAddress;
  String SavedContactOrganisation;

  // Group editor.
  String GroupId;
  String GroupName;
  TypeOfGroup GroupType = TypeOfGroup::LocalGroup;
  bool OpenForProperties = false;
  bool ExpandGroups = false;

  // Folder editor.
  TypeOfFolder FolderType = TypeOfFolder::LocalFolder;
  String SavedFolderId;
  String SavedFolderName;
  String SavedFolderType;
  String SavedFolderCategory;

  // Results of recipient selection.
  std::shared_ptr<TextCollection> SelectedRecipients;
  std::shared_ptr<TextCollection> SelectedMobileNos;
  std::shared_ptr<TextCollection> SelectedNames;  ///< not published
  String ContactsName;

  // Values of the properties of the same names; the component never uses them.
  String StoredLogFile;
  String StoredClientDBString;

  /// A workplace for a new window: current user and database, with a closed connection of its own.
  Workplace Place();
  bool IsAdministrator() const { return IsAdmin == UserType::Administrator; }
  bool IsAtServer() const { return RunAt == RunApplicationAt::RuntAtServer; }

  void Take(const forms::ContactRequest& opened) override;
  void Take(const forms::ContactResult& left) override;
  void Take(const forms::FolderRequest& opened) override;
  void Take(const forms::FolderResult& left) override;
  void Take(const forms::GroupRequest& opened) override;
  void Take(const forms::GroupResult& left) override;
  void Take(const forms::Recipients& picked);
  String& ContactsNames() override { return ContactsName; }
  bool& IsOpenForProperties() override { return OpenForProperties; }
};

}  // namespace ktrv
