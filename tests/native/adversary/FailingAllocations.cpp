#include "tests/native/adversary/FailingAllocations.h"

#include <atomic>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace ktrv::tests {
namespace {

thread_local bool countsAllocations = false;
thread_local std::int64_t allocations = 0;
thread_local std::int64_t failingAllocation = 0;
std::atomic<std::int64_t> alive = 0;
std::atomic<std::int64_t> bytes = 0;
std::atomic<std::int64_t> peak = 0;

}  // namespace

void FailingAllocations::FailAt(std::int64_t allocation) {
  allocations = 0;
  failingAllocation = allocation;
}

std::int64_t FailingAllocations::Counted() {
  return allocations;
}

std::int64_t FailingAllocations::Alive() {
  return alive;
}

std::int64_t FailingAllocations::AliveBytes() {
  return bytes;
}

std::int64_t FailingAllocations::PeakBytes() {
  return peak;
}

void FailingAllocations::LowerPeak() {
  peak = bytes.load();
}

bool FailingAllocations::HasFailed() {
  return failingAllocation > 0 && allocations >= failingAllocation;
}

FailingAllocations::Scope::Scope(bool on) : before_(countsAllocations) {
  countsAllocations = on;
}

FailingAllocations::Scope::~Scope() {
  countsAllocations = before_;
}

namespace {

std::int64_t SizeOf(void* memory) noexcept {
#ifdef _WIN32
  return static_cast<std::int64_t>(_msize(memory));
#else
  return static_cast<std::int64_t>(malloc_usable_size(memory));
#endif
}

void* Allocate(std::size_t size) noexcept {
  if (countsAllocations && ++allocations == failingAllocation) return nullptr;
  void* memory = std::malloc(size == 0 ? 1 : size);
  if (!memory) return nullptr;
  ++alive;
  const std::int64_t now = bytes += SizeOf(memory);
  std::int64_t most = peak;
  while (most < now && !peak.compare_exchange_weak(most, now)) {
  }
  return memory;
}

void GiveBack(void* memory) noexcept {
  if (memory) {
    --alive;
    bytes -= SizeOf(memory);
  }
  std::free(memory);
}

void* AllocateOrThrow(std::size_t size) {
  void* memory = Allocate(size);
  if (!memory) throw std::bad_alloc();
  return memory;
}

}  // namespace
}  // namespace ktrv::tests

// The program's own: all forms, so that none meets another's memory.
void* operator new(std::size_t size) {
  return ktrv::tests::AllocateOrThrow(size);
}
void* operator new[](std::size_t size) {
  return ktrv::tests::AllocateOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return ktrv::tests::Allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return ktrv::tests::Allocate(size);
}
void operator delete(void* memory) noexcept {
  ktrv::tests::GiveBack(memory);
}
void operator delete[](void* memory) noexcept {
  ktrv::tests::GiveBack(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  ktrv::tests::GiveBack(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
  ktrv::tests::GiveBack(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
  ktrv::tests::GiveBack(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept {
  ktrv::tests::GiveBack(memory);
}
