#pragma once

#include <cstdint>
#include <exception>
#include <memory>

#include "common/Text.h"

namespace ktrv {

/// Error numbers as automation programmers know them.
namespace ErrorNumber {
inline constexpr std::int32_t InvalidProcedureCall = 5;
inline constexpr std::int32_t Overflow = 6;
inline constexpr std::int32_t OutOfMemory = 7;
inline constexpr std::int32_t SubscriptOutOfRange = 9;
inline constexpr std::int32_t TypeMismatch = 13;
inline constexpr std::int32_t InternalError = 51;
inline constexpr std::int32_t ObjectNotSet = 91;
inline constexpr std::int32_t InvalidUseOfNull = 94;
inline constexpr std::int32_t InvalidPropertyValue = 380;
inline constexpr std::int32_t PropertyReadOnly = 383;
inline constexpr std::int32_t ActionNotSupported = 445;
inline constexpr std::int32_t KeyInUse = 457;
inline constexpr std::int32_t ElementNotFound = 35601;  ///< no tree node with that key
inline constexpr std::int32_t KeyNotUnique = 35602;     ///< the tree has a node with that key
// Data objects; the numbers of ADO.
inline constexpr std::int32_t InvalidArgument = 3001;
inline constexpr std::int32_t NoCurrentRecord = 3021;
inline constexpr std::int32_t NotUpdatable = 3251;
inline constexpr std::int32_t ItemNotFound = 3265;
inline constexpr std::int32_t DataConversion = 3421;
inline constexpr std::int32_t ObjectClosed = 3704;
inline constexpr std::int32_t ObjectOpen = 3705;
inline constexpr std::int32_t InvalidConnection = 3709;
inline constexpr std::int32_t StillExecuting = 3711;
inline constexpr std::int32_t OperationCancelled = 3712;
// Database driver.
inline constexpr std::int32_t DriverFailure = -2147467259;       ///< unspecified (0x80004005)
inline constexpr std::int32_t SyntaxOrPermission = -2147217900;  ///< text refused (0x80040E14)
inline constexpr std::int32_t NoCommandText = -2147217908;       ///< empty text (0x80040E0C)
inline constexpr std::int32_t TableNotFound = -2147217865;       ///< no such table (0x80040E37)
inline constexpr std::int32_t IntegrityViolation = -2147217873;  ///< constraint (0x80040E2F)
inline constexpr std::int32_t LoginFailed = -2147217843;         ///< refused user (0x80040E4D)
inline constexpr std::int32_t ValueMismatch = -2147217913;       ///< wrong data type (0x80040E07)
inline constexpr std::int32_t RowChanged = -2147217864;          ///< update conflict (0x80040E38)
inline constexpr std::int32_t RowGone = -2147217885;             ///< deleted row (0x80040E23)
inline constexpr std::int32_t TimedOut = -2147217871;            ///< time-out (0x80040E31)
inline constexpr std::int32_t CommandCancelled = -2147217842;    ///< cancelled (0x80040E4E)
}  // namespace ErrorNumber

/// An exception with the fields of an error record in the log.
class Error final : public std::exception {
 public:
  /// \param lastSystemError the operating system's error code of the failing call; 0 for none.
  Error(std::int32_t number, String description, String source = u"KTRVAddressBook",
        std::uint32_t lastSystemError = 0);

  /// With the text that automation has for the number.
  explicit Error(std::int32_t number);

  /// The exception being handled, converted to an Error. Call only in a catch block. When memory is
  /// exhausted, the result is OutOfMemory without a description.
  static Error Current() noexcept;

  std::int32_t Number() const noexcept { return number_; }
  const String& Description() const noexcept;
  const String& Source() const noexcept;
  std::uint32_t LastSystemError() const noexcept { return lastSystemError_; }

  /// The description in UTF-8.
  const char* what() const noexcept override;

 private:
  struct Texts;

  Error() noexcept;

  std::int32_t number_;
  std::uint32_t lastSystemError_ = 0;
  /// Shared, because copying an exception must not throw; null when memory was exhausted.
  std::shared_ptr<const Texts> texts_;
};

}  // namespace ktrv
