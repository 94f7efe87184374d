#pragma once

#include <memory>

#include "controls/Language.h"

namespace ktrv::tests {

/// The language of the tests' user: English, whatever this machine is set to.
std::unique_ptr<controls::Language> MakeUserLanguage();

}  // namespace ktrv::tests
