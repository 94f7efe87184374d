#pragma once

#include <array>
#include <optional>
#include <vector>

#include "data/FolderQueries.h"
#include "database/Command.h"
#include "services/BookDatabase.h"

namespace ktrv::forms {

using FolderCommand = data::FolderQueries::Name;

/// The nine prepared commands of the folder editor, on the dialog's connection. There are none
/// until Prepare.
class FolderCommands {
 public:
  /// \param database must outlive the commands.
  explicit FolderCommands(BookDatabase& database) : database_(database) {}

  void Prepare();

  /// The command. \throws Error ObjectNotSet before Prepare.
  const database::Command& At(FolderCommand name) const;

  /// Runs the command with one value for each parameter. \throws Error ObjectNotSet before Prepare,
  /// else as database::Command::Execute.
  database::Recordset Execute(FolderCommand name, std::vector<Variant> values = {});

 private:
  BookDatabase& database_;
  std::array<std::optional<database::Command>, data::FolderQueries::kCount> commands_;
};

}  // namespace ktrv::forms
