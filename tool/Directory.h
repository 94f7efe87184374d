#pragma once

#include <string>
#include <vector>

#include "common/Text.h"
#include "database/Connection.h"

namespace ktrv::tool {

struct Folder {
  String Id;
  String Name;
  bool IsRemote = false;  ///< shows the remote contacts of a category
  String Category;
};

struct Group {
  String Id;
  String Name;
  String FolderId;  ///< "0": outside any folder
};

/// All folders that the tree shows, shared ones first. \throws Error
std::vector<Folder> ReadFolders(database::Connection& connection);
/// All groups. \throws Error
std::vector<Group> ReadGroups(database::Connection& connection);

/// The folder with this name or, written "#12", this id. \param name in UTF-8. \throws Error if
/// there is none, or more than one with the name
const Folder& FindFolder(const std::vector<Folder>& folders, const std::string& name);
/// The same for a group.
const Group& FindGroup(const std::vector<Group>& groups, const std::string& name);

}  // namespace ktrv::tool
