#include "tool/import/OwnCard.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <sstream>

#include "tool/ContactColumns.h"
#include "tool/VCardWriter.h"
#include "tool/import/CardContact.h"
#include "tool/import/Cleaning.h"

namespace ktrv::tool {
namespace {

using data::ContactText;

/// The properties that only our export writes: one for each column that is not null.
RawContact ReadOwn(const VCard& card) {
  constexpr StringView kPrefix = u"X-KTRV-";
  RawContact contact;
  for (const VCardProperty& property : card.Properties) {
    if (!property.Name.starts_with(kPrefix)) continue;
    const StringView name = StringView(property.Name).substr(kPrefix.size());
    const String value = property.IsEncoded ? property.Value : property.Text();
    if (name == ContactColumns::kFolder) contact.Folder = value;
    if (name == ContactColumns::kGroups) contact.Groups.push_back(value);
    if (const auto field = FieldOfColumn(name)) {
      contact[*field] = value;
      contact.IsOwn = true;
    }
  }
  return contact;
}

/// The card as our export wrote it.
VCard CardOf(const RawContact& contact, VCardWriter::Version version) {
  ContactRecord record;
  for (const StringView name : ContactColumns::kNames) {
    const auto field = FieldOfColumn(name);
    record.Columns.emplace_back();
    if (field && contact.Has(*field)) record.Columns.back() = contact.Text(*field);
  }
  std::stringstream bytes;
  VCardWriter writer(bytes, version);
  writer.Write(record);
  writer.End();
  TextSource source(bytes, Encoding::Utf8);
  VCard card;
  VCardReader(source).Next(card);
  return card;
}

/// The columns of one standard property. A program that changes it writes all of them.
constexpr std::array kNameParts = {ContactText::LastName, ContactText::FirstName,
                                   ContactText::MiddleName};
constexpr std::array kAddressParts = {ContactText::Address, ContactText::City, ContactText::State,
                                      ContactText::Zip, ContactText::Country};

/// Whether the text is another value than the one that was written. Programs write numbers and
/// dates in their own way, and leave out properties that they do not know.
bool IsChanged(Field field, StringView text, StringView written) {
  const auto isOneOf = [field](std::initializer_list<Field> fields) {
    return std::find(fields.begin(), fields.end(), field) != fields.end();
  };
  if (Trim(text).empty() || Trim(text) == Trim(written)) return false;
  if (isOneOf({FieldOf(ContactText::MobileNo), FieldOf(ContactText::OfficePhone),
               FieldOf(ContactText::HomePhone), FieldOf(ContactText::Fax)})) {
    return CleanNumber(text) != CleanNumber(written);
  }
  if (isOneOf({Field::Birthday, Field::Anniversary})) {
    const auto date = ParseDate(text, DateOrder::MonthFirst);
    return !date || date != ParseDate(written, DateOrder::MonthFirst);
  }
  return true;
}

/// Takes out what is in one property with a value that was changed, and is empty there now. A
/// contact needs its first name.
template <std::size_t Count>
void EmptyRestOf(const std::array<ContactText, Count>& parts, const RawContact& standard,
                 RawContact& own) {
  const auto isReplaced = [&own](ContactText part) { return !own.IsStoredAsItIs(FieldOf(part)); };
  if (std::none_of(parts.begin(), parts.end(), isReplaced)) return;
  for (const ContactText part : parts) {
    if (part == ContactText::FirstName || !standard.Text(FieldOf(part)).empty()) continue;
    if (!own.Text(FieldOf(part)).empty()) own.Replace(FieldOf(part), u"");
  }
}

}  // namespace

RawContact ContactOf(const VCard& card) {
  RawContact own = ReadOwn(card);
  if (!own.IsOwn) return StandardContactOf(card);
  const bool hasMobile = !own.Text(FieldOf(ContactText::MobileNo)).empty();
  const RawContact standard = StandardContactOf(card, hasMobile);
  const VCardProperty* version = card.Find(u"VERSION");
  const bool isThree = version && version->Value == u"3.0";
  const RawContact written = StandardContactOf(
      CardOf(own, isThree ? VCardWriter::Version::Three : VCardWriter::Version::Four));
  for (const StringView name : ContactColumns::kNames) {
    const auto field = FieldOfColumn(name);
    if (!field) continue;
    // Version 3 has no standard property for each column.
    const RawContact& former = written.Text(*field).empty() ? own : written;
    if (!IsChanged(*field, standard.Text(*field), former.Text(*field))) continue;
    own.Replace(*field, standard.Text(*field));
  }
  EmptyRestOf(kNameParts, standard, own);
  EmptyRestOf(kAddressParts, standard, own);
  for (const StringView name : ContactColumns::kNames) {
    const auto field = FieldOfColumn(name);
    if (!field || own.IsStoredAsItIs(*field)) continue;
    own.Note += (own.Note.empty() ? u"changed since our export wrote it: " : u", ") + String(name);
  }
  constexpr Field kMobile = FieldOf(ContactText::MobileNo);
  if (!own.IsStoredAsItIs(kMobile)) own.Replace(FieldOf(ContactText::CountryCode), u"");
  return own;
}

}  // namespace ktrv::tool
