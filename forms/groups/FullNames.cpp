#include "forms/groups/FullNames.h"

namespace ktrv::forms {
namespace {

constexpr StringView kContext =
    u"KTRVAddressBook: Error occurred. Sub:ShowFullName(), Module: frmGroupsNew()";

}  // namespace

void FullNames::Connect() {
  grid_.Tip = [this](int row, int column) {
    return services_.Trap(kContext, String(), [&] { return TipOf(row, column); });
  };
}

void FullNames::Forget() {
  contactId_.clear();
  failed_ = false;
}

String FullNames::TipOf(int row, int column) {
  if (grid_.Parent().IsWorking()) return {};  // perhaps in the midst of a transaction
  const ContactColumns columns(grid_);
  if (column != columns.Name() || columns.ReadKind(row) != ContactKind::Contact) return {};
  if (!HasNamesake(row, columns)) return {};
  const String id = columns.ReadId(row);
  if (id != contactId_) {
    if (failed_) return {};
    failed_ = true;
    name_ = Read(id);
    contactId_ = id;
    failed_ = false;
  }
  return name_;
}

bool FullNames::HasNamesake(int row, const ContactColumns& columns) const {
  const String name = columns.ReadName(row);
  if (name.empty()) return false;
  for (int other = 0; (other = grid_.FindRow(name, other + 1, columns.Name())) > 0;) {
    // It starts with the name.
    if (other != row && columns.ReadName(other).size() == name.size()) return true;
  }
  return false;
}

String FullNames::Read(const String& contactId) {
  const auto rows = commands_.Execute(GroupCommand::FullName, {contactId});
  if (rows.EndOfFile()) return {};
  String name;
  const auto append = [&](StringView between, StringView column) {
    const String text = ToText(rows.Field(column));
    const StringView part = Trim(text);
    if (part.empty()) return;
    if (!name.empty()) name += between;
    name += part;
  };
  append(u"", u"FNAME");
  append(u" ", u"MNAME");
  append(u" ", u"LNAME");
  append(u", ", u"ORGANISATION");
  return name;
}

}  // namespace ktrv::forms
