#pragma once

#include <optional>

#include "component/Session.h"
#include "database/Command.h"

namespace ktrv::forms {

/// The four prepared commands that count a list before it is fetched. Made once when the window
/// loads, on the session's connection.
class CountCommands {
 public:
  explicit CountCommands(Session& session) : session_(session) {}

  /// Opens the session's connection when it is not open, and makes the commands. \throws Error
  void Prepare();
  /// Gives the commands and their hold on the connection up.
  void Release() { commands_.reset(); }
  bool ArePrepared() const { return commands_.has_value(); }

  // Each counts for one id. The connection is opened again when it was closed in between, and the
  // commands are made when Prepare failed before. \throws Error
  std::int32_t FolderContacts(std::int32_t folderId);
  std::int32_t RemoteContacts(std::int32_t folderId);
  std::int32_t FolderGroups(std::int32_t folderId);
  std::int32_t GroupMembers(std::int32_t groupId);

 private:
  struct Commands {
    database::Command FolderContacts;
    database::Command RemoteContacts;
    database::Command FolderGroups;
    database::Command GroupMembers;
  };

  std::int32_t Count(database::Command Commands::*which, std::int32_t id);

  Session& session_;
  std::optional<Commands> commands_;
};

}  // namespace ktrv::forms
