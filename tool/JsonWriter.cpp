#include "tool/JsonWriter.h"

#include "tool/ContactColumns.h"
#include "tool/JsonText.h"
#include "tool/Utf8.h"

namespace ktrv::tool {

void JsonWriter::Write(const ContactRecord& contact) {
  text_ += isFirst_ ? "[\n{" : ",\n{";
  isFirst_ = false;
  AppendKey(ContactColumns::kFolder, "");
  AppendJsonOrNull(text_, contact.Folder);
  AppendKey(ContactColumns::kGroups, ", ");
  text_ += '[';
  for (std::size_t index = 0; index < contact.Groups.size(); ++index) {
    if (index > 0) text_ += ", ";
    AppendJson(text_, contact.Groups[index]);
  }
  text_ += ']';
  for (std::size_t column = 0; column < contact.Columns.size(); ++column) {
    AppendKey(ContactColumns::kNames[column], ", ");
    AppendJsonOrNull(text_, contact.Columns[column]);
  }
  text_ += '}';
  FlushIfLong();
}

void JsonWriter::End() {
  text_ += isFirst_ ? "[]\n" : "\n]\n";
  Flush();
}

void JsonWriter::AppendKey(StringView name, const char* separator) {
  text_ += separator;
  text_ += '"';
  AppendUtf8(text_, name);
  text_ += "\": ";
}

}  // namespace ktrv::tool
