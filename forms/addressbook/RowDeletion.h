#pragma once

#include <vector>

#include "forms/addressbook/ItemStatements.h"
#include "forms/addressbook/ListedItem.h"
#include "forms/addressbook/RowWork.h"

namespace ktrv::forms {

/// Deletes listed items in order.
class RowDeletion final : public RowWork {
 public:
  /// \param context context text of the error record \param items for a remote contact only a
  /// message is shown. Services and database must outlive the object.
  RowDeletion(Services& services, BookDatabase& database, StringView context,
              std::vector<ListedItem> items);

  bool HasDeletedGroup() const { return hasDeletedGroup_; }

 private:
  void WorkOn(std::size_t row) override;
  String TextWhenStopped() const override;

  ItemStatements statements_;
  const std::vector<ListedItem> items_;
  std::size_t deleted_ = 0;
  bool hasDeletedGroup_ = false;
};

}  // namespace ktrv::forms
