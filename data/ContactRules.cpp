#include "data/ContactRules.h"

namespace ktrv::data {

std::optional<ContactRefusal> ContactRefusalOf(
    StringView firstName, StringView mobileNo, StringView email,
    const std::function<bool(StringView address)>& isValidEmail) {
  if (Trim(firstName).empty()) {
    return ContactRefusal{ContactText::FirstName, u"Please enter the First Name."};
  }
  if (Trim(mobileNo).empty()) {
    return ContactRefusal{ContactText::MobileNo, u"Please enter the Mobile No."};
  }
  // Any number except 0 is accepted, also the prefix alone.
  if (LeadingNumber(mobileNo) == 0) {
    return ContactRefusal{ContactText::MobileNo, u"Enter a proper Mobile No."};
  }
  if (!Trim(email).empty() && !isValidEmail(email)) {
    return ContactRefusal{ContactText::Email, u"Enter a valid Email Id"};
  }
  return std::nullopt;
}

}  // namespace ktrv::data
