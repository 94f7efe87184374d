#pragma once

#include "database/Recordset.h"

namespace ktrv::forms {

class frmNewContact;

/// Which control of the contact editor shows which column.
namespace ContactFields {

/// Fills the controls, and the dialog's folder, from the current row. What was filled before a
/// failure stays. \throws Error TypeMismatch for a date that is none, InvalidUseOfNull or Overflow
/// for a folder id that is null or has more than 16 bits
void Show(const database::Recordset& row, frmNewContact& dialog);

/// Sets the current row's columns from the controls, the folder excepted.
/// \throws Error TypeMismatch for an age that is no number, else as Recordset::SetField
void Write(const frmNewContact& dialog, database::Recordset& row);

}  // namespace ContactFields
}  // namespace ktrv::forms
