#pragma once

#include <windows.h>
#include <oleauto.h>

#include <vector>

namespace ktrv::windows {

/// The arguments of one late-bound call, brought into the form that ITypeInfo::Invoke takes
/// everywhere: all parameters in their places, each of exactly its type, by-reference ones as
/// references. Script engines pass variables as references to variants, leave optional arguments
/// out and name arguments, and not every system's ITypeInfo::Invoke can take all of that.
///
/// No operation writes a by-reference argument, so nothing is copied back into the caller's.
class DispatchArguments {
 public:
  /// Arguments of a call of the function `function` of `type`; both must outlive the object.
  DispatchArguments(ITypeInfo& type, const FUNCDESC& function, LCID locale);
  ~DispatchArguments();
  DispatchArguments(const DispatchArguments&) = delete;
  DispatchArguments& operator=(const DispatchArguments&) = delete;

  /// \param wrongArgument set to the index in `passed` of an argument that cannot be taken.
  /// \return S_OK or the DISP_E_… code that callers of IDispatch::Invoke know.
  HRESULT Take(const DISPPARAMS& passed, UINT* wrongArgument);

  DISPPARAMS* Taken() { return &taken_; }

 private:
  HRESULT Convert(const VARIANT& argument, SHORT parameter);
  HRESULT FillIn(SHORT parameter);
  void Pass(SHORT parameter);

  ITypeInfo& type_;
  const FUNCDESC& function_;
  LCID locale_;
  std::vector<VARIANT> values_;  ///< by parameter, each of the parameter's type
  std::vector<VARIANT> passed_;  ///< backwards, as DISPPARAMS has them
  DISPPARAMS taken_{};
  DISPID propertyPut_ = DISPID_PROPERTYPUT;
};

}  // namespace ktrv::windows
