#include "tests/native/support/UserLanguage.h"

#include <stdexcept>
#include <unicode/coll.h>
#include <unicode/uchar.h>

namespace ktrv::tests {
namespace {

class IcuLanguage final : public controls::Language {
 public:
  explicit IcuLanguage(const icu::Locale& locale) {
    UErrorCode status = U_ZERO_ERROR;
    collator_.reset(icu::Collator::createInstance(locale, status));
    letters_.reset(icu::Collator::createInstance(locale, status));
    if (U_FAILURE(status)) throw std::runtime_error(u_errorName(status));
    letters_->setStrength(icu::Collator::PRIMARY);
  }

  void ToUpper(String& text) const override {
    for (char16_t& unit : text) {
      const UChar32 capital = u_toupper(unit);
      if (capital <= 0xFFFF) unit = static_cast<char16_t>(capital);
    }
  }

  void AppendSortKey(StringView text, std::string& keys) const override {
    AppendKey(*collator_, text, keys);
  }

  void AppendSearchKey(StringView text, std::string& keys) const override {
    AppendKey(*letters_, text, keys);
  }

 private:
  static void AppendKey(const icu::Collator& collator, StringView text, std::string& keys) {
    const auto length = static_cast<std::int32_t>(text.size());
    const std::size_t start = keys.size();
    // Most keys fit into this; the collator tells the length of one that does not.
    std::size_t room = text.size() * 3 + 16;
    while (true) {
      keys.resize(start + room);
      const auto size = static_cast<std::size_t>(collator.getSortKey(
          text.data(), length, reinterpret_cast<std::uint8_t*>(keys.data() + start),
          static_cast<std::int32_t>(room)));
      if (size <= room) return keys.resize(start + size);
      room = size;
    }
  }

  std::unique_ptr<icu::Collator> collator_;
  std::unique_ptr<icu::Collator> letters_;  ///< for which case and accents do not count
};

}  // namespace

std::unique_ptr<controls::Language> MakeUserLanguage(const char* name) {
  return std::make_unique<IcuLanguage>(icu::Locale(name));
}

}  // namespace ktrv::tests
