#pragma once

#include "data/GroupQueries.h"
#include "services/PreparedCommands.h"

namespace ktrv::forms {

using GroupCommand = data::GroupQueries::Name;
using GroupCommands = PreparedCommands<GroupCommand>;

}  // namespace ktrv::forms
