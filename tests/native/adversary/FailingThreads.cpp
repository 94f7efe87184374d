#include "tests/native/adversary/FailingThreads.h"

#include <cerrno>
#include <dlfcn.h>
#include <pthread.h>

namespace ktrv::tests {
namespace {

thread_local std::int64_t threads = 0;
thread_local std::int64_t failingThread = 0;

using Create = int (*)(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);

}  // namespace

void FailingThreads::FailAt(std::int64_t thread) {
  threads = 0;
  failingThread = thread;
}

std::int64_t FailingThreads::Counted() {
  return threads;
}

bool FailingThreads::HasFailed() {
  return failingThread > 0 && threads >= failingThread;
}

}  // namespace ktrv::tests

// The program's own, which the C++ library calls instead of the system's.
extern "C" int pthread_create(pthread_t* thread, const pthread_attr_t* attributes,
                              void* (*start)(void*), void* argument) noexcept {
  using namespace ktrv::tests;
  if (++threads == failingThread) return EAGAIN;
  static const auto create = reinterpret_cast<Create>(dlsym(RTLD_NEXT, "pthread_create"));
  return create(thread, attributes, start, argument);
}
