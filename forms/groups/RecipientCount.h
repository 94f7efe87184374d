#pragma once

#include <functional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "controls/FlexGrid.h"
#include "controls/Label.h"
#include "forms/groups/ContactRow.h"
#include "services/BackgroundList.h"
#include "services/Services.h"

namespace ktrv::forms {

/// Who is reached by the right list: counts its entries and the people, those without a number and
/// the numbers that occur more than once. Members of groups are read in the background; they
/// are counted as the result of the picker lists them.
class RecipientCount final : public BackgroundList {
 public:
  /// All references must outlive the object. \param text shows the counts
  RecipientCount(Services& services, BookDatabase& database, controls::FlexGrid& list,
                 controls::Label& text);

  /// Raised when the rows below may have changed.
  std::function<void()> Changed;

  /// The list has changed. \param isComplete false: its rows are still loading
  void Update(bool isComplete);
  /// Shows the counts, and the size of the group in the current row.
  void Show();
  /// A contact or a group was edited; members are read again.
  void Forget();

  /// Whether members of groups are being read.
  bool IsCounting() const { return isReading_; }
  /// Contacts without a number.
  const controls::RowSelection& WithoutNumber() const { return withoutNumber_; }
  /// Contacts whose number belongs to a member of a group in the list, or to a row above them.
  const controls::RowSelection& Twice() const { return twice_; }

 private:
  /// A number as a hash; 0 for none.
  using Number = std::uint64_t;
  enum class Reading { Open, Now, Done, Failed };
  struct Group {
    Reading Progress = Reading::Open;
    std::vector<Number> Numbers;
  };
  struct Counts {
    std::int64_t People = 0;
    std::int64_t WithoutNumber = 0;
    std::int64_t Twice = 0;
  };

  static Number NumberOf(StringView countryCode, StringView mobileNo);
  void FetchProgress(std::int64_t rows) override;
  void FetchComplete(const Error* error) override;
  void TakeMembers(std::int64_t rows);
  std::vector<String> GroupsInList() const;
  /// Starts to read the groups of the list that are not read yet, unless some are being read.
  void ReadNext();
  /// Those that are being read have ended so.
  void EndReading(Reading how);
  void Count();
  /// \return whether the number occurred before
  bool Add(Number number, std::unordered_set<Number>& seen);

  Services& services_;
  controls::FlexGrid& list_;
  controls::Label& text_;
  bool isComplete_ = false;
  bool failed_ = false;  ///< a group of the list could not be read
  Counts counts_;
  std::unordered_map<String, Group> groups_;  ///< by id
  bool isReading_ = false;
  std::int64_t taken_ = 0;  ///< members so far
  /// The previous rows: they raise the event in which the next ones are opened.
  std::unique_ptr<database::Recordset> former_;
  controls::RowSelection withoutNumber_;
  controls::RowSelection twice_;
};

}  // namespace ktrv::forms
