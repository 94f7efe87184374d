#pragma once

#include "common/Text.h"

namespace ktrv::forms {

/// A row of the contact list.
struct ListedItem {
  String Id;
  String Type;  ///< a ContactKind
};

}  // namespace ktrv::forms
