#pragma once

#include <cstdint>
#include <memory>
#include <utility>

#include "common/Logger.h"
#include "common/Trap.h"
#include "component/Enumerations.h"
#include "component/ModalDialogs.h"
#include "component/TextCollection.h"
#include "controls/Screen.h"
#include "database/Connection.h"

namespace ktrv {

/// The values that pass between an operation and the dialog that it opens, and those that say for
/// whom and on which database: plain data.
struct SessionValues {
  // The database.
  String SessionConnectionString;
  String DbType;  ///< dialect word as the host gave it: "SQL", "ORACLE" or "MYSQL"

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
struct Session : SessionValues {
 private:
  /// One for all sessions of a thread.
  struct Services {
    ModalDialogs Modal;
    String LogFilePath;
    ktrv::Logger Logger;
  };
  std::shared_ptr<Services> services_;
  Session* host_ = nullptr;  ///< null in the host's own

  explicit Session(Session& opener);

 public:
  /// The host's. Screen and system must outlive the session.
  Session(controls::Screen& screen, OperatingSystem& system, database::Environment environment);
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  controls::Screen& Screen;
  OperatingSystem& System;
  database::Environment Environment;

  /// Every editor is shown through this, so that the end of the component can close it.
  ModalDialogs& Modal;

  // The log. Until Init names another file, it is the default one, so that refusals can be logged.
  String& LogFilePath;
  ktrv::Logger* Logger;

  std::unique_ptr<database::Connection> SessionConnection;  ///< null before Init

  /// The session of a window or dialog that is to be opened: the same values, and a connection of
  /// its own that is closed. The host's must outlive it.
  Session ForWindow() { return Session(*this); }

  /// What a dialog is opened for, and so which of its session's values concern others.
  enum class Purpose { Contact, Folder, Group, Recipients };

  /// Shows the dialog of this session modally. The host's session has what the dialog was opened
  /// with from then on, and what it leaves when it has closed. \throws Error
  void ShowModal(Purpose purpose, controls::Form& dialog);

  /// Takes over what a dialog for that purpose was opened with or leaves.
  void Take(Purpose purpose, const SessionValues& dialog);

  /// Makes the three result collections new and empty.
  void RenewResults();

  /// Opens SessionConnection with SessionConnectionString unless it is open with that.
  /// \throws Error ObjectNotSet before Init, else the driver's.
  database::Connection& OpenConnection();
  /// Gets the other's connection as it is; the other has a closed one then.
  void TakeConnectionOf(Session& other);
  /// Closes SessionConnection unless it is closed.
  void CloseConnection();
  /// SessionConnection closed, as if it were new.
  database::Connection& RenewConnection();

  bool IsAdministrator() const { return Is(IsAdmin, UserType::Administrator); }
  bool IsAtServer() const { return Is(RunAt, RunApplicationAt::RuntAtServer); }

  /// ktrv::Trap with this session's log.
  template <class Result, class Body>
  Result Trap(StringView context, const Result& failure, Body&& body) {
    return ktrv::Trap(*Logger, LogFilePath, context, failure, std::forward<Body>(body));
  }
  template <class Body>
  void Trap(StringView context, Body&& body) {
    ktrv::Trap(*Logger, LogFilePath, context, std::forward<Body>(body));
  }

  /// Appends one line to the log.
  void WriteLog(StringView line) { Logger->WriteLog(LogFilePath, line, true, false); }

  /// The shared message box, titled kMessageTitle. \return the button pressed (MessageAnswer)
  std::int16_t ShowMessage(StringView text, std::int32_t style);
};

/// "\AddressBook.log" in the component's own directory.
String DefaultLogFilePath(OperatingSystem& system);

}  // namespace ktrv
