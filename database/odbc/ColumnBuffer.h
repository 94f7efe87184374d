#pragma once

#include <vector>

#include "database/RowBlock.h"
#include "database/Types.h"
#include "database/odbc/Native.h"

namespace ktrv::database::odbc {

/// Takes one column's value of the row that was fetched, and adds it to a block as text. Numbers
/// and dates come in the form in which they lose nothing, and are put into words here.
class ColumnBuffer {
 public:
  enum class Form { Text, Double, Timestamp };

  /// \param number from 1. \param units room for a text; 0 when the value is to be read after the
  /// fetch, whatever its length.
  ColumnBuffer(SQLUSMALLINT number, Form form, std::size_t units);

  /// Has each fetch fill the buffer, unless it has no room. The buffer must not move afterwards.
  void Bind(SQLHANDLE statement, const Dialogue& dialogue);

  /// \throws Error
  void AddTo(RowBlock& block, SQLHANDLE statement, const Dialogue& dialogue);

 private:
  bool IsBound() const { return form_ != Form::Text || !text_.empty(); }
  void AddInFull(RowBlock& block, SQLHANDLE statement, const Dialogue& dialogue);

  SQLUSMALLINT number_;
  Form form_;
  std::vector<char16_t> text_;
  double double_ = 0;
  SQL_TIMESTAMP_STRUCT timestamp_ = {};
  SQLLEN length_ = 0;  // in bytes, or SQL_NULL_DATA or SQL_NO_TOTAL
};

}  // namespace ktrv::database::odbc
