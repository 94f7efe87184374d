#pragma once

#include <cstdint>

#include "common/Text.h"

namespace ktrv::database {

/// The engine behind a link; Other if unknown.
enum class Engine { SqlServer, Oracle, MySql, PostgreSql, Sqlite, Other };

/// Status of FetchComplete, with the values of ADO.
enum class EventStatus : std::int32_t { Ok = 1, ErrorsOccurred = 2, Cancelled = 5 };

/// Type of a column or parameter, with the values of ADO's data types.
enum class DataType : std::int32_t {
  Integer = 3,  ///< integer; 4 bytes as a parameter
  Double = 5,
  Date = 7,  ///< date, with or without time of day
  Boolean = 11,
  VarChar = 200,   ///< narrow text
  VarWChar = 202,  ///< wide text
};

inline bool IsTextType(DataType type) {
  return type == DataType::VarChar || type == DataType::VarWChar;
}

/// Whether a text can be sent as narrow text without loss. Drivers convert it to the code page of
/// the machine or database; only ASCII is in all code pages.
inline bool FitsCodePage(StringView text) {
  for (const char16_t unit : text) {
    if (unit >= 0x80) return false;
  }
  return true;
}

/// A column of a result.
struct Column {
  String Name;
  DataType Type = DataType::VarWChar;
  /// Maximum UTF-16 units of a text; 0 if unlimited or unknown.
  std::int64_t Size = 0;
};

/// An input parameter of a command.
struct Parameter {
  String Name;
  DataType Type = DataType::VarWChar;
  /// Maximum characters of a text; 0 for other types.
  std::int64_t Size = 0;
};

}  // namespace ktrv::database
