#pragma once

#include "forms/contact/ContactRequest.h"
#include "forms/folder/FolderRequest.h"
#include "forms/groups/GroupRequest.h"

namespace ktrv::forms {

/// What the host can read back of the editors, whoever opened them: each says here what it was
/// opened with, and what it leaves when it has closed.
class HostRecord {
 public:
  virtual ~HostRecord() = default;

  virtual void Take(const ContactRequest& opened) = 0;
  virtual void Take(const ContactResult& left) = 0;
  virtual void Take(const FolderRequest& opened) = 0;
  virtual void Take(const FolderResult& left) = 0;
  virtual void Take(const GroupRequest& opened) = 0;
  virtual void Take(const GroupResult& left) = 0;

  /// The names of the last selection of recipients, which a group editor's cancel takes away.
  virtual String& ContactsNames() = 0;
  /// Whether the properties of a listed group are being shown.
  virtual bool& IsOpenForProperties() = 0;
};

}  // namespace ktrv::forms
