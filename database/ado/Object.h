#pragma once

#include <initializer_list>

#include "common/Error.h"
#include "database/ado/Value.h"

namespace ktrv::database::ado {

/// Owns one reference to an automation object and speaks to it by the names of its members, as a
/// script does. ADO's interfaces were extended, under new ids, with its versions, and a compiler's
/// headers know the ids of one; the names work with each of them. A name costs little beside what
/// is asked through it: rows come a thousand at a call.
class Object {
 public:
  Object() = default;
  /// A new object of the class. \throws Error DriverFailure when there is no such class.
  static Object Create(const wchar_t* programId);
  /// The object that a call returned; null when it returned none.
  explicit Object(const Value& value) noexcept;

  ~Object() { Release(); }
  Object(Object&& other) noexcept;
  Object& operator=(Object&& other) noexcept;

  explicit operator bool() const { return object_ != nullptr; }
  void Release() noexcept;
  Value Reference() const { return Value(object_); }

  using Arguments = std::initializer_list<const Value*>;

  // \throws Error with what the object says of the failure.
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

/// The number by which programs know a result code: the low half of those that ADO makes itself,
/// the others as they are.
std::int32_t NumberOf(HRESULT code) noexcept;

/// Whether the failure says that the provider, or this ADO, cannot do what was asked at all.
bool IsUnsupported(const Error& failure) noexcept;

}  // namespace ktrv::database::ado
