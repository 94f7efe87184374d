#pragma once

#include <memory>

#include "controls/Language.h"

namespace ktrv::tests {

/// The language of the tests' user: English unless told otherwise, whatever this machine is set to.
std::unique_ptr<controls::Language> MakeUserLanguage(const char* name = "en");

}  // namespace ktrv::tests
