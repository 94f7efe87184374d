#pragma once

#include <chrono>
#include <cstdint>

#include "controls/Label.h"
#include "controls/ProgressBar.h"

namespace ktrv::forms {

/// The label and the bar that tell how far a job has come that keeps the dialog busy. They show
/// while this object lives, and they and the rest of the dialog are painted while the job runs.
class JobProgress {
 public:
  /// \param steps how often Advance will be called, as far as is known.
  JobProgress(controls::Label& label, controls::ProgressBar& bar, StringView text,
              std::int64_t steps);
  ~JobProgress();
  JobProgress(const JobProgress&) = delete;
  JobProgress& operator=(const JobProgress&) = delete;

  void Say(StringView text);
  /// More steps than were known.
  void Extend(std::int64_t steps);
  /// One step is done.
  void Advance();

 private:
  void Paint();

  controls::Label& label_;
  controls::ProgressBar& bar_;
  std::int64_t steps_;
  std::int64_t done_ = 0;
  std::chrono::steady_clock::time_point painted_;
};

}  // namespace ktrv::forms
