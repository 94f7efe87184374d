#include "tests/line/FaultFixture.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <stdexcept>
#include <thread>

#include "database/Engines.h"

namespace ktrv::tests {
namespace {

/// A call may ask whether a kept link answers, and then open another; each has as long again to be
/// cancelled, and the machine does much else.
constexpr std::chrono::milliseconds kLongestCall = 4 * kLimitOfFaults + std::chrono::seconds(2);

}  // namespace

bool TriesAllFaults() {
  const char* const faults = std::getenv("KTRV_LINE_FAULTS");
  return faults && std::string(faults) == "all";
}

FaultFixture::FaultFixture(std::optional<std::uint16_t> port, std::chrono::milliseconds limit)
    : book(Kind(), kContactsOfFaults, port) {
  HostSettings settings;
  settings.Contacts = kContactsOfFaults;
  settings.Limits = {limit, limit, limit};
  settings.Patience = std::chrono::milliseconds(800);
  settings.Through = [this](database::Driver& driver) -> database::Driver& {
    return watch.emplace(driver);
  };
  host.emplace(book.Way.Through(book.Database.ConnectionString()), std::move(settings));
  direct.Open(book.Database.ConnectionString());
}

FaultFixture::~FaultFixture() {
  book.Way.Mend();
}

void FaultFixture::Think() {
  std::this_thread::sleep_for(database::kIdle * 3 / 2);
}

void FaultFixture::DoSurely(const std::function<void()>& action) {
  constexpr int kMostAttempts = 5;
  for (int attempt = 1;; ++attempt) {
    try {
      host->Forgive();
      return action();
    } catch (const std::runtime_error&) {
      if (attempt == kMostAttempts) throw;
      Think();
    }
  }
}

void FaultFixture::Prepare() {
  ++number;
  ++tried_;
  wrong_.clear();
  DoSurely([this] { Task().Prepare(*host, number); });
  watch->Reset();
}

bool FaultFixture::Attempt() {
  try {
    Task().Act(*host, number);
    return true;
  } catch (const std::runtime_error&) {
    return false;
  }
}

void FaultFixture::Suffer() {
  confirmed_ = Attempt();
  refused_ += confirmed_ ? 0 : 1;
  longest_ = std::max(longest_, watch->Longest());
  if (watch->Longest() > kLongestCall) {
    Complain("a call took " + std::to_string(watch->Longest().count()) + " ms");
  }
}

void FaultFixture::Recover() {
  constexpr int kMostAttempts = 3;
  Think();
  wrong_ += Task().Check(direct, *host, number, confirmed_);
  for (int attempt = 0; !confirmed_ && attempt < kMostAttempts; ++attempt) {
    if (attempt > 0) ++again_;
    host->Forgive();
    confirmed_ = Attempt();
  }
  if (!confirmed_) Complain("it does not work when the fault is over: " + host->Log());
  wrong_ += Task().Check(direct, *host, number, confirmed_);
  Task().Leave(*host);
  host->Forgive();
}

void FaultFixture::Judge(const std::string& fault, bool happened) {
  happened_ += happened ? 1 : 0;
  if (wrong_.empty()) return;
  ++red_;
  ADD_FAILURE() << fault << ": " << wrong_;
}

void FaultFixture::Report(const std::string& kind) const {
  EXPECT_GT(happened_, 0);
  std::cout << "[ line     ] " << kind << ", " << Task().Name << ": tried " << tried_
            << ", happened " << happened_ << ", refused " << refused_ << ", once more " << again_
            << ", longest call " << longest_.count() << " ms, red " << red_ << std::endl;
}

std::string NameOfTask(const testing::TestParamInfo<std::tuple<ServerKind, std::size_t>>& each) {
  return FaultTasks()[std::get<1>(each.param)].Name +
         (std::get<0>(each.param) == ServerKind::MariaDb ? "OnMariaDb" : "OnPostgreSql");
}

}  // namespace ktrv::tests
