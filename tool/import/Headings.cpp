#include "tool/import/Headings.h"

#include <algorithm>
#include <tuple>

#include "common/Error.h"
#include "tool/ContactColumns.h"
#include "tool/import/Phones.h"

namespace ktrv::tool {
namespace {

using data::ContactText;

constexpr Field F(ContactText text) {
  return FieldOf(text);
}

struct Known {
  StringView Heading;  ///< capitals and digits only
  Field To;
  int Rank = 0;
};
constexpr Field kFirst = F(ContactText::FirstName);
constexpr Field kMiddle = F(ContactText::MiddleName);
constexpr Field kLast = F(ContactText::LastName);
constexpr Field kMobile = F(ContactText::MobileNo);
constexpr Field kOffice = F(ContactText::OfficePhone);
constexpr Field kHome = F(ContactText::HomePhone);
constexpr Field kFax = F(ContactText::Fax);
constexpr Field kEmail = F(ContactText::Email);
constexpr Field kCompany = F(ContactText::Organisation);
constexpr Field kStreet = F(ContactText::Address);
constexpr Field kCity = F(ContactText::City);
constexpr Field kState = F(ContactText::State);
constexpr Field kCountry = F(ContactText::Country);
constexpr Field kZip = F(ContactText::Zip);

// Of several addresses, that at work counts first.
constexpr Known kKnown[] = {
    {u"FNAME", kFirst},
    {u"FIRST", kFirst},
    {u"FIRSTNAME", kFirst},
    {u"GIVENNAME", kFirst},
    {u"MNAME", kMiddle},
    {u"MIDDLE", kMiddle},
    {u"MIDDLENAME", kMiddle},
    {u"ADDITIONALNAME", kMiddle},
    {u"LNAME", kLast},
    {u"LAST", kLast},
    {u"LASTNAME", kLast},
    {u"FAMILYNAME", kLast},
    {u"SURNAME", kLast},
    {u"NAME", Field::FullName},
    {u"FULLNAME", Field::FullName},
    {u"DISPLAYNAME", Field::FullName},
    {u"FILEAS", Field::FullName, 1},
    {u"NICKNAME", Field::FullName, 2},
    {u"COUNTRYCODE", F(ContactText::CountryCode)},
    {u"MOBILENO", kMobile},
    {u"MOBILE", kMobile},
    {u"MOBILEPHONE", kMobile},
    {u"MOBILENUMBER", kMobile},
    {u"CELL", kMobile},
    {u"CELLPHONE", kMobile},
    {u"OFFICEPHONE", kOffice},
    {u"BUSINESSPHONE", kOffice},
    {u"WORKPHONE", kOffice},
    {u"BUSINESSPHONE2", kOffice, 1},
    {u"COMPANYMAINPHONE", kOffice, 2},
    {u"HOMEPHONE", kHome},
    {u"HOMEPHONE2", kHome, 1},
    {u"FAX", kFax},
    {u"FAXNUMBER", kFax},
    {u"BUSINESSFAX", kFax, 1},
    {u"HOMEFAX", kFax, 2},
    {u"OTHERFAX", kFax, 3},
    {u"EMAIL", kEmail},
    {u"EMAILID", kEmail},
    {u"EMAILADDRESS", kEmail},
    {u"PRIMARYEMAIL", kEmail},
    {u"EMAIL1VALUE", kEmail},
    {u"EMAIL2ADDRESS", kEmail, 1},
    {u"EMAIL2VALUE", kEmail, 1},
    {u"SECONDARYEMAIL", kEmail, 1},
    {u"EMAIL3ADDRESS", kEmail, 2},
    {u"EMAIL3VALUE", kEmail, 2},
    {u"ORGANISATION", kCompany},
    {u"ORGANIZATION", kCompany},
    {u"ORGANIZATIONNAME", kCompany},
    {u"ORGANIZATION1NAME", kCompany},
    {u"COMPANY", kCompany},
    {u"COMPANYNAME", kCompany},
    {u"ADDRESS", kStreet},
    {u"STREET", kStreet},
    {u"ADDRESS1STREET", kStreet},
    {u"BUSINESSSTREET", kStreet, 1},
    {u"BUSINESSSTREET2", kStreet, 1},
    {u"BUSINESSSTREET3", kStreet, 1},
    {u"WORKADDRESS", kStreet, 1},
    {u"WORKADDRESS2", kStreet, 1},
    {u"HOMESTREET", kStreet, 2},
    {u"HOMESTREET2", kStreet, 2},
    {u"HOMESTREET3", kStreet, 2},
    {u"HOMEADDRESS", kStreet, 2},
    {u"HOMEADDRESS2", kStreet, 2},
    {u"OTHERSTREET", kStreet, 3},
    {u"OTHERSTREET2", kStreet, 3},
    {u"OTHERSTREET3", kStreet, 3},
    {u"ADDRESS2STREET", kStreet, 3},
    {u"CITY", kCity},
    {u"ADDRESS1CITY", kCity},
    {u"BUSINESSCITY", kCity, 1},
    {u"WORKCITY", kCity, 1},
    {u"HOMECITY", kCity, 2},
    {u"OTHERCITY", kCity, 3},
    {u"ADDRESS2CITY", kCity, 3},
    {u"STATE", kState},
    {u"REGION", kState},
    {u"ADDRESS1REGION", kState},
    {u"BUSINESSSTATE", kState, 1},
    {u"WORKSTATE", kState, 1},
    {u"HOMESTATE", kState, 2},
    {u"OTHERSTATE", kState, 3},
    {u"ADDRESS2REGION", kState, 3},
    {u"ZIP", kZip},
    {u"ZIPCODE", kZip},
    {u"POSTALCODE", kZip},
    {u"ADDRESS1POSTALCODE", kZip},
    {u"BUSINESSPOSTALCODE", kZip, 1},
    {u"WORKZIPCODE", kZip, 1},
    {u"HOMEPOSTALCODE", kZip, 2},
    {u"HOMEZIPCODE", kZip, 2},
    {u"OTHERPOSTALCODE", kZip, 3},
    {u"ADDRESS2POSTALCODE", kZip, 3},
    {u"COUNTRY", kCountry},
    {u"COUNTRYREGION", kCountry},
    {u"ADDRESS1COUNTRY", kCountry},
    {u"BUSINESSCOUNTRY", kCountry, 1},
    {u"BUSINESSCOUNTRYREGION", kCountry, 1},
    {u"WORKCOUNTRY", kCountry, 1},
    {u"HOMECOUNTRY", kCountry, 2},
    {u"HOMECOUNTRYREGION", kCountry, 2},
    {u"OTHERCOUNTRY", kCountry, 3},
    {u"OTHERCOUNTRYREGION", kCountry, 3},
    {u"ADDRESS2COUNTRY", kCountry, 3},
    {u"HOBBY", F(ContactText::Hobby)},
    {u"AGE", Field::Age},
    {u"SEX", Field::Sex},
    {u"GENDER", Field::Sex},
    {u"BIRTHDAY", Field::Birthday},
    {u"ANNIVERSARY", Field::Anniversary},
};

constexpr Field kAddressFields[] = {kStreet, kCity, kState, kCountry, kZip};

bool IsOfAddress(Field field) {
  return std::find(std::begin(kAddressFields), std::end(kAddressFields), field) !=
         std::end(kAddressFields);
}

/// Capitals, digits and other letters; "E-mail 1 - Value" becomes "EMAIL1VALUE".
String Key(StringView heading) {
  String key;
  for (const char16_t unit : ToUpperAscii(heading)) {
    const bool isPlain = (unit >= u'A' && unit <= u'Z') || (unit >= u'0' && unit <= u'9');
    if (isPlain || unit >= 0xC0) key += unit;
  }
  return key;
}

const Known* Find(StringView key) {
  const auto* found = std::find_if(std::begin(kKnown), std::end(kKnown),
                                   [&](const Known& known) { return known.Heading == key; });
  return found == std::end(kKnown) ? nullptr : found;
}

/// Google writes several values of a kind into one field.
StringView FirstOfSeveral(StringView text) {
  return text.substr(0, text.find(u" ::: "));
}

}  // namespace

Headings::Headings(const CsvRecord& record, const std::vector<std::string>& mapped) {
  std::vector<std::pair<String, String>> mappings;
  for (const std::string& each : mapped) {
    const std::size_t equals = each.rfind('=');
    if (equals == std::string::npos) {
      throw Error(ErrorNumber::InvalidArgument, u"--map takes Heading=column: " + FromUtf8(each));
    }
    mappings.emplace_back(FromUtf8(each.substr(0, equals)), FromUtf8(each.substr(equals + 1)));
  }
  std::vector<String> names;
  const auto columnOf = [&](StringView name) -> std::optional<std::size_t> {
    const auto found = std::find(names.begin(), names.end(), name);
    if (found == names.end()) return std::nullopt;
    return static_cast<std::size_t>(found - names.begin());
  };
  for (std::size_t column = 0; column < record.Count(); ++column) {
    const String heading(Trim(record.Text(column)));
    names.push_back(heading);
    if (TakeMapped(heading, column, mappings)) continue;
    const String key = Key(heading);
    // "Birth Day" is a part of a date, "Birthday" a date.
    if (heading.find(u' ') != String::npos && TakeDatePart(key, column)) continue;
    if (TakeKnown(key, column) || TakeLabelled(key, column) || TakeDatePart(key, column)) continue;
    leftOut_.push_back(heading);
  }
  if (!mappings.empty()) {
    throw Error(ErrorNumber::InvalidArgument,
                u"--map names no heading of the file: " + mappings.front().first);
  }
  isOwn_ =
      mapped.empty() && std::all_of(ContactColumns::kNames.begin(), ContactColumns::kNames.end(),
                                    [&](StringView name) { return columnOf(name).has_value(); });
  if (isOwn_) {
    folder_ = columnOf(ContactColumns::kFolder);
    groups_ = columnOf(ContactColumns::kGroups);
    std::erase_if(leftOut_, [](const String& heading) {
      return heading == ContactColumns::kFolder || heading == ContactColumns::kGroups;
    });
  }
  std::sort(sources_.begin(), sources_.end(), [](const Source& left, const Source& right) {
    return std::tie(left.To, left.Rank, left.Column) < std::tie(right.To, right.Rank, right.Column);
  });
  RequireEnough();
}

bool Headings::TakeMapped(const String& heading, std::size_t column,
                          std::vector<std::pair<String, String>>& mapped) {
  const auto found = std::find_if(mapped.begin(), mapped.end(), [&](const auto& mapping) {
    return EqualsIgnoringCase(Trim(mapping.first), heading);
  });
  if (found == mapped.end()) return false;
  const String name = Key(found->second);
  if (name.empty()) {
    leftOut_.push_back(heading);
  } else if (const Known* known = Find(name)) {
    sources_.push_back({known->To, -1, column});
  } else {
    throw Error(ErrorNumber::InvalidArgument, u"--map names no column: " + found->second);
  }
  mapped.erase(found);
  return true;
}

bool Headings::TakeKnown(const String& heading, std::size_t column) {
  const Known* known = Find(heading);
  if (known) sources_.push_back({known->To, known->Rank, column});
  return known != nullptr;
}

/// Google: "Phone 1 - Type" or "Phone 1 - Label", and "Phone 1 - Value".
bool Headings::TakeLabelled(const String& heading, std::size_t column) {
  if (!heading.starts_with(u"PHONE") && !heading.starts_with(u"EVENT")) return false;
  for (const StringView end : {u"TYPE", u"LABEL", u"VALUE"}) {
    if (!heading.ends_with(end)) continue;
    const String stem = heading.substr(0, heading.size() - end.size());
    auto found = std::find_if(labelled_.begin(), labelled_.end(),
                              [&](const Labelled& each) { return each.Stem == stem; });
    constexpr auto kNone = static_cast<std::size_t>(-1);  // such a field is empty
    if (found == labelled_.end()) found = labelled_.insert(found, {stem, kNone, kNone});
    (end == u"VALUE" ? found->Value : found->Label) = column;
    return true;
  }
  return false;
}

/// Thunderbird: "Birth Year", "Birth Month", "Birth Day".
bool Headings::TakeDatePart(const String& heading, std::size_t column) {
  const auto take = [&](Field to, StringView stem) {
    if (!heading.starts_with(stem)) return false;
    auto found = std::find_if(dates_.begin(), dates_.end(),
                              [&](const DateParts& each) { return each.To == to; });
    if (found == dates_.end()) found = dates_.insert(found, {to, {}, {}, {}});
    const StringView part = StringView(heading).substr(stem.size());
    auto* place = part == u"YEAR"    ? &found->Year
                  : part == u"MONTH" ? &found->Month
                  : part == u"DAY"   ? &found->Day
                                     : nullptr;
    if (place) *place = column;
    return place != nullptr;
  };
  return take(Field::Birthday, u"BIRTH") || take(Field::Anniversary, u"ANNIVERSARY");
}

void Headings::RequireEnough() const {
  const auto has = [&](std::initializer_list<Field> fields) {
    return std::any_of(sources_.begin(), sources_.end(), [&](const Source& source) {
      return std::find(fields.begin(), fields.end(), source.To) != fields.end();
    });
  };
  const StringView missing = !has({kFirst, kLast, Field::FullName}) ? u"a name"
                             : !has({kMobile}) && labelled_.empty() ? u"a mobile number"
                                                                    : u"";
  if (missing.empty()) return;
  String list;
  for (const String& heading : leftOut_) list += (list.empty() ? u"" : u", ") + heading;
  throw Error(ErrorNumber::InvalidArgument,
              u"No heading of the file is known as that of " + String(missing) +
                  u". Map one with --map Heading=column, such as --map \"Tel=MOBILENO\"" +
                  (list.empty() ? String() : u". Unknown headings: " + list));
}

RawContact Headings::Read(const CsvRecord& record) const {
  RawContact contact;
  contact.IsOwn = isOwn_;
  if (isOwn_) {
    ReadOwn(record, contact);
    return contact;
  }
  ReadSources(record, contact);
  ReadLabelled(record, contact);
  ReadDates(record, contact);
  return contact;
}

void Headings::ReadOwn(const CsvRecord& record, RawContact& contact) const {
  for (const Source& source : sources_) {
    const StringView text = record.Text(source.Column);
    if (!text.empty() || record.IsQuoted(source.Column)) contact[source.To] = String(text);
  }
  if (folder_) contact.Folder = record.Text(*folder_);
  if (!groups_) return;
  StringView names = record.Text(*groups_);
  while (!names.empty()) {
    StringView name = names.substr(0, names.find(u'\n'));
    names.remove_prefix(std::min(name.size() + 1, names.size()));
    if (name.ends_with(u'\r')) name.remove_suffix(1);  // another program wrote all line ends alike
    if (!name.empty()) contact.Groups.emplace_back(name);
  }
}

int Headings::RankOfAddress(const CsvRecord& record) const {
  std::optional<int> rank;
  for (const Source& source : sources_) {
    if (!IsOfAddress(source.To) || Trim(record.Text(source.Column)).empty()) continue;
    rank = std::min(rank.value_or(source.Rank), source.Rank);
  }
  return rank.value_or(0);
}

void Headings::ReadSources(const CsvRecord& record, RawContact& contact) const {
  const int address = RankOfAddress(record);
  const Source* former = nullptr;
  for (const Source& source : sources_) {
    const StringView text = Trim(FirstOfSeveral(record.Text(source.Column)));
    if (text.empty() || (IsOfAddress(source.To) && source.Rank != address)) continue;
    if (contact.Text(source.To).empty()) {
      contact[source.To] = String(text);
    } else if (source.To == kStreet && former && former->To == kStreet) {
      *contact[kStreet] += u", " + String(text);  // a second line of the street
    }
    former = &source;
  }
}

void Headings::ReadLabelled(const CsvRecord& record, RawContact& contact) const {
  PhoneSorting phones;
  for (const Labelled& each : labelled_) {
    const StringView value = Trim(FirstOfSeveral(record.Text(each.Value)));
    const StringView label = record.Text(each.Label);
    if (value.empty()) continue;
    if (each.Stem.starts_with(u"PHONE")) {
      phones.Add({String(label), String(value)}, contact);
    } else if (ToUpperAscii(label).find(u"ANNIVERSARY") != String::npos) {
      contact.Offer(Field::Anniversary, value);
    }
  }
  phones.Finish(contact);
}

void Headings::ReadDates(const CsvRecord& record, RawContact& contact) const {
  const auto part = [&](const std::optional<std::size_t>& column, std::size_t digits) {
    const StringView text = column ? Trim(record.Text(*column)) : StringView();
    return String(digits > text.size() ? digits - text.size() : 0, u'0') + String(text);
  };
  for (const DateParts& each : dates_) {
    const String month = part(each.Month, 2);
    const String day = part(each.Day, 2);
    if (month == u"00" || day == u"00") continue;
    String date = part(each.Year, 4);
    if (date == u"0000") date = u"-";
    contact.Offer(each.To, date.append(u"-").append(month).append(u"-").append(day));
  }
}

}  // namespace ktrv::tool
