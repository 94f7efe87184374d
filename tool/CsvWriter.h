#pragma once

#include "tool/ContactWriter.h"

namespace ktrv::tool {

/// Comma-separated values in UTF-8: a line of headings, then a line per contact; lines end with CR
/// LF. Null is an empty field, the empty text a pair of quotation marks.
class CsvWriter final : public ContactWriter {
 public:
  CsvWriter(std::ostream& file, bool byteOrderMark);

  void Begin() override;
  void Write(const ContactRecord& contact) override;

 private:
  void AppendField(std::optional<StringView> text);

  bool byteOrderMark_;
};

}  // namespace ktrv::tool
