#include "database/LinkFacts.h"

namespace ktrv::database {

std::vector<String> LinkFacts::KeyColumns(Link& link, StringView table) {
  const String name(table);
  {
    const std::lock_guard lock(mutex_);
    if (const auto known = keyColumns_.find(name); known != keyColumns_.end()) {
      return known->second;
    }
  }
  auto columns = link.KeyColumns(table);
  const std::lock_guard lock(mutex_);
  if (!columns.empty()) keyColumns_[name] = columns;
  return columns;
}

bool LinkFacts::TellsInsertedId(Link& link, StringView table, StringView column) {
  const std::pair name(String{table}, String{column});
  {
    const std::lock_guard lock(mutex_);
    if (tellsInsertedId_.contains(name)) return true;
  }
  const bool tells = link.TellsInsertedId(table, column);
  const std::lock_guard lock(mutex_);
  if (tells) tellsInsertedId_.insert(name);
  return tells;
}

}  // namespace ktrv::database
