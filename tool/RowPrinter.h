#pragma once

#include <optional>
#include <string>
#include <vector>

#include "common/Text.h"
#include "tool/Console.h"

namespace ktrv::tool {

/// Prints rows: as an array of JSON objects, or as a table with headings for people. The columns of
/// a table are as wide as in its first rows; longer cells push the rest of their row aside.
class RowPrinter {
 public:
  /// \param names of the columns; the keys of JSON are these in lower case
  RowPrinter(Console& console, std::vector<std::string> names);

  /// Prints a row with one cell per column; nullopt is null.
  void Print(const std::vector<std::optional<StringView>>& cells);
  /// Prints what is left. Call it once, after the last row.
  void Finish();

 private:
  void PrintJson(const std::vector<std::optional<StringView>>& cells);
  void PrintHeld();
  void PrintLine(const std::vector<std::string>& cells);

  Console& console_;
  std::vector<std::string> names_;
  std::vector<std::vector<std::string>> held_;  ///< until the widths are known
  std::vector<std::size_t> widths_;
  bool isFirst_ = true;
};

}  // namespace ktrv::tool
