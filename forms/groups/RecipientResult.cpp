#include "forms/groups/RecipientResult.h"

#include <utility>

#include "common/Error.h"

namespace ktrv::forms {
namespace {

/// The id padded to 15 units, followed by the name. Hosts cut off 15 units, so a longer id is an
/// error.
String PaddedName(const String& id, const String& name) {
  constexpr std::size_t kWidth = 15;
  if (id.size() > kWidth) {
    throw Error(ErrorNumber::InvalidProcedureCall, u"Invalid procedure call or argument");
  }
  String text;
  text.reserve(kWidth + name.size());
  return text.append(id).append(kWidth - id.size(), u' ').append(name);
}

String Entry(StringView prefix, const ContactRow& row) {
  String text;
  text.reserve(prefix.size() + row.Id.size() + row.Name.size() + row.MobileNo.size() + 2);
  text.append(prefix).append(row.Id).append(1, u'|').append(row.Name);
  return text.append(1, u'|').append(row.MobileNo);
}

}  // namespace

RecipientResult::RecipientResult(bool prefixCountryCode, std::size_t rows)
    : prefixCountryCode_(prefixCountryCode) {
  for (const auto& collection : {result_.Selected, result_.MobileNos, result_.Names})
    collection->Reserve(rows);
}

void RecipientResult::AddContact(const ContactRow& contact) {
  Add(u"SC|", u'C', contact, MobileNoOf(contact));
}

void RecipientResult::AddGroup(const ContactRow& group) {
  Add(u"SG|", u'G', group, group.MobileNo);
}

void RecipientResult::AddRemoteContact(const ContactRow& contact) {
  Add(u"RC|", u'R', contact, contact.MobileNo);
}

void RecipientResult::AddGroupMember(const ContactRow& member) {
  AddContact(member);
  namesText_.Append(member.Name + u";");
}

Recipients RecipientResult::Take() && {
  result_.ContactsName = namesText_.Text();
  return std::move(result_);
}

void RecipientResult::Add(StringView prefix, char16_t letter, const ContactRow& row,
                          String mobileNo) {
  const String number = ToDecimal(++number_);
  result_.Names->Add(PaddedName(row.Id, row.Name), letter + number);
  result_.MobileNos->Add(std::move(mobileNo), u"M" + number);
  result_.Selected->Add(Entry(prefix, row));
}

String RecipientResult::MobileNoOf(const ContactRow& contact) const {
  return prefixCountryCode_ ? contact.CountryCode + contact.MobileNo : contact.MobileNo;
}

}  // namespace ktrv::forms
