#include "windows/controls/PostQueue.h"

#include <chrono>

#include "common/Error.h"
#include "windows/base/Guard.h"
#include "windows/base/Module.h"
#include "windows/base/WindowClass.h"

namespace ktrv::windows {

namespace {

constexpr wchar_t kClassName[] = L"KTRVAddressBookQueue";
constexpr UINT kDrain = WM_APP;
constexpr UINT kSchedule = WM_APP + 1;
constexpr UINT_PTR kTimer = 1;
constexpr auto kSlice = std::chrono::milliseconds(8);

/// Call it on the window's thread.
bool Schedule(HWND window) {
  // A posted message would have priority over input; WM_TIMER has the lowest.
  return SetTimer(window, kTimer, USER_TIMER_MINIMUM, nullptr) != 0 ||
         PostMessageW(window, kDrain, 0, 0);
}

bool SomethingElseWaits() {
  return HIWORD(GetQueueStatus(QS_INPUT | QS_PAINT | QS_TIMER | QS_SENDMESSAGE)) != 0;
}

}  // namespace

std::shared_ptr<PostQueue> PostQueue::Make() {
  static const WindowClass messages(kClassName, &Procedure, {});
  auto queue = std::make_shared<PostQueue>();
  queue->window_ = UniqueWindow(CreateWindowExW(0, messages.Name(), nullptr, 0, 0, 0, 0, 0,
                                                HWND_MESSAGE, nullptr, ThisModule(), nullptr));
  queue->target_ = queue->window_.Get();
  if (!queue->target_) {
    throw Error(ErrorNumber::OutOfMemory, u"Can't create a window.", {}, GetLastError());
  }
  SetWindowLongPtrW(queue->target_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(queue.get()));
  return queue;
}

void PostQueue::Post(std::function<void()> closure) {
  const std::lock_guard lock(mutex_);
  if (!target_) return;
  closures_.push_back(std::move(closure));
  if (announced_.exchange(true) || PostMessageW(target_, kDrain, 0, 0)) return;
  // The thread's queue is full. A sent message and a timer need no place in it.
  if (!SendNotifyMessageW(target_, kSchedule, 0, 0)) announced_ = false;
}

void PostQueue::Close() {
  Closures dropped;
  {
    const std::lock_guard lock(mutex_);
    target_ = nullptr;
    dropped.swap(closures_);
  }
  if (window_) SetWindowLongPtrW(window_.Get(), GWLP_USERDATA, 0);
  window_ = UniqueWindow();
}

LRESULT CALLBACK PostQueue::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  auto* self = reinterpret_cast<PostQueue*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (message == kSchedule) {
    // Only that: it arrives within any call of the thread, also within its own Post.
    if (self && !Schedule(window)) self->announced_ = false;
    return 0;
  }
  if (message != kDrain && message != WM_TIMER) {
    return DefWindowProcW(window, message, wParam, lParam);
  }
  return Guard<LRESULT>(0, [&]() -> LRESULT {
    KillTimer(window, kTimer);
    // shared_from_this: a closure may close the queue.
    if (self) self->shared_from_this()->Drain();
    return 0;
  });
}

void PostQueue::Drain() {
  {
    // A closure may run a nested message loop, in which new closures must be announced.
    const std::lock_guard lock(mutex_);
    announced_ = false;
  }
  auto end = std::chrono::steady_clock::now() + kSlice;
  while (const std::function<void()> closure = Next()) {
    Guard(0, [&] {
      closure();
      return 0;
    });
    if (std::chrono::steady_clock::now() < end) continue;
    if (SomethingElseWaits()) break;
    end = std::chrono::steady_clock::now() + kSlice;
  }
  Continue();
}

std::function<void()> PostQueue::Next() {
  const std::lock_guard lock(mutex_);
  if (closures_.empty()) return nullptr;
  std::function<void()> next = std::move(closures_.front());
  closures_.pop_front();
  return next;
}

void PostQueue::Continue() {
  const std::lock_guard lock(mutex_);
  if (closures_.empty() || !target_ || announced_.exchange(true)) return;
  if (!Schedule(target_)) announced_ = false;
}

}  // namespace ktrv::windows
