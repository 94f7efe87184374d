#include <algorithm>

#include "tests/line/FaultFixture.h"

namespace ktrv::tests {
namespace {

struct Failing {
  Line::Fault How;
  const char* Name;
};
constexpr Failing kFaults[] = {{Line::Fault::Cut, "cut"},
                               {Line::Fault::Reset, "reset"},
                               {Line::Fault::Swallow, "swallow"},
                               {Line::Fault::Silent, "silent"}};

/// A line that fails at a place of the task's bytes. The sample takes one place for each fault, and
/// half of the faults on each engine.
class LineFaultsTest : public FaultFixture {
 protected:
  /// The places before each message and within it. MariaDB's driver 3.1.15 reads a null pointer
  /// when a connection breaks within the answer to a statement; so there no place is within one,
  /// and answers on other connections arrive as a whole.
  std::vector<std::int64_t> Places() {
    for (int round = 0; round < 2; ++round) {
      Prepare();
      Think();
      book.Way.StartMarking();
      DoSurely([this] { Task().Act(*host, number); });
      Task().Leave(*host);
    }
    const std::vector<std::int64_t> marks = book.Way.Marks();
    std::vector<std::int64_t> places;
    for (std::size_t mark = 0; mark < marks.size(); ++mark) {
      places.push_back(marks[mark]);
      const bool within = mark + 1 < marks.size() && Kind() != ServerKind::MariaDb;
      if (within) places.push_back((marks[mark] + marks[mark + 1]) / 2);
    }
    std::ranges::sort(places);
    places.erase(std::unique(places.begin(), places.end()), places.end());
    return places;
  }

  void Try(std::int64_t place, const Failing& fault) {
    Prepare();
    Think();
    book.Way.FailAfter(
        place, fault.How,
        Kind() == ServerKind::MariaDb ? Line::Where::BetweenAnswers : Line::Where::Anywhere);
    Suffer();
    const bool happened = book.Way.HasFailed();
    book.Way.Mend();
    Recover();
    Judge(std::string(fault.Name) + " at byte " + std::to_string(place), happened);
  }
};

TEST_P(LineFaultsTest, NothingIsLostOrTwiceOrWaitedForWithoutEnd) {
  const std::vector<std::int64_t> places = Places();
  ASSERT_FALSE(places.empty());
  constexpr std::size_t kMostPlaces = 12;
  for (std::size_t fault = 0; fault < std::size(kFaults); ++fault) {
    if (TriesAllFaults()) {
      const std::size_t step = places.size() / kMostPlaces + 1;
      for (std::size_t place = 0; place < places.size(); place += step) {
        Try(places[place], kFaults[fault]);
      }
    } else if ((TaskNumber() + fault) % 2 == (Kind() == ServerKind::MariaDb ? 0 : 1)) {
      // Another place for each task and fault.
      Try(places[(7 * TaskNumber() + 3 * fault + 1) % places.size()], kFaults[fault]);
    }
  }
  Report("line");
}

INSTANTIATE_TEST_SUITE_P(, LineFaultsTest, EachTask(), NameOfTask);

}  // namespace
}  // namespace ktrv::tests
