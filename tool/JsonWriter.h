#pragma once

#include "tool/ContactWriter.h"

namespace ktrv::tool {

/// An array of JSON objects in UTF-8, one a line. GROUPS is an array; all other values are strings
/// or null.
class JsonWriter final : public ContactWriter {
 public:
  using ContactWriter::ContactWriter;

  void Write(const ContactRecord& contact) override;
  void End() override;

 private:
  void AppendKey(StringView name, const char* separator);

  bool isFirst_ = true;
};

}  // namespace ktrv::tool
