#include "controls/CaseFolding.h"

#include "controls/Language.h"

namespace ktrv::controls {

CaseFolding::CaseFolding(const Language& language) : capitals_(0x10000, u'\0') {
  for (std::size_t unit = 0; unit < capitals_.size(); ++unit) {
    capitals_[unit] = static_cast<char16_t>(unit);
  }
  language.ToUpper(capitals_);
  // Surrogates have no case alone, but the table contains the pair DBFF DC00, which ToUpper may
  // change.
  for (char16_t unit = 0xD800; unit < 0xE000; ++unit) capitals_[unit] = unit;
}

String CaseFolding::Folded(StringView text) const {
  String folded(text);
  for (char16_t& unit : folded) unit = Fold(unit);
  return folded;
}

bool CaseFolding::StartsWith(StringView text, StringView prefix) const {
  if (text.size() < prefix.size()) return false;
  for (std::size_t i = 0; i < prefix.size(); ++i) {
    if (Fold(text[i]) != prefix[i]) return false;
  }
  return true;
}

}  // namespace ktrv::controls
