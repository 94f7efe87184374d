#include "benchmarks/Table.h"

#include <algorithm>
#include <cstdio>

namespace ktrv::benchmarks {
namespace {

std::string Fixed(double number, int digits, const char* unit) {
  char text[64];
  std::snprintf(text, sizeof text, "%.*f%s", digits, number, unit);
  return text;
}

}  // namespace

void Table::Print() const {
  std::vector<std::size_t> widths(rows_.front().size());
  for (const auto& row : rows_) {
    for (std::size_t column = 0; column < row.size(); ++column) {
      widths[column] = std::max(widths[column], row[column].size());
    }
  }
  for (const auto& row : rows_) {
    std::string line;
    for (std::size_t column = 0; column < row.size(); ++column) {
      const std::string gap(widths[column] - row[column].size(), ' ');
      line += column == 0 ? row[column] + gap : "  " + gap + row[column];
    }
    std::puts(line.c_str());
  }
  std::puts("");
}

double Median(std::vector<double> numbers) {
  std::sort(numbers.begin(), numbers.end());
  return numbers[numbers.size() / 2];
}

std::string Milliseconds(double seconds) {
  return Fixed(seconds * 1000, seconds < 0.1 ? 2 : 0, " ms");
}

std::string Ratio(double product, double floor) {
  return Fixed(product / floor, 2, "");
}

std::string Mebibytes(double bytes) {
  return Fixed(bytes / (1 << 20), 1, " MiB");
}

}  // namespace ktrv::benchmarks
