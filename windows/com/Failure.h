#pragma once

#include <windows.h>
#include <oleauto.h>

#include <utility>

#include "common/Error.h"
#include "windows/base/Entry.h"

namespace ktrv::windows {

/// The result code that carries an automation error number: VB's own numbers in the control
/// facility, those that are result codes already unchanged.
HRESULT ResultOf(std::int32_t number) noexcept;

/// Call in a catch block only: leaves number, description and source of the failure being handled
/// as the thread's error information of the interface, and gives its result code.
HRESULT ReportCurrentFailure(const IID& interfaceId) noexcept;

/// Runs the body of a COM method. Whatever it throws becomes a result code with error information;
/// nothing gets into the host.
template <class Body>
HRESULT Guarded(const IID& interfaceId, Body&& body) noexcept {
  const Entry entry;
  SetErrorInfo(0, nullptr);  // a stale one would be taken for this call's
  try {
    std::forward<Body>(body)();
    return S_OK;
  } catch (...) {
    return ReportCurrentFailure(interfaceId);
  }
}

}  // namespace ktrv::windows
