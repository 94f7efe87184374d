#pragma once

#include <chrono>
#include <cstdint>

#include "controls/CommandButton.h"
#include "controls/Form.h"
#include "controls/Label.h"
#include "controls/ProgressBar.h"

namespace ktrv::forms {

/// The user ended a job.
struct Stopped {};

/// The label and the bar that tell how far a job has come that keeps the dialog busy, and the
/// button that ends it. They show while this object lives; the dialog is painted meanwhile, and
/// locked.
class JobProgress {
 public:
  struct Display {
    controls::Label& Label;
    controls::ProgressBar& Bar;
    controls::CommandButton& Stop;  ///< says "&Stop" when the job takes its time
  };

  /// \param steps how often Advance will be called, as far as is known.
  JobProgress(Display display, StringView text, std::int64_t steps);
  ~JobProgress();
  JobProgress(const JobProgress&) = delete;
  JobProgress& operator=(const JobProgress&) = delete;

  void Say(StringView text);
  /// More steps than were known.
  void Extend(std::int64_t steps);
  /// One step is done. \throws Stopped
  void Advance();
  /// The same for jobs that keep what they did. \return false when the user stopped it
  bool GoesOn();
  /// To be called often where no step is done for a while. \throws Stopped
  void Look();

 private:
  void Paint();
  bool IsToStop();

  Display display_;
  String stopCaption_;
  controls::Form::Work work_;
  std::int64_t steps_;
  std::int64_t done_ = 0;
  std::chrono::steady_clock::time_point painted_;
};

}  // namespace ktrv::forms
