#include "forms/groups/NameList.h"

#include <algorithm>

namespace ktrv::forms {

String Listed(const std::vector<String>& names, std::size_t most) {
  String text;
  for (std::size_t index = 0; index < std::min(names.size(), most); ++index) {
    if (index > 0) text += u", ";
    text += names[index];
  }
  if (names.size() <= most) return text;
  return text + u" and " + ToDecimal(static_cast<std::int64_t>(names.size() - most)) + u" more";
}

}  // namespace ktrv::forms
