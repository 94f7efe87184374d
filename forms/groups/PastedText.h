#pragma once

#include <array>
#include <deque>
#include <unordered_map>
#include <vector>

#include "controls/CaseFolding.h"
#include "controls/FlexGrid.h"

namespace ktrv::forms {

class JobProgress;

/// A pasted list of numbers and names, one per line or separated by semicolons or tabs. Each is
/// looked up in a list by its number, however it is written, otherwise by the whole name. Tabs
/// separate the fields of one record; names and numbers of a record belong together. If the first
/// line has the headings of the address book's list, only its columns of names and numbers count.
class PastedText {
 public:
  PastedText(StringView text, const controls::Language& language);
  PastedText(const PastedText&) = delete;
  PastedText& operator=(const PastedText&) = delete;

  bool IsEmpty() const { return names_.empty(); }

  struct Found {
    std::vector<int> Rows;          ///< each once, in the order of the text
    std::vector<String> Missing;    ///< what no row has
    std::vector<String> Several;    ///< what several rows have
    std::vector<String> Differing;  ///< names and numbers of one record that no row has together
  };
  /// Once only. \param list laid out by ContactColumns; one step of progress for each row.
  /// \throws Stopped
  Found FindIn(controls::FlexGrid& list, JobProgress& progress);

 private:
  struct Field;
  using Record = std::vector<Field>;
  struct Contact;
  /// A name or a number of the text, and who has it.
  struct Key {
    StringView Text;
    std::vector<Contact*> Having;
    const Record* In = nullptr;  ///< the last record that has it
    std::size_t Both = 0;        ///< how many of these have a name and a number of that record
    int Row = 0;                 ///< the last one's
  };
  struct Contact {
    int Row;
    bool HasNumber;  ///< its own, or those of its members
    String FoldedName;
    Key* Name = nullptr;                ///< null if it is not in the text
    std::array<Key*, 4> Numbers{};      ///< the same; each once
    const Record* CountedIn = nullptr;  ///< the last record
  };
  using Index = std::unordered_map<String, Key>;
  struct Field {
    String Text;
    Key* ByName;
    Key* ByNumber;  ///< null if the text is no number
    bool IsNumber = false;

    Key& Found() const { return IsNumber ? *ByNumber : *ByName; }
  };

  String NameKey(StringView name) const;
  void LookAt(controls::FlexGrid& list, JobProgress& progress);
  /// Adds whom the record means, and its texts that mean nobody.
  static void Find(Record& record, Found& found, JobProgress& progress);
  /// Counts who has one of the names and one of the numbers, all those of the record.
  static void CountBoth(const Record& record, const std::vector<Key*>& names,
                        const std::vector<Key*>& numbers, JobProgress& progress);
  /// The same for those whose whole name is the beginning of one of the names that nobody has.
  static void CountBeginnings(const Record& record, const std::vector<Key*>& names,
                              const std::vector<Key*>& numbers, JobProgress& progress);

  controls::CaseFolding folding_;
  std::vector<Record> records_{1};
  Index names_;
  Index numbers_;
  Index internationalNumbers_;  ///< those that start with + or 00
  std::deque<Contact> contacts_;
};

}  // namespace ktrv::forms
