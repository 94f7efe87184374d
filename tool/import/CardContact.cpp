#include "tool/import/CardContact.h"

#include "tool/import/Phones.h"

namespace ktrv::tool {
namespace {

using data::ContactText;

/// The text of the group's label, as Apple writes kinds of its own: "_$!<Mobile>!$_".
StringView LabelOf(const VCard& card, const VCardProperty& property) {
  if (property.Group.empty()) return {};
  for (const VCardProperty& other : card.Properties) {
    if (other.Name == u"X-ABLABEL" && EqualsIgnoringCase(other.Group, property.Group)) {
      return other.Value;
    }
  }
  return {};
}

/// The property of the name that its writer prefers; else the first one with a value.
const VCardProperty* Preferred(const VCard& card, StringView name) {
  const VCardProperty* best = nullptr;
  const auto rank = [](const VCardProperty& property) {
    return property.Preference > 0 ? property.Preference : 101;  // 100 is the largest
  };
  for (const VCardProperty& property : card.Properties) {
    if (property.Name != name || Trim(property.Value).empty()) continue;
    if (!best || rank(property) < rank(*best)) best = &property;
  }
  return best;
}

/// "tel:+46-70-1;ext=2" without what is not the number.
String NumberOf(const VCardProperty& property) {
  constexpr StringView kScheme = u"tel:";
  String text = property.Text();
  if (!EqualsIgnoringCase(StringView(text).substr(0, kScheme.size()), kScheme)) return text;
  return text.substr(kScheme.size(), text.find(u';') - kScheme.size());
}

void OfferParts(const VCardProperty* property, std::initializer_list<ContactText> texts,
                RawContact& contact) {
  if (!property) return;
  const std::vector<String> parts = property->Parts();
  std::size_t index = 0;
  for (const ContactText text : texts) {
    if (index < parts.size()) contact.Offer(FieldOf(text), parts[index++]);
  }
}

void ReadAddress(const VCard& card, RawContact& contact) {
  const VCardProperty* property = Preferred(card, u"ADR");
  if (!property) return;
  std::vector<String> parts = property->Parts();
  parts.resize(7);
  String street;
  for (const std::size_t part : {2U, 1U, 0U}) {  // street, extension, box
    if (!street.empty() && !parts[part].empty()) street += u", ";
    street += parts[part];
  }
  contact.Offer(FieldOf(ContactText::Address), street);
  contact.Offer(FieldOf(ContactText::City), parts[3]);
  contact.Offer(FieldOf(ContactText::State), parts[4]);
  contact.Offer(FieldOf(ContactText::Zip), parts[5]);
  contact.Offer(FieldOf(ContactText::Country), parts[6]);
}

/// In order of preference.
void ReadPhones(const VCard& card, bool hasMobile, RawContact& contact) {
  PhoneSorting phones;
  for (const bool isPreferred : {true, false}) {
    for (const VCardProperty& property : card.Properties) {
      if (property.Name != u"TEL" || (property.Preference > 0) != isPreferred) continue;
      String kind(LabelOf(card, property));
      for (const String& type : property.Types) kind += u" " + type;
      phones.Add({kind, NumberOf(property)}, contact);
    }
  }
  if (!hasMobile) phones.Finish(contact);
}

void OfferText(const VCard& card, StringView name, Field field, RawContact& contact) {
  if (const VCardProperty* property = Preferred(card, name)) contact.Offer(field, property->Text());
}

}  // namespace

RawContact StandardContactOf(const VCard& card, bool hasMobile) {
  RawContact contact;
  OfferParts(card.Find(u"N"),
             {ContactText::LastName, ContactText::FirstName, ContactText::MiddleName}, contact);
  OfferParts(card.Find(u"ORG"), {ContactText::Organisation}, contact);
  for (const StringView name : {u"FN", u"ORG", u"NICKNAME"}) {
    OfferText(card, name, Field::FullName, contact);
  }
  OfferText(card, u"EMAIL", FieldOf(ContactText::Email), contact);
  ReadPhones(card, hasMobile, contact);
  ReadAddress(card, contact);
  OfferText(card, u"BDAY", Field::Birthday, contact);
  for (const StringView name : {u"ANNIVERSARY", u"X-ANNIVERSARY", u"X-EVOLUTION-ANNIVERSARY"}) {
    OfferText(card, name, Field::Anniversary, contact);
  }
  for (const VCardProperty& property : card.Properties) {
    if (property.Name == u"X-ABDATE" &&
        LabelOf(card, property).find(u"Anniversary") != StringView::npos) {
      contact.Offer(Field::Anniversary, property.Text());
    }
  }
  for (const StringView name : {u"GENDER", u"X-GENDER"}) {
    if (const VCardProperty* property = card.Find(name)) {
      contact.Offer(Field::Sex, property->Parts().front());
    }
  }
  OfferText(card, u"HOBBY", FieldOf(ContactText::Hobby), contact);
  return contact;
}

}  // namespace ktrv::tool
