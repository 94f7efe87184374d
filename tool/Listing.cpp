#include "tool/Listing.h"

#include <map>

#include "common/Error.h"
#include "data/AddressBookQueries.h"
#include "data/ContactQueries.h"
#include "data/GroupQueries.h"
#include "data/ToolQueries.h"
#include "database/Command.h"
#include "tool/Directory.h"
#include "tool/Query.h"
#include "tool/RowPrinter.h"

namespace ktrv::tool {
namespace {

namespace Queries = data::ToolQueries;
using Counts = std::map<String, String, std::less<>>;

Counts ReadCounts(database::Connection& connection, StringView text) {
  Counts counts;
  Query query(connection, text);
  while (query.Next()) counts.emplace(query.Text(0), query.Text(1));
  return counts;
}

StringView CountIn(const Counts& counts, StringView key) {
  const auto found = counts.find(key);
  return found == counts.end() ? StringView(u"0") : StringView(found->second);
}

/// The kind of a list's row for its CONTACTTYPE.
StringView KindOf(StringView type) {
  return type == u"1" ? u"contact" : type == u"2" ? u"group" : u"remote";
}

/// Prints one of the lists of the address book.
void PrintItems(StringView text, Book& book, Console& console) {
  // The lists' columns, in their order: see data::AddressBookQueries.
  constexpr std::size_t kId = 0;
  constexpr std::size_t kName = 1;
  constexpr std::size_t kMobileNo = 3;
  constexpr std::size_t kEmail = 4;
  constexpr std::size_t kAddress = 5;
  constexpr std::size_t kOrganisation = 6;
  constexpr std::size_t kType = 8;
  RowPrinter rows(console, {"KIND", "ID", "NAME", "MOBILENO", "EMAIL", "ADDRESS", "ORGANISATION"});
  Query query(book.Connection, text);
  while (query.Next()) {
    rows.Print({KindOf(query.Text(kType)), query.Cell(kId), query.Cell(kName),
                query.Cell(kMobileNo), query.Cell(kEmail), query.Cell(kAddress),
                query.Cell(kOrganisation)});
  }
  rows.Finish();
}

/// Prints the contacts and remote contacts that a message to the group goes to.
void PrintRecipients(const Group& group, Book& book, Console& console) {
  database::Command command;
  command.SetActiveConnection(&book.Connection);
  command.SetCommandText(String(data::GroupQueries::kExpandedMembers));
  command.Append(u"GROUP_ID_1", database::DataType::Integer);
  command.Append(u"GROUP_ID_2", database::DataType::Integer);
  const Variant id = ToInteger(group.Id);
  const database::Recordset members = command.Execute({id, id});
  RowPrinter rows(console, {"ID", "NAME", "MOBILENO", "COUNTRYCODE"});
  for (std::int64_t row = 0; row < members.RecordCount(); ++row) {
    rows.Print({members.CellText(row, 0), members.CellText(row, 1), members.CellText(row, 2),
                members.CellText(row, 3)});
  }
  rows.Finish();
}

}  // namespace

int List(const ListOptions& options, Book& book, Console& console) {
  namespace Lists = data::AddressBookQueries;
  if (options.Folder.empty()) {
    PrintItems(Lists::RootItems(book.Dialect), book, console);
    return ExitCode::Done;
  }
  const auto folders = ReadFolders(book.Connection);
  const Folder& folder = FindFolder(folders, options.Folder);
  PrintItems(folder.IsRemote ? Lists::RemoteFolderItems(folder.Id)
                             : Lists::FolderItems(book.Dialect, folder.Id),
             book, console);
  return ExitCode::Done;
}

int Show(const ShowOptions& options, Book& book, Console& console) {
  const String id = FromUtf8(options.ContactId);
  if (!IsDecimalDigits(id)) {
    throw Error(ErrorNumber::InvalidArgument, u"\"" + id + u"\" is not the id of a contact");
  }
  Query query(book.Connection, data::ContactQueries::ById(id));
  if (!query.Next()) {
    throw Error(ErrorNumber::ItemNotFound, u"There is no contact with the id " + id);
  }
  std::vector<std::string> names;
  std::vector<std::optional<StringView>> cells;
  for (std::size_t column = 0; column < query.Columns().size(); ++column) {
    names.push_back(ToUtf8(ToUpperAscii(query.Columns()[column].Name)));
    cells.push_back(query.Cell(column));
  }
  if (console.Json) {
    RowPrinter rows(console, names);
    rows.Print(cells);
    rows.Finish();
    return ExitCode::Done;
  }
  RowPrinter rows(console, {"COLUMN", "VALUE"});
  for (std::size_t column = 0; column < names.size(); ++column) {
    const String name = FromUtf8(names[column]);
    rows.Print({name, cells[column]});
  }
  rows.Finish();
  return ExitCode::Done;
}

int Folders(Book& book, Console& console) {
  const auto folders = ReadFolders(book.Connection);
  const Counts contacts = ReadCounts(book.Connection, Queries::kContactsOfFolders);
  Counts remote;
  std::map<String, std::int64_t> groups;
  for (const Group& group : ReadGroups(book.Connection)) ++groups[group.FolderId];
  RowPrinter rows(console, {"ID", "NAME", "KIND", "CATEGORY", "CONTACTS", "GROUPS"});
  for (const Folder& folder : folders) {
    if (folder.IsRemote && remote.empty()) {
      remote = ReadCounts(book.Connection, Queries::kContactsOfCategories);
    }
    const String groupCount = ToDecimal(groups[folder.Id]);
    rows.Print({folder.Id, folder.Name, folder.IsRemote ? u"remote" : u"shared",
                folder.IsRemote ? std::optional<StringView>(folder.Category) : std::nullopt,
                folder.IsRemote ? CountIn(remote, folder.Category) : CountIn(contacts, folder.Id),
                groupCount});
  }
  rows.Finish();
  return ExitCode::Done;
}

int Groups(Book& book, Console& console) {
  std::map<String, String> names;
  for (const Folder& folder : ReadFolders(book.Connection)) names[folder.Id] = folder.Name;
  const Counts members = ReadCounts(book.Connection, Queries::kMembersOfGroups);
  RowPrinter rows(console, {"ID", "NAME", "FOLDER", "MEMBERS"});
  for (const Group& group : ReadGroups(book.Connection)) {
    const auto folder = names.find(group.FolderId);
    rows.Print({group.Id, group.Name,
                folder == names.end() ? std::nullopt : std::optional<StringView>(folder->second),
                CountIn(members, group.Id)});
  }
  rows.Finish();
  return ExitCode::Done;
}

int Members(const MembersOptions& options, Book& book, Console& console) {
  const auto groups = ReadGroups(book.Connection);
  const Group& group = FindGroup(groups, options.Group);
  if (options.Expand) {
    PrintRecipients(group, book, console);
  } else {
    PrintItems(data::AddressBookQueries::GroupItems(book.Dialect, group.Id), book, console);
  }
  return ExitCode::Done;
}

}  // namespace ktrv::tool
