#pragma once

#include "forms/folder/FolderRequest.h"

namespace ktrv::forms {

/// What the host can read back of the editors, whoever opened them: each says here what it was
/// opened with, and what it leaves when it has closed.
class HostRecord {
 public:
  virtual ~HostRecord() = default;

  virtual void Take(const FolderRequest& opened) = 0;
  virtual void Take(const FolderResult& left) = 0;
};

}  // namespace ktrv::forms
