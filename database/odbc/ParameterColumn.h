#pragma once

#include <span>
#include <vector>

#include "database/Driver.h"
#include "database/odbc/Native.h"

namespace ktrv::database::odbc {

/// The values of one parameter for many executions of a statement, as a contiguous array.
class ParameterColumn {
 public:
  using Rows = std::span<const std::vector<Variant>>;

  /// Binds the values at `index` of all rows. They must stay here until the statement is executed.
  /// \return false unless all that are not null are texts, 4-byte integers, fractions or dates.
  /// \throws Error
  bool Bind(SQLHANDLE statement, std::size_t index, const Parameter& parameter, Rows rows,
            Engine engine, const Dialogue& dialogue);

 private:
  /// Adds a value for each row, converted by `convert`; for null a default one.
  template <class Kind, class Value, class Convert>
  void Fill(std::vector<Value>& values, Rows rows, std::size_t index, Convert convert);
  void BindTexts(SQLHANDLE statement, std::size_t index, const Parameter& parameter, Rows rows,
                 Engine engine, const Dialogue& dialogue);

  std::vector<SQLINTEGER> numbers_;
  std::vector<double> fractions_;
  std::vector<SQL_TIMESTAMP_STRUCT> dates_;
  std::vector<char16_t> texts_;
  std::vector<SQLLEN> lengths_;
};

}  // namespace ktrv::database::odbc
