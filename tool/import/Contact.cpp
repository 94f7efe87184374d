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

void FillGaps(Contact& contact, const Contact& other) {
  for (std::size_t text = 0; text < contact.Texts.size(); ++text) {
    auto& value = contact.Texts[text];
    if ((!value || value->empty()) && other.Texts[text]) value = other.Texts[text];
  }
  if (!contact.Age) contact.Age = other.Age;
  if (!contact.Sex) contact.Sex = other.Sex;
  if (!contact.Birthday) contact.Birthday = other.Birthday;
  if (!contact.Anniversary) contact.Anniversary = other.Anniversary;
}

}  // namespace ktrv::tool
