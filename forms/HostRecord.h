#pragma once

#include "forms/contact/ContactRequest.h"
#include "forms/folder/FolderRequest.h"
#include "forms/groups/GroupRequest.h"

namespace ktrv::forms {

/// Stores what the host can read back about the editors: the request when one opens, the result
/// after it has closed.
class HostRecord {
 public:
  virtual ~HostRecord() = default;

  virtual void Take(const ContactRequest& opened) = 0;
  virtual void Take(const ContactResult& left) = 0;
  virtual void Take(const FolderRequest& opened) = 0;
  virtual void Take(const FolderResult& left) = 0;
  virtual void Take(const GroupRequest& opened) = 0;
  virtual void Take(const GroupResult& left) = 0;

  /// The names of the last recipient selection. Cancelling a group editor clears them.
  virtual String& ContactsNames() = 0;
  /// Whether the properties of a listed group are open.
  virtual bool& IsOpenForProperties() = 0;
};

}  // namespace ktrv::forms
