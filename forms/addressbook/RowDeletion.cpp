#include "forms/addressbook/RowDeletion.h"

#include <chrono>
#include <utility>

#include "forms/ContactKind.h"

namespace ktrv::forms {

RowDeletion::RowDeletion(Services& services, BookDatabase& database, StringView context,
                         std::vector<Item> items)
    : services_(services), context_(context), statements_(database), items_(std::move(items)) {}

void RowDeletion::Run() {
  if (stopped_) return;
  const auto self = shared_from_this();  // the owner may release it while a message is shown
  const bool goesOn = services_.Trap(context_, false, [&] { return WorkForAMoment(); });
  if (stopped_) return;
  if (!goesOn) {
    if (Done) Done();
    return;
  }
  if (Progress) Progress(next_);
  services_.Screen.Post([waiting = weak_from_this()] {
    if (const auto deletion = waiting.lock()) deletion->Run();
  });
}

void RowDeletion::Stop() {
  if (!std::exchange(stopped_, true)) LogRest();
}

void RowDeletion::LogRest() {
  if (next_ == items_.size()) return;
  services_.WriteLog(u"Deletion stopped: " + ToDecimal(static_cast<std::int64_t>(deleted_)) +
                     u" of " + ToDecimal(static_cast<std::int64_t>(items_.size())) +
                     u" item(s) were deleted.");
}

bool RowDeletion::WorkForAMoment() {
  constexpr auto kMoment = std::chrono::milliseconds(30);
  const auto end = std::chrono::steady_clock::now() + kMoment;
  while (next_ < items_.size()) {
    if (stopped_) return false;
    Delete(items_[next_++]);
    if (std::chrono::steady_clock::now() >= end) break;
  }
  return next_ < items_.size();
}

void RowDeletion::Delete(const Item& item) {
  if (item.Type == ContactKind::Contact) {
    statements_.DeleteContact(item.Id);
    ++deleted_;
  } else if (item.Type == ContactKind::Group) {
    hasDeletedGroup_ = true;
    statements_.DeleteGroup(item.Id);
    ++deleted_;
  } else if (item.Type == ContactKind::RemoteContact) {
    services_.ShowMessage(
        u"This is a Shared Remote Contact. This contact can be deleted from TALVERO only.",
        MessageStyle::Exclamation);
  }
}

}  // namespace ktrv::forms
