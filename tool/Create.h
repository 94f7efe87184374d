#pragma once

#include "tool/Command.h"

namespace ktrv::tool {

struct CreateOptions {
  bool HostTables = false;  ///< also stand-ins for the tables of the host
};

/// Creates the tables of the address book. Refuses if one of them is there. On engines whose CREATE
/// is part of a transaction it creates all or none.
int Create(const CreateOptions& options, Book& book, Console& console);

}  // namespace ktrv::tool
