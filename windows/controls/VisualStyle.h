#pragma once

#include <windows.h>

namespace ktrv::windows {

/// While it lives, windows that this thread makes are those of the common controls that the
/// module's manifest (resource 2) asks for: drawn in the user's theme whatever the host's own
/// manifest says.
class VisualStyle {
 public:
  VisualStyle();
  ~VisualStyle();
  VisualStyle(const VisualStyle&) = delete;
  VisualStyle& operator=(const VisualStyle&) = delete;

 private:
  HANDLE context_;
  ULONG_PTR cookie_ = 0;
  bool active_ = false;
};

}  // namespace ktrv::windows
