#include "tool/import/ImportPlaces.h"

#include <algorithm>
#include <optional>

#include "common/Error.h"
#include "data/FolderQueries.h"
#include "data/GroupQueries.h"
#include "database/Command.h"

namespace ktrv::tool {
namespace {

std::int64_t IdOf(const String& id) {
  return ParseInteger(id).value_or(0);
}

constexpr std::int64_t kNameLimit = 100;  // characters, as in the editors

database::Recordset Execute(database::Connection& connection, const data::CommandText& text,
                            std::vector<Variant> values) {
  database::Command command;
  command.SetActiveConnection(&connection);
  command.SetCommandText(text.Text);
  for (const data::CommandParameter& parameter : text.Parameters) {
    const bool isNumber = parameter.Kind == data::ParameterKind::Integer;
    command.Append(String(parameter.Name),
                   isNumber ? database::DataType::Integer : database::DataType::VarWChar,
                   parameter.Size);
  }
  return command.Execute(std::move(values));
}

const data::CommandText& Folders(data::FolderQueries::Name name) {
  return data::FolderQueries::All()[static_cast<std::size_t>(name)];
}
const data::CommandText& Groups(data::GroupQueries::Name name) {
  return data::GroupQueries::Commands()[static_cast<std::size_t>(name)];
}

String RefusalOfName(StringView kind, const String& name) {
  // A tab is harmless, and names may have one already.
  if (std::any_of(name.begin(), name.end(),
                  [](char16_t unit) { return unit < u' ' && unit != u'\t'; })) {
    return u"The name of the " + String(kind) + u" has control characters";
  }
  const auto length = static_cast<std::int64_t>(name.size());
  if (length <= kNameLimit) return {};
  return u"The name of the " + String(kind) + u" has " + ToDecimal(length) +
         u" characters; at most " + ToDecimal(kNameLimit) + u" are allowed";
}

}  // namespace

ImportPlaces::ImportPlaces(database::Connection& connection, bool creates)
    : connection_(connection),
      creates_(creates),
      folders_(ReadFolders(connection)),
      groups_(ReadGroups(connection)) {}

std::int64_t ImportPlaces::ChosenFolder(const std::string& name) const {
  const Folder& folder = FindFolder(folders_, name);
  if (!folder.IsRemote) return IdOf(folder.Id);
  throw Error(ErrorNumber::InvalidArgument,
              u"The folder \"" + folder.Name + u"\" shows remote contacts and takes no others");
}

std::int64_t ImportPlaces::ChosenGroup(const std::string& name) const {
  return IdOf(FindGroup(groups_, name).Id);
}

String ImportPlaces::RefusalOfFolder(const String& name) {
  if (String refusal = RefusalOfName(u"folder", name); !refusal.empty()) return refusal;
  if (FolderOf(name) != kNotShared) return {};
  return u"The folder \"" + name + u"\" is not one of shared contacts";
}

String ImportPlaces::RefusalOfGroup(const String& name) {
  return RefusalOfName(u"group", name);
}

std::int64_t ImportPlaces::FindFolderId(const String& name) {
  if (name.empty()) return 0;
  const auto find = [&]() -> std::optional<std::int64_t> {
    auto rows = Execute(connection_, Folders(data::FolderQueries::Name::FolderByName), {name});
    std::optional<std::int64_t> other;
    for (; !rows.EndOfFile(); rows.MoveNext()) {
      if (EqualsIgnoringCase(Trim(ToText(rows.Field(u"TYPE"))), u"S")) {
        return IdOf(ToText(rows.Field(u"ID")));
      }
      other = kNotShared;
    }
    return other;
  };
  if (const auto found = find()) return *found;
  if (!creates_) return 0;
  Execute(connection_, Folders(data::FolderQueries::Name::InsertFolder),
          {String(u"S"), name, Null{}, String()});
  if (const auto created = find()) return *created;
  throw Error(ErrorNumber::ItemNotFound, u"The new folder \"" + name + u"\" is not found");
}

std::int64_t ImportPlaces::FindGroupId(const String& name) {
  const auto find = [&]() -> std::optional<std::int64_t> {
    auto rows = Execute(connection_, Groups(data::GroupQueries::Name::GroupIdByName), {name});
    if (rows.EndOfFile()) return std::nullopt;
    return IdOf(ToText(rows.Field(u"ID")));
  };
  if (const auto found = find()) return *found;
  if (!creates_) return 0;
  Execute(connection_, Groups(data::GroupQueries::Name::InsertGroup), {name, std::int64_t{0}});
  if (const auto created = find()) return *created;
  throw Error(ErrorNumber::ItemNotFound, u"The new group \"" + name + u"\" is not found");
}

}  // namespace ktrv::tool
