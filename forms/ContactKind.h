#pragma once

#include "common/Text.h"

/// Kinds of the rows in all lists, as their CONTACTTYPE cells say them.
namespace ktrv::forms::ContactKind {

inline constexpr StringView Contact = u"1";
inline constexpr StringView Group = u"2";
inline constexpr StringView RemoteContact = u"3";

}  // namespace ktrv::forms::ContactKind
