#pragma once

#include <string>
#include <vector>

namespace ktrv::benchmarks {

/// A text table with aligned columns: the first one left, the others right.
class Table {
 public:
  explicit Table(std::vector<std::string> headings) : rows_{std::move(headings)} {}

  void Add(std::vector<std::string> row) { rows_.push_back(std::move(row)); }
  void Print() const;

 private:
  std::vector<std::vector<std::string>> rows_;
};

/// \pre there is one
double Median(std::vector<double> numbers);

std::string Milliseconds(double seconds);
std::string Ratio(double product, double floor);
std::string Mebibytes(double bytes);

}  // namespace ktrv::benchmarks
