#include "forms/addressbook/MemberAddition.h"

#include <utility>

namespace ktrv::forms {

MemberAddition::MemberAddition(Services& services, BookDatabase& database, String groupId,
                               std::vector<String> contactIds)
    : RowWork(services, u"KTRVAddressBook: Error occurred. Sub: AddMembers, Module: frmAddressBook",
              contactIds.size()),
      statements_(database),
      groupId_(std::move(groupId)),
      contactIds_(std::move(contactIds)) {}

void MemberAddition::WorkOn(std::size_t row) {
  using Membership = ItemStatements::Membership;
  switch (statements_.AddMember(groupId_, contactIds_[row])) {
    case Membership::Made:
      ++counts_.Added;
      break;
    case Membership::Present:
      ++counts_.Present;
      break;
    case Membership::ContactIsGone:
      ++counts_.Gone;
      break;
    case Membership::GroupIsGone:
      groupIsGone_ = true;
      EndHere();
      break;
  }
}

String MemberAddition::TextWhenStopped() const {
  const auto done = static_cast<std::int64_t>(counts_.Added + counts_.Present);
  return u"Adding members stopped: " + ToDecimal(done) + u" of " +
         ToDecimal(static_cast<std::int64_t>(Count())) + u" contact(s) are in the group.";
}

}  // namespace ktrv::forms
