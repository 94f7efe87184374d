#pragma once

#include <windows.h>
#include <oaidl.h>

#include <string>
#include <string_view>

namespace ktrv::scripthost {

/// A VARIANT that frees itself.
class Value final {
 public:
  Value() noexcept { VariantInit(&variant_); }
  explicit Value(std::wstring_view text);
  explicit Value(LONG number) noexcept;
  explicit Value(bool flag) noexcept;
  /// Shares the object.
  explicit Value(IDispatch* object) noexcept;
  /// A copy of what the variant holds or refers to; throws std::bad_alloc.
  explicit Value(const VARIANT& source);
  Value(const Value&) = delete;
  Value& operator=(const Value&) = delete;
  Value(Value&& other) noexcept : variant_(other.Release()) {}
  Value& operator=(Value&& other) noexcept;
  ~Value() { VariantClear(&variant_); }

  /// As a script would print it; null and empty are the empty text.
  std::wstring Text() const;
  /// As a whole number; throws ScriptFailure when it is none.
  LONG Number() const;

  const VARIANT& Get() const noexcept { return variant_; }
  /// Hands the content to the caller, who clears it.
  VARIANT Release() noexcept;

 private:
  VARIANT variant_;
};

}  // namespace ktrv::scripthost
