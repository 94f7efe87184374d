#pragma once

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

 private:
  String digits_;
};

}  // namespace ktrv::controls
