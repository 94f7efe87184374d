#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tool/formats/Encoding.h"
#include "tool/import/Contact.h"

namespace ktrv::tool {

/// One contact of a file.
struct ImportRow {
  std::int64_t Line = 0;
  StringView Raw;  ///< as in the file; valid until the next row
  String Problem;  ///< why it cannot be read; empty if it can
  RawContact Values;
};

/// A file of contacts, read one by one.
class ImportFile {
 public:
  virtual ~ImportFile() = default;

  /// \return false at the end. \throws Error if the file cannot be read
  virtual bool Next(ImportRow& row) = 0;

  /// How much of the file is read.
  virtual int Percent() = 0;

  /// What precedes the rows in a file of the same kind.
  virtual StringView Head() const = 0;
  /// Headings whose columns are left out.
  virtual std::vector<String> LeftOut() const { return {}; }
};

struct ImportFormat {
  std::optional<tool::Encoding> Encoding;  ///< nullopt: detected
  char16_t Delimiter = 0;                  ///< of CSV; 0: detected
  std::vector<std::string> Mapped;         ///< of CSV; see Headings
};

/// Opens a CSV file, or one of vCards if it begins with one. \throws Error if it cannot be read, or
/// as Headings
std::unique_ptr<ImportFile> OpenImportFile(const std::filesystem::path& path,
                                           const ImportFormat& format);

}  // namespace ktrv::tool
