#pragma once

#include <filesystem>
#include <fstream>

#include "common/Text.h"

namespace ktrv::tool {

/// The rows that were not imported, as they stand in the file. It can be mended and imported: it
/// has the same headings, in UTF-8. Never replaces a file.
class RejectsFile {
 public:
  /// \param path of the file to create; empty: none is written
  explicit RejectsFile(std::filesystem::path path) : path_(std::move(path)) {}
  /// Removes a file without rows.
  ~RejectsFile();
  RejectsFile(const RejectsFile&) = delete;
  RejectsFile& operator=(const RejectsFile&) = delete;

  /// Creates the file. \param head precedes the first row. \throws Error if it cannot be written
  void Open(StringView head);
  /// Call after Open. \throws Error if it cannot be written
  void Add(StringView raw);
  /// \throws Error if it could not be written
  void Close();

  const std::filesystem::path& Path() const { return path_; }

  /// A path beside the file that does not exist yet: "people.rejects.csv" for "people.csv".
  static std::filesystem::path PathBeside(const std::filesystem::path& file);

 private:
  void Check() const;

  std::filesystem::path path_;
  std::ofstream file_;
  bool hasRows_ = false;
};

}  // namespace ktrv::tool
