#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "forms/addressbook/ItemStatements.h"
#include "services/Services.h"

namespace ktrv::forms {

/// Deletes listed items in order. To keep the window responsive it works in slices of 30 ms and
/// posts the next slice to the message queue.
///
/// Ends after the last item or the first failure, which is logged. When it is stopped, the
/// remaining items are kept and a log line says so.
class RowDeletion : public std::enable_shared_from_this<RowDeletion> {
 public:
  struct Item {
    String Id;
    String Type;  ///< a ContactKind; for a remote contact only a message is shown
  };

  /// \param context context text of the error record. Services and database must outlive the
  /// object.
  RowDeletion(Services& services, BookDatabase& database, StringView context,
              std::vector<Item> items);

  /// Called after each slice except the last.
  std::function<void(std::size_t done)> Progress;
  /// Called once at the end, unless stopped.
  std::function<void()> Done;

  void Run();
  /// Deletes and reports nothing more. May be called from a callback.
  void Stop();
  std::size_t Count() const { return items_.size(); }
  bool HasDeletedGroup() const { return hasDeletedGroup_; }

 private:
  /// Runs one slice. \return whether items are left
  bool WorkForAMoment();
  void Delete(const Item& item);
  /// Logs how many items were deleted, because the window is closed and cannot show it.
  void LogRest();

  Services& services_;
  String context_;
  ItemStatements statements_;
  std::vector<Item> items_;
  std::size_t next_ = 0;
  std::size_t deleted_ = 0;
  bool hasDeletedGroup_ = false;
  bool stopped_ = false;
};

}  // namespace ktrv::forms
