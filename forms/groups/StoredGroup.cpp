#include "forms/groups/StoredGroup.h"

#include "common/Fingerprint.h"

namespace ktrv::forms {

void Memberships::Add(StringView id, StringView type) {
  ++count_;
  sums_[0] += Fingerprint(type, Fingerprint(id));
  sums_[1] += Fingerprint(type, Fingerprint(id, 0x9E3779B97F4A7C15));
}

}  // namespace ktrv::forms
