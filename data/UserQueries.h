#pragma once

#include <cstdint>

#include "common/Text.h"

/// Queries on the host's users.
namespace ktrv::data::UserQueries {

/// ADMIN of the user; no row when the user is disabled or deleted. Hosts that trace statements
/// match this text, blanks included.
inline String Rights(std::int32_t userId) {
  return u"SELECT ADMIN FROM SMS_USERS WHERE  DISABLED = 0 AND DELETED =  0  AND ID = " +
         ToDecimal(userId);
}

}  // namespace ktrv::data::UserQueries
