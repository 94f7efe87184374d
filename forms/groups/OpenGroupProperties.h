#pragma once

#include "component/Session.h"

namespace ktrv::forms {

/// Shows a group modally in a dialog of its own, to be modified. The two texts become the group
/// that the host's session has; after a cancel it has none. \return whether contacts were opened
/// over it \throws Error
bool OpenGroupProperties(Session& session, const String& groupId, const String& groupName);

}  // namespace ktrv::forms
