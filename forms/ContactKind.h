#pragma once

#include "common/Text.h"

/// The kinds of list rows, as stored in CONTACTTYPE cells.
namespace ktrv::forms::ContactKind {

inline constexpr StringView Contact = u"1";
inline constexpr StringView Group = u"2";
inline constexpr StringView RemoteContact = u"3";

}  // namespace ktrv::forms::ContactKind
