#pragma once

#include "controls/Language.h"

namespace ktrv::windows {

/// The language of the user's regional settings.
class Win32Language final : public controls::Language {
 public:
  void ToUpper(String& text) const override;
  void AppendSortKey(StringView text, std::string& keys) const override;
  void AppendSearchKey(StringView text, std::string& keys) const override;
};

}  // namespace ktrv::windows
