#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "tool/formats/TextSource.h"

namespace ktrv::tool {

/// One line of a vCard, unfolded.
struct VCardProperty {
  String Group;               ///< "item1" of "item1.TEL"; empty if it has none
  String Name;                ///< in upper case
  std::vector<String> Types;  ///< values of TYPE, also those without its name, in lower case
  int Preference = 0;         ///< of PREF, 1 first; 1 for the type "pref"; 0 if it has none
  bool IsEncoded = false;     ///< the value was quoted-printable
  String Value;               ///< with its escapes, but without quoted-printable

  bool HasType(StringView type) const;
  /// The value without escapes.
  String Text() const;
  /// Its parts between semicolons without escapes, as of N and ADR. A list in a part is joined by
  /// blanks.
  std::vector<String> Parts() const;
};

/// One vCard.
struct VCard {
  std::int64_t Line = 0;  ///< of its BEGIN, from 1
  String Raw;             ///< as in the file, its lines ending with LF
  StringView Problem;     ///< why it is malformed; empty if it is well-formed
  std::vector<VCardProperty> Properties;

  /// The first property of the name; null if there is none.
  const VCardProperty* Find(StringView name) const;
};

/// Reads vCards of the versions 3.0 and 4.0, and of 2.1 as phones write it (types without a name,
/// quoted-printable). Takes linear time, and memory for one card. Any input gives cards, malformed
/// ones with a problem. Cards inside a card are skipped.
class VCardReader {
 public:
  static constexpr std::size_t kLongest = std::size_t{64} * 1024 * 1024;  ///< units that are kept

  /// \param source must outlive the reader
  explicit VCardReader(TextSource& source) : source_(source) {}

  /// Reads the next card. \return false at the end
  bool Next(VCard& card);

 private:
  struct Line {
    std::int64_t Number = 0;
    String Text;  ///< unfolded
    String Raw;
    bool IsTooLong = false;
  };

  bool Fill();
  /// Appends the next line of the file to the raw text, and without its line break to the text.
  bool ReadLine(Line& line, bool isFolded);
  /// Whether the next line continues "=", at which the former was folded. Else it is the one behind
  /// a soft line break.
  bool IsFoldedCode();
  /// Reads a line and its continuations.
  bool ReadUnfolded(Line& line);

  TextSource& source_;
  String text_;
  std::size_t at_ = 0;
  std::int64_t line_ = 1;
  std::optional<Line> pushedBack_;
};

}  // namespace ktrv::tool
