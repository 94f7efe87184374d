#include "database/LimitedDriver.h"

#include <optional>
#include <utility>

#include "common/Error.h"
#include "database/LimitedLink.h"

namespace ktrv::database {

LimitedDriver::LimitedDriver(Driver& driver, std::function<TimeLimits(StringView)> limitsOf)
    : driver_(driver), limitsOf_(std::move(limitsOf)), calls_(std::make_shared<LimitedCalls>()) {}

LimitedDriver::~LimitedDriver() = default;

void LimitedDriver::EndIdle() noexcept {
  calls_->EndIdle();
}

std::unique_ptr<Link> LimitedDriver::Open(StringView connectionString, StringView user,
                                          StringView password) {
  struct Opening {
    const String ConnectionString;
    const String User;
    const String Password;
    std::unique_ptr<Link> Made;
    std::optional<Error> Failure;
  };
  const TimeLimits limits = limitsOf_(connectionString);
  calls_->KeepIdle();
  auto opening = std::make_shared<Opening>(
      Opening{String(connectionString), String(user), String(password), nullptr, std::nullopt});
  if (limits.Opening.count() == 0 || IsFile(opening->ConnectionString)) {
    opening->Made = driver_.Open(connectionString, user, password);
  } else {
    const auto open = [&driver = driver_, opening] {
      try {
        opening->Made = driver.Open(opening->ConnectionString, opening->User, opening->Password);
      } catch (...) {
        opening->Failure = Error::Current();
      }
    };
    if (!calls_->Run(open, limits.Opening)) {
      throw Error(ErrorNumber::TimedOut, u"Login timeout expired");
    }
    if (opening->Failure) throw *opening->Failure;
  }
  if (!opening->Made) return nullptr;
  if (opening->Made->EngineKind() == Engine::Sqlite) {
    const std::lock_guard lock(mutex_);
    files_.insert(opening->ConnectionString);
    return std::move(opening->Made);
  }
  return std::make_unique<LimitedLink>(calls_, limits, std::move(opening->Made));
}

bool LimitedDriver::IsFile(const String& connectionString) {
  const std::lock_guard lock(mutex_);
  return files_.contains(connectionString);
}

}  // namespace ktrv::database
