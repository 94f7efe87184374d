#include "tests/native/support/UserLanguage.h"

#include <stdexcept>
#include <unicode/coll.h>
#include <unicode/uchar.h>

namespace ktrv::tests {
namespace {

class IcuLanguage final : public controls::Language {
 public:
  IcuLanguage() {
    UErrorCode status = U_ZERO_ERROR;
    collator_.reset(icu::Collator::createInstance(icu::Locale::getEnglish(), status));
    if (U_FAILURE(status)) throw std::runtime_error(u_errorName(status));
  }

  void ToUpper(String& text) const override {
    for (char16_t& unit : text) {
      const UChar32 capital = u_toupper(unit);
      if (capital <= 0xFFFF) unit = static_cast<char16_t>(capital);
    }
  }

  void AppendSortKey(StringView text, std::string& keys) const override {
    const auto length = static_cast<std::int32_t>(text.size());
    const std::size_t start = keys.size();
    // Most keys fit into this; the collator tells the length of one that does not.
    std::size_t room = text.size() * 3 + 16;
    while (true) {
      keys.resize(start + room);
      const auto size = static_cast<std::size_t>(collator_->getSortKey(
          text.data(), length, reinterpret_cast<std::uint8_t*>(keys.data() + start),
          static_cast<std::int32_t>(room)));
      if (size <= room) return keys.resize(start + size);
      room = size;
    }
  }

 private:
  std::unique_ptr<icu::Collator> collator_;
};

}  // namespace

std::unique_ptr<controls::Language> MakeUserLanguage() {
  return std::make_unique<IcuLanguage>();
}

}  // namespace ktrv::tests
