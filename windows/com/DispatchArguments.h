#pragma once

#include <windows.h>
#include <oleauto.h>

#include <vector>

namespace ktrv::windows {

/// The arguments of one late-bound call, converted to what every ITypeInfo::Invoke accepts: all
/// parameters in order, each of exactly its type, by-reference ones as references. Script engines
/// pass references to variants, omit optional arguments and use named arguments. Some
/// implementations of ITypeInfo::Invoke do not support that.
///
/// No operation changes a by-reference argument, so nothing is copied back.
class DispatchArguments {
 public:
  /// For a call of `function` of `type`; both must outlive the object.
  DispatchArguments(ITypeInfo& type, const FUNCDESC& function, LCID locale);
  ~DispatchArguments();
  DispatchArguments(const DispatchArguments&) = delete;
  DispatchArguments& operator=(const DispatchArguments&) = delete;

  /// \param wrongArgument set to the index in `passed` of an argument that cannot be converted
  /// \return S_OK or a DISP_E_... code as IDispatch::Invoke returns it
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
  std::vector<VARIANT> passed_;  ///< in reverse order, as in DISPPARAMS
  DISPPARAMS taken_{};
  DISPID propertyPut_ = DISPID_PROPERTYPUT;
};

}  // namespace ktrv::windows
