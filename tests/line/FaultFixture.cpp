#include "tests/line/FaultFixture.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <stdexcept>
#include <thread>

#include "common/Error.h"
#include "database/Engines.h"

namespace ktrv::tests {
namespace {

using Clock = std::chrono::steady_clock;

/// How long what works is tried, when the machine is slower than the limits.
constexpr std::chrono::seconds kPatience{30};

}  // namespace

bool TriesAllFaults() {
  const char* const faults = std::getenv("KTRV_LINE_FAULTS");
  return faults && std::string(faults) == "all";
}

FaultFixture::FaultFixture(std::optional<std::uint16_t> port, std::chrono::milliseconds limit)
    : book(Kind(), kContactsOfFaults, port), longestCall_(4 * limit + std::chrono::seconds(2)) {
  HostSettings settings;
  settings.Contacts = kContactsOfFaults;
  settings.Limits = {limit, limit, limit};
  settings.Patience = 3 * limit;
  settings.Through = [this](database::Driver& driver) -> database::Driver& {
    return watch.emplace(driver);
  };
  DoSurely([&] { host.emplace(book.Way.Through(book.Database.ConnectionString()), settings); });
  direct.Open(book.Database.ConnectionString());
}

FaultFixture::~FaultFixture() {
  book.Way.Mend();
}

void FaultFixture::Think() {
  std::this_thread::sleep_for(database::kIdle * 3 / 2);
}

void FaultFixture::DoSurely(const std::function<void()>& action) {
  const auto deadline = Clock::now() + kPatience;
  for (;;) {
    try {
      if (host) host->Forgive();
      return action();
    } catch (const std::runtime_error&) {
      if (Clock::now() > deadline) throw;
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
  } catch (const std::runtime_error& refusal) {
    refusal_ = refusal.what();
    return false;
  }
}

bool FaultFixture::RanOutOfTime() const {
  const std::string label = "Error Number      : ";
  for (std::size_t at = refusal_.find(label); at != std::string::npos;
       at = refusal_.find(label, at + 1)) {
    const std::int32_t failure = std::stoi(refusal_.substr(at + label.size()));
    if (failure != ErrorNumber::TimedOut) return false;
  }
  return true;
}

bool FaultFixture::IsMachineSlow() {
  const auto began = Clock::now();
  database::Connection(book.Database.Surroundings()).Open(book.Database.ConnectionString());
  return Clock::now() - began > kLimitOfFaults / 10;
}

void FaultFixture::Suffer() {
  confirmed_ = Attempt();
  refused_ += confirmed_ ? 0 : 1;
  longest_ = std::max(longest_, watch->Longest());
  if (watch->Longest() > longestCall_) {
    Complain("a call took " + std::to_string(watch->Longest().count()) + " ms");
  }
}

void FaultFixture::Recover() {
  Think();
  wrong_ += Task().Check(direct, *host, number, confirmed_);
  constexpr int kMostAttempts = 3;
  const auto deadline = Clock::now() + kPatience;
  for (int attempts = 0; !confirmed_ && attempts < kMostAttempts && Clock::now() < deadline;) {
    host->Forgive();
    confirmed_ = Attempt();
    if (confirmed_) break;
    ++again_;
    if (!RanOutOfTime()) Complain("a try was refused: " + refusal_);
    if (!IsMachineSlow()) ++attempts;
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
