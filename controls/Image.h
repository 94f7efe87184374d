#pragma once

namespace ktrv::controls {

/// Pictures that the component draws itself, at any resolution.
enum class Image {
  None,
  SharedContacts,  ///< root of the tree
  Group,
  Folder,
  RemoteFolder,
  Contact,
  RemoteContact,
  SortAscending,
  SortDescending,
  New,
  Properties,
  Delete,
  Refresh,
  Tick,
};

}  // namespace ktrv::controls
