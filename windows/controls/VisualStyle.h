#pragma once

#include <windows.h>

namespace ktrv::windows {

/// Whether the user wants high contrast: then only the system's colours are used.
bool IsHighContrast();

/// Activates the module's manifest (resource 2) on this thread for its lifetime. Windows created
/// meanwhile use the themed common controls, whatever the host's manifest says.
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
