#pragma once

#include "controls/FlexGrid.h"
#include "forms/groups/GroupCommands.h"
#include "forms/groups/GroupRequest.h"

namespace ktrv::forms {

class JobProgress;

struct PickOptions {
  bool ExpandGroups = false;  ///< gives the members of a picked group
  /// Whether the country code stands before a contact's number in the list of mobile numbers.
  bool PrefixCountryCode = false;
};

/// Turns the rows of the picker's right list into recipients. \param current who is being turned,
/// so that a failure can be told with a name. \throws Error
Recipients PickRecipients(GroupCommands& commands, controls::FlexGrid& picked, PickOptions options,
                          JobProgress& progress, String& current);

}  // namespace ktrv::forms
