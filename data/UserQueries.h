#pragma once

#include <cstdint>

#include "common/Text.h"

/// Texts about the host's users.
namespace ktrv::data::UserQueries {

/// ADMIN of the user unless disabled or deleted; no row then. The blanks are part of the text:
/// hosts that watch their statements know it in this form.
inline String Rights(std::int32_t userId) {
  return u"SELECT ADMIN FROM SMS_USERS WHERE  DISABLED = 0 AND DELETED =  0  AND ID = " +
         ToDecimal(userId);
}

}  // namespace ktrv::data::UserQueries
