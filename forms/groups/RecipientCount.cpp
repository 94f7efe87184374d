#include "forms/groups/RecipientCount.h"

#include <algorithm>
#include <utility>

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
  const String whole = SoughtNumber::SignificantDigitsOf(countryCode) + number;
  return std::max<Number>(std::hash<String>()(whole), 1);
}

bool RecipientCount::Add(Number number, std::unordered_set<Number>& seen) {
  ++counts_.People;
  if (number == 0) {
    ++counts_.WithoutNumber;
    return false;
  }
  if (seen.insert(number).second) return false;
  ++counts_.Twice;
  return true;
}

void RecipientCount::Update(bool isComplete) {
  isComplete_ = isComplete;
  services_.Trap(kCountContext, [this] {
    ReadNext();
    Count();
  });
}

void RecipientCount::Forget() {
  Cancel();
  isReading_ = false;
  groups_.clear();
  Update(isComplete_);
}

std::vector<String> RecipientCount::GroupsInList() const {
  const ContactColumns columns(list_);
  std::vector<String> ids;
  if (columns.Id() < 0) return ids;
  for (int row = 1; row < list_.Rows(); ++row) {
    if (columns.ReadKind(row) == ContactKind::Group) ids.push_back(columns.ReadId(row));
  }
  return ids;
}

void RecipientCount::ReadNext() {
  constexpr std::size_t kTogether = 500;
  if (isReading_ || !isComplete_) return;
  std::vector<String> ids;
  for (const String& id : GroupsInList()) {
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
  Update(isComplete_);
}

void RecipientCount::Count() {
  withoutNumber_.Clear();
  twice_.Clear();
  counts_ = {};
  failed_ = false;
  const ContactColumns columns(list_);
  if (isComplete_ && columns.Id() > 0) {
    std::unordered_set<Number> seen;
    // Groups first: of a contact who is a member too, the row can be removed.
    for (const String& id : GroupsInList()) {
      const Group& group = groups_[id];
      failed_ = failed_ || group.Progress == Reading::Failed;
      for (const Number number : group.Numbers) Add(number, seen);
    }
    for (int row = 1; row < list_.Rows(); ++row) {
      const ContactRow contact = columns.Read(row);
      if (contact.Kind == ContactKind::Group) continue;
      const Number number = NumberOf(contact.CountryCode, contact.MobileNo);
      if (number == 0) withoutNumber_.Add(row, row);
      if (Add(number, seen)) twice_.Add(row, row);
    }
  }
  Show();
  if (Changed) Changed();
}

void RecipientCount::Show() {
  const int entries = list_.Rows() - 1;
  if (!isComplete_ || entries < 1) return text_.SetCaption({});
  String text = Counted(entries, u"entry", u"entries") + u", ";
  if (isReading_) {
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
