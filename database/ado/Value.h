#pragma once

#include <windows.h>
#include <oleauto.h>

#include <optional>

#include "common/Variant.h"

namespace ktrv::database::ado {

/// Owns one VARIANT and all that it holds.
class Value {
 public:
  Value() noexcept { VariantInit(&raw_); }
  explicit Value(std::int32_t number) noexcept;
  explicit Value(bool truth) noexcept;
  explicit Value(StringView text);  ///< zeros in the text are kept. \throws std::bad_alloc
  /// A reference of its own to the object.
  explicit Value(IDispatch* object) noexcept;
  /// The value as ADO takes it. \throws Error DataConversion for a date that no VARIANT can hold:
  /// those begin with the year 100.
  explicit Value(const Variant& value);

  /// What stands for an optional argument that is left out.
  static Value Missing() noexcept;
  /// What lets a call write into the target, which must outlive this.
  static Value Reference(Value& target) noexcept;

  ~Value() { VariantClear(&raw_); }
  Value(Value&& other) noexcept : raw_(other.raw_) { VariantInit(&other.raw_); }
  Value& operator=(Value&& other) noexcept;

  const VARIANT& Raw() const { return raw_; }
  VARIANT& Raw() { return raw_; }

  /// As a whole number or a truth; nothing when it is neither. \throws Error Overflow
  std::optional<std::int64_t> Whole() const;
  bool Truth() const { return Whole().value_or(0) != 0; }
  String Text() const;  ///< empty when it is no text

 private:
  VARIANT raw_;
};

/// The text that a cell of this value holds; nothing for null. \throws Error DataConversion for a
/// value that is no database's, such as an object.
std::optional<String> CellTextOf(const VARIANT& value);

}  // namespace ktrv::database::ado
