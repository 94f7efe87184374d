#pragma once

#include <span>
#include <vector>

#include "database/Driver.h"
#include "database/odbc/Native.h"

namespace ktrv::database::odbc {

/// The values of one parameter for many runs of a statement, side by side as the driver reads them.
class ParameterColumn {
 public:
  using Rows = std::span<const std::vector<Variant>>;

  /// Binds the values at the index of all rows; they must stay here until the statement was
  /// executed. \return false when they are not all texts or all whole numbers. \throws Error
  bool Bind(SQLHANDLE statement, std::size_t index, const Parameter& parameter, Rows rows,
            Engine engine, const Dialogue& dialogue);

 private:
  void BindNumbers(SQLHANDLE statement, std::size_t index, Rows rows, const Dialogue& dialogue);
  void BindTexts(SQLHANDLE statement, std::size_t index, const Parameter& parameter, Rows rows,
                 Engine engine, const Dialogue& dialogue);

  std::vector<SQLINTEGER> numbers_;
  std::vector<char16_t> texts_;
  std::vector<SQLLEN> lengths_;
};

}  // namespace ktrv::database::odbc
