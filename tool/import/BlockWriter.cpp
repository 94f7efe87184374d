#include "tool/import/BlockWriter.h"

#include <algorithm>

#include "common/Error.h"
#include "data/ContactQueries.h"
#include "data/GroupQueries.h"
#include "data/ImportQueries.h"
#include "database/Transaction.h"
#include "tool/Query.h"

namespace ktrv::tool {
namespace {

using data::ContactText;
namespace ImportQueries = data::ImportQueries;
using database::DataType;

/// Whether the engine refuses the values, or another user was faster, and not the statement or the
/// session.
bool IsRefusal(const Error& error) {
  switch (error.Number()) {
    case ErrorNumber::ValueMismatch:
    case ErrorNumber::IntegrityViolation:
    case ErrorNumber::DataConversion:
    case ErrorNumber::RowChanged:
    case ErrorNumber::RowGone:
      return true;
    default:
      return false;
  }
}

template <class Value>
Variant OrNull(const std::optional<Value>& value) {
  return value ? Variant(*value) : Variant(Null{});
}

std::vector<Variant> RowOf(const ImportEntry& entry) {
  std::vector<Variant> row;
  row.reserve(data::kContactTexts + 5);
  row.emplace_back(entry.FolderId);
  for (const auto& text : entry.Values.Texts) row.push_back(OrNull(text));
  row.push_back(OrNull(entry.Values.Age));
  row.push_back(OrNull(entry.Values.Sex));
  row.push_back(OrNull(entry.Values.Birthday));
  row.push_back(OrNull(entry.Values.Anniversary));
  return row;
}

/// What a new contact is found by among the newest ones. Oracle stores the empty text as null.
String NumberOf(StringView countryCode, StringView mobileNo) {
  return String(countryCode) + u'\n' + String(mobileNo);
}
String NumberOf(const ImportEntry& entry) {
  return NumberOf(entry.Values.Text(ContactText::CountryCode),
                  entry.Values.Text(ContactText::MobileNo));
}

std::int64_t NewestContact(database::Connection& connection) {
  return CountOf(connection, ImportQueries::kNewestContact);
}

}  // namespace

BlockWriter::BlockWriter(database::Connection& connection) : connection_(connection) {
  insertContact_.SetActiveConnection(&connection);
  insertContact_.SetCommandText(String(ImportQueries::kInsertContact));
  insertContact_.Append(u"FOLDER_ID", DataType::Integer);
  for (std::size_t text = 0; text < data::kContactTexts; ++text) {
    const data::ContactTextColumn column = data::ColumnOf(static_cast<ContactText>(text));
    insertContact_.Append(String(column.Name), DataType::VarWChar, column.Limit);
  }
  insertContact_.Append(u"AGE", DataType::Double);
  insertContact_.Append(u"SEX", DataType::VarChar, 1);
  insertContact_.Append(u"BIRTHDAY", DataType::Date);
  insertContact_.Append(u"ANNIVERSARY", DataType::Date);
  insertMember_.SetActiveConnection(&connection);
  insertMember_.SetCommandText(String(data::GroupQueries::kInsertMember));
  insertMember_.Append(u"GROUP_ID", DataType::Integer);
  insertMember_.Append(u"CONTACT_ID", DataType::VarChar, 50);
  insertMember_.Append(u"CONTACT_TYPE", DataType::VarChar, 1);
}

void BlockWriter::Write(Entries& entries) {
  finished_ = 0;
  unknown_ = 0;
  findsIds_ = FindsAllIds || std::any_of(entries.begin(), entries.end(),
                                         [](const auto& entry) { return !entry.Groups.empty(); });
  try {
    WriteTogether(entries, 0, entries.size());
    finished_ = entries.size();
    return;
  } catch (const Refused&) {
  }
  for (std::size_t at = 0; at < entries.size(); finished_ = ++at) {
    ImportEntry& entry = entries[at];
    if (entry.Original && !entries[*entry.Original].Refusal.empty()) {
      entry.Refusal = u"It is the same contact as in line " +
                      ToDecimal(entries[*entry.Original].Line) + u", which was refused";
      continue;
    }
    try {
      WriteTogether(entries, at, at + 1);
    } catch (const Refused& refused) {
      entry.Refusal = refused.Message;
    }
  }
}

void BlockWriter::WriteTogether(Entries& entries, std::size_t begin, std::size_t end) {
  const bool adds =
      std::any_of(entries.begin() + static_cast<std::ptrdiff_t>(begin),
                  entries.begin() + static_cast<std::ptrdiff_t>(end),
                  [](const ImportEntry& entry) { return entry.What == ImportEntry::Kind::Add; });
  const bool findsIds = adds && findsIds_;
  database::Transaction transaction(connection_);
  LockGroups(entries, begin, end);
  const std::int64_t newest = findsIds ? NewestContact(connection_) : 0;
  String refusal;
  unknown_ = end - begin;
  try {
    if (adds) Insert(entries, begin, end);
    if (findsIds) FindIds(entries, begin, end, newest);
    for (std::size_t at = begin; at < end; ++at) {
      if (entries[at].What == ImportEntry::Kind::Merge) FillGapsOf(entries[at]);
    }
    const auto memberships = NewMemberships(entries, begin, end);
    // A deletion locks the contact before its memberships. In another order both could wait for
    // each other.
    const bool locksContacts = IsMySql(connection_);
    if (locksContacts) RequireContacts(entries, begin, end, memberships);
    Run(insertMember_, [&memberships] {
      Rows rows;
      rows.reserve(memberships.size());
      for (const auto& [group, contact] : memberships) {
        rows.push_back({group, ToDecimal(contact), String(u"S")});
      }
      return rows;
    });
    if (!locksContacts) RequireContacts(entries, begin, end, memberships);
    RequirePlaces(entries, begin, end, memberships);
    transaction.Commit();
    unknown_ = 0;
    for (const auto& [group, contact] : memberships) MembersOf(group).insert(contact);
    return;
  } catch (const Refused& refused) {
    refusal = refused.Message;
  } catch (const Error& error) {
    if (!IsRefusal(error)) {
      if (transaction.RollBack()) unknown_ = 0;
      throw;
    }
    refusal = error.Description();
  }
  if (!transaction.RollBack()) {
    throw Error(ErrorNumber::DriverFailure,
                u"It is unknown what was stored, because the database refused a row and did not "
                u"roll back: " +
                    refusal);
  }
  RequireTransactions();
  unknown_ = 0;
  throw Refused{refusal};
}

void BlockWriter::Run(database::Command& command, const std::function<Rows()>& makeRows) {
  using database::Command;
  Rows rows = makeRows();
  if (writesTogether_ && rows.size() > 1) {
    switch (command.ExecuteTogether(std::move(rows))) {
      case Command::Together::Ran:
        return;
      case Command::Together::CannotRun:
        writesTogether_ = false;
        rows = makeRows();
        break;
      case Command::Together::Undone:
        throw Refused{u"The database refused a row"};
    }
  }
  for (auto& row : rows) command.Execute(std::move(row));
}

void BlockWriter::Insert(const Entries& entries, std::size_t begin, std::size_t end) {
  Run(insertContact_, [&entries, begin, end] {
    Rows rows;
    for (std::size_t at = begin; at < end; ++at) {
      if (entries[at].What == ImportEntry::Kind::Add) rows.push_back(RowOf(entries[at]));
    }
    return rows;
  });
}

/// Ids grow, so the new contacts are among those with larger ids; other users may add some too.
void BlockWriter::FindIds(Entries& entries, std::size_t begin, std::size_t end,
                          std::int64_t newest) {
  std::map<String, std::vector<std::int64_t>> ids;  // of a number; the oldest last
  Query query(connection_, ImportQueries::ContactsAfter(ToDecimal(newest)));
  while (query.Next()) {
    ids[NumberOf(query.Text(1), query.Text(2))].push_back(ToInteger(String(query.Text(0))));
  }
  for (auto& [number, each] : ids) std::reverse(each.begin(), each.end());
  for (std::size_t at = begin; at < end; ++at) {
    if (entries[at].What != ImportEntry::Kind::Add) continue;
    const auto found = ids.find(NumberOf(entries[at]));
    if (found == ids.end() || found->second.empty()) {
      throw Error(ErrorNumber::NoCurrentRecord,
                  u"The database did not give the new contact of line " +
                      ToDecimal(entries[at].Line) + u" an id above those of the others");
    }
    entries[at].Id = found->second.back();
    found->second.pop_back();
  }
}

/// The rows do not tell what was stored, because another user may have stored the same.
void BlockWriter::RequireTransactions() {
  if (RollsBackRows(connection_, u"'SMS_ABCONTACTS', 'SMS_ABGROUPMAPS'")) return;
  throw Error(ErrorNumber::DriverFailure,
              u"Rows before a refused one may be stored, because tables of the address book take "
              u"no part in transactions (ENGINE=InnoDB does)");
}

void BlockWriter::RequirePlaces(const Entries& entries, std::size_t begin, std::size_t end,
                                const std::vector<Membership>& memberships) {
  std::set<std::int64_t> folders;
  for (std::size_t at = begin; at < end; ++at) {
    const bool adds = entries[at].What == ImportEntry::Kind::Add;
    if (adds && entries[at].FolderId != 0) folders.insert(entries[at].FolderId);
  }
  std::set<std::int64_t> groups;
  for (const auto& [group, contact] : memberships) groups.insert(group);
  RequireRows(u"SMS_ABFOLDERS", u"folder", folders);
  RequireRows(u"SMS_ABGROUPS", u"group", groups);
}

void BlockWriter::RequireContacts(const Entries& entries, std::size_t begin, std::size_t end,
                                  const std::vector<Membership>& memberships) {
  std::set<std::int64_t> added;
  for (std::size_t at = begin; at < end; ++at) {
    if (entries[at].What == ImportEntry::Kind::Add) added.insert(entries[at].Id);
  }
  std::set<std::int64_t> contacts;
  for (const auto& [group, contact] : memberships) {
    if (!added.contains(contact)) contacts.insert(contact);
  }
  RequireRows(u"SMS_ABCONTACTS", u"contact", contacts);
}

void BlockWriter::RequireRows(StringView table, StringView kind,
                              const std::set<std::int64_t>& ids) {
  const bool isMySql = IsMySql(connection_);
  std::size_t found = 0;
  std::vector<String> part;
  for (auto id = ids.begin(); id != ids.end();) {
    part.push_back(ToDecimal(*id));
    if (++id != ids.end() && part.size() < data::GroupQueries::kAmongMany) continue;
    String text = ImportQueries::RowsWithId(table, part);
    if (isMySql) text += ImportQueries::kAsOfNowOfMySql;
    Query query(connection_, text);
    while (query.Next()) ++found;
    part.clear();
  }
  if (found < ids.size()) {
    throw Refused{u"Another user has deleted the " + String(kind) + u" meanwhile"};
  }
}

void BlockWriter::FillGapsOf(const ImportEntry& entry) {
  database::Recordset row(connection_.Surroundings());
  row.Location = database::CursorLocation::Client;
  row.Open(data::ContactQueries::ById(ToDecimal(entry.Id)), connection_,
           {.Cursor = database::CursorType::Dynamic, .Lock = database::LockType::Optimistic});
  if (row.EndOfFile()) throw Refused{u"Another user has deleted the contact meanwhile"};
  const auto textOf = [&row](ContactText text) {
    return ToText(row.Field(data::ColumnOf(text).Name));
  };
  const std::vector<ContactText> texts = TextsForGaps(entry.Values, textOf);
  for (const ContactText text : texts) {
    row.SetField(data::ColumnOf(text).Name,
                 OrNull(entry.Values.Texts[static_cast<std::size_t>(text)]));
  }
  bool changes = !texts.empty();
  const auto fill = [&](StringView column, const Variant& value) {
    if (IsNull(value) || ToText(value).empty() || !ToText(row.Field(column)).empty()) return;
    row.SetField(column, value);
    changes = true;
  };
  fill(u"AGE", OrNull(entry.Values.Age));
  fill(u"SEX", OrNull(entry.Values.Sex));
  fill(u"BIRTHDAY", OrNull(entry.Values.Birthday));
  fill(u"ANNIVERSARY", OrNull(entry.Values.Anniversary));
  if (changes) row.Update();
}

std::vector<BlockWriter::Membership> BlockWriter::NewMemberships(const Entries& entries,
                                                                 std::size_t begin,
                                                                 std::size_t end) {
  std::vector<Membership> memberships;
  std::map<std::int64_t, std::unordered_set<std::int64_t>> fresh;
  for (std::size_t at = begin; at < end; ++at) {
    const ImportEntry& entry = entries[at];
    const std::int64_t id = entry.Original ? entries[*entry.Original].Id : entry.Id;
    for (const std::int64_t group : entry.Groups) {
      if (MembersOf(group).contains(id) || !fresh[group].insert(id).second) continue;
      memberships.emplace_back(group, id);
    }
  }
  return memberships;
}

void BlockWriter::LockGroups(const Entries& entries, std::size_t begin, std::size_t end) {
  std::set<std::int64_t> groups;  // in one order, so that two imports do not block each other
  for (std::size_t at = begin; at < end; ++at) {
    groups.insert(entries[at].Groups.begin(), entries[at].Groups.end());
  }
  for (const std::int64_t group : groups) {
    connection_.Execute(data::GroupQueries::LockGroup(ToDecimal(group)));
  }
}

std::unordered_set<std::int64_t>& BlockWriter::MembersOf(std::int64_t groupId) {
  const auto [place, isNew] = members_.try_emplace(groupId);
  if (!isNew) return place->second;
  try {
    Query query(connection_, ImportQueries::MembersOf(ToDecimal(groupId)));
    while (query.Next()) {
      if (const auto id = ParseInteger(query.Text(0))) place->second.insert(*id);
    }
  } catch (...) {
    members_.erase(place);
    throw;
  }
  return place->second;
}

}  // namespace ktrv::tool
