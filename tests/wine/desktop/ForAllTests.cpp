#include <gtest/gtest.h>
#include <optional>

#include "tests/wine/desktop/Desktop.h"

namespace ktrv::windows {
namespace {

/// Holds the desktop from before a program's first test until after its last.
class DesktopForAllTests final : public testing::Environment {
 public:
  void SetUp() override { desktop_.emplace(); }
  void TearDown() override { desktop_.reset(); }

 private:
  std::optional<Desktop> desktop_;
};

[[maybe_unused]] const testing::Environment* const kForAllTests =
    testing::AddGlobalTestEnvironment(new DesktopForAllTests);

}  // namespace
}  // namespace ktrv::windows
