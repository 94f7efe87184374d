#pragma once

#include <cstdint>
#include <vector>

#include "tool/formats/TextSource.h"

namespace ktrv::tool {

/// One record of a CSV file.
class CsvRecord {
 public:
  std::int64_t Line = 0;  ///< of its first character, from 1
  String Raw;             ///< as in the file, without the line break that ends it
  StringView Problem;     ///< why it is malformed; empty if it is well-formed

  std::size_t Count() const { return fields_.size(); }
  /// The text of a field, without quotation marks; empty for one that the record lacks.
  StringView Text(std::size_t field) const;
  /// Whether the field is in quotation marks. Tells an empty text from no value.
  bool IsQuoted(std::size_t field) const {
    return field < fields_.size() && fields_[field].IsQuoted;
  }
  /// Whether it has only empty fields.
  bool IsEmpty() const { return texts_.empty(); }

 private:
  friend class CsvReader;
  struct Field {
    std::size_t Begin = 0;
    std::size_t End = 0;
    bool IsQuoted = false;
  };

  void Clear();

  String texts_;  ///< of all fields
  std::vector<Field> fields_;
};

/// Reads CSV as spreadsheets and address books write it: fields in quotation marks may have
/// delimiters, line breaks and doubled quotation marks; lines end with LF, CR LF or CR. Takes
/// linear time, and memory for one record. Any input gives records, malformed ones with a problem.
class CsvReader {
 public:
  static constexpr std::size_t kLongest = std::size_t{64} * 1024 * 1024;  ///< units that are kept
  static constexpr std::size_t kMostFields = 10000;  ///< of a record that are kept

  /// \param source must outlive the reader. \param delimiter 0: the one of comma, semicolon, tab
  /// and "|" that the first line has most often, or that a first line "sep=" names
  explicit CsvReader(TextSource& source, char16_t delimiter = 0);

  /// Reads the next record. Empty lines are skipped. \return false at the end
  bool Next(CsvRecord& record);

  char16_t Delimiter() const { return delimiter_; }

 private:
  class Building;

  /// Whether there is a unit to read; reads on if necessary.
  bool Fill();
  void ReadField(Building& building);
  void ReadQuoted(Building& building);
  void ReadPlain(Building& building);
  bool IsAtLineBreak();
  void SkipLineBreak();
  void SkipSeparatorLine(bool isGiven);
  char16_t MostFrequentDelimiter() const;

  TextSource& source_;
  String text_;
  std::size_t at_ = 0;
  std::int64_t line_ = 1;
  char16_t delimiter_;
};

}  // namespace ktrv::tool
