#pragma once

#include "data/IdText.h"

/// Texts that look up what an editor is opened for. The blanks are part of the texts, as in
/// UserQueries. Both throw as WithId does.
namespace ktrv::data::EditorQueries {

/// FNAME of a shared contact.
inline String ContactName(StringView contactId) {
  return WithId(u"SELECT FNAME FROM SMS_ABCONTACTS WHERE ID  = {id}", contactId);
}

/// NAME of a shared group.
inline String GroupName(StringView groupId) {
  return WithId(u"SELECT NAME FROM SMS_ABGROUPS WHERE ID = {id}", groupId);
}

}  // namespace ktrv::data::EditorQueries
