#pragma once

#include <chrono>
#include <memory>

#include "database/Driver.h"

namespace ktrv::database {

class LinkStore;

/// A connection pool: keeps closed links of another driver for a while, and returns one of them
/// when the same string is opened again.
///
/// A link is kept only if it is unchanged since it was opened: no failure, no cancel, no statement
/// that may have changed session settings, no open transaction. A link that was idle is tested
/// before reuse, and replaced by a new one if it is dead, so that no statement is lost or executed
/// twice. Links to files, which should be released at once, and to unknown engines are not kept.
class KeepingDriver final : public Driver {
 public:
  /// \param driver must outlive this object and its links. \param longest maximum time to keep a
  /// link
  explicit KeepingDriver(Driver& driver,
                         std::chrono::milliseconds longest = std::chrono::minutes(1));
  ~KeepingDriver() override;
  KeepingDriver(const KeepingDriver&) = delete;
  KeepingDriver& operator=(const KeepingDriver&) = delete;

  std::unique_ptr<Link> Open(StringView connectionString, StringView user,
                             StringView password) override;

  /// Closes all kept links, and keeps no more until the next Open.
  void CloseKept() noexcept;

 private:
  Driver& driver_;
  std::shared_ptr<LinkStore> store_;
};

}  // namespace ktrv::database
