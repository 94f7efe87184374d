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

// The values that contacts have in a column, the most used first.
inline constexpr StringView kCompanies =
    u"SELECT ORGANISATION FROM SMS_ABCONTACTS WHERE ORGANISATION IS NOT NULL GROUP BY ORGANISATION "
    u"ORDER BY COUNT(1) DESC";
inline constexpr StringView kCities =
    u"SELECT CITY FROM SMS_ABCONTACTS WHERE CITY IS NOT NULL GROUP BY CITY ORDER BY COUNT(1) DESC";
inline constexpr StringView kStates =
    u"SELECT STATE FROM SMS_ABCONTACTS WHERE STATE IS NOT NULL GROUP BY STATE ORDER BY COUNT(1) "
    u"DESC";
inline constexpr StringView kCountries =
    u"SELECT COUNTRY FROM SMS_ABCONTACTS WHERE COUNTRY IS NOT NULL GROUP BY COUNTRY ORDER BY "
    u"COUNT(1) DESC";

}  // namespace ktrv::data::ContactQueries
