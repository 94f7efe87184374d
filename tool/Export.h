#pragma once

#include <string>

#include "tool/Command.h"
#include "tool/FileFormat.h"

namespace ktrv::tool {

struct ExportOptions {
  std::string Folder;  ///< name in UTF-8 or "#ID"; empty: not restricted
  std::string Group;   ///< the same for a group
  FileFormat Format = FileFormat::Csv;
  bool ByteOrderMark = false;
  std::string Output;  ///< file in UTF-8; empty: to Console::Out
};

/// Writes contacts in the order of their ids, with their folders and groups. Remote contacts are
/// left out. A file gets its name when it is complete.
int Export(const ExportOptions& options, Book& book, Console& console);

}  // namespace ktrv::tool
