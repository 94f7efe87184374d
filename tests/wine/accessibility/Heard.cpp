#include "tests/wine/accessibility/Heard.h"

#include <oleacc.h>

#include <stdexcept>

#include "windows/base/ComPtr.h"

namespace ktrv::windows {
namespace {

ComPtr<IAccessible> ClientOf(HWND window) {
  ComPtr<IAccessible> client;
  if (FAILED(AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT),
                                        __uuidof(IAccessible),
                                        reinterpret_cast<void**>(client.Out())))) {
    throw std::runtime_error("the window has no object for screen readers");
  }
  return client;
}

VARIANT Number(LONG number) {
  VARIANT value{};
  value.vt = VT_I4;
  value.lVal = number;
  return value;
}

std::wstring Taken(BSTR text) {
  std::wstring taken(text ? text : L"");
  SysFreeString(text);
  return taken;
}

}  // namespace

Heard Hear(HWND window, LONG part) {
  const ComPtr<IAccessible> client = ClientOf(window);
  Heard heard;
  BSTR text = nullptr;
  if (SUCCEEDED(client->get_accName(Number(part), &text))) heard.Name = Taken(text);
  text = nullptr;
  if (SUCCEEDED(client->get_accValue(Number(part), &text))) heard.Value = Taken(text);
  text = nullptr;
  if (SUCCEEDED(client->get_accDescription(Number(part), &text))) heard.Description = Taken(text);
  VARIANT number{};
  if (SUCCEEDED(client->get_accRole(Number(part), &number))) heard.Role = number.lVal;
  if (SUCCEEDED(client->get_accState(Number(part), &number))) heard.State = number.lVal;
  return heard;
}

std::vector<Heard> HearParts(HWND window) {
  LONG count = 0;
  ClientOf(window)->get_accChildCount(&count);
  std::vector<Heard> parts;
  for (LONG part = 1; part <= count; ++part) parts.push_back(Hear(window, part));
  return parts;
}

LONG HearFocus(HWND window) {
  VARIANT which{};
  return ClientOf(window)->get_accFocus(&which) == S_OK && which.vt == VT_I4 ? which.lVal : -1;
}

LONG HearAtMiddleOf(HWND window, LONG part) {
  const ComPtr<IAccessible> client = ClientOf(window);
  LONG left = 0;
  LONG top = 0;
  LONG width = 0;
  LONG height = 0;
  if (client->accLocation(&left, &top, &width, &height, Number(part)) != S_OK) return -1;
  VARIANT hit{};
  client->accHitTest(left + width / 2, top + height / 2, &hit);
  return hit.vt == VT_I4 ? hit.lVal : -1;
}

}  // namespace ktrv::windows
