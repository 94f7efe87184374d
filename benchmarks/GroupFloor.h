#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "common/Text.h"

namespace ktrv::benchmarks {

/// The unavoidable work of saving a group, with nothing around it: prepares the group dialog's
/// statements on a connection that is open already and executes them, the insert once a member.
/// \return seconds without connecting. \throws std::runtime_error
double SaveByBareOdbc(const std::string& connectionString, std::int32_t groupId,
                      const String& groupName, const std::vector<String>& contactIds);

}  // namespace ktrv::benchmarks
