#include "forms/groups/RecipientCount.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "common/Fingerprint.h"
#include "controls/SoughtNumber.h"
#include "data/GroupQueries.h"

namespace ktrv::forms {
namespace {

constexpr StringView kCountContext =
    u"KTRVAddressBook: Error occurred. Sub:CountRecipients(), Module: frmGroupsNew()";

/// "1 person" or "2 people".
String Counted(std::int64_t count, StringView one, StringView many) {
  return ToDecimal(count) + u" " + String(count == 1 ? one : many);
}

}  // namespace

RecipientCount::RecipientCount(Services& services, BookDatabase& database, controls::FlexGrid& list,
                               controls::Label& text)
    : BackgroundList(database), services_(services), list_(list), text_(text) {}

RecipientCount::Number RecipientCount::NumberOf(StringView countryCode, StringView mobileNo) {
  using controls::SoughtNumber;
  const String number = SoughtNumber::SignificantDigitsOf(mobileNo);
  if (number.empty()) return 0;
  return SoughtNumber::KeyOf(SoughtNumber::SignificantDigitsOf(countryCode) + number);
}

RecipientCount::Numbers::Numbers(std::size_t most) : places_(std::bit_ceil(2 * most + 1)) {}

bool RecipientCount::Numbers::Add(Number number) {
  const std::size_t mask = places_.size() - 1;
  auto place = static_cast<std::size_t>(Mixed(number) & mask);
  for (; places_[place] != 0; place = (place + 1) & mask) {
    if (places_[place] == number) return false;
  }
  places_[place] = number;
  return true;
}

bool RecipientCount::Add(Number number) {
  ++counts_.People;
  if (number == 0) {
    ++counts_.WithoutNumber;
    return false;
  }
  if (progress_.Seen.Add(number)) return false;
  ++counts_.Twice;
  return true;
}

void RecipientCount::Update(bool isComplete) {
  isComplete_ = isComplete;
  failure_.clear();
  Start();
}

void RecipientCount::Fail(String text) {
  isComplete_ = false;
  failure_ = std::move(text);
  Start();
}

void RecipientCount::Forget() {
  Stop();
  groups_.clear();
  Start();
}

void RecipientCount::Stop() {
  work_.Stop();
  Cancel();
  isReading_ = false;
}

void RecipientCount::Start() {
  withoutNumber_.Clear();
  twice_.Clear();
  counts_ = {};
  failed_ = false;
  progress_ = {.Rows = list_.Rows()};
  const bool hasList = isComplete_ && ContactColumns(list_).Id() > 0;
  if (!hasList) return End();
  work_.Start(services_.Screen, [this] {
    bool goesOn = false;
    const bool worked = services_.Trap(kCountContext, false, [&] {
      goesOn = GoOn();
      return true;
    });
    failed_ = failed_ || !worked;
    if (!goesOn) End();
    return goesOn;
  });
  if (work_.IsRunning()) ShowChange();
}

bool RecipientCount::GoOn() {
  int left = 10000;  // a few milliseconds
  return !(LookForGroups(left) && CountMembers(left) && CountRows(left));
}

void RecipientCount::End() {
  work_.Stop();
  withoutNumber_ = std::move(progress_.WithoutNumber);
  twice_ = std::move(progress_.Twice);
  progress_ = {};
  ShowChange();
}

void RecipientCount::ShowChange() {
  Show();
  if (Changed) Changed();
}

bool RecipientCount::LookForGroups(int& left) {
  if (progress_.AreGroupsKnown) return true;
  const ContactColumns columns(list_);
  const int rows = std::min(progress_.Rows, list_.Rows());
  for (int& row = progress_.GroupRow; row < rows; ++row, --left) {
    if (left == 0) return false;
    if (columns.ReadKind(row) == ContactKind::Group)
      progress_.Groups.push_back(columns.ReadId(row));
  }
  ReadNext();
  std::size_t most = static_cast<std::size_t>(progress_.Rows);
  for (const String& id : progress_.Groups) {
    failed_ = failed_ || groups_[id].Progress == Reading::Failed;
    most += groups_[id].Numbers.size();
  }
  progress_.Seen = Numbers(most);
  return progress_.AreGroupsKnown = true;
}

bool RecipientCount::CountMembers(int& left) {
  for (; progress_.Group < progress_.Groups.size(); ++progress_.Group, progress_.Member = 0) {
    const Group& group = groups_[progress_.Groups[progress_.Group]];
    if (group.Progress != Reading::Done) continue;
    for (; progress_.Member < group.Numbers.size(); ++progress_.Member, --left) {
      if (left == 0) return false;
      Add(group.Numbers[progress_.Member]);
    }
  }
  return true;
}

bool RecipientCount::CountRows(int& left) {
  const ContactColumns columns(list_);
  const int rows = std::min(progress_.Rows, list_.Rows());
  for (int& row = progress_.Row; row < rows; ++row, --left) {
    if (left == 0) return false;
    if (columns.ReadKind(row) == ContactKind::Group) continue;
    const Number number = NumberOf(columns.ReadCountryCode(row), columns.ReadMobileNo(row));
    if (number == 0) progress_.WithoutNumber.Add(row, row);
    if (Add(number)) progress_.Twice.Add(row, row);
  }
  return true;
}

void RecipientCount::ReadNext() {
  constexpr std::size_t kTogether = 500;
  if (isReading_) return;
  std::vector<String> ids;
  for (const String& id : progress_.Groups) {
    Group& group = groups_[id];
    if (group.Progress != Reading::Open || ids.size() == kTogether) continue;
    group.Progress = IsDecimalDigits(id) ? Reading::Now : Reading::Failed;
    if (group.Progress == Reading::Now) ids.push_back(id);
  }
  if (ids.empty()) return;
  taken_ = 0;
  isReading_ = services_.Trap(kCountContext, false, [&] {
    former_ = Fetch(data::GroupQueries::MembersOfGroups(ids));
    return true;
  });
  if (!isReading_) EndReading(Reading::Failed);
}

void RecipientCount::EndReading(Reading how) {
  for (auto& [id, group] : groups_) {
    if (group.Progress == Reading::Now) group.Progress = how;
  }
}

void RecipientCount::FetchProgress(std::int64_t rows) {
  services_.Trap(kCountContext, [&] { TakeMembers(rows); });
}

void RecipientCount::TakeMembers(std::int64_t rows) {
  constexpr std::size_t kGroupId = 0;
  constexpr std::size_t kMobileNo = 3;
  constexpr std::size_t kCountryCode = 4;
  for (; taken_ < rows; ++taken_) {
    const auto text = [this](std::size_t column) {
      return rows_->CellText(taken_, column).value_or(StringView());
    };
    const auto group = groups_.find(String(Trim(text(kGroupId))));
    if (group == groups_.end() || group->second.Progress != Reading::Now) continue;
    group->second.Numbers.push_back(NumberOf(text(kCountryCode), text(kMobileNo)));
  }
}

void RecipientCount::FetchComplete(const Error* error) {
  const bool read = services_.Trap(kCountContext, false, [&] {
    if (error) throw Error(*error);
    TakeMembers(rows_->RecordCount());
    return true;
  });
  isReading_ = false;
  EndReading(read ? Reading::Done : Reading::Failed);
  Start();
}

void RecipientCount::Show() {
  const int entries = list_.Rows() - 1;
  if (!isComplete_ || entries < 1) return text_.SetCaption(failure_);
  String text = Counted(entries, u"entry", u"entries") + u", ";
  if (IsCounting()) {
    text += u"counting the people...";
  } else if (failed_) {
    text += u"the people could not be counted";
  } else {
    text += Counted(counts_.People, u"person", u"people");
    if (counts_.WithoutNumber > 0) {
      text += u", " + ToDecimal(counts_.WithoutNumber) + u" without a number";
    }
    if (counts_.Twice > 0) {
      text += u", " + Counted(counts_.Twice, u"number", u"numbers") + u" twice";
    }
  }
  const int row = list_.ChosenRow();
  const ContactColumns columns(list_);
  if (row > 0 && columns.Id() > 0 && columns.ReadKind(row) == ContactKind::Group) {
    const auto group = groups_.find(columns.ReadId(row));
    if (group != groups_.end() && group->second.Progress == Reading::Done) {
      const auto size = static_cast<std::int64_t>(group->second.Numbers.size());
      text += u". This group: " + Counted(size, u"person", u"people");
    }
  }
  text_.SetCaption(std::move(text));
}

}  // namespace ktrv::forms
