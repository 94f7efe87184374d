#pragma once

#include <string>

#include "tool/Command.h"

namespace ktrv::tool {

struct CheckOptions {
  bool Repair = false;
  bool Yes = false;  ///< repairs without asking
  /// File in UTF-8 to which a repair appends the rows that it removes or changes, before the
  /// commit.
  std::string Removed = "addressbook-removed.json";
};

/// Prints what is wrong with the address book, and repairs what can be: all rows in
/// one transaction, then tables and indexes.
/// \return Done if nothing is wrong any more, else Failed; Usage if it may not ask and has no Yes
int Check(const CheckOptions& options, Book& book, Console& console);

}  // namespace ktrv::tool
