#pragma once

#include <cstdint>

#include "common/Text.h"

namespace ktrv::database {

/// The engine behind a link; Other when it is none that the component knows.
enum class Engine { SqlServer, Oracle, MySql, PostgreSql, Sqlite, Other };

/// How the end of a fetch is reported, as ADO codes it.
enum class EventStatus : std::int32_t { Ok = 1, ErrorsOccurred = 2, Cancelled = 5 };

/// How the values of a column or a parameter are read. The numbers are those of ADO's data types.
enum class DataType : std::int32_t {
  Integer = 3,  ///< whole number; 4 bytes as a parameter
  Double = 5,
  Date = 7,  ///< date, with or without time of day
  Boolean = 11,
  VarChar = 200,   ///< narrow text
  VarWChar = 202,  ///< wide text
};

inline bool IsTextType(DataType type) {
  return type == DataType::VarChar || type == DataType::VarWChar;
}

/// Whether a text of narrow type may go out as one. Drivers bring such a text into the machine's or
/// the database's code page, which loses other scripts; what all code pages have is ASCII.
inline bool FitsCodePage(StringView text) {
  for (const char16_t unit : text) {
    if (unit >= 0x80) return false;
  }
  return true;
}

/// One column of a result.
struct Column {
  String Name;
  DataType Type = DataType::VarWChar;
  /// Most UTF-16 units of a text; 0 when it has no limit or none is known.
  std::int64_t Size = 0;
};

/// One input parameter of a command.
struct Parameter {
  String Name;
  DataType Type = DataType::VarWChar;
  /// Most characters of a text; 0 for the other types.
  std::int64_t Size = 0;
};

}  // namespace ktrv::database
