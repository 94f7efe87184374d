#pragma once

#include <cstdint>

#include "common/Text.h"

namespace ktrv::controls {

/// The digits of a text that looks like a phone number, compared with numbers however they are
/// written. Leading zeros are ignored, because they depend on where the number is dialled; so is
/// the zero of "+49 (0) 30".
class SoughtNumber {
 public:
  explicit SoughtNumber(StringView typed);

  /// Whether the text is no number: it has other characters than digits and those between them.
  bool IsEmpty() const { return digits_.empty(); }
  StringView Digits() const { return digits_; }
  /// Whether the digits are a part of those of the number.
  bool IsIn(StringView number) const;

  /// The decimal digits of a number, without a "(0)".
  static String DigitsOf(StringView number);
  /// The same without leading zeros. Empty if there are only zeros.
  static String SignificantDigitsOf(StringView number);
  /// The same on every platform; 0 for no digits. Up to 18 digits it is their value, so different
  /// ones are never equal; of more it is a hash with the highest bit set. \param significantDigits
  /// without leading zeros
  static std::uint64_t KeyOf(StringView significantDigits);

 private:
  String digits_;
};

}  // namespace ktrv::controls
