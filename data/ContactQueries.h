#pragma once

#include "data/IdText.h"

/// Query texts of the contact editor, the same for every engine.
namespace ktrv::data::ContactQueries {

/// The contact's row. \throws as WithId does
inline String ById(StringView contactId) {
  return WithId(u"SELECT * FROM SMS_ABCONTACTS WHERE ID = {id}", contactId);
}

/// All columns and no row; used to add a contact.
inline constexpr StringView kNone = u"SELECT * FROM SMS_ABCONTACTS WHERE 1 = 2";

}  // namespace ktrv::data::ContactQueries
