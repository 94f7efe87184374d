#pragma once

#include <string>
#include <vector>

#include "tool/Command.h"
#include "tool/import/Cleaning.h"
#include "tool/import/ImportFile.h"

namespace ktrv::tool {

/// What becomes of a row whose number, or name and e-mail, a contact has already.
enum class Duplicates {
  Skip,
  Merge,  ///< its values fill gaps of the contact; nothing is replaced
  Add,
};

struct ImportOptions {
  std::string File;    ///< path in UTF-8
  std::string Folder;  ///< name in UTF-8 or "#ID"; empty: that of the file, or the main folder
  std::string Group;   ///< the same for a group that all contacts become members of
  bool DryRun = false;
  Duplicates OfDuplicates = Duplicates::Skip;
  std::string Rejects;  ///< path in UTF-8; empty: beside the file, and none on a dry run
  ImportFormat Format;
  DateOrder Dates = DateOrder::MonthFirst;
  std::size_t RowsOfBlock = 1000;  ///< that are stored in one transaction; at least 1
};

/// Imports contacts of a CSV file or of vCards. Rows that the contact editor would refuse are
/// reported and written to a file of rejects. Stored in blocks, each in one transaction. After an
/// interruption it can be run again: what is stored is found as a duplicate. \return
/// ExitCode::Failed if there are rejects. \throws Error
int Import(const ImportOptions& options, Book& book, Console& console);

}  // namespace ktrv::tool
