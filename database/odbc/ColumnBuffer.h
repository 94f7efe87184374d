#pragma once

#include <vector>

#include "database/RowBlock.h"
#include "database/Types.h"
#include "database/odbc/Native.h"

namespace ktrv::database::odbc {

/// Reads one column of the fetched row and adds it to a block as text. Numbers and dates are
/// fetched in lossless binary form and converted to text here.
class ColumnBuffer {
 public:
  enum class Form { Text, Double, Timestamp };

  /// \param number 1-based. \param units buffer size for a text; 0 to read the value after the
  /// fetch, with any length
  ColumnBuffer(SQLUSMALLINT number, Form form, std::size_t units);

  /// Binds the buffer, if it has room, so that each fetch fills it. The buffer must not move
  /// afterwards.
  void Bind(SQLHANDLE statement, const Dialogue& dialogue);

  /// \throws Error
  void AddTo(RowBlock& block, SQLHANDLE statement, const Dialogue& dialogue);

 private:
  bool IsBound() const { return form_ != Form::Text || !text_.empty(); }
  bool AddUtf8(RowBlock& block);
  void AddInFull(RowBlock& block, SQLHANDLE statement, const Dialogue& dialogue);

  SQLUSMALLINT number_;
  Form form_;
  std::vector<char16_t> text_;
  bool isUtf8_ = false;  // text_ has bytes
  double double_ = 0;
  SQL_TIMESTAMP_STRUCT timestamp_ = {};
  SQLLEN length_ = 0;  // in bytes; or SQL_NULL_DATA or SQL_NO_TOTAL
};

}  // namespace ktrv::database::odbc
