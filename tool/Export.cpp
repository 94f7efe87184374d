#include "tool/Export.h"

#include <fstream>
#include <random>
#include <unordered_map>

#include "common/Error.h"
#include "data/ToolQueries.h"
#include "tool/ContactColumns.h"
#include "tool/Directory.h"
#include "tool/Files.h"
#include "tool/ParseId.h"
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
    const bool comparesTexts =
        connection.CurrentLink()->Get().EngineKind() == database::Engine::PostgreSql;
    Query query(connection, Queries::kContactMemberships);
    while (query.Next()) {
      const auto group = groups_.find(String(query.Text(0)));
      if (group == groups_.end()) continue;
      const StringView contact = query.Text(1);
      const auto id = comparesTexts ? std::nullopt : ParseId(contact);
      auto& names = memberships_[id ? ToDecimal(*id) : String(contact)];
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
  String Rows;           ///< query for contacts
  String Count;          ///< query for their number
  bool OfGroup = false;  ///< a contact that is in it twice comes twice
};

/// The contacts that the options name.
Chosen ChosenContacts(const ExportOptions& options, database::Connection& connection) {
  if (!options.Group.empty()) {
    const auto groups = ReadGroups(connection);
    const String id = FindGroup(groups, options.Group).Id;
    return {Queries::ContactsOfGroup(id), Queries::CountOfGroup(id), true};
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

/// Writes the contacts and counts them.
void WriteContacts(const Chosen& chosen, database::Connection& connection, ContactWriter& writer,
                   Progress& progress, std::int64_t& written) {
  const Places places(connection);
  Query query(connection, chosen.Rows);
  ContactRecord contact;
  contact.Columns.resize(ContactColumns::kNames.size());
  String lastId;
  String lastFolder = u"0";
  writer.Begin();
  while (query.Next()) {
    const StringView id = query.Text(0);
    if (chosen.OfGroup && written > 0 && id == lastId) continue;
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

/// Writes the contacts to the standard output.
void PrintContacts(const ExportOptions& options, const Chosen& chosen,
                   database::Connection& connection, Console& console, Progress& progress) {
  console.Json = options.Format == FileFormat::Json;
  const auto writer = MakeWriter(options.Format, console.Out, options.ByteOrderMark);
  std::int64_t written = 0;
  try {
    WriteContacts(chosen, connection, *writer, progress, written);
  } catch (...) {
    writer->Flush();
    if (written > 0) console.Written = JsonPart::Rows;
    throw;
  }
  progress.Finish(written);
}

/// A file that gets its name when it is complete. Until then its name is one of its own, because
/// another export may write the same file; it is removed if it is not completed.
class NewFile {
 public:
  /// \param name in UTF-8. \throws Error if it cannot be written
  explicit NewFile(const std::string& name) : name_(name), unfinished_(PathOf(name)) {
    std::random_device random;
    unfinished_ += "." + std::to_string(random()) + ".part";
    Stream.open(unfinished_, std::ios::binary | std::ios::trunc);
    FailIf(!Stream);
  }
  ~NewFile() {
    Stream.close();
    std::error_code ignored;
    std::filesystem::remove(unfinished_, ignored);
  }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  /// \throws Error
  void Complete() {
    Stream.close();
    FailIf(!Stream);
    std::error_code failure;
    std::filesystem::rename(unfinished_, PathOf(name_), failure);
    FailIf(static_cast<bool>(failure));
  }

  std::ofstream Stream;

 private:
  void FailIf(bool failed) const {
    if (!failed) return;
    throw Error(ErrorNumber::DriverFailure, u"The file " + FromUtf8(name_) + u" cannot be written");
  }

  std::string name_;
  std::filesystem::path unfinished_;
};

}  // namespace

int Export(const ExportOptions& options, Book& book, Console& console) {
  const Chosen chosen = ChosenContacts(options, book.Connection);
  Progress progress(console, "exported");
  if (console.IsInteractive) progress.Total = CountOf(book.Connection, chosen.Count);
  if (options.Output.empty()) {
    PrintContacts(options, chosen, book.Connection, console, progress);
    return ExitCode::Done;
  }
  NewFile file(options.Output);
  std::int64_t written = 0;
  const auto writer = MakeWriter(options.Format, file.Stream, options.ByteOrderMark);
  WriteContacts(chosen, book.Connection, *writer, progress, written);
  file.Complete();
  progress.Finish(written);
  return ExitCode::Done;
}

}  // namespace ktrv::tool
