#include "windows/controls/ModalDisabling.h"

#include "windows/base/Guard.h"

namespace ktrv::windows {
namespace {

ModalDisabling*& LastOfThisThread() {
  thread_local ModalDisabling* last = nullptr;
  return last;
}

}  // namespace

ModalDisabling::ModalDisabling(HWND modal, HWND owner)
    : modal_(modal), owner_(owner), active_(GetActiveWindow()), outer_(LastOfThisThread()) {
  LastOfThisThread() = this;
  // A message box without owner disables the thread's windows itself.
  if (modal_ || owner_) {
    EnumThreadWindows(GetCurrentThreadId(), &Disable, reinterpret_cast<LPARAM>(this));
  }
}

ModalDisabling::~ModalDisabling() {
  ModalDisabling** link = &LastOfThisThread();
  ModalDisabling* inner = nullptr;
  while (*link != this) {
    inner = *link;
    link = &inner->outer_;
  }
  *link = outer_;
  if (inner) {
    inner->disabled_.insert(inner->disabled_.begin(), disabled_.begin(), disabled_.end());
    if (inner->active_ == modal_) inner->active_ = active_;
    return;
  }
  // In reverse order of disabling.
  for (auto window = disabled_.rbegin(); window != disabled_.rend(); ++window) {
    if (IsWindow(*window)) EnableWindow(*window, TRUE);
  }
  const bool wasActive = modal_ && GetActiveWindow() == modal_;
  if (wasActive && active_ != modal_ && IsWindow(active_) && IsWindowVisible(active_)) {
    SetActiveWindow(active_);
  }
}

ModalDisabling* ModalDisabling::Innermost() {
  return LastOfThisThread();
}

void ModalDisabling::Add(HWND window) {
  if (!IsWindowEnabled(window)) return;
  disabled_.push_back(window);
  EnableWindow(window, FALSE);
}

HWND ModalDisabling::Front() {
  struct Search {
    HWND Found = nullptr;
    static BOOL CALLBACK Look(HWND window, LPARAM self) {
      const bool usable = IsWindowVisible(window) && IsWindowEnabled(window);
      if (usable) reinterpret_cast<Search*>(self)->Found = window;
      return !usable;
    }
  } search;
  EnumThreadWindows(GetCurrentThreadId(), &Search::Look, reinterpret_cast<LPARAM>(&search));
  return search.Found;
}

BOOL CALLBACK ModalDisabling::Disable(HWND window, LPARAM self) {
  return Guard(TRUE, [&] {
    auto& disabling = *reinterpret_cast<ModalDisabling*>(self);
    const bool spared = window == disabling.modal_ || window == disabling.owner_;
    if (!spared && IsWindowVisible(window)) disabling.Add(window);
    return TRUE;
  });
}

}  // namespace ktrv::windows
