#include "database/KeyOfOneTable.h"

#include <algorithm>

namespace ktrv::database {
namespace {

/// The qualifier directly before the table's name; empty if there is none.
StringView QualifierOf(StringView table) {
  const std::size_t point = table.rfind(u'.');
  if (point == StringView::npos) return {};
  const StringView before = table.substr(0, point);
  return before.substr(before.rfind(u'.') + 1);
}

}  // namespace

std::vector<String> KeyOfOneTable(const std::vector<KeyLine>& lines, StringView table) {
  const StringView qualifier = QualifierOf(table);
  const auto named = std::find_if(lines.begin(), lines.end(), [&](const KeyLine& line) {
    const String& place = line.Schema.empty() ? line.Catalog : line.Schema;
    return !qualifier.empty() && EqualsIgnoringCase(place, qualifier);
  });
  const auto first = named == lines.end() ? lines.begin() : named;
  std::vector<String> columns;
  for (const KeyLine& line : lines) {
    if (line.Catalog == first->Catalog && line.Schema == first->Schema) {
      columns.push_back(line.Column);
    }
  }
  return columns;
}

}  // namespace ktrv::database
