#include "tool/Directory.h"

#include <algorithm>

#include "common/Error.h"
#include "data/ToolQueries.h"
#include "tool/Query.h"

namespace ktrv::tool {
namespace {

namespace Queries = data::ToolQueries;

template <class Item>
const Item& Find(const std::vector<Item>& items, const std::string& name, StringView kind) {
  const String sought = FromUtf8(name);
  const auto find = [&](auto isSought) -> const Item* {
    const auto found = std::find_if(items.begin(), items.end(), isSought);
    if (found == items.end()) return nullptr;
    if (std::any_of(std::next(found), items.end(), isSought)) {
      throw Error(ErrorNumber::InvalidArgument, u"There is more than one " + String(kind) +
                                                    u" with the name \"" + sought +
                                                    u"\"; give its id as \"#ID\"");
    }
    return &*found;
  };
  if (const Item* item = find([&](const Item& each) { return each.Name == sought; })) return *item;
  if (const Item* item = find([&](const Item& each) { return u"#" + each.Id == sought; })) {
    return *item;
  }
  const auto same = [&](const Item& each) { return EqualsIgnoringCase(each.Name, sought); };
  if (const Item* item = find(same)) return *item;
  throw Error(ErrorNumber::ItemNotFound,
              u"There is no " + String(kind) + u" with the name \"" + sought + u"\"");
}

}  // namespace

std::vector<Folder> ReadFolders(database::Connection& connection) {
  std::vector<Folder> folders;
  Query query(connection, Queries::kFolders);
  while (query.Next()) {
    const StringView type = Trim(query.Text(2));
    const bool isRemote = EqualsIgnoringCase(type, u"R");
    if (!isRemote && !EqualsIgnoringCase(type, u"S")) continue;
    folders.push_back(
        {String(query.Text(0)), String(query.Text(1)), isRemote, String(query.Text(3))});
  }
  std::stable_partition(folders.begin(), folders.end(),
                        [](const Folder& folder) { return !folder.IsRemote; });
  return folders;
}

std::vector<Group> ReadGroups(database::Connection& connection) {
  std::vector<Group> groups;
  Query query(connection, Queries::kGroups);
  while (query.Next()) {
    groups.push_back({String(query.Text(0)), String(query.Text(1)), String(query.Text(2))});
  }
  return groups;
}

const Folder& FindFolder(const std::vector<Folder>& folders, const std::string& name) {
  return Find(folders, name, u"folder");
}

const Group& FindGroup(const std::vector<Group>& groups, const std::string& name) {
  return Find(groups, name, u"group");
}

}  // namespace ktrv::tool
