#pragma once

#include <cstdint>
#include <string>

namespace ktrv::benchmarks {

struct FloorResult {
  std::int64_t Rows = 0;
  double FirstRow = 0;  ///< seconds until the first rows were fetched
};

/// The minimum work of a list: connect, execute, and fetch all rows in blocks into bound UTF-16
/// buffers that each block overwrites.
/// \throws std::runtime_error
FloorResult FetchByBareOdbc(const std::string& connectionString, const std::string& sql);

}  // namespace ktrv::benchmarks
