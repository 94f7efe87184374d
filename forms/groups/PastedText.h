#pragma once

#include <optional>
#include <unordered_map>
#include <vector>

#include "controls/CaseFolding.h"
#include "controls/FlexGrid.h"

namespace ktrv::forms {

class JobProgress;

/// A pasted list of numbers and names, one per line or separated by semicolons or tabs. Each is
/// looked up in a list by its number, however it is written, otherwise by the whole name.
class PastedText {
 public:
  PastedText(StringView text, const controls::Language& language);
  PastedText(const PastedText&) = delete;
  PastedText& operator=(const PastedText&) = delete;

  bool IsEmpty() const { return fields_.empty(); }

  struct Found {
    std::vector<int> Rows;          ///< each once, in the order of the text
    std::vector<String> Missing;    ///< what no row has
    std::vector<String> Several;    ///< what several rows have
    std::vector<String> Differing;  ///< names and numbers of one record that no row has together
  };
  /// \param list laid out by ContactColumns; one step of progress for each row. \throws Stopped
  Found FindIn(controls::FlexGrid& list, JobProgress& progress);

 private:
  /// Row numbers in ascending order.
  using Rows = std::vector<int>;
  using Index = std::unordered_map<String, Rows>;
  struct Field {
    String Text;
    int Record;  ///< fields separated by tabs only belong to one record
    const Rows* ByName;
    const Rows* ByNumber;  ///< null if the text is no number

    bool IsNumber() const { return ByNumber && !ByNumber->empty(); }
    const Rows& Found() const { return IsNumber() ? *ByNumber : *ByName; }
  };

  void Add(StringView text, int record);
  String NameKey(StringView name) const;
  void LookAt(controls::FlexGrid& list, JobProgress& progress);
  /// Whether a row has a name of the field's record if the field is a number, or a number of it if
  /// the field is a name; nothing if the record has none that is in the list.
  std::optional<bool> HasOther(std::size_t field, int row) const;
  /// Adds the row that the field means, or its text to what is not found so.
  void Find(std::size_t field, Found& found) const;

  controls::CaseFolding folding_;
  std::vector<Field> fields_;
  Index names_;
  Index numbers_;
  Index internationalNumbers_;  ///< those that start with + or 00
};

}  // namespace ktrv::forms
