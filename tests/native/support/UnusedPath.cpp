#include "tests/native/support/UnusedPath.h"

#include <random>

namespace ktrv::tests {

std::filesystem::path UnusedPath(const std::string& ending) {
  std::random_device random;
  return std::filesystem::temp_directory_path() /
         ("ktrv-test-" + std::to_string(random()) + std::to_string(random()) + ending);
}

}  // namespace ktrv::tests
