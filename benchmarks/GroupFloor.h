#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "common/Text.h"

namespace ktrv::benchmarks {

/// The minimum work of saving a group on an open connection: prepares the group dialog's statements
/// and executes them, the insert once per member. \return seconds without connecting. \throws
/// std::runtime_error
double SaveByBareOdbc(const std::string& connectionString, std::int32_t groupId,
                      const String& groupName, const std::vector<String>& contactIds);

}  // namespace ktrv::benchmarks
