#include "tool/Export.h"

#include <fstream>
#include <unordered_map>

#include "common/Error.h"
#include "data/ToolQueries.h"
#include "tool/ContactColumns.h"
#include "tool/Directory.h"
#include "tool/Files.h"
#include "tool/Progress.h"
#include "tool/Query.h"

namespace ktrv::tool {
namespace {

namespace Queries = data::ToolQueries;

/// The names of folders and groups, and who is in which group.
class Places {
 public:
  explicit Places(database::Connection& connection) {
    for (const Folder& folder : ReadFolders(connection)) folders_[folder.Id] = folder.Name;
    for (const Group& group : ReadGroups(connection)) groups_[group.Id] = group.Name;
    Query query(connection, Queries::kContactMemberships);
    while (query.Next()) {
      const auto group = groups_.find(String(query.Text(0)));
      if (group == groups_.end()) continue;
      auto& names = memberships_[String(query.Text(1))];
      if (names.empty() || names.back() != group->second) names.emplace_back(group->second);
    }
  }

  std::optional<StringView> FolderOf(StringView folderId) const {
    const auto folder = folders_.find(String(folderId));
    return folder == folders_.end() ? std::nullopt : std::optional<StringView>(folder->second);
  }
  const std::vector<StringView>& GroupsOf(const String& contactId) const {
    static const std::vector<StringView> kNone;
    const auto found = memberships_.find(contactId);
    return found == memberships_.end() ? kNone : found->second;
  }

 private:
  std::unordered_map<String, String> folders_;
  std::unordered_map<String, String> groups_;
  std::unordered_map<String, std::vector<StringView>> memberships_;
};

struct Chosen {
  String Rows;   ///< query for contacts
  String Count;  ///< query for their number
};

/// The contacts that the options name.
Chosen ChosenContacts(const ExportOptions& options, database::Connection& connection) {
  if (!options.Group.empty()) {
    const auto groups = ReadGroups(connection);
    const String id = FindGroup(groups, options.Group).Id;
    return {Queries::ContactsOfGroup(id), Queries::CountOfGroup(id)};
  }
  if (options.Folder.empty()) {
    return {String(Queries::kContacts), Queries::CountOf(u"SMS_ABCONTACTS")};
  }
  const auto folders = ReadFolders(connection);
  const Folder& folder = FindFolder(folders, options.Folder);
  if (folder.IsRemote) {
    throw Error(ErrorNumber::InvalidArgument,
                u"The folder \"" + folder.Name +
                    u"\" shows remote contacts, which belong to TALVERO and are not exported");
  }
  return {Queries::ContactsOfFolder(folder.Id), Queries::CountOfFolder(folder.Id)};
}

/// Writes the rows of the query and counts them.
void WriteContacts(StringView text, database::Connection& connection, ContactWriter& writer,
                   Progress& progress, std::int64_t& written) {
  const Places places(connection);
  Query query(connection, text);
  ContactRecord contact;
  contact.Columns.resize(ContactColumns::kNames.size());
  String lastId;
  String lastFolder = u"0";
  writer.Begin();
  while (query.Next()) {
    const StringView id = query.Text(0);
    if (written > 0 && id == lastId) continue;  // twice in the group
    lastId = id;
    if (query.Text(1) != lastFolder) {
      lastFolder = query.Text(1);
      contact.Folder = places.FolderOf(lastFolder);
    }
    contact.Groups = places.GroupsOf(lastId);
    for (std::size_t column = 0; column < contact.Columns.size(); ++column) {
      contact.Columns[column] = query.Cell(2 + column);
    }
    writer.Write(contact);
    progress.Count(++written);
  }
  writer.End();
}

/// Writes the rows to the standard output.
void PrintContacts(const ExportOptions& options, StringView text, database::Connection& connection,
                   Console& console, Progress& progress) {
  console.Json = options.Format == FileFormat::Json;
  const auto writer = MakeWriter(options.Format, console.Out, options.ByteOrderMark);
  std::int64_t written = 0;
  try {
    WriteContacts(text, connection, *writer, progress, written);
  } catch (...) {
    writer->Flush();
    if (written > 0) console.Written = JsonPart::Rows;
    throw;
  }
  progress.Finish(written);
}

Error CannotWrite(const std::string& name) {
  return Error(ErrorNumber::DriverFailure, u"The file " + FromUtf8(name) + u" cannot be written");
}

}  // namespace

int Export(const ExportOptions& options, Book& book, Console& console) {
  const auto [query, count] = ChosenContacts(options, book.Connection);
  Progress progress(console, "exported");
  if (console.IsInteractive) progress.Total = CountOf(book.Connection, count);
  if (options.Output.empty()) {
    PrintContacts(options, query, book.Connection, console, progress);
    return ExitCode::Done;
  }
  const std::filesystem::path path = PathOf(options.Output);
  std::filesystem::path unfinished = path;
  unfinished += ".part";
  std::ofstream file(unfinished, std::ios::binary | std::ios::trunc);
  if (!file) throw CannotWrite(options.Output);
  std::int64_t written = 0;
  const auto writer = MakeWriter(options.Format, file, options.ByteOrderMark);
  WriteContacts(query, book.Connection, *writer, progress, written);
  file.close();
  if (!file) throw CannotWrite(options.Output);
  std::error_code failure;
  std::filesystem::rename(unfinished, path, failure);
  if (failure) throw CannotWrite(options.Output);
  progress.Finish(written);
  return ExitCode::Done;
}

}  // namespace ktrv::tool
