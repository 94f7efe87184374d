#pragma once

#include <array>
#include <functional>
#include <optional>

#include "common/Text.h"

/// What the contact editor lets a user save; also for everything else that writes contacts.
namespace ktrv::data {

/// The text columns of a contact, in the order in which the editor writes them.
enum class ContactText : std::size_t {
  FirstName,
  MiddleName,
  LastName,
  CountryCode,
  MobileNo,
  OfficePhone,
  HomePhone,
  Fax,
  Email,
  Organisation,
  Address,
  City,
  State,
  Country,
  Zip,
  Hobby,
};
inline constexpr std::size_t kContactTexts = 16;

struct ContactTextColumn {
  StringView Name;  ///< of the column
  StringView Label;
  int Limit;  ///< UTF-16 units
};

constexpr ContactTextColumn ColumnOf(ContactText text) {
  constexpr std::array<ContactTextColumn, kContactTexts> kColumns{
      {{u"FName", u"First", 50},
       {u"MName", u"Middle", 50},
       {u"LName", u"Last", 50},
       {u"CountryCode", u"Country Code ", 10},
       {u"Mobileno", u"Mobile No", 20},
       {u"OfficePhone", u"Office Phone", 20},
       {u"HomePhone", u"Home Phone", 20},
       {u"Fax", u"Fax", 20},
       {u"Email", u"Email Id", 50},
       {u"Organisation", u"Company", 50},
       {u"Address", u"Street", 50},
       {u"City", u"City", 50},
       {u"State", u"State", 50},
       {u"Country", u"Country", 50},
       {u"Zip", u"Zip", 20},
       {u"Hobby", u"Hobby", 100}}};
  return kColumns[static_cast<std::size_t>(text)];
}
constexpr int LimitOf(ContactText text) {
  return ColumnOf(text).Limit;
}
inline constexpr int kAgeLimit = 3;  ///< UTF-16 units of the age

/// Why a contact is not saved.
struct ContactRefusal {
  ContactText Field;
  StringView Message;
};

/// The first rule that the contact breaks. \param isValidEmail Global::ValidateEmail or the like;
/// asked only if everything else is right
std::optional<ContactRefusal> ContactRefusalOf(
    StringView firstName, StringView mobileNo, StringView email,
    const std::function<bool(StringView address)>& isValidEmail);

}  // namespace ktrv::data
