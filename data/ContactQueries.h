#pragma once

#include "data/IdText.h"

/// Texts of the contact editor, the same for every engine.
namespace ktrv::data::ContactQueries {

/// The contact's row. \throws as WithId does
inline String ById(StringView contactId) {
  return WithId(u"SELECT * FROM SMS_ABCONTACTS WHERE ID = {id}", contactId);
}

/// No row, but all columns: what a new contact is added to.
inline constexpr StringView kNone = u"SELECT * FROM SMS_ABCONTACTS WHERE 1 = 2";

}  // namespace ktrv::data::ContactQueries
