#include "forms/groups/MemberHistory.h"

#include <utility>

namespace ktrv::forms {

MemberHistory::Change& MemberHistory::Begin() {
  constexpr std::size_t kMost = 20;
  changes_.emplace_back();
  if (changes_.size() > kMost) changes_.pop_front();
  return changes_.back();
}

void MemberHistory::End() {
  if (changes_.back().Added.empty() && changes_.back().Gone.empty()) changes_.pop_back();
}

MemberHistory::Change MemberHistory::TakeLast() {
  Change last = std::move(changes_.back());
  changes_.pop_back();
  return last;
}

void MemberHistory::Update(const ContactRow& contact) {
  for (Change& change : changes_) {
    for (Removed& removed : change.Gone) {
      if (removed.Contact.Id == contact.Id && removed.Contact.Kind == contact.Kind) {
        removed.Contact = contact;
      }
    }
  }
}

}  // namespace ktrv::forms
