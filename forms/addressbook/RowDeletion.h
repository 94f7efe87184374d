#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "forms/addressbook/ItemStatements.h"
#include "services/Services.h"

namespace ktrv::forms {

/// Deletes listed items, one after another in their order. Many of them take longer than a window
/// may stand still: it works for a moment at a time and goes on when the user's input was seen to.
///
/// It ends at the last item or at the first failure, which is logged. Stopped before that, it
/// leaves the rest where it is, and the log says so.
class RowDeletion : public std::enable_shared_from_this<RowDeletion> {
 public:
  struct Item {
    String Id;
    String Type;  ///< ContactKind; a remote contact is only told of
  };

  /// \param context of its error record. Services and database must outlive it.
  RowDeletion(Services& services, BookDatabase& database, StringView context,
              std::vector<Item> items);

  /// It goes on later: so many items are done.
  std::function<void(std::size_t done)> Progress;
  /// It is over.
  std::function<void()> Done;

  void Run();
  /// Nothing more is deleted and nothing reported, also when this is called from within.
  void Stop();
  std::size_t Count() const { return items_.size(); }
  bool HasDeletedGroup() const { return hasDeletedGroup_; }

 private:
  /// \return whether items are left for later
  bool WorkForAMoment();
  void Delete(const Item& item);
  /// Nobody is there any more to be told that items are left.
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
