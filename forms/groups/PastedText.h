#pragma once

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
    std::vector<int> Rows;        ///< each once, in the order of the text
    std::vector<String> Missing;  ///< what no row has
    std::vector<String> Several;  ///< what several rows have
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

    const Rows& Found() const { return ByNumber && !ByNumber->empty() ? *ByNumber : *ByName; }
  };

  void Add(StringView text, int record);
  String NameKey(StringView name) const;
  void LookAt(controls::FlexGrid& list, JobProgress& progress);
  /// The row that the field means; 0 if several are possible. \pre it has some
  int RowOf(std::size_t field) const;

  controls::CaseFolding folding_;
  std::vector<Field> fields_;
  Index names_;
  Index numbers_;
};

}  // namespace ktrv::forms
