#include "data/IdText.h"

#include "common/Error.h"

namespace ktrv::data {

String WithId(StringView text, StringView id, StringView place) {
  if (!IsDecimalDigits(id)) {
    throw Error(ErrorNumber::TypeMismatch, u"Type mismatch: '" + String(id) + u"' is not an id");
  }
  String filled;
  for (std::size_t at = text.find(place); at != StringView::npos; at = text.find(place)) {
    filled.append(text.substr(0, at)).append(id);
    text.remove_prefix(at + place.size());
  }
  return filled.append(text);
}

String IdList(std::span<const String> ids) {
  String list;
  for (const String& id : ids) list += (list.empty() ? u"" : u", ") + WithId(u"{id}", id);
  return list;
}

}  // namespace ktrv::data
