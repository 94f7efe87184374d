#pragma once

#include "controls/FlexGrid.h"
#include "forms/groups/GroupCommands.h"
#include "forms/groups/GroupRequest.h"

namespace ktrv::forms {

class JobProgress;

struct PickOptions {
  bool ExpandGroups = false;  ///< return the members of picked groups
  /// Whether mobile numbers of contacts get the country code as prefix.
  bool PrefixCountryCode = false;
};

/// Converts the rows of the picker's right list to recipients. \param current receives the name of
/// the row in progress, for failure messages. \throws Error
Recipients PickRecipients(GroupCommands& commands, controls::FlexGrid& picked, PickOptions options,
                          JobProgress& progress, String& current);

}  // namespace ktrv::forms
