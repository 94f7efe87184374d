#pragma once

#include "component/Session.h"
#include "controls/FlexGrid.h"
#include "forms/groups/GroupCommands.h"

namespace ktrv::forms {

class JobProgress;

/// Turns the rows of the picker's right list into the session's recipient result, groups into their
/// members when the session asks for it. \param current who is being turned, so that a failure can
/// be told with a name. \throws Error; the session's result is as it was then.
void PickRecipients(Session& session, GroupCommands& commands, controls::FlexGrid& picked,
                    bool prefixCountryCode, JobProgress& progress, String& current);

}  // namespace ktrv::forms
