#pragma once

#include <map>
#include <string>
#include <vector>

#include "tool/Directory.h"

namespace ktrv::tool {

/// The folders and groups that an import puts contacts in. Those that our export names are created
/// if they are not there, unless it is a dry run.
class ImportPlaces {
 public:
  /// \param connection open; must outlive the object. \param creates false: nothing is created.
  /// \throws Error
  ImportPlaces(database::Connection& connection, bool creates);

  /// The ids of those that the user names. \throws Error if there is none, and for a folder that
  /// shows remote contacts
  std::int64_t ChosenFolder(const std::string& name) const;
  std::int64_t ChosenGroup(const std::string& name) const;

  /// Why a row with this folder or group is rejected: its name is too long, or it takes no
  /// contacts. Empty if it is not. \throws Error
  String RefusalOfFolder(const String& name);
  static String RefusalOfGroup(const String& name);

  /// The ids of those that a file names, as the database compares names. Only for names that are
  /// not refused. \return 0 for one that would be created. \throws Error
  std::int64_t FolderOf(const String& name) {
    return Known(folderIds_, name, &ImportPlaces::FindFolderId);
  }
  std::int64_t GroupOf(const String& name) {
    return Known(groupIds_, name, &ImportPlaces::FindGroupId);
  }

 private:
  static constexpr std::int64_t kNotShared = -1;  ///< in place of a folder's id

  using Ids = std::map<String, std::int64_t>;

  std::int64_t Known(Ids& ids, const String& name,
                     std::int64_t (ImportPlaces::*find)(const String& name)) {
    const auto found = ids.find(name);
    return found != ids.end() ? found->second : ids[name] = (this->*find)(name);
  }
  std::int64_t FindFolderId(const String& name);
  std::int64_t FindGroupId(const String& name);

  database::Connection& connection_;
  bool creates_;
  std::vector<Folder> folders_;
  std::vector<Group> groups_;
  Ids folderIds_;  ///< of names that rows have had
  Ids groupIds_;
};

}  // namespace ktrv::tool
