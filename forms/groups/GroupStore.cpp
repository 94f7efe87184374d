#include "forms/groups/GroupStore.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "database/Conversion.h"
#include "forms/groups/ContactRow.h"
#include "forms/groups/JobProgress.h"

namespace ktrv::forms {
namespace {

/// Maximum length of an id in a membership, in UTF-16 units.
constexpr std::size_t kLongestId = 50;
/// Whole numbers below are exact as floating-point numbers.
constexpr double kExact = 9007199254740992;  // 2^53

/// Rows per batch insert of members.
constexpr std::size_t kTogether = 500;

String TrimmedText(const Variant& value) {
  return String(Trim(ToText(value)));
}

/// Looks up members of one kind in blocks.
class Search {
 public:
  Search(GroupCommands& commands, GroupCommand among, GroupCommand amongMany)
      : commands_(commands), among_(among), amongMany_(amongMany) {}

  void Add(int row, String id) {
    rows_.emplace_back(row, std::move(id));
    if (rows_.size() == data::GroupQueries::kAmongMany) Look();
  }
  /// The rows whose ids were not found.
  std::vector<int> Missing() {
    if (!rows_.empty()) Look();
    return std::move(missing_);
  }

 private:
  void Look() {
    std::vector<Variant> ids;
    for (const auto& [row, id] : rows_) ids.emplace_back(id);
    const bool many = ids.size() > data::GroupQueries::kAmong;
    ids.resize(many ? data::GroupQueries::kAmongMany : data::GroupQueries::kAmong, ids.back());
    auto found = commands_.Execute(many ? amongMany_ : among_, std::move(ids));
    TextIndex there;
    for (; !found.EndOfFile(); found.MoveNext()) {
      there.Add(TrimmedText(found.Field(found.Columns().front().Name)));
    }
    for (const auto& [row, id] : rows_) {
      if (!there.Contains(id)) missing_.push_back(row);
    }
    rows_.clear();
  }

  GroupCommands& commands_;
  GroupCommand among_;
  GroupCommand amongMany_;
  std::vector<std::pair<int, String>> rows_;
  std::vector<int> missing_;
};

}  // namespace

GroupStore::GroupStore(GroupCommands& commands, String groupId, String groupName)
    : commands_(commands), groupId_(std::move(groupId)), groupName_(std::move(groupName)) {}

GroupStore::Saving::Saving(GroupStore& store, database::Connection& connection)
    : store_(store), transaction_(connection), wasIncomplete_(store.incomplete_) {
  store_.hasWritten_ = false;
  store_.created_.reset();
  if (!store_.groupId_.empty()) connection.Execute(data::GroupQueries::LockGroup(store_.groupId_));
}

void GroupStore::Saving::Finish() {
  transaction_.Commit();
  store_.incomplete_ = false;
}

void GroupStore::Saving::Fail() {
  // Exceptions here are swallowed: the caller rethrows the first failure.
  try {
    if (!store_.hasWritten_) return Undo();
    transaction_.Commit();
    // A driver may report the commit of a lost connection as successful.
    const bool isUnseen = store_.created_ && store_.groupId_.empty() && !store_.created_->Unfound;
    if (isUnseen) return store_.Doubt();
    // Some engines roll back the whole transaction when a statement fails.
    if (store_.HasVanished()) return Forget();
  } catch (...) {
    store_.Doubt();
  }
}

void GroupStore::Saving::Undo() {
  if (transaction_.RollBack()) return Forget();
  if (store_.hasWritten_) store_.Doubt();
}

void GroupStore::Saving::Forget() {
  store_.known_ = store_.attempted_ = store_.before_;
  store_.creation_.reset();
  if (store_.created_) store_.groupId_.clear();
  store_.incomplete_ = wasIncomplete_;
}

bool GroupStore::IsNameTaken(const String& name, ModeOfOperation mode) {
  const auto rows = mode == ModeOfOperation::Add
                        ? commands_.Execute(GroupCommand::NameTaken, {name})
                        : commands_.Execute(GroupCommand::NameTakenByAnother, {name, groupId_});
  return !rows.EndOfFile();
}

std::optional<StoredGroup> GroupStore::Read(const String& groupId, Details* details) {
  const auto group = commands_.Execute(GroupCommand::Group, {groupId});
  if (group.EndOfFile()) return std::nullopt;
  StoredGroup stored;
  stored.Name = TrimmedText(group.Field(u"NAME"));
  if (details) details->FolderId = TrimmedText(group.Field(u"FOLDER_ID"));
  auto members = commands_.Execute(GroupCommand::Memberships, {groupId});
  for (; !members.EndOfFile(); members.MoveNext()) {
    const String id = TrimmedText(members.Field(u"CONTACT_ID"));
    const String type = TrimmedText(members.Field(u"CONTACT_TYPE"));
    stored.Members.Add(id, type);
    if (!details || type != u"S") continue;
    // Compare as numbers, as most databases do: other programs may have stored "08" or "8.0".
    const auto number = ParseInteger(id);
    const auto whole = number ? std::nullopt : ParseNumber(id);
    const bool isWhole = whole && std::abs(*whole) < kExact && std::trunc(*whole) == *whole;
    details->ContactIds.Add(number    ? ToDecimal(*number)
                            : isWhole ? ToDecimal(static_cast<std::int64_t>(*whole))
                                      : id);
  }
  return stored;
}

void GroupStore::Load() {
  Details details;
  // If the group no longer exists, saving it will be refused.
  known_ = Read(groupId_, &details).value_or(StoredGroup{groupName_, {}});
  attempted_ = before_ = known_;
  contactIds_ = std::move(details.ContactIds);
}

GroupStore::Now GroupStore::LookAgain() {
  auto stored = Read(groupId_);
  if (!stored) return Now::Gone;
  found_ = std::move(*stored);
  const bool isKnown = found_ == known_ || found_ == attempted_ || found_ == before_;
  if (!isKnown) return Now::Changed;
  TakeAsKnown();
  return Now::AsKnown;
}

void GroupStore::TakeAsKnown() {
  known_ = attempted_ = before_ = found_;
}

GroupStore::Place GroupStore::LookAtFolder(const String& folderId) {
  if (LeadingNumber(folderId) == 0) return Place::Fit;  // main folder
  const auto folder = commands_.Execute(GroupCommand::Folder, {folderId});
  if (folder.EndOfFile()) return Place::Gone;
  return TrimmedText(folder.Field(u"TYPE")) == u"R" ? Place::Remote : Place::Fit;
}

std::vector<String> GroupStore::TooLong(controls::FlexGrid& members) {
  const ContactColumns columns(members);
  std::vector<String> names;
  for (int row = 1; row < members.Rows(); ++row) {
    if (members.Text(row, columns.Id()).size() > kLongestId) {
      names.push_back(columns.Read(row).Name);
    }
  }
  return names;
}

std::vector<String> GroupStore::Missing(controls::FlexGrid& members, JobProgress& progress) {
  const ContactColumns columns(members);
  Search contacts(commands_, GroupCommand::ContactsAmong, GroupCommand::ContactsAmongMany);
  Search remoteContacts(commands_, GroupCommand::RemoteContactsAmong,
                        GroupCommand::RemoteContactsAmongMany);
  for (int row = 1; row < members.Rows(); ++row) {
    progress.Look();
    const String kind = members.Text(row, columns.Kind());
    if (kind == ContactKind::Contact) contacts.Add(row, columns.ReadId(row));
    if (kind == ContactKind::RemoteContact) remoteContacts.Add(row, columns.ReadId(row));
  }
  std::vector<int> rows = contacts.Missing();
  for (const int row : remoteContacts.Missing()) rows.push_back(row);
  std::sort(rows.begin(), rows.end());
  std::vector<String> names;
  names.reserve(rows.size());
  for (const int row : rows) names.push_back(columns.Read(row).Name);
  return names;
}

void GroupStore::Create(const String& name, const String& folderId) {
  creation_ = Creation{name, folderId};
  try {
    commands_.Execute(GroupCommand::InsertGroup, {name, folderId});
  } catch (const Error& error) {
    // Refused, so nothing was inserted. After other failures the outcome is unknown.
    if (error.Number() == ErrorNumber::IntegrityViolation) creation_.reset();
    throw;
  }
  creation_->Worked = hasWritten_ = incomplete_ = true;
  created_ = creation_;
  FindCreated();
}

bool GroupStore::FindCreated() {
  const Creation creation = creation_.value();
  // Names are unique, so this is the inserted row.
  const auto rows = commands_.Execute(GroupCommand::GroupIdByName, {creation.Name});
  if (rows.EndOfFile()) {
    if (creation.Worked) {
      if (created_) created_->Unfound = true;
      throw Error(ErrorNumber::RowGone, u"The new group cannot be found by its name");
    }
    creation_.reset();
    return false;
  }
  const String id = ToText(rows.Field(u"ID"));
  if (!creation.Worked) {
    // It may be another user's group. In the same folder, one without members is as good as ours,
    // and one with exactly our members is ours.
    Details details;
    const auto stored = Read(id, &details);
    const bool isOurs = stored && details.FolderId == creation.FolderId &&
                        (stored->Members.Count() == 0 || *stored == attempted_);
    creation_.reset();
    if (!isOurs) return false;
    incomplete_ = true;
    Became(id, *stored);
    return true;
  }
  creation_.reset();
  Became(id, {creation.Name, {}});
  return true;
}

void GroupStore::Became(const String& groupId, StoredGroup stored) {
  groupId_ = groupId;
  known_ = attempted_ = before_ = std::move(stored);
}

bool GroupStore::HasVanished() {
  if (groupId_.empty()) return false;  // not found by its name yet
  // For a new group only its row counts, because the failure may have been in its members.
  if (created_) return commands_.Execute(GroupCommand::Group, {groupId_}).EndOfFile();
  const auto stored = Read(groupId_);
  return stored == before_;
}

void GroupStore::Doubt() {
  if (!created_) return;
  creation_ = std::exchange(created_, std::nullopt);
  creation_->Worked = false;
  groupId_.clear();
}

void GroupStore::Rename(const String& name) {
  attempted_.Name = name;
  commands_.Execute(GroupCommand::RenameGroup, {name, groupId_});
  if (commands_.At(GroupCommand::RenameGroup).RecordsAffected() <= 0) {
    // No row was affected. Some engines report that also if the name was the same already, and some
    // drivers cannot tell. So check: memberships of a deleted group would be orphans.
    const auto group = commands_.Execute(GroupCommand::Group, {groupId_});
    if (group.EndOfFile() || !database::IsHeld(ToText(group.Field(u"NAME")), name)) {
      throw Error(ErrorNumber::RowChanged, u"The group was deleted by another user");
    }
  }
  known_.Name = name;
  hasWritten_ = true;
}

void GroupStore::ReplaceMembers(controls::FlexGrid& members, JobProgress& progress) {
  const ContactColumns columns(members);
  incomplete_ = writesTogether_ = true;
  attempted_.Members = {};
  commands_.Execute(GroupCommand::ClearMembers, {groupId_});
  known_.Members = {};
  String letter;
  std::vector<Member> block;
  for (int row = 1; row < members.Rows(); ++row) {
    const String kind = members.Text(row, columns.Kind());
    if (kind == ContactKind::Contact) letter = u"S";
    if (kind == ContactKind::RemoteContact) letter = u"R";
    // A group is no valid member. It is stored with the type letter of the preceding row, as
    // readers of the table have always found it.
    block.push_back({members.Text(row, columns.Id()), letter});
    if (block.size() == kTogether || row + 1 == members.Rows()) {
      InsertMembers(block, progress);
      block.clear();
    }
  }
}

void GroupStore::InsertMembers(const std::vector<Member>& members, JobProgress& progress) {
  const bool together = InsertTogether(members);
  for (const Member& member : members) {
    progress.Advance();
    if (together) continue;
    attempted_.Members.Add(Trim(member.Id), member.Type);
    commands_.Execute(GroupCommand::InsertMember, {groupId_, member.Id, member.Type});
    known_.Members = attempted_.Members;
  }
}

bool GroupStore::InsertTogether(const std::vector<Member>& members) {
  if (!writesTogether_ || members.size() < 2) return false;
  std::vector<std::vector<Variant>> rows;
  for (const Member& member : members) {
    attempted_.Members.Add(Trim(member.Id), member.Type);
    rows.push_back({groupId_, member.Id, member.Type});
  }
  switch (commands_.ExecuteTogether(GroupCommand::InsertMember, std::move(rows))) {
    case database::Command::Together::Ran:
      known_.Members = attempted_.Members;
      return true;
    case database::Command::Together::CannotRun:
      writesTogether_ = false;
      break;
    case database::Command::Together::Undone: {
      // Without transactions, rows before the failed one may be stored and must not be inserted
      // twice.
      const auto stored = Read(groupId_);
      if (stored != known_) {
        throw Error(ErrorNumber::RowChanged, u"The members of the group were written in part");
      }
      break;
    }
  }
  attempted_.Members = known_.Members;
  return false;
}

}  // namespace ktrv::forms
