#pragma once

#include <windows.h>
#include <oleauto.h>

#include <utility>

#include "common/Error.h"
#include "windows/base/Entry.h"

namespace ktrv::windows {

/// Converts an automation error number to an HRESULT: numbers of VB to FACILITY_CONTROL, HRESULTs
/// (negative) unchanged.
HRESULT ResultOf(std::int32_t number) noexcept;

/// Call only in a catch block. Sets the thread's error information from the exception being
/// handled. \return its HRESULT
HRESULT ReportCurrentFailure(const IID& interfaceId) noexcept;

/// Runs the body of a COM method. Converts every exception to an HRESULT with error information.
template <class Body>
HRESULT Guarded(const IID& interfaceId, Body&& body) noexcept {
  const Entry entry;
  SetErrorInfo(0, nullptr);  // clear what an earlier call left
  try {
    std::forward<Body>(body)();
    return S_OK;
  } catch (...) {
    return ReportCurrentFailure(interfaceId);
  }
}

}  // namespace ktrv::windows
