#include "windows/controls/VisualStyle.h"

#include <array>

#include "windows/base/Module.h"

namespace ktrv::windows {

bool IsHighContrast() {
  HIGHCONTRASTW contrast{};
  contrast.cbSize = sizeof contrast;
  return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) &&
         contrast.dwFlags & HCF_HIGHCONTRASTON;
}

VisualStyle::VisualStyle() {
  std::array<wchar_t, MAX_PATH> path{};
  GetModuleFileNameW(ThisModule(), path.data(), static_cast<DWORD>(path.size()));
  ACTCTXW request{};
  request.cbSize = sizeof request;
  request.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID | ACTCTX_FLAG_HMODULE_VALID;
  request.lpSource = path.data();
  request.lpResourceName = MAKEINTRESOURCEW(2);
  request.hModule = ThisModule();
  context_ = CreateActCtxW(&request);
  // Without the manifest the controls work too, with the host's visual style.
  active_ = context_ != INVALID_HANDLE_VALUE && ActivateActCtx(context_, &cookie_);
}

VisualStyle::~VisualStyle() {
  if (active_) DeactivateActCtx(0, cookie_);
  if (context_ != INVALID_HANDLE_VALUE) ReleaseActCtx(context_);
}

}  // namespace ktrv::windows
