#include "tool/import/Phones.h"

namespace ktrv::tool {
namespace {

using data::ContactText;

struct PhoneKind {
  StringView Word;
  std::optional<ContactText> Field;  ///< none: the number is left out
};
/// The first word that a kind contains counts: a fax at work is no office phone.
constexpr PhoneKind kKinds[] = {
    {u"FAX", ContactText::Fax},
    {u"PAGER", {}},
    {u"CELL", ContactText::MobileNo},
    {u"MOBILE", ContactText::MobileNo},
    {u"IPHONE", ContactText::MobileNo},
    {u"WORK", ContactText::OfficePhone},
    {u"OFFICE", ContactText::OfficePhone},
    {u"BUSINESS", ContactText::OfficePhone},
    {u"HOME", ContactText::HomePhone},
};

}  // namespace

void PhoneSorting::Add(const Phone& phone, RawContact& contact) {
  const String kind = ToUpperAscii(phone.Kind);
  for (const PhoneKind& known : kKinds) {
    if (kind.find(known.Word) == String::npos) continue;
    if (known.Field) contact.Offer(FieldOf(*known.Field), phone.Number);
    return;
  }
  if (unknown_.empty()) unknown_ = phone.Number;
}

void PhoneSorting::Finish(RawContact& contact) {
  contact.Offer(FieldOf(ContactText::MobileNo), unknown_);
}

}  // namespace ktrv::tool
