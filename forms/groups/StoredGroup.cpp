#include "forms/groups/StoredGroup.h"

#include <algorithm>

namespace ktrv::forms {

bool StoredGroup::IsSameAs(const StoredGroup& other) const {
  if (Name != other.Name || Members.size() != other.Members.size()) return false;
  auto mine = Members;
  auto others = other.Members;
  std::sort(mine.begin(), mine.end());
  std::sort(others.begin(), others.end());
  return mine == others;
}

TextIndex StoredGroup::ContactIds() const {
  TextIndex ids;
  for (const Membership& member : Members) {
    if (member.Type != u"S") continue;
    // As a number: other programs may have written "08".
    const auto id = ParseInteger(member.Id);
    ids.Add(id ? ToDecimal(*id) : member.Id);
  }
  return ids;
}

}  // namespace ktrv::forms
