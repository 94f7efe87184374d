#include "tool/RowCheck.h"

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <unordered_set>

#include "common/Variant.h"
#include "data/ToolQueries.h"
#include "database/Command.h"
#include "tool/JsonText.h"
#include "tool/ParseId.h"
#include "tool/PhoneNumber.h"
#include "tool/Progress.h"
#include "tool/Query.h"

namespace ktrv::tool {
namespace {

namespace Queries = data::ToolQueries;

constexpr std::size_t kNameLimit = 50;    ///< of a contact's names, in UTF-16 units
constexpr std::size_t kPlaceLimit = 100;  ///< of a folder's or group's name

/// A row to take out of its folder.
struct Misplaced {
  std::int64_t Id;
  std::optional<std::int64_t> FolderId;
};

struct Membership {
  std::int64_t GroupId;
  std::optional<String> ContactId;
  std::optional<String> Type;
};

/// What a row's FOLDER_ID is.
enum class Place { Shown, Missing, Remote, Other };

String Quoted(StringView text) {
  return u"\"" + String(text) + u"\"";
}

String Shown(const std::optional<String>& text) {
  return text.value_or(u"null");
}

/// {"table": ..., "column": ..., ...}
std::string JsonOf(StringView table,
                   std::initializer_list<std::pair<const char*, std::optional<StringView>>> cells) {
  std::string json = "{\"table\": ";
  AppendJson(json, table);
  for (const auto& [name, value] : cells) {
    json.append(", \"").append(name).append("\": ");
    AppendJsonOrNull(json, value);
  }
  return json + '}';
}

/// A statement that mends row by row.
struct RowRepair {
  RowRepair(database::Connection& connection, String text) {
    Command.SetActiveConnection(&connection);
    Command.SetCommandText(std::move(text));
  }

  /// Executes it for a row. \param former the row before
  void Run(std::vector<Variant> values, std::string former, Mended& mended) {
    Command.Execute(std::move(values));
    const std::int64_t rows = Command.RecordsAffected();
    if (rows == 0 && Ahead == 0) return;
    // -1: the driver cannot tell. If it could before, this is an equal row that is mended already.
    const std::int64_t mendedRows = rows >= 0 ? rows : Ahead > 0 ? 0 : 1;
    mended.Count += mendedRows;
    Ahead += mendedRows - 1;
    mended.Former.push_back(std::move(former));
  }

  database::Command Command;
  std::int64_t Ahead = 0;  ///< rows that were mended with an equal one; their own turn comes
};

void TakeOut(StringView table, const std::vector<Misplaced>& rows, database::Connection& connection,
             Mended& mended) {
  RowRepair known(connection, Queries::TakeOut(table));
  known.Command.Append(u"ID", database::DataType::Integer);
  known.Command.Append(u"FOLDER_ID", database::DataType::Integer);
  known.Command.Append(u"FOLDER", database::DataType::Integer);
  RowRepair null(connection, Queries::TakeOutOfNull(table));
  null.Command.Append(u"ID", database::DataType::Integer);
  for (const Misplaced& row : rows) {
    const String id = ToDecimal(row.Id);
    if (row.FolderId) {
      known.Run({row.Id, *row.FolderId, *row.FolderId},
                JsonOf(table, {{"ID", id}, {"FOLDER_ID", ToDecimal(*row.FolderId)}}), mended);
    } else {
      null.Run({row.Id}, JsonOf(table, {{"ID", id}, {"FOLDER_ID", std::nullopt}}), mended);
    }
  }
}

/// Deletes those of the memberships that have a null contact or type as told.
void DeleteMemberships(StringView table, const std::vector<Membership>& rows, bool contactIsNull,
                       bool typeIsNull, database::Connection& connection, Mended& mended) {
  const bool ofGroup = table == u"SMS_ABGROUPS";
  RowRepair repair(connection, Queries::DeleteMembership(table, contactIsNull, typeIsNull));
  database::Command& command = repair.Command;
  command.Append(u"GROUP_ID", database::DataType::Integer);
  if (!contactIsNull) command.Append(u"CONTACT_ID", database::DataType::VarWChar);
  if (!typeIsNull) command.Append(u"CONTACT_TYPE", database::DataType::VarWChar);
  command.Append(u"ID", database::DataType::Integer);
  for (const Membership& row : rows) {
    if (!row.ContactId != contactIsNull || !row.Type != typeIsNull) continue;
    const auto missing = ofGroup ? row.GroupId : ParseId(row.ContactId.value_or(String()));
    if (!missing) continue;
    std::vector<Variant> values{row.GroupId};
    if (!contactIsNull) values.emplace_back(*row.ContactId);
    if (!typeIsNull) values.emplace_back(*row.Type);
    values.emplace_back(*missing);
    repair.Run(std::move(values),
               JsonOf(u"SMS_ABGROUPMAPS", {{"GROUP_ID", ToDecimal(row.GroupId)},
                                           {"CONTACT_ID", row.ContactId},
                                           {"CONTACT_TYPE", row.Type}}),
               mended);
  }
}

/// The check of all rows, table by table.
class RowChecks {
 public:
  RowChecks(database::Connection& connection, const Structure& structure, Console& console)
      : connection_(connection), structure_(structure), progress_(console, "checked") {
    if (!console.IsInteractive) return;
    for (const StringView table : {u"SMS_ABCONTACTS", u"SMS_ABGROUPMAPS"}) {
      if (structure.Has(table)) progress_.Total += CountOf(connection, Queries::CountOf(table));
    }
  }

  std::vector<Finding> Run() {
    hasFolders_ = structure_.Has(u"SMS_ABFOLDERS");
    if (hasFolders_) CheckFolders();
    if (structure_.Has(u"SMS_ABGROUPS")) CheckGroups();
    if (structure_.Has(u"SMS_ABCONTACTS")) CheckContacts();
    if (structure_.Has(u"SMS_ABGROUPMAPS")) CheckMemberships();
    if (structure_.Has(u"SMS_USERS")) CheckUsers();
    Keep(std::move(long_));
    progress_.Clear();
    return std::move(findings_);
  }

 private:
  void Keep(Finding&& finding) {
    if (finding.Count > 0) findings_.push_back(std::move(finding));
  }

  void CheckFolders() {
    Query query(connection_, Queries::kFolders);
    while (query.Next()) {
      CheckLength(u"folder", query.Text(0), query.Text(1), kPlaceLimit);
      const auto id = ParseId(query.Text(0));
      if (!id) continue;
      const StringView type = Trim(query.Text(2));
      folders_[*id] = EqualsIgnoringCase(type, u"S")   ? Place::Shown
                      : EqualsIgnoringCase(type, u"R") ? Place::Remote
                                                       : Place::Other;
    }
  }

  void CheckGroups() {
    Finding gone{.Code = "group-in-missing-folder",
                 .What = u"Groups are in folders that do not exist",
                 .Causes = u"The tree of folders cannot be shown, to anybody.",
                 .Repair = u"moves them out of their folder, to Shared Contacts"};
    Finding remote = gone;
    remote.Code = "group-in-remote-folder";
    remote.What = u"Groups are in remote folders";
    Finding other{.Code = "group-in-other-folder",
                  .What = u"Groups are in folders that are neither shared nor remote",
                  .Causes = gone.Causes};
    std::vector<Misplaced> goneRows;
    std::vector<Misplaced> remoteRows;
    Query query(connection_, Queries::kGroups);
    while (query.Next()) {
      const StringView id = query.Text(0);
      const auto number = ParseId(id);
      if (number) groups_.insert(*number);
      CheckLength(u"group", id, query.Text(1), kPlaceLimit);
      const auto folder = query.Cell(2);
      switch (PlaceOf(folder)) {
        case Place::Shown:
          break;
        case Place::Missing:
          Note(gone, goneRows, u"group ", id, folder);
          break;
        case Place::Remote:
          Note(remote, remoteRows, u"group ", id, folder);
          break;
        case Place::Other:
          NoteExample(other, u"group ", id, folder);
          break;
      }
    }
    Finish(std::move(gone), std::move(goneRows), u"SMS_ABGROUPS");
    Finish(std::move(remote), std::move(remoteRows), u"SMS_ABGROUPS");
    Keep(std::move(other));
  }

  void CheckContacts() {
    Finding gone{.Code = "contact-in-missing-folder",
                 .What = u"Contacts are in folders that do not exist or are remote",
                 .Causes = u"No list shows them.",
                 .Repair = u"moves them out of their folder, to Shared Contacts"};
    Finding undialled{.Code = "undialable-number",
                      .What = u"Contacts have a mobile number that cannot be dialled",
                      .Causes = u"Messages to them fail."};
    Finding other{.Code = "contact-in-other-folder",
                  .What = u"Contacts are in folders that are neither shared nor remote",
                  .Causes = gone.Causes};
    std::vector<Misplaced> goneRows;
    std::vector<std::pair<std::uint64_t, std::int64_t>> numbers;  // key and id
    Query query(connection_, Queries::kNumbers);
    while (query.Next()) {
      progress_.Count(++rows_);
      const StringView id = query.Text(0);
      const auto number = ParseId(id);
      if (number) contacts_.push_back(*number);
      const auto folder = query.Cell(1);
      const Place place = PlaceOf(folder);
      if (place == Place::Other) {
        NoteExample(other, u"contact ", id, folder);
      } else if (place != Place::Shown) {
        Note(gone, goneRows, u"contact ", id, folder);
      }
      const StringView mobile = query.Text(3);
      if (const StringView why = NotDialled(mobile); !why.empty()) {
        undialled.Add(u"contact " + String(id) + u": " + Quoted(mobile) + u", " + String(why));
      } else if (number) {
        numbers.emplace_back(NumberKey(query.Text(2), mobile), *number);
      }
    }
    std::sort(contacts_.begin(), contacts_.end());
    Finish(std::move(gone), std::move(goneRows), u"SMS_ABCONTACTS");
    Keep(std::move(other));
    Keep(std::move(undialled));
    CheckNumbers(numbers);
    CheckNames();
  }

  void CheckNumbers(std::vector<std::pair<std::uint64_t, std::int64_t>>& numbers) {
    Finding twice{.Code = "same-number",
                  .What = u"Contacts have the same mobile number as another contact",
                  .Causes = u"A message to both goes to the number twice."};
    std::sort(numbers.begin(), numbers.end());
    for (std::size_t at = 1; at < numbers.size(); ++at) {
      if (numbers[at].first != numbers[at - 1].first) continue;
      twice.Add(u"contact " + ToDecimal(numbers[at].second) + u" as contact " +
                ToDecimal(numbers[at - 1].second));
    }
    Keep(std::move(twice));
  }

  void CheckNames() {
    const bool sqlServer =
        connection_.CurrentLink()->Get().EngineKind() == database::Engine::SqlServer;
    Query query(connection_, Queries::LongNames(sqlServer ? u"LEN" : u"LENGTH"));
    while (query.Next()) {
      for (std::size_t column = 1; column <= 3; ++column) {
        CheckLength(u"contact", query.Text(0), query.Text(column), kNameLimit);
      }
    }
  }

  void CheckMemberships() {
    Finding noGroup{.Code = "membership-of-missing-group",
                    .What = u"Memberships are of groups that do not exist",
                    .Causes = u"They do nothing, until a new group gets the id.",
                    .Repair = u"removes them"};
    Finding noContact{.Code = "membership-of-missing-contact",
                      .What = u"Memberships are of contacts that do not exist",
                      .Causes = u"The group counts more members than it lists.",
                      .Repair = u"removes them"};
    Finding noRemote{.Code = "membership-of-missing-remote-contact",
                     .What = u"Memberships are of remote contacts that do not exist",
                     .Causes =
                         u"The group counts more members than it lists. The contacts belong "
                         u"to TALVERO and may come back."};
    const bool hasRemote = structure_.Has(u"V_ZUL$REMOTE_CONTACTS");
    std::vector<Membership> groupRows;
    std::vector<Membership> contactRows;
    std::vector<Membership> remoteRows;
    Query query(connection_, Queries::kMemberships);
    while (query.Next()) {
      progress_.Count(++rows_);
      const auto group = ParseId(query.Text(0));
      if (!group) continue;
      const auto contact = query.Cell(1);
      const auto type = query.Cell(2);
      const Membership row{*group, contact ? std::optional<String>(*contact) : std::nullopt,
                           type ? std::optional<String>(*type) : std::nullopt};
      const StringView kind = Trim(query.Text(2));
      if (structure_.Has(u"SMS_ABGROUPS") && !groups_.contains(*group)) {
        Note(noGroup, groupRows, row);
      } else if (kind == u"S" && structure_.Has(u"SMS_ABCONTACTS") && IsGone(query.Text(1))) {
        Note(noContact, contactRows, row);
      } else if (kind == u"R" && contact && hasRemote) {
        remoteRows.push_back(row);
      }
    }
    const std::unordered_set<String> codes =
        remoteRows.empty() ? std::unordered_set<String>{} : RemoteCodes();
    for (const Membership& row : remoteRows) {
      if (!codes.contains(String(Trim(*row.ContactId)))) {
        noRemote.Add(u"group " + ToDecimal(row.GroupId) + u", remote contact " + *row.ContactId);
      }
    }
    Finish(std::move(noGroup), std::move(groupRows), u"SMS_ABGROUPS");
    Finish(std::move(noContact), std::move(contactRows), u"SMS_ABCONTACTS");
    Keep(std::move(noRemote));
  }

  std::unordered_set<String> RemoteCodes() {
    std::unordered_set<String> codes;
    Query query(connection_, Queries::kRemoteCodes);
    while (query.Next()) codes.emplace(Trim(query.Text(0)));
    return codes;
  }

  void CheckUsers() {
    Finding none{.Code = "no-administrator",
                 .What = u"No user who is neither disabled nor deleted is an administrator",
                 .Causes = u"Nobody can change folders, groups and contacts."};
    Finding unknown{.Code = "user-without-rights",
                    .What = u"Users have neither the rights of an administrator nor of a user",
                    .Causes = u"The address book cannot be opened for them."};
    bool administrator = false;
    Query query(connection_, Queries::kUsers);
    while (query.Next()) {
      if (query.Text(2) != u"0" || query.Text(3) != u"0") continue;
      if (query.Cell(1)) {
        administrator = administrator || query.Text(1) != u"0";
      } else {
        unknown.Add(u"user " + String(query.Text(0)));
      }
    }
    if (!administrator) none.Count = 1;
    Keep(std::move(none));
    Keep(std::move(unknown));
  }

  Place PlaceOf(std::optional<StringView> folderId) const {
    if (!hasFolders_) return Place::Shown;
    if (!folderId) return Place::Missing;
    const auto number = ParseId(*folderId);
    if (!number || *number == 0) return Place::Shown;
    const auto folder = folders_.find(*number);
    return folder == folders_.end() ? Place::Missing : folder->second;
  }
  /// Whether there is no contact with the id; false for an id that only the database can compare.
  bool IsGone(StringView id) const {
    const auto number = ParseId(id);
    return number && !std::binary_search(contacts_.begin(), contacts_.end(), *number);
  }

  void CheckLength(StringView kind, StringView id, StringView name, std::size_t limit) {
    if (name.size() <= limit) return;
    long_.Add(String(kind) + u" " + String(id) + u": " +
              ToDecimal(static_cast<std::int64_t>(name.size())) + u" characters");
  }

  static void NoteExample(Finding& finding, StringView kind, StringView id,
                          std::optional<StringView> folderId) {
    finding.Add(String(kind) + String(id) + u" in folder " + String(folderId.value_or(u"null")));
  }
  static void Note(Finding& finding, std::vector<Misplaced>& rows, StringView kind, StringView id,
                   std::optional<StringView> folderId) {
    NoteExample(finding, kind, id, folderId);
    const auto number = ParseId(id);
    if (number) rows.push_back({*number, folderId ? ParseId(*folderId) : std::nullopt});
  }

  static void Note(Finding& finding, std::vector<Membership>& rows, const Membership& row) {
    finding.Add(u"group " + ToDecimal(row.GroupId) + u", contact " + Shown(row.ContactId));
    rows.push_back(row);
  }

  void Finish(Finding&& finding, std::vector<Misplaced>&& rows, StringView table) {
    finding.Mend = [rows = std::move(rows), table](database::Connection& connection,
                                                   Mended& mended) {
      TakeOut(table, rows, connection, mended);
    };
    Keep(std::move(finding));
  }
  /// \param table of what is missing
  void Finish(Finding&& finding, std::vector<Membership>&& rows, StringView table) {
    finding.Mend = [rows = std::move(rows), table](database::Connection& connection,
                                                   Mended& mended) {
      for (const bool contactIsNull : {false, true}) {
        for (const bool typeIsNull : {false, true}) {
          DeleteMemberships(table, rows, contactIsNull, typeIsNull, connection, mended);
        }
      }
    };
    Keep(std::move(finding));
  }

  database::Connection& connection_;
  const Structure& structure_;
  Progress progress_;
  std::int64_t rows_ = 0;  ///< that are checked
  std::vector<Finding> findings_;
  bool hasFolders_ = false;
  std::unordered_map<std::int64_t, Place> folders_;
  std::unordered_set<std::int64_t> groups_;
  std::vector<std::int64_t> contacts_;  ///< ids, sorted
  Finding long_{.Code = "long-name",
                .What = u"Names are longer than their editor takes",
                .Causes = u"Their end is cut off when they are edited."};
};

}  // namespace

std::vector<Finding> CheckRows(database::Connection& connection, const Structure& structure,
                               Console& console) {
  return RowChecks(connection, structure, console).Run();
}

}  // namespace ktrv::tool
