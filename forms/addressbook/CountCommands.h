#pragma once

#include <optional>

#include "database/Command.h"
#include "services/BookDatabase.h"

namespace ktrv::forms {

/// The four prepared commands that count a list before it is fetched. Made once when the window
/// loads, on its connection.
class CountCommands {
 public:
  explicit CountCommands(BookDatabase& database) : database_(database) {}

  /// Opens the connection when it is not open, and makes the commands. \throws Error
  void Prepare();
  /// Releases the commands and the connection.
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

  BookDatabase& database_;
  std::optional<Commands> commands_;
};

}  // namespace ktrv::forms
