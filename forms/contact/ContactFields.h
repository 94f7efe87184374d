#pragma once

#include <array>
#include <optional>
#include <vector>

#include "database/Recordset.h"

namespace ktrv::forms {

class frmNewContact;

/// Which control of the contact editor shows which column.
namespace ContactFields {

/// What the controls hold at a moment, to tell later what the user changed since.
struct Entries {
  std::array<String, 15> Texts;
  String Age;
  int Sex = -1;
  std::optional<DateTime> Birthday;
  std::optional<DateTime> Anniversary;
  String Hobby;
};

Entries EntriesOf(const frmNewContact& dialog);

/// Fills the controls, and the dialog's folder, from the current row. A date that cannot be read
/// leaves its picker as it is, and a folder id that is null or has more than 16 bits the dialog's
/// folder: it is not needed for a contact that is there. \return a failure for each such date
std::vector<Error> Show(const database::Recordset& row, frmNewContact& dialog);

/// Sets the current row's columns from the controls, the folder excepted. \param before what the
/// controls held when they showed the row: what is still the same is left as the row has it, the
/// more so as not every value can be shown as it is; null for a new row.
/// \throws Error TypeMismatch for an age that is no number, else as Recordset::SetField
void Write(const frmNewContact& dialog, const Entries* before, database::Recordset& row);

}  // namespace ContactFields
}  // namespace ktrv::forms
