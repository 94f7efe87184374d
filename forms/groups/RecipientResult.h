#pragma once

#include "forms/groups/ContactRow.h"
#include "forms/groups/GroupRequest.h"
#include "forms/groups/TextBuffer.h"

namespace ktrv::forms {

/// Builds the result of a picker.
class RecipientResult {
 public:
  /// \param prefixCountryCode whether mobile numbers of contacts get the country code as prefix
  /// \param rows expected number of recipients
  RecipientResult(bool prefixCountryCode, std::size_t rows);

  // All: \throws Error InvalidProcedureCall if the id is longer than 15 units
  void AddContact(const ContactRow& contact);
  void AddGroup(const ContactRow& group);
  void AddRemoteContact(const ContactRow& contact);
  /// Adds a member of an expanded group, as a contact whatever its kind. Its name is appended to
  /// the names text.
  void AddGroupMember(const ContactRow& member);

  Recipients Take() &&;

 private:
  void Add(StringView prefix, char16_t letter, const ContactRow& row, String mobileNo);
  String MobileNoOf(const ContactRow& contact) const;

  bool prefixCountryCode_;
  std::int64_t number_ = 0;  ///< number of the last entry
  Recipients result_;
  TextBuffer namesText_;
};

}  // namespace ktrv::forms
