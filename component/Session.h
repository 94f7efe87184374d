#pragma once

#include <cstdint>
#include <memory>
#include <utility>

#include "common/TextCollection.h"
#include "forms/HostRecord.h"
#include "services/Workplace.h"

namespace ktrv {

/// The record of a host thread: what the host said, and what it reads back. Windows and dialogs do
/// not work on it: they are made from it, and say here what they leave.
struct Session final : forms::HostRecord {
  /// Screen and system must outlive the session.
  Session(controls::Screen& screen, OperatingSystem& system, database::Environment environment);
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  ktrv::Services Services;
  BookDatabase Database;

  // The same by the names that all know.
  String& LogFilePath = Services.LogFilePath;
  ktrv::Logger& Logger = Services.Logger;
  std::unique_ptr<database::Connection>& SessionConnection = Database.Connection;
  String& SessionConnectionString = Database.ConnectionString;
  String& DbType = Database.DbType;

  // The user and the run.
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

  // Values of the properties of the same names, which nothing reads.
  String StoredLogFile;
  String StoredClientDBString;

  /// What a window that is opened now works with, on a closed connection of its own.
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
