#include "forms/addressbook/RowDeletion.h"

#include <utility>

#include "forms/ContactKind.h"

namespace ktrv::forms {

RowDeletion::RowDeletion(Services& services, BookDatabase& database, StringView context,
                         std::vector<ListedItem> items)
    : RowWork(services, context, items.size()), statements_(database), items_(std::move(items)) {}

void RowDeletion::WorkOn(std::size_t row) {
  const ListedItem& item = items_[row];
  if (item.Type == ContactKind::Contact) {
    statements_.DeleteContact(item.Id);
    ++deleted_;
  } else if (item.Type == ContactKind::Group) {
    hasDeletedGroup_ = true;
    statements_.DeleteGroup(item.Id);
    ++deleted_;
  } else if (item.Type == ContactKind::RemoteContact) {
    services_.ShowMessage(
        u"This is a Shared Remote Contact. This contact can be deleted from TALVERO only.",
        MessageStyle::Exclamation);
  }
}

String RowDeletion::TextWhenStopped() const {
  return u"Deletion stopped: " + ToDecimal(static_cast<std::int64_t>(deleted_)) + u" of " +
         ToDecimal(static_cast<std::int64_t>(Count())) + u" item(s) were deleted.";
}

}  // namespace ktrv::forms
