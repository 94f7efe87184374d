#pragma once

#include <chrono>
#include <memory>

#include "database/Driver.h"

namespace ktrv::database {

class LinkStore;

/// Opens the links of another driver, and keeps those that are closed for a while: who opens the
/// same string again is given one of them, and does not wait for a new connection.
///
/// A link is kept only as it was when it was opened: not after a failure, a cancel or a text that
/// may have changed its settings, and not within a transaction. One that was idle is asked
/// whether it still works before it is given to the next, so that no statement was lost or is run
/// again when it does not; a new link takes its place then. Links to files, which are free as soon
/// as they are closed, and to engines that the component does not know are left alone.
class KeepingDriver final : public Driver {
 public:
  /// \param driver must outlive this one and its links. \param longest time that a link is kept
  explicit KeepingDriver(Driver& driver,
                         std::chrono::milliseconds longest = std::chrono::minutes(1));
  ~KeepingDriver() override;
  KeepingDriver(const KeepingDriver&) = delete;
  KeepingDriver& operator=(const KeepingDriver&) = delete;

  std::unique_ptr<Link> Open(StringView connectionString, StringView user,
                             StringView password) override;

  /// Closes what is kept, and keeps nothing more until something is opened again.
  void CloseKept() noexcept;

 private:
  Driver& driver_;
  std::shared_ptr<LinkStore> store_;
};

}  // namespace ktrv::database
