#pragma once

#include <chrono>
#include <cstdint>

#include "controls/CommandButton.h"
#include "controls/Form.h"
#include "controls/Label.h"
#include "controls/ProgressBar.h"

namespace ktrv::forms {

/// Thrown when the user has cancelled a job.
struct Stopped {};

/// Shows the progress of a job that blocks the dialog in a label and a bar, and cancels it with a
/// button. During the object's lifetime label and bar are visible, the dialog is repainted and only
/// the button can be used.
class JobProgress {
 public:
  struct Display {
    controls::Label& Label;
    controls::ProgressBar& Bar;
    controls::CommandButton& Stop;  ///< has the caption "&Stop" during long jobs
  };

  /// \param steps expected number of Advance calls
  JobProgress(Display display, StringView text, std::int64_t steps);
  ~JobProgress();
  JobProgress(const JobProgress&) = delete;
  JobProgress& operator=(const JobProgress&) = delete;

  void Say(StringView text);
  /// Adds steps to the expected number.
  void Extend(std::int64_t steps);
  /// Counts a completed step. \throws Stopped
  void Advance();
  /// The same for jobs that keep their result so far. \return false if the user has cancelled
  bool GoesOn();
  /// Handles input; call it often during long steps. \throws Stopped
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
  std::chrono::steady_clock::time_point looked_;
};

}  // namespace ktrv::forms
