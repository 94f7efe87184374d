#pragma once

#include <cstdint>
#include <memory>
#include <utility>

#include "common/TextCollection.h"
#include "forms/HostRecord.h"
#include "services/Workplace.h"

namespace ktrv {

/// The values that pass between an operation and the dialog that it opens, and those that say for
/// whom and on which database: plain data.
struct SessionValues {
  // The user and the run.
  std::int32_t SessionUserId = 0;
  std::int32_t IsAdmin = 0;     ///< UserType
  std::int32_t RunAt = 0;       ///< RunApplicationAt
  std::int32_t SharedMode = 0;  ///< TypeOfContact
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
  std::int32_t GroupType = 0;  ///< TypeOfGroup
  bool OpenForProperties = false;
  bool ExpandGroups = false;

  // Folder editor.
  std::int32_t FolderType = 0;  ///< TypeOfFolder
  String SavedFolderId;
  String SavedFolderName;
  String SavedFolderType;
  String SavedFolderCategory;

  // Results of recipient selection. A host may keep a collection after the next selection replaced
  // it.
  std::shared_ptr<TextCollection> SelectedRecipients;
  std::shared_ptr<TextCollection> SelectedMobileNos;
  std::shared_ptr<TextCollection> SelectedNames;  ///< not published
  String ContactsName;

  // Values of the properties of the same names, which nothing reads.
  String StoredLogFile;
  String StoredClientDBString;
};

/// What a window or a dialog works with. The host's session, one for each thread, holds what the
/// host said and what it reads back. Every window and dialog has one of its own, made from its
/// opener's: whatever the host calls meanwhile, it keeps the database, the user, the rights and the
/// values with which it was opened.
struct Session : SessionValues, forms::HostRecord {
 private:
  std::shared_ptr<ktrv::Services> services_;  ///< one for all sessions of a thread
  Session* host_ = nullptr;                   ///< null in the host's own

  explicit Session(Session& opener);

 public:
  /// The host's. Screen and system must outlive the session.
  Session(controls::Screen& screen, OperatingSystem& system, database::Environment environment);
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  ktrv::Services& Services;
  BookDatabase Database;

  // Their names as all know them.
  controls::Screen& Screen = Services.Screen;
  ModalDialogs& Modal = Services.Modal;
  String& LogFilePath = Services.LogFilePath;
  ktrv::Logger& Logger = Services.Logger;
  database::Environment& Environment = Database.Environment;
  String& SessionConnectionString = Database.ConnectionString;
  String& DbType = Database.DbType;
  std::unique_ptr<database::Connection>& SessionConnection = Database.Connection;

  /// The session of a window or dialog that is to be opened: the same values, and a connection of
  /// its own that is closed. The host's must outlive it.
  Session ForWindow() { return Session(*this); }

  /// What a dialog is opened for, and so which of its session's values concern others.
  enum class Purpose { Contact, Group, Recipients };

  /// Shows the dialog of this session modally. The host's session has what the dialog was opened
  /// with from then on, and what it leaves when it has closed. \throws Error
  void ShowModal(Purpose purpose, controls::Form& dialog);

  void Take(const forms::FolderRequest& opened) override;
  void Take(const forms::FolderResult& left) override;

  /// Takes over what a dialog for that purpose was opened with or leaves.
  void Take(Purpose purpose, const SessionValues& dialog);

  /// Makes the three result collections new and empty.
  void RenewResults();

  database::Connection& OpenConnection() { return Database.Open(); }
  void CloseConnection() { Database.Close(); }

  bool IsAdministrator() const { return Is(IsAdmin, UserType::Administrator); }
  bool IsAtServer() const { return Is(RunAt, RunApplicationAt::RuntAtServer); }

  /// What a window that is opened now works with, on a closed connection.
  Workplace Place() const;

  template <class Result, class Body>
  Result Trap(StringView context, const Result& failure, Body&& body) {
    return Services.Trap(context, failure, std::forward<Body>(body));
  }
  template <class Body>
  void Trap(StringView context, Body&& body) {
    Services.Trap(context, std::forward<Body>(body));
  }
  void WriteLog(StringView line) { Services.WriteLog(line); }
  std::int16_t ShowMessage(StringView text, std::int32_t style) {
    return Services.ShowMessage(text, style);
  }
};

}  // namespace ktrv
