#pragma once

#include <windows.h>
#include <oleauto.h>

#include <optional>

#include "common/Variant.h"

namespace ktrv::database::ado {

/// Owns one VARIANT and its contents.
class Value {
 public:
  Value() noexcept { VariantInit(&raw_); }
  explicit Value(std::int32_t number) noexcept;
  explicit Value(bool truth) noexcept;
  explicit Value(StringView text);  ///< embedded zeros are kept. \throws std::bad_alloc
  /// Adds a reference to the object.
  explicit Value(IDispatch* object) noexcept;
  /// Converts a database value. \throws Error DataConversion for a date before the year 100, which
  /// a VARIANT cannot hold
  explicit Value(const Variant& value);

  /// The VARIANT for an omitted optional argument.
  static Value Missing() noexcept;
  /// A by-reference VARIANT, so that a call can write to the target. The target must outlive it.
  static Value Reference(Value& target) noexcept;

  ~Value() { VariantClear(&raw_); }
  Value(Value&& other) noexcept : raw_(other.raw_) { VariantInit(&other.raw_); }
  Value& operator=(Value&& other) noexcept;

  const VARIANT& Raw() const { return raw_; }
  VARIANT& Raw() { return raw_; }

  /// As an integer or boolean; nullopt for other types. \throws Error Overflow
  std::optional<std::int64_t> Whole() const;
  bool Truth() const { return Whole().value_or(0) != 0; }
  String Text() const;  ///< empty if it is not a text

 private:
  VARIANT raw_;
};

/// The cell text of a value; nullopt for null. \throws Error DataConversion for types that
/// databases do not have, such as objects
std::optional<String> CellTextOf(const VARIANT& value);

}  // namespace ktrv::database::ado
