#pragma once

#include <cstdint>

namespace ktrv::windows {

/// The keys held now, as a ShiftMask.
std::int16_t HeldKeys();

}  // namespace ktrv::windows
