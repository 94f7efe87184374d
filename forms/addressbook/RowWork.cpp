#include "forms/addressbook/RowWork.h"

#include <chrono>
#include <utility>

namespace ktrv::forms {

RowWork::RowWork(Services& services, StringView context, std::size_t count)
    : services_(services), context_(context), count_(count) {}

void RowWork::Run() {
  if (stopped_) return;
  const auto self = shared_from_this();  // the owner may release it while a message is shown
  failed_ = true;
  const bool goesOn = services_.Trap(context_, false, [&] {
    const bool isUnfinished = WorkForAMoment();
    if (isUnfinished && !stopped_) GoOnLater();
    failed_ = false;
    return isUnfinished;
  });
  if (!goesOn && !stopped_ && Done) Done();
}

void RowWork::GoOnLater() {
  if (Progress) Progress(next_);
  services_.Screen.Post([waiting = weak_from_this()] {
    if (const auto work = waiting.lock()) work->Run();
  });
}

void RowWork::Stop() {
  // The window is closed and cannot show it.
  if (!std::exchange(stopped_, true) && next_ < count_) services_.WriteLog(TextWhenStopped());
}

bool RowWork::WorkForAMoment() {
  constexpr auto kMoment = std::chrono::milliseconds(30);
  const auto end = std::chrono::steady_clock::now() + kMoment;
  while (next_ < count_) {
    if (stopped_) return false;
    WorkOn(next_++);
    if (std::chrono::steady_clock::now() >= end) break;
  }
  return next_ < count_;
}

}  // namespace ktrv::forms
