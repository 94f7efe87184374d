#pragma once

namespace ktrv::controls {

/// The pictures that the component draws itself, sharp at every resolution.
enum class Image {
  None,
  SharedContacts,  ///< the root of the tree
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
};

}  // namespace ktrv::controls
