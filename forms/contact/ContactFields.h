#pragma once

#include <array>
#include <optional>
#include <vector>

#include "database/Recordset.h"

namespace ktrv::forms {

class frmNewContact;

/// Maps the controls of the contact editor to columns.
namespace ContactFields {

/// A snapshot of the controls, to detect later what the user has changed.
struct Entries {
  std::array<String, 15> Texts;
  String Age;
  int Sex = -1;
  std::optional<DateTime> Birthday;
  std::optional<DateTime> Anniversary;
  String Hobby;
};

Entries EntriesOf(const frmNewContact& dialog);

/// Fills the controls and FolderId from the current row. A date that cannot be converted leaves its
/// picker unchanged. A folder id that is null or exceeds 16 bits leaves FolderId unchanged; it is
/// not needed for an existing contact. \return one failure for each such date
std::vector<Error> Show(const database::Recordset& row, frmNewContact& dialog);

/// Sets the columns of the current row, except the folder. \param before the snapshot taken when
/// the row was shown; columns that are unchanged since are not written, because some values cannot
/// be shown exactly. Null for a new row.
/// \throws Error TypeMismatch if the age is not a number, else as Recordset::SetField
void Write(const frmNewContact& dialog, const Entries* before, database::Recordset& row);

}  // namespace ContactFields
}  // namespace ktrv::forms
