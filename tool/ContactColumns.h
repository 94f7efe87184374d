#pragma once

#include <array>

#include "common/Text.h"

/// The columns of a contact in files, in their order. They have the names of the table.
namespace ktrv::tool::ContactColumns {

inline constexpr std::array<StringView, 20> kNames = {
    u"FNAME",       u"MNAME",     u"LNAME",    u"COUNTRYCODE", u"MOBILENO",
    u"OFFICEPHONE", u"HOMEPHONE", u"FAX",      u"EMAIL",       u"ORGANISATION",
    u"ADDRESS",     u"CITY",      u"STATE",    u"COUNTRY",     u"ZIP",
    u"AGE",         u"SEX",       u"BIRTHDAY", u"ANNIVERSARY", u"HOBBY"};

/// Indices into kNames.
enum Index : std::size_t {
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
  Age,
  Sex,
  Birthday,
  Anniversary,
  Hobby
};

/// Further columns of a file: the name of the contact's folder, and of its groups.
inline constexpr StringView kFolder = u"FOLDER";
inline constexpr StringView kGroups = u"GROUPS";  ///< one a line

}  // namespace ktrv::tool::ContactColumns
