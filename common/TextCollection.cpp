#include "common/TextCollection.h"

#include <utility>

#include "common/Error.h"

namespace ktrv {

void TextCollection::Add(String text, StringView key) {
  if (!key.empty()) {
    if (!keys_.Add(ToUpperAscii(key))) {
      throw Error(ErrorNumber::KeyInUse,
                  u"This key is already associated with an element of this collection");
    }
    places_.push_back(texts_.size());
  }
  texts_.push_back(std::move(text));
}

void TextCollection::Reserve(std::size_t count) {
  texts_.reserve(count);
  keys_.Reserve(count);
  places_.reserve(count);
}

const String& TextCollection::Item(std::int64_t index) const {
  if (index < 1 || index > Count()) {
    throw Error(ErrorNumber::SubscriptOutOfRange);
  }
  return texts_[static_cast<std::size_t>(index - 1)];
}

const String& TextCollection::Item(StringView key) const {
  const auto number = keys_.Find(ToUpperAscii(key));
  if (!number) {
    throw Error(ErrorNumber::InvalidProcedureCall);
  }
  return texts_[places_[*number]];
}

}  // namespace ktrv
