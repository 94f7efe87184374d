#pragma once

#include "tool/ContactWriter.h"

namespace ktrv::tool {

/// vCards in UTF-8. Besides the properties that other programs read, each column that is not null
/// has a property "X-KTRV-" and its name, because a contact's columns and the standard properties
/// differ. The folder and the groups have such properties too.
class VCardWriter final : public ContactWriter {
 public:
  enum class Version { Three, Four };

  VCardWriter(std::ostream& file, Version version);

  void Write(const ContactRecord& contact) override;

 private:
  void WriteNames(const ContactRecord& contact);
  void WriteNumbers(const ContactRecord& contact);
  void WritePlaces(const ContactRecord& contact);
  void WriteDates(const ContactRecord& contact);
  void WriteOwn(const ContactRecord& contact);

  /// Starts a line with the property's name and parameters.
  void Open(std::string_view property);
  /// Appends a value with its escapes.
  void Append(StringView value);
  /// Ends the line, folded.
  void Close();
  void Add(std::string_view property, StringView value);
  void AddUnlessEmpty(std::string_view property, StringView value);
  void AddOwn(StringView name, StringView value);

  Version version_;
  std::string line_;
};

}  // namespace ktrv::tool
