#include "windows/com/Failure.h"

#include "windows/base/ComPtr.h"
#include "windows/base/WideText.h"

namespace ktrv::windows {
namespace {

/// The error source that automation clients show.
constexpr wchar_t kSource[] = L"KTRVAddressBook.clsMain";

void SetInformation(const IID& interfaceId, StringView description) {
  ComPtr<ICreateErrorInfo> made;
  if (FAILED(CreateErrorInfo(made.Out()))) return;
  std::wstring text = ToWide(description);
  std::wstring source = kSource;
  made->SetGUID(interfaceId);
  made->SetDescription(text.data());
  made->SetSource(source.data());
  ComPtr<IErrorInfo> information;
  if (FAILED(made->QueryInterface(IID_IErrorInfo, reinterpret_cast<void**>(information.Out())))) {
    return;
  }
  SetErrorInfo(0, information.Get());
}

}  // namespace

HRESULT ResultOf(std::int32_t number) noexcept {
  if (number < 0) return number;
  return MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, number);
}

HRESULT ReportCurrentFailure(const IID& interfaceId) noexcept {
  const Error error = Error::Current();
  if (error.Number() == ErrorNumber::OutOfMemory) return E_OUTOFMEMORY;
  try {
    SetInformation(interfaceId, error.Description());
  } catch (...) {
    // The result code alone reports the failure.
  }
  return ResultOf(error.Number());
}

}  // namespace ktrv::windows
