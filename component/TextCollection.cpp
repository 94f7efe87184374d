#include "component/TextCollection.h"

#include <algorithm>
#include <utility>

#include "common/Error.h"

namespace ktrv {

void TextCollection::Add(String text, String key) {
  const auto sameKey = [&](const Entry& entry) { return EqualsIgnoringCase(entry.Key, key); };
  if (!key.empty() && std::any_of(items_.begin(), items_.end(), sameKey)) {
    throw Error(ErrorNumber::KeyInUse,
                u"This key is already associated with an element of this collection");
  }
  items_.push_back({std::move(text), std::move(key)});
}

const String& TextCollection::Item(std::int64_t index) const {
  if (index < 1 || index > Count()) {
    throw Error(ErrorNumber::SubscriptOutOfRange, u"Subscript out of range");
  }
  return items_[static_cast<std::size_t>(index - 1)].Text;
}

const String& TextCollection::Item(StringView key) const {
  const auto found = std::find_if(items_.begin(), items_.end(), [&](const Entry& entry) {
    return !entry.Key.empty() && EqualsIgnoringCase(entry.Key, key);
  });
  if (found == items_.end()) {
    throw Error(ErrorNumber::InvalidProcedureCall, u"Invalid procedure call or argument");
  }
  return found->Text;
}

}  // namespace ktrv
