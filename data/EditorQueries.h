#pragma once

#include "data/IdText.h"

/// Lookups before an editor opens. Hosts that trace statements match these texts, blanks included.
/// All throw as WithId does.
namespace ktrv::data::EditorQueries {

/// FNAME of a shared contact.
inline String ContactName(StringView contactId) {
  return WithId(u"SELECT FNAME FROM SMS_ABCONTACTS WHERE ID  = {id}", contactId);
}

/// NAME of a shared group.
inline String GroupName(StringView groupId) {
  return WithId(u"SELECT NAME FROM SMS_ABGROUPS WHERE ID = {id}", groupId);
}

/// TYPE of the folder that a new group goes into.
inline String FolderType(StringView folderId) {
  return WithId(u"SELECT TYPE FROM SMS_ABFOLDERS WHERE ID = {id}", folderId);
}

}  // namespace ktrv::data::EditorQueries
