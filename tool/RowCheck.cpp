#include "tool/RowCheck.h"

#include <algorithm>
#include <map>
#include <unordered_set>

#include "common/Variant.h"
#include "data/ToolQueries.h"
#include "database/Command.h"
#include "tool/Directory.h"
#include "tool/JsonText.h"
#include "tool/PhoneNumber.h"
#include "tool/Query.h"

namespace ktrv::tool {
namespace {

namespace Queries = data::ToolQueries;

constexpr std::size_t kNameLimit = 50;    ///< of a contact's names, in UTF-16 units
constexpr std::size_t kPlaceLimit = 100;  ///< of a folder's or group's name

/// A row to take out of its folder.
struct Misplaced {
  std::int64_t Id;
  std::int64_t FolderId;
};

struct Membership {
  std::int64_t GroupId;
  String ContactId;
  String Type;
};

String Quoted(StringView text) {
  return u"\"" + String(text) + u"\"";
}

/// {"table": ..., "column": ..., ...}
std::string JsonOf(StringView table,
                   std::initializer_list<std::pair<const char*, StringView>> cells) {
  std::string json = "{\"table\": ";
  AppendJson(json, table);
  for (const auto& [name, value] : cells) {
    json.append(", \"").append(name).append("\": ");
    AppendJson(json, value);
  }
  return json + '}';
}

void TakeOut(StringView text, const std::vector<Misplaced>& rows,
             database::Connection& connection) {
  database::Command command;
  command.SetActiveConnection(&connection);
  command.SetCommandText(String(text));
  command.Append(u"ID", database::DataType::Integer);
  command.Append(u"FOLDER_ID", database::DataType::Integer);
  for (const Misplaced& row : rows) command.Execute({row.Id, row.FolderId});
}

void DeleteMemberships(const std::vector<Membership>& rows, database::Connection& connection) {
  database::Command command;
  command.SetActiveConnection(&connection);
  command.SetCommandText(String(Queries::kDeleteMembership));
  command.Append(u"GROUP_ID", database::DataType::Integer);
  command.Append(u"CONTACT_ID", database::DataType::VarWChar, 50);
  command.Append(u"CONTACT_TYPE", database::DataType::VarWChar, 1);
  for (const Membership& row : rows) command.Execute({row.GroupId, row.ContactId, row.Type});
}

/// The check of all rows, table by table.
class RowChecks {
 public:
  RowChecks(database::Connection& connection, const Structure& structure)
      : connection_(connection), structure_(structure) {}

  std::vector<Finding> Run() {
    hasFolders_ = structure_.Has(u"SMS_ABFOLDERS");
    if (hasFolders_) CheckFolders();
    if (structure_.Has(u"SMS_ABGROUPS")) CheckGroups();
    if (structure_.Has(u"SMS_ABCONTACTS")) CheckContacts();
    if (structure_.Has(u"SMS_ABGROUPMAPS")) CheckMemberships();
    if (structure_.Has(u"SMS_USERS")) CheckUsers();
    Keep(std::move(long_));
    return std::move(findings_);
  }

 private:
  void Keep(Finding&& finding) {
    if (finding.Count > 0) findings_.push_back(std::move(finding));
  }

  void CheckFolders() {
    for (const Folder& folder : ReadFolders(connection_)) {
      (folder.IsRemote ? remoteFolders_ : sharedFolders_).insert(folder.Id);
      CheckLength(u"folder", folder.Id, folder.Name, kPlaceLimit);
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
    std::vector<Misplaced> goneRows;
    std::vector<Misplaced> remoteRows;
    for (const Group& group : ReadGroups(connection_)) {
      groups_.insert(group.Id);
      CheckLength(u"group", group.Id, group.Name, kPlaceLimit);
      if (!hasFolders_ || IsPlace(group.FolderId)) continue;
      const bool isRemote = remoteFolders_.contains(group.FolderId);
      Note(isRemote ? remote : gone, isRemote ? remoteRows : goneRows, u"SMS_ABGROUPS", u"group ",
           group.Id, group.FolderId);
    }
    Finish(std::move(gone), std::move(goneRows), Queries::kTakeGroupOut);
    Finish(std::move(remote), std::move(remoteRows), Queries::kTakeGroupOut);
  }

  void CheckContacts() {
    Finding gone{.Code = "contact-in-missing-folder",
                 .What = u"Contacts are in folders that do not exist or are remote",
                 .Causes = u"No list shows them.",
                 .Repair = u"moves them out of their folder, to Shared Contacts"};
    Finding undialled{.Code = "undialable-number",
                      .What = u"Contacts have a mobile number that cannot be dialled",
                      .Causes = u"Messages to them fail."};
    std::vector<Misplaced> goneRows;
    std::vector<std::pair<std::uint64_t, std::int64_t>> numbers;  // key and id
    String lastFolder = u"0";
    bool lastIsPlace = true;
    Query query(connection_, Queries::kNumbers);
    while (query.Next()) {
      const StringView id = query.Text(0);
      const auto number = ParseInteger(id).value_or(0);
      contacts_.push_back(number);
      if (query.Text(1) != lastFolder) {
        lastFolder = query.Text(1);
        lastIsPlace = IsPlace(lastFolder);
      }
      if (hasFolders_ && !lastIsPlace) {
        Note(gone, goneRows, u"SMS_ABCONTACTS", u"contact ", id, lastFolder);
      }
      const StringView mobile = query.Text(3);
      if (const StringView why = NotDialled(mobile); !why.empty()) {
        undialled.Add(u"contact " + String(id) + u": " + Quoted(mobile) + u", " + String(why));
      } else {
        numbers.emplace_back(NumberKey(query.Text(2), mobile), number);
      }
    }
    std::sort(contacts_.begin(), contacts_.end());
    Finish(std::move(gone), std::move(goneRows), Queries::kTakeContactOut);
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
      const StringView group = query.Text(0);
      const StringView contact = query.Text(1);
      const StringView type = query.Text(2);
      const Membership row{ParseInteger(group).value_or(0), String(contact), String(type)};
      if (structure_.Has(u"SMS_ABGROUPS") && !groups_.contains(String(group))) {
        Note(noGroup, groupRows, row);
      } else if (type == u"S" && structure_.Has(u"SMS_ABCONTACTS") && !IsContact(contact)) {
        Note(noContact, contactRows, row);
      } else if (type == u"R" && hasRemote) {
        remoteRows.push_back(row);
      }
    }
    const std::unordered_set<String> codes =
        remoteRows.empty() ? std::unordered_set<String>{} : RemoteCodes();
    for (const Membership& row : remoteRows) {
      if (!codes.contains(row.ContactId)) {
        noRemote.Add(u"group " + ToDecimal(row.GroupId) + u", remote contact " + row.ContactId);
      }
    }
    Finish(std::move(noGroup), std::move(groupRows));
    Finish(std::move(noContact), std::move(contactRows));
    Keep(std::move(noRemote));
  }

  std::unordered_set<String> RemoteCodes() {
    std::unordered_set<String> codes;
    Query query(connection_, Queries::kRemoteCodes);
    while (query.Next()) codes.emplace(query.Text(0));
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

  bool IsPlace(const String& folderId) const {
    return folderId == u"0" || sharedFolders_.contains(folderId);
  }
  bool IsContact(StringView id) const {
    const auto number = ParseInteger(id);
    return number && std::binary_search(contacts_.begin(), contacts_.end(), *number);
  }

  void CheckLength(StringView kind, StringView id, StringView name, std::size_t limit) {
    if (name.size() <= limit) return;
    long_.Add(String(kind) + u" " + String(id) + u": " +
              ToDecimal(static_cast<std::int64_t>(name.size())) + u" characters");
  }

  static void Note(Finding& finding, std::vector<Misplaced>& rows, StringView table,
                   StringView kind, StringView id, StringView folderId) {
    finding.Add(String(kind) + String(id) + u" in folder " + String(folderId));
    finding.Lost.push_back(JsonOf(table, {{"ID", id}, {"FOLDER_ID", folderId}}));
    const auto number = ParseInteger(id);
    const auto folder = ParseInteger(folderId);
    if (number && folder) rows.push_back({*number, *folder});
  }

  static void Note(Finding& finding, std::vector<Membership>& rows, const Membership& row) {
    const String group = ToDecimal(row.GroupId);
    finding.Add(u"group " + group + u", contact " + row.ContactId);
    finding.Lost.push_back(
        JsonOf(u"SMS_ABGROUPMAPS",
               {{"GROUP_ID", group}, {"CONTACT_ID", row.ContactId}, {"CONTACT_TYPE", row.Type}}));
    rows.push_back(row);
  }

  void Finish(Finding&& finding, std::vector<Misplaced>&& rows, StringView text) {
    finding.Mend = [rows = std::move(rows), text](database::Connection& connection) {
      TakeOut(text, rows, connection);
    };
    Keep(std::move(finding));
  }
  void Finish(Finding&& finding, std::vector<Membership>&& rows) {
    finding.Mend = [rows = std::move(rows)](database::Connection& connection) {
      DeleteMemberships(rows, connection);
    };
    Keep(std::move(finding));
  }

  database::Connection& connection_;
  const Structure& structure_;
  std::vector<Finding> findings_;
  bool hasFolders_ = false;
  std::unordered_set<String> sharedFolders_;
  std::unordered_set<String> remoteFolders_;
  std::unordered_set<String> groups_;
  std::vector<std::int64_t> contacts_;  ///< ids, sorted
  Finding long_{.Code = "long-name",
                .What = u"Names are longer than their editor takes",
                .Causes = u"Their end is cut off when they are edited."};
};

}  // namespace

std::vector<Finding> CheckRows(database::Connection& connection, const Structure& structure) {
  return RowChecks(connection, structure).Run();
}

}  // namespace ktrv::tool
