#include "tool/import/ImportPlaces.h"

#include <algorithm>

#include "common/Error.h"
#include "data/FolderQueries.h"
#include "data/GroupQueries.h"
#include "database/Command.h"

namespace ktrv::tool {
namespace {

std::int64_t IdOf(const String& id) {
  return ParseInteger(id).value_or(0);
}

void Execute(database::Connection& connection, const data::CommandText& text,
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
  command.Execute(std::move(values));
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

std::int64_t ImportPlaces::FindFolderId(const String& name) {
  const auto find = [&] {
    return std::find_if(folders_.begin(), folders_.end(), [&](const Folder& folder) {
      return !folder.IsRemote && folder.Name == name;
    });
  };
  if (name.empty()) return 0;
  if (const auto found = find(); found != folders_.end()) return IdOf(found->Id);
  if (!creates_) return 0;
  const auto& insert =
      data::FolderQueries::All()[static_cast<std::size_t>(data::FolderQueries::Name::InsertFolder)];
  Execute(connection_, insert, {String(u"S"), name, Null{}, String()});
  folders_ = ReadFolders(connection_);
  const auto created = find();
  if (created == folders_.end()) {
    throw Error(ErrorNumber::ItemNotFound, u"The new folder \"" + name + u"\" is not found");
  }
  return IdOf(created->Id);
}

std::int64_t ImportPlaces::FindGroupId(const String& name) {
  const auto find = [&] {
    return std::find_if(groups_.begin(), groups_.end(),
                        [&](const Group& group) { return group.Name == name; });
  };
  if (const auto found = find(); found != groups_.end()) return IdOf(found->Id);
  if (!creates_) return 0;
  const auto& insert = data::GroupQueries::Commands()[static_cast<std::size_t>(
      data::GroupQueries::Name::InsertGroup)];
  Execute(connection_, insert, {name, std::int64_t{0}});
  groups_ = ReadGroups(connection_);
  const auto created = find();
  if (created == groups_.end()) {
    throw Error(ErrorNumber::ItemNotFound, u"The new group \"" + name + u"\" is not found");
  }
  return IdOf(created->Id);
}

}  // namespace ktrv::tool
