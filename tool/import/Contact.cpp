#include "tool/import/Contact.h"

#include <utility>

namespace ktrv::tool {

std::optional<Field> FieldOfColumn(StringView name) {
  for (std::size_t text = 0; text < data::kContactTexts; ++text) {
    const auto field = static_cast<data::ContactText>(text);
    if (EqualsIgnoringCase(name, data::ColumnOf(field).Name)) return FieldOf(field);
  }
  for (const auto& [column, field] : {std::pair<StringView, Field>{u"AGE", Field::Age},
                                      {u"SEX", Field::Sex},
                                      {u"BIRTHDAY", Field::Birthday},
                                      {u"ANNIVERSARY", Field::Anniversary}}) {
    if (EqualsIgnoringCase(name, column)) return field;
  }
  return std::nullopt;
}

std::vector<data::ContactText> TextsForGaps(
    const Contact& other, const std::function<String(data::ContactText text)>& textOf) {
  using data::ContactText;
  std::vector<ContactText> texts;
  for (std::size_t at = 0; at < data::kContactTexts; ++at) {
    const auto text = static_cast<ContactText>(at);
    const auto gap = text == ContactText::CountryCode ? ContactText::MobileNo : text;
    if (textOf(gap).empty() && !other.Text(gap).empty()) texts.push_back(text);
  }
  return texts;
}

void FillGaps(Contact& contact, const Contact& other) {
  const auto textOf = [&contact](data::ContactText text) { return String(contact.Text(text)); };
  for (const data::ContactText text : TextsForGaps(other, textOf)) {
    contact.Texts[static_cast<std::size_t>(text)] = other.Texts[static_cast<std::size_t>(text)];
  }
  if (!contact.Age) contact.Age = other.Age;
  if (!contact.Sex) contact.Sex = other.Sex;
  if (!contact.Birthday) contact.Birthday = other.Birthday;
  if (!contact.Anniversary) contact.Anniversary = other.Anniversary;
}

}  // namespace ktrv::tool
