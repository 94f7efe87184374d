#include "windows/controls/Accessible.h"

#include <atomic>
#include <utility>

#include "windows/base/ComPtr.h"
#include "windows/base/Guard.h"
#include "windows/base/Module.h"
#include "windows/base/WideText.h"
#include "windows/controls/ControlWindow.h"
#include "windows/controls/FormWindow.h"

namespace ktrv::windows {

namespace {

// By __uuidof: the import library of oleacc has a wrong IID_IAccessible, a jump instead of the id.

/// The control that this window shows; null for other windows.
const ControlWindow* ControlShownBy(HWND window) {
  const ControlWindow* control = ControlWindow::From(window);
  if (!control) control = ControlWindow::From(GetParent(window));
  return control && control->DescribedWindow() == window ? control : nullptr;
}

std::wstring CaptionOf(HWND window) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)), L'\0');
  const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()) + 1);
  text.resize(static_cast<std::size_t>(length));
  return text;
}

HRESULT GiveText(const std::wstring& text, BSTR* given) {
  *given = nullptr;
  if (text.empty()) return S_FALSE;
  *given = SysAllocString(text.c_str());
  return *given ? S_OK : E_OUTOFMEMORY;
}

HRESULT GiveNumber(LONG number, VARIANT* given) {
  given->vt = VT_I4;
  given->lVal = number;
  return S_OK;
}

/// Describes the client area of a control where the system only knows a plain window. Keeps the
/// window, not the control, because a screen reader may hold it longer than the control lives.
// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): only Release ends an object
class Accessible final : public IAccessible {
 public:
  Accessible(HWND window, ComPtr<IAccessible> system)
      : window_(window), system_(std::move(system)) {}

  // IUnknown
  STDMETHODIMP QueryInterface(REFIID wanted, void** given) override {
    if (!given) return E_POINTER;
    *given = nullptr;
    if (wanted != IID_IUnknown && wanted != IID_IDispatch && wanted != __uuidof(IAccessible)) {
      return E_NOINTERFACE;
    }
    *given = static_cast<IAccessible*>(this);
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  // IDispatch: screen readers use the interface itself.
  STDMETHODIMP GetTypeInfoCount(UINT* count) override {
    if (!count) return E_POINTER;
    *count = 0;
    return S_OK;
  }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                      UINT*) override {
    return E_NOTIMPL;
  }

  // IAccessible
  STDMETHODIMP get_accParent(IDispatch** parent) override { return system_->get_accParent(parent); }
  STDMETHODIMP get_accChildCount(LONG* count) override {
    if (!count) return E_POINTER;
    return Ask([&](const ControlWindow& control) {
      *count = control.PartCount();
      return S_OK;
    });
  }
  STDMETHODIMP get_accChild(VARIANT which, IDispatch** child) override {
    if (!child) return E_POINTER;
    *child = nullptr;
    // The parts are told by number.
    return AskPart(which, [](const AccessiblePart&) { return S_FALSE; });
  }
  STDMETHODIMP get_accName(VARIANT which, BSTR* name) override {
    if (!name) return E_POINTER;
    return AskPart(which, [&](const AccessiblePart& part) { return GiveText(part.Name, name); });
  }
  STDMETHODIMP get_accValue(VARIANT which, BSTR* value) override {
    if (!value) return E_POINTER;
    return AskPart(which, [&](const AccessiblePart& part) { return GiveText(part.Value, value); });
  }
  STDMETHODIMP get_accDescription(VARIANT which, BSTR* text) override {
    if (!text) return E_POINTER;
    return AskPart(which,
                   [&](const AccessiblePart& part) { return GiveText(part.Description, text); });
  }
  STDMETHODIMP get_accRole(VARIANT which, VARIANT* role) override {
    if (!role) return E_POINTER;
    role->vt = VT_EMPTY;
    return AskPart(which, [&](const AccessiblePart& part) { return GiveNumber(part.Role, role); });
  }
  STDMETHODIMP get_accState(VARIANT which, VARIANT* state) override {
    if (!state) return E_POINTER;
    state->vt = VT_EMPTY;
    return AskPart(which,
                   [&](const AccessiblePart& part) { return GiveNumber(part.State, state); });
  }
  STDMETHODIMP get_accHelp(VARIANT, BSTR* text) override { return GiveNothing(text); }
  STDMETHODIMP get_accHelpTopic(BSTR* file, VARIANT, LONG*) override { return GiveNothing(file); }
  STDMETHODIMP get_accKeyboardShortcut(VARIANT which, BSTR* key) override {
    if (!key) return E_POINTER;
    *key = nullptr;
    return IsSelf(which) ? system_->get_accKeyboardShortcut(which, key) : S_FALSE;
  }
  STDMETHODIMP get_accFocus(VARIANT* which) override {
    if (!which) return E_POINTER;
    which->vt = VT_EMPTY;
    return Ask([&](const ControlWindow& control) {
      if (GetFocus() != window_) return S_FALSE;
      return GiveNumber(control.FocusedPart(), which);
    });
  }
  STDMETHODIMP get_accSelection(VARIANT* which) override {
    if (!which) return E_POINTER;
    which->vt = VT_EMPTY;
    return Ask([&](const ControlWindow& control) {
      const LONG part = control.FocusedPart();
      if (part == 0 || !(control.Part(part).State & STATE_SYSTEM_SELECTED)) return S_FALSE;
      return GiveNumber(part, which);
    });
  }
  STDMETHODIMP get_accDefaultAction(VARIANT, BSTR* text) override { return GiveNothing(text); }
  STDMETHODIMP accSelect(LONG flags, VARIANT which) override {
    return Ask([&](const ControlWindow&) -> HRESULT {
      if (!IsSelf(which) || flags != SELFLAG_TAKEFOCUS) return DISP_E_MEMBERNOTFOUND;
      SetFocus(window_);
      return S_OK;
    });
  }
  STDMETHODIMP accLocation(LONG* left, LONG* top, LONG* width, LONG* height,
                           VARIANT which) override {
    if (!left || !top || !width || !height) return E_POINTER;
    return AskPart(which, [&](const AccessiblePart& part) {
      RECT place = part.Place;
      MapWindowPoints(window_, nullptr, reinterpret_cast<POINT*>(&place), 2);
      *left = place.left;
      *top = place.top;
      *width = place.right - place.left;
      *height = place.bottom - place.top;
      return S_OK;
    });
  }
  STDMETHODIMP accNavigate(LONG, VARIANT, VARIANT* target) override {
    if (target) target->vt = VT_EMPTY;
    return S_FALSE;
  }
  STDMETHODIMP accHitTest(LONG x, LONG y, VARIANT* hit) override {
    if (!hit) return E_POINTER;
    hit->vt = VT_EMPTY;
    return Ask([&](const ControlWindow& control) {
      POINT place{x, y};
      ScreenToClient(window_, &place);
      RECT inside{};
      GetClientRect(window_, &inside);
      return PtInRect(&inside, place) ? GiveNumber(control.PartAt(place), hit) : S_FALSE;
    });
  }
  STDMETHODIMP accDoDefaultAction(VARIANT) override { return DISP_E_MEMBERNOTFOUND; }
  STDMETHODIMP put_accName(VARIANT, BSTR) override { return E_NOTIMPL; }
  STDMETHODIMP put_accValue(VARIANT, BSTR) override { return E_NOTIMPL; }

 private:
  ~Accessible() = default;

  static bool IsSelf(const VARIANT& which) {
    return which.vt == VT_I4 && which.lVal == CHILDID_SELF;
  }
  static HRESULT GiveNothing(BSTR* text) {
    if (!text) return E_POINTER;
    *text = nullptr;
    return S_FALSE;
  }
  template <class Answer>
  HRESULT Ask(Answer&& answer) const {
    return Guard<HRESULT>(E_FAIL, [&]() -> HRESULT {
      const ControlWindow* control = ControlShownBy(window_);
      return control ? answer(*control) : CO_E_OBJNOTCONNECTED;
    });
  }
  template <class Answer>
  HRESULT AskPart(const VARIANT& which, Answer&& answer) const {
    return Ask([&](const ControlWindow& control) -> HRESULT {
      if (IsSelf(which)) return answer(Whole(control));
      if (which.vt != VT_I4 || which.lVal < 1 || which.lVal > control.PartCount()) {
        return E_INVALIDARG;
      }
      return answer(control.Part(which.lVal));
    });
  }
  AccessiblePart Whole(const ControlWindow& control) const {
    AccessiblePart whole = control.Describe();
    whole.Name = AccessibleName(control);
    if (!IsWindowEnabled(window_)) whole.State |= STATE_SYSTEM_UNAVAILABLE;
    if (!IsWindowVisible(window_)) whole.State |= STATE_SYSTEM_INVISIBLE;
    if (GetWindowLongPtrW(window_, GWL_STYLE) & WS_TABSTOP) whole.State |= STATE_SYSTEM_FOCUSABLE;
    if (GetFocus() == window_) whole.State |= STATE_SYSTEM_FOCUSED;
    GetClientRect(window_, &whole.Place);
    return whole;
  }

  std::atomic<ULONG> references_ = 1;
  const HWND window_;
  const ComPtr<IAccessible> system_;
};

/// Whether the system knows what this control is, and its name.
bool IsDescribed(const ControlWindow& control, IAccessible& system) {
  VARIANT self{};
  self.vt = VT_I4;
  VARIANT role{};
  if (FAILED(system.get_accRole(self, &role)) || role.vt != VT_I4) return false;
  if (role.lVal == ROLE_SYSTEM_CLIENT) return false;
  BSTR name = nullptr;
  system.get_accName(self, &name);
  const std::wstring told = name ? SpokenCaption(name) : std::wstring();
  SysFreeString(name);
  return told == AccessibleName(control);
}

}  // namespace

std::wstring SpokenCaption(const std::wstring& caption) {
  std::wstring spoken;
  for (std::size_t i = 0; i < caption.size(); ++i) {
    if (caption[i] == L'&' && ++i == caption.size()) break;
    spoken += caption[i];
  }
  const std::size_t first = spoken.find_first_not_of(L' ');
  if (first == std::wstring::npos) return {};
  return spoken.substr(first, spoken.find_last_not_of(L' ') - first + 1);
}

std::wstring AccessibleName(const ControlWindow& control) {
  if (const String& name = control.Shown().AccessibleName; !name.empty()) return ToWide(name);
  if (control.ShowsCaption()) return SpokenCaption(CaptionOf(control.Handle()));
  const ControlWindow* label = control.Owner().LabelOf(control);
  return label ? SpokenCaption(CaptionOf(label->Handle())) : std::wstring();
}

LRESULT DescribeControl(HWND window, WPARAM wParam, LPARAM lParam) {
  if (static_cast<LONG>(lParam) != OBJID_CLIENT) return 0;
  const ControlWindow* control = ControlShownBy(window);
  if (!control) return 0;
  ComPtr<IAccessible> system;
  if (FAILED(CreateStdAccessibleObject(window, OBJID_CLIENT, __uuidof(IAccessible),
                                       reinterpret_cast<void**>(system.Out())))) {
    return 0;
  }
  if (IsDescribed(*control, *system.Get())) return 0;
  KeepModuleLoaded();  // a reader may keep the object for longer than the host keeps the module
  const ComPtr<IAccessible> own(new Accessible(window, std::move(system)));
  return LresultFromObject(__uuidof(IAccessible), wParam, own.Get());
}

}  // namespace ktrv::windows
