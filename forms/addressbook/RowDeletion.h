#pragma once

#include <vector>

#include "forms/addressbook/ItemStatements.h"
#include "forms/addressbook/RowWork.h"

namespace ktrv::forms {

/// Deletes listed items in order.
class RowDeletion final : public RowWork {
 public:
  struct Item {
    String Id;
    String Type;  ///< a ContactKind; for a remote contact only a message is shown
  };

  /// \param context context text of the error record. Services and database must outlive the
  /// object.
  RowDeletion(Services& services, BookDatabase& database, StringView context,
              std::vector<Item> items);

  bool HasDeletedGroup() const { return hasDeletedGroup_; }

 private:
  void WorkOn(std::size_t row) override;
  String TextWhenStopped() const override;

  ItemStatements statements_;
  const std::vector<Item> items_;
  std::size_t deleted_ = 0;
  bool hasDeletedGroup_ = false;
};

}  // namespace ktrv::forms
