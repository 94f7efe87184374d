#pragma once

#include <functional>
#include <unordered_map>
#include <vector>

#include "controls/FlexGrid.h"
#include "controls/Label.h"
#include "controls/SlicedWork.h"
#include "forms/groups/ContactRow.h"
#include "services/BackgroundList.h"
#include "services/Services.h"

namespace ktrv::forms {

/// Who is reached by the right list: counts its entries and the people, those without a number and
/// the numbers that occur more than once. Members of groups are read in the background; they are
/// counted as the result of the picker lists them. Counts in slices.
class RecipientCount final : public BackgroundList {
 public:
  /// All references must outlive the object. \param text shows the counts
  RecipientCount(Services& services, BookDatabase& database, controls::FlexGrid& list,
                 controls::Label& text);

  /// Raised when the rows below may have changed.
  std::function<void()> Changed;

  /// The list or the order of its rows has changed. \param isComplete false: its rows are still
  /// loading
  void Update(bool isComplete);
  /// Not all rows could be loaded. \param text shown instead of the counts
  void Fail(String text);
  /// Shows the counts, and the size of the group in the current row.
  void Show();
  /// A contact or a group was edited; members are read again.
  void Forget();

  /// Cancels the count.
  void Stop();

  bool IsCounting() const { return isReading_ || work_.IsRunning(); }
  /// Contacts without a number; none before all rows are counted.
  const controls::RowSelection& WithoutNumber() const { return withoutNumber_; }
  /// Contacts whose number belongs to a member of a group in the list, or to a row above them.
  const controls::RowSelection& Twice() const { return twice_; }

 private:
  /// A number's key; 0 for none.
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

  /// Numbers that were counted; never more than it was made for.
  class Numbers {
   public:
    Numbers() = default;
    explicit Numbers(std::size_t most);
    /// \pre number is not 0 \return whether it is new
    bool Add(Number number);

   private:
    std::vector<Number> places_;  ///< 0: free
  };
  /// How far the count is. Groups are counted first: of a contact who is a member too, the row can
  /// be removed.
  struct Progress {
    int Rows = 0;      ///< of the list
    int GroupRow = 1;  ///< the next row to look for groups
    std::vector<String> Groups{};
    bool AreGroupsKnown = false;
    std::size_t Group = 0;   ///< the next one
    std::size_t Member = 0;  ///< the next one of it
    int Row = 1;             ///< the next row to count
    Numbers Seen{};
    controls::RowSelection WithoutNumber{};
    controls::RowSelection Twice{};
  };

  static Number NumberOf(StringView countryCode, StringView mobileNo);
  void FetchProgress(std::int64_t rows) override;
  void FetchComplete(const Error* error) override;
  void TakeMembers(std::int64_t rows);
  void Start();
  /// \return whether there is more to count
  bool GoOn();
  void End();
  void ShowChange();
  // Count as many as are left for this portion. \return whether all are counted
  bool LookForGroups(int& left);
  bool CountMembers(int& left);
  bool CountRows(int& left);
  /// Starts to read the groups that are not read yet, unless some are being read.
  void ReadNext();
  /// Those that are being read have ended so.
  void EndReading(Reading how);
  /// \return whether the number occurred before
  bool Add(Number number);

  Services& services_;
  controls::FlexGrid& list_;
  controls::Label& text_;
  bool isComplete_ = false;
  String failure_;       ///< why the list is not complete; empty while it is loading
  bool failed_ = false;  ///< a group of the list could not be read, or the count failed
  controls::SlicedWork work_;
  Progress progress_;
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
