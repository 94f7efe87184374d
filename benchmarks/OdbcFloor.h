#pragma once

#include <cstdint>
#include <string>

namespace ktrv::benchmarks {

struct FloorResult {
  std::int64_t Rows = 0;
  double FirstRow = 0;  ///< seconds until the first rows were there
};

/// The unavoidable work of a list, with nothing around it: connect, execute, and fetch every row by
/// blocks into bound UTF-16 buffers, which are overwritten by the next block.
/// \throws std::runtime_error
FloorResult FetchByBareOdbc(const std::string& connectionString, const std::string& sql);

}  // namespace ktrv::benchmarks
