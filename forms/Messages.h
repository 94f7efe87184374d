#pragma once

#include "common/Logger.h"

/// Messages that several windows show.
namespace ktrv::forms::Messages {

inline constexpr StringView kPlaceIsGone =
    u"The selected folder or group does not exist any more. Please select another one.";
inline constexpr StringView kNoRemoteContactHere =
    u"Cannot create Shared Remote Contact here. Such contacts can be created from TALVERO only.";
inline constexpr StringView kNoGroupInRemoteFolder =
    u"Creating a Group in a Shared Remote Contacts folder is not allowed.";
/// In the status bar.
inline constexpr StringView kNothingSelected = u"No item is selected.";

/// The style of a question whose safe answer is no.
inline constexpr std::int32_t kYesOrNo =
    MessageStyle::YesNo | MessageStyle::Question | MessageStyle::DefaultButton2;

}  // namespace ktrv::forms::Messages
