#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "common/Text.h"

namespace ktrv::tool {

/// A contact to write. Its texts belong to the caller.
struct ContactRecord {
  std::vector<std::optional<StringView>> Columns;  ///< as ContactColumns::kNames; nullopt is null
  std::optional<StringView> Folder;                ///< nullopt: outside any folder
  std::vector<StringView> Groups;
};

/// Writes contacts to a file of one format. A reader that knows the format gets each column back
/// unchanged, null and the empty text included.
class ContactWriter {
 public:
  explicit ContactWriter(std::ostream& file) : file_(file) {}
  virtual ~ContactWriter() = default;
  ContactWriter(const ContactWriter&) = delete;
  ContactWriter& operator=(const ContactWriter&) = delete;

  virtual void Begin() {}
  virtual void Write(const ContactRecord& contact) = 0;
  virtual void End() { Flush(); }
  /// Writes what there is to the file; it has no end then.
  void Flush();

 protected:
  /// Writes text_ to the file when it is long.
  void FlushIfLong();

  std::string text_;  ///< to be written; UTF-8

 private:
  std::ostream& file_;
};

}  // namespace ktrv::tool
