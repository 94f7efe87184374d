#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tool/formats/CsvReader.h"
#include "tool/import/Contact.h"

namespace ktrv::tool {

/// Maps the columns of a CSV file to fields by their headings: those of our export (the names of
/// the table's columns), Outlook, Google and Thunderbird.
class Headings {
 public:
  /// \param mapped "Heading=column" each, in UTF-8; they replace what is known of the heading. An
  /// empty column leaves the heading out. \throws Error for a mapping that names no heading or no
  /// column, and if nothing gives a name or nothing a number
  Headings(const CsvRecord& record, const std::vector<std::string>& mapped);

  RawContact Read(const CsvRecord& record) const;

  /// The headings whose columns are left out.
  const std::vector<String>& LeftOut() const { return leftOut_; }

 private:
  struct Source {
    Field To;
    int Rank;  ///< of several columns with a value, those of the lowest rank count
    std::size_t Column;
  };
  /// A value whose kind stands in another column.
  struct Labelled {
    String Stem;  ///< what the headings of both have in common
    std::size_t Label;
    std::size_t Value;
  };
  struct DateParts {
    Field To;
    std::optional<std::size_t> Year, Month, Day;
  };

  bool TakeMapped(const String& heading, std::size_t column,
                  std::vector<std::pair<String, String>>& mapped);
  bool TakeKnown(const String& heading, std::size_t column);
  bool TakeLabelled(const String& heading, std::size_t column);
  bool TakeDatePart(const String& heading, std::size_t column);
  void RequireEnough() const;

  void ReadOwn(const CsvRecord& record, RawContact& contact) const;
  void ReadSources(const CsvRecord& record, RawContact& contact) const;
  void ReadLabelled(const CsvRecord& record, RawContact& contact) const;
  void ReadDates(const CsvRecord& record, RawContact& contact) const;
  /// The rank of the address that counts: one address is not put together from several.
  int RankOfAddress(const CsvRecord& record) const;

  bool isOwn_ = false;
  std::optional<std::size_t> folder_;  ///< columns of our export only
  std::optional<std::size_t> groups_;
  std::vector<Source> sources_;  ///< in order of field, rank and column
  std::vector<Labelled> labelled_;
  std::vector<DateParts> dates_;
  std::vector<String> leftOut_;
};

}  // namespace ktrv::tool
