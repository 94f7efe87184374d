#include "tests/native/adversary/Comparing.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <utility>

namespace ktrv::tests {
namespace {

int CountOf(const Rows& rows, const std::string& row) {
  const auto found = rows.find(row);
  return found == rows.end() ? 0 : found->second;
}

/// Trials that go wrong. Whoever mends what they show takes the line away.
struct KnownFailure {
  const char* Machine;
  const char* Task;   ///< a part of its name
  const char* Trial;  ///< a part of its name
  const char* WhatHappens;
};
constexpr KnownFailure kKnownFailures[] = {
#include "tests/native/adversary/KnownFailures.inc"
};

bool Has(const std::string& text, const char* part) {
  return text.find(part) != std::string::npos;
}

std::string OfEnvironment(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

}  // namespace

std::string Difference(const Rows& rows, const Rows& wanted) {
  return NotAskedFor(rows, wanted, wanted);
}

std::string NotAskedFor(const Rows& rows, const Rows& before, const Rows& after) {
  std::string text;
  Rows all = before;
  for (const Rows* some : {&after, &rows}) all.insert(some->begin(), some->end());
  for (const auto& [row, ignored] : all) {
    const auto [least, most] = std::minmax({CountOf(before, row), CountOf(after, row)});
    const int count = CountOf(rows, row);
    if (count < least) text += "\n      - " + row;
    if (count > most) text += "\n      + " + row;
  }
  return text;
}

std::string WrongBehind(bool confirmed, const Rows& rows, const Rows& before, const Rows& after) {
  const std::string text = confirmed ? Difference(rows, after) : NotAskedFor(rows, before, after);
  if (text.empty()) return {};
  return (confirmed ? "\n    confirmed, but the database is not as it should be:"
                    : "\n    refused, and yet rows came or went:") +
         text;
}

Choice::Choice(std::string machine, std::string task, std::size_t all, std::size_t sample,
               std::size_t every, std::size_t first)
    : machine_(std::move(machine)), task_(std::move(task)), wish_(OfEnvironment("KTRV_ADVERSARY")) {
  step_ = wish_.empty() ? std::max<std::size_t>(all / sample, 1) : wish_ == "all" ? every : 1;
  first_ = first % step_;
}

bool Choice::Takes(std::size_t index, const std::string& name) {
  const bool isPart = !wish_.empty() && wish_ != "all" && wish_ != "every";
  if (isPart) return Has(name, wish_.c_str());
  if (index % step_ != first_) return false;
  for (const KnownFailure& known : kKnownFailures) {
    if (machine_ != known.Machine || !Has(task_, known.Task) || !Has(name, known.Trial)) continue;
    ++left_;
    why_ = known.WhatHappens;
    return false;
  }
  return true;
}

std::string Choice::Open() const {
  return left_ == 0 ? "" : std::to_string(left_) + " trials left out: " + why_;
}

void Announce(const std::string& name) {
  if (!OfEnvironment("KTRV_ADVERSARY_LOG").empty()) std::cerr << name << std::endl;
}

std::string LogFor(const Stage& stage) {
  return OfEnvironment("KTRV_ADVERSARY_LOG").empty() ? "" : "\n" + stage.Log();
}

}  // namespace ktrv::tests
