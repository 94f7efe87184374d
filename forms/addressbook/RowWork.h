#pragma once

#include <functional>
#include <memory>

#include "services/Services.h"

namespace ktrv::forms {

/// A command on many rows, one after the other. To keep the window responsive it works in slices of
/// 30 ms and posts the next slice to the message queue. Ends after the last row or the first
/// failure, which is logged. When it is stopped, the remaining rows are left as they are and a log
/// line says so.
class RowWork : public std::enable_shared_from_this<RowWork> {
 public:
  virtual ~RowWork() = default;
  RowWork(const RowWork&) = delete;
  RowWork& operator=(const RowWork&) = delete;

  /// Called after each slice except the last.
  std::function<void(std::size_t done)> Progress;
  /// Called once at the end, unless stopped.
  std::function<void()> Done;

  void Run();
  /// Works on no further row and reports nothing more. May be called from a callback.
  void Stop();
  std::size_t Count() const { return count_; }
  /// Whether it ended with a failure.
  bool HasFailed() const { return failed_; }

 protected:
  /// \param context context text of the error record. The services must outlive the object.
  RowWork(Services& services, StringView context, std::size_t count);

  /// \throws Error
  virtual void WorkOn(std::size_t row) = 0;
  /// The log line when it was stopped before the last row.
  virtual String TextWhenStopped() const = 0;
  /// Makes the present row the last one.
  void EndHere() { next_ = count_; }

  Services& services_;

 private:
  /// Runs one slice. \return whether rows are left
  bool WorkForAMoment();
  void GoOnLater();

  const String context_;
  const std::size_t count_;
  std::size_t next_ = 0;
  bool stopped_ = false;
  bool failed_ = false;
};

}  // namespace ktrv::forms
