#pragma once

#include <string>

#include "tests/native/adversary/Stage.h"

namespace ktrv::tests {

/// What the rows lack and have too much; empty when nothing.
std::string Difference(const Rows& rows, const Rows& wanted);

/// Rows that went or came though neither is the way from `before` to `after`.
std::string NotAskedFor(const Rows& rows, const Rows& before, const Rows& after);

/// What is wrong with the rows behind a task that was confirmed or refused; empty when nothing.
std::string WrongBehind(bool confirmed, const Rows& rows, const Rows& before, const Rows& after);

/// What to run of all that could be. Without KTRV_ADVERSARY it is a sample of seconds; with "all"
/// it is what minutes allow under the address sanitizer, with "every" really all, and with a part
/// of trials' names just those.
class Choice {
 public:
  /// \param machine whose trials these are, of the task. \param all how many there are.
  /// \param sample how many to run without a wish. \param every with the wish for all only each
  /// so many. \param first another number for each task, so that not all try the same.
  Choice(std::string machine, std::string task, std::size_t all, std::size_t sample,
         std::size_t every, std::size_t first);
  /// Whether to run the trial. One that is known to go wrong is not, unless it is wished for by its
  /// name.
  bool Takes(std::size_t index, const std::string& name);
  /// What goes wrong in the trials that were left out; empty when none was.
  std::string Open() const;

 private:
  std::string machine_;
  std::string task_;
  std::string wish_;
  std::size_t step_;
  std::size_t first_;
  std::size_t left_ = 0;
  std::string why_;
};

/// Says which trial is under way when KTRV_ADVERSARY_LOG is set, for one that crashes.
void Announce(const std::string& name);
/// The log for the report of a trial that went wrong, when KTRV_ADVERSARY_LOG is set.
std::string LogFor(const Stage& stage);

}  // namespace ktrv::tests
