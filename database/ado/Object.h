#pragma once

#include <initializer_list>

#include "common/Error.h"
#include "database/ado/Value.h"

namespace ktrv::database::ado {

/// Owns one reference to an automation object and calls it late-bound, by member name. Versions of
/// ADO have different interface ids, and a header knows only one of them; names work with all. The
/// overhead is small, because each call fetches up to thousands of rows.
class Object {
 public:
  Object() = default;
  /// Creates an object of the class. \throws Error DriverFailure if the class is not available
  static Object Create(const wchar_t* programId);
  /// The object in a returned value; null if there is none.
  explicit Object(const Value& value) noexcept;

  ~Object() { Release(); }
  Object(Object&& other) noexcept;
  Object& operator=(Object&& other) noexcept;

  explicit operator bool() const { return object_ != nullptr; }
  void Release() noexcept;
  Value Reference() const { return Value(object_); }

  using Arguments = std::initializer_list<const Value*>;

  // All throw Error with the object's description of the failure.
  Value Get(const wchar_t* property, Arguments arguments = {}) const;
  Object Part(const wchar_t* property, Arguments arguments = {}) const;
  std::int64_t GetWhole(const wchar_t* property) const;
  void Put(const wchar_t* property, const Value& value) const;
  void PutReference(const wchar_t* property, const Object& value) const;
  Value Call(const wchar_t* method, Arguments arguments = {}) const;

 private:
  Value Invoke(const wchar_t* name, WORD kind, Arguments arguments) const;

  IDispatch* object_ = nullptr;
};

/// Converts an HRESULT to an error number: for FACILITY_CONTROL (ADO's own errors) the low word,
/// otherwise the HRESULT.
std::int32_t NumberOf(HRESULT code) noexcept;

/// Whether the failure means that the provider or this version of ADO lacks the feature.
bool IsUnsupported(const Error& failure) noexcept;

}  // namespace ktrv::database::ado
