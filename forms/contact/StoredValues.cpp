#include "forms/contact/StoredValues.h"

#include <algorithm>

namespace ktrv::forms {
namespace {

constexpr StringView kContext =
    u"KTRVAddressBook: Error occurred. Sub: StoredValues, Module: frmNewContact";

/// Whether all of it is seen in a box: no outer blanks, no control characters.
bool IsSeen(StringView value) {
  return !value.empty() && Trim(value) == value &&
         std::ranges::none_of(value, [](char16_t unit) { return unit < u' '; });
}

}  // namespace

String StoredValues::Completing(StringView typed, int longest) {
  if (!started_) Start();
  // The first letter alone says too little.
  if (typed.size() < 2) return {};
  const auto found = std::ranges::find_if(values_, [&](const String& value) {
    return value.size() <= static_cast<std::size_t>(longest) && value.starts_with(typed);
  });
  if (found == values_.end() || std::ranges::find(values_, typed) != values_.end()) return {};
  return *found;
}

void StoredValues::Start() {
  started_ = true;
  services_.Trap(kContext, [&] { Fetch(query_); });
}

void StoredValues::FetchProgress(std::int64_t rows) {
  for (; taken_ < rows && values_.size() < kMost; ++taken_) {
    const auto value = rows_->CellText(taken_, 0);
    if (value && IsSeen(*value)) values_.emplace_back(*value);
  }
  if (values_.size() == kMost) Cancel();
}

void StoredValues::FetchComplete(const Error* error) {
  if (error) services_.Trap(kContext, [&] { throw Error(*error); });
}

}  // namespace ktrv::forms
