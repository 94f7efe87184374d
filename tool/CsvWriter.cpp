#include "tool/CsvWriter.h"

#include "tool/ContactColumns.h"
#include "tool/Utf8.h"

namespace ktrv::tool {
namespace {

/// Characters that never need quotation marks.
constexpr std::array<bool, 128> PlainCharacters() {
  std::array<bool, 128> plain{};
  for (std::size_t code = 0x20; code < plain.size(); ++code) {
    plain[code] = code != ' ' && code != ',' && code != '"';
  }
  return plain;
}
constexpr std::array<bool, 128> kPlain = PlainCharacters();

/// Readers may remove blanks around a field, and take a quotation mark for the start of a quoted
/// one.
bool NeedsQuotes(StringView text) {
  if (text.empty() || text.front() == u' ' || text.back() == u' ') return true;
  for (const char16_t unit : text) {
    if (unit == u',' || unit == u'"' || unit < 0x20 || unit == 0xFEFF) return true;
  }
  return false;
}

}  // namespace

CsvWriter::CsvWriter(std::ostream& file, bool byteOrderMark)
    : ContactWriter(file), byteOrderMark_(byteOrderMark) {}

void CsvWriter::Begin() {
  if (byteOrderMark_) text_ += "\xEF\xBB\xBF";
  AppendUtf8(text_, ContactColumns::kFolder);
  text_ += ',';
  AppendUtf8(text_, ContactColumns::kGroups);
  for (const StringView name : ContactColumns::kNames) {
    text_ += ',';
    AppendUtf8(text_, name);
  }
  text_ += "\r\n";
}

void CsvWriter::Write(const ContactRecord& contact) {
  AppendField(contact.Folder);
  text_ += ',';
  if (!contact.Groups.empty()) {
    String groups(contact.Groups.front());
    for (std::size_t index = 1; index < contact.Groups.size(); ++index) {
      groups.append(1, u'\n').append(contact.Groups[index]);
    }
    AppendField(groups);
  }
  for (const auto& column : contact.Columns) {
    text_ += ',';
    AppendField(column);
  }
  text_ += "\r\n";
  FlushIfLong();
}

void CsvWriter::AppendField(std::optional<StringView> text) {
  if (!text) return;
  if (!text->empty() && AppendIf(text_, *text, kPlain)) return;
  if (!NeedsQuotes(*text)) return AppendUtf8(text_, *text);
  text_ += '"';
  StringView rest = *text;
  for (std::size_t mark = rest.find(u'"'); mark != StringView::npos; mark = rest.find(u'"')) {
    AppendUtf8(text_, rest.substr(0, mark));
    text_ += "\"\"";
    rest.remove_prefix(mark + 1);
  }
  AppendUtf8(text_, rest);
  text_ += '"';
}

}  // namespace ktrv::tool
