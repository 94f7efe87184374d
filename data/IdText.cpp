#include "data/IdText.h"

#include "common/Error.h"

namespace ktrv::data {

String WithId(StringView text, StringView id) {
  if (!IsDecimalDigits(id)) {
    throw Error(ErrorNumber::TypeMismatch, u"Type mismatch: '" + String(id) + u"' is not an id");
  }
  constexpr StringView kPlace = u"{id}";
  String filled;
  for (std::size_t at = text.find(kPlace); at != StringView::npos; at = text.find(kPlace)) {
    filled.append(text.substr(0, at)).append(id);
    text.remove_prefix(at + kPlace.size());
  }
  return filled.append(text);
}

}  // namespace ktrv::data
