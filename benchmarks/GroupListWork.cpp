#include "benchmarks/GroupListWork.h"

#include <algorithm>
#include <functional>

#include "benchmarks/GroupDialog.h"
#include "benchmarks/Table.h"
#include "benchmarks/UserInterfaceLoop.h"

namespace ktrv::benchmarks {
namespace {

using controls::FlexGrid;

constexpr const char* kLongestHold = "50 ms";
constexpr const char* kLongestKey = "16 ms";

/// Seconds.
struct Times {
  double Hold = 0;  ///< the longest time without input
  double Total = 0;
};

class GroupLists {
 public:
  GroupLists(const std::string& path, Table& table) : dialog_(path), table_(table) {
    dialog_.OpenPicker();
    dialog_.Screen().WhileWorking = [this](controls::Form&) { TakeInput(); };
    rows_ = Source().Rows() - 1;
  }

  void MeasureAll() {
    MeasureKeys("find key, left list", Source(), Form().txtFind);
    Measure("sort the left list", [this] { SortByName(Source()); });
    Measure("all", [this] { Form().cmdSelectAll.UserClicks(); });
    if (Members() < rows_ - 100) throw std::runtime_error("not all rows were taken");
    MeasureKeys("find key, right list", List(), Form().txtFindMember);
    Measure("count, after Select", [this] {
      Source().UserSelects({1}, 1);
      Form().cmdSelect.UserClicks();
    });
    Measure("sort the right list", [this] { SortByName(List()); });
    MeasureRemoval();
    Measure(
        "copy (text in one piece)", [this] { Form().cmdCopy.UserClicks(); }, "-");
    MeasurePaste();
  }

 private:
  forms::frmGroupsNew& Form() { return dialog_.Form(); }
  FlexGrid& Source() { return Form().vsfFolderContacts; }
  FlexGrid& List() { return Form().vsfGroupContacts; }
  int Members() { return Form().Members().Count(); }

  void TakeInput() {
    longest_ = std::max(longest_, SecondsSince(input_));
    input_ = Clock::now();
  }

  Times TimesOf(const std::function<void()>& command) {
    const auto start = input_ = Clock::now();
    longest_ = 0;
    command();
    const bool ended = dialog_.Screen().WaitUntil([this] {
      TakeInput();
      return !Form().Reached().IsCounting() && !Source().IsSorting() && !List().IsSorting();
    });
    if (!ended) throw std::runtime_error("the group dialog works on");
    return {longest_, SecondsSince(start)};
  }

  void Measure(const char* name, const std::function<void()>& command,
               const char* aim = kLongestHold) {
    Add(name, TimesOf(command), aim);
  }

  void Add(const char* name, const Times& times, const char* aim) {
    table_.Add(
        {name, std::to_string(rows_), Milliseconds(times.Total), Milliseconds(times.Hold), aim});
  }

  /// The slowest key of names near both ends of the list, of a number, and of a missing text.
  void MeasureKeys(const char* name, const FlexGrid& list, controls::TextBox& box) {
    const int column = list.ColIndex(u"NAME");
    Times worst;
    for (const String& wanted :
         {list.Text(1, column), list.Text(list.Rows() - 1, column), String(u"\u00D8ystein Qvist"),
          String(u"qqq"), String(u"+49 (30) 7654321 000")}) {
      for (std::size_t length = 1; length <= wanted.size(); ++length) {
        const Times key = TimesOf([&] { box.SetText(wanted.substr(0, length)); });
        if (key.Hold > worst.Hold) worst = key;
      }
    }
    Add(name, worst, kLongestKey);
  }

  void SortByName(FlexGrid& list) { list.UserClicksHeading(list.ColIndex(u"NAME")); }

  void MeasureRemoval() {
    constexpr int kScattered = 1000;
    const int before = Members();
    std::vector<int> rows;
    rows.reserve(kScattered);
    for (int i = 0; i < kScattered; ++i) rows.push_back(1 + i * (before / kScattered));
    List().UserSelects(rows, rows.front());
    Measure("remove 1000 scattered rows", [this] { Form().cmdRemove.UserClicks(); });
    if (Members() != before - kScattered) throw std::runtime_error("not removed");
    Measure("undo it", [this] { Form().cmdUndo.UserClicks(); });
    Measure("remove all", [this] { Form().cmdRemoveAll.UserClicks(); });
    if (Members() != 0) throw std::runtime_error("not all removed");
    Measure("undo it", [this] { Form().cmdUndo.UserClicks(); });
    if (Members() != before) throw std::runtime_error("not undone");
  }

  void MeasurePaste() {
    constexpr int kPasted = 10000;
    const int column = Source().ColIndex(u"MOBILENO");
    String text;
    for (int i = 0; i < kPasted; ++i) {
      text += Source().Text(1 + i * (rows_ / kPasted), column) + u"\r\n";
    }
    dialog_.Screen().SetClipboardText(text);
    Form().cmdRemoveAll.UserClicks();
    Measure("paste 10000 numbers", [this] { Form().cmdPaste.UserClicks(); });
    if (Members() < kPasted / 2) throw std::runtime_error("not pasted");
  }

  GroupDialog dialog_;
  Table& table_;
  int rows_ = 0;
  Clock::time_point input_;
  double longest_ = 0;
};

}  // namespace

void MeasureGroupLists(const std::string& path) {
  Table table({"Lists of the group dialog", "rows", "time", "without input", "aim"});
  GroupLists(path, table).MeasureAll();
  table.Print();
}

}  // namespace ktrv::benchmarks
