#pragma once

#include <vector>

#include "common/Text.h"

namespace ktrv::database {

/// A line of the catalogue's answer to the question for a table's primary key.
struct KeyLine {
  String Catalog;
  String Schema;
  String Column;
};

/// The names of the key's columns. A catalogue that is asked without a schema may list the tables
/// of the name in every schema; only one of them counts: that of the schema (or, on engines without
/// schemas, the catalogue) before the point in the table's name, else the first.
std::vector<String> KeyOfOneTable(const std::vector<KeyLine>& lines, StringView table);

}  // namespace ktrv::database
