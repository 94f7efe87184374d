#pragma once

#include "forms/groups/ContactRow.h"
#include "forms/groups/GroupRequest.h"
#include "forms/groups/TextBuffer.h"

namespace ktrv::forms {

/// What a picker hands back, while it is being put together.
class RecipientResult {
 public:
  /// \param prefixCountryCode whether the country code stands before a contact's number in the list
  /// of mobile numbers.
  /// \param rows how many are known to come, more or fewer.
  RecipientResult(bool prefixCountryCode, std::size_t rows);

  // All throw Error InvalidProcedureCall when the id is longer than 15 units.
  void AddContact(const ContactRow& contact);
  void AddGroup(const ContactRow& group);
  void AddRemoteContact(const ContactRow& contact);
  /// A member of an expanded group, whatever its kind: given back as a contact, and its name joins
  /// the names text.
  void AddGroupMember(const ContactRow& member);

  Recipients Take() &&;

 private:
  void Add(StringView prefix, char16_t letter, const ContactRow& row, String mobileNo);
  String MobileNoOf(const ContactRow& contact) const;

  bool prefixCountryCode_;
  std::int64_t number_ = 0;  ///< of the last pair of items
  Recipients result_;
  TextBuffer namesText_;
};

}  // namespace ktrv::forms
