#pragma once

#include "controls/ToolBar.h"

namespace ktrv::forms {

/// Keys of the toolbar buttons.
namespace ToolKey {
inline constexpr StringView New = u"NEW";
inline constexpr StringView Properties = u"PROPERTIES";
inline constexpr StringView Delete = u"DELETE";
inline constexpr StringView Refresh = u"REFRESH";
}  // namespace ToolKey

void AddAddressBookTools(controls::ToolBar& bar);

}  // namespace ktrv::forms
