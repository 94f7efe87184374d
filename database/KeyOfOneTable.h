#pragma once

#include <vector>

#include "common/Text.h"

namespace ktrv::database {

/// One row of the catalogue's list of primary key columns.
struct KeyLine {
  String Catalog;
  String Schema;
  String Column;
};

/// The names of the key's columns. Without a schema, a catalogue may list tables of this name in
/// several schemas. Only one counts: the one of the schema (on engines without schemas: the
/// catalogue) in the table's name, otherwise the first.
std::vector<String> KeyOfOneTable(const std::vector<KeyLine>& lines, StringView table);

}  // namespace ktrv::database
