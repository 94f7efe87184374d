#pragma once

#include <vector>

#include "common/Text.h"

namespace ktrv::forms {

/// The names, separated by commas; at most `most`, followed by the number of others.
String Listed(const std::vector<String>& names, std::size_t most = 5);

}  // namespace ktrv::forms
