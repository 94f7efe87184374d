#pragma once

#include <array>
#include <optional>
#include <vector>

#include "controls/ComboBox.h"
#include "controls/DatePicker.h"
#include "controls/TextBox.h"
#include "database/Recordset.h"

namespace ktrv::forms {

/// Maps the controls of the contact editor to columns.
class ContactFields {
 public:
  struct TextColumn {
    controls::TextBox& Box;
    StringView Name;
  };
  struct Boxes {
    /// Stored as typed, in the order of reading and writing.
    std::array<TextColumn, 15> Texts;
    controls::TextBox& Age;
    controls::ComboBox& Sex;
    controls::DatePicker& Birthday;
    controls::DatePicker& Anniversary;
    controls::TextBox& Hobby;
  };

  /// A snapshot of the controls, to detect later what the user has changed.
  struct Entries {
    std::array<String, 15> Texts;
    String Age;
    int Sex = -1;
    std::optional<DateTime> Birthday;
    std::optional<DateTime> Anniversary;
    String Hobby;

    bool operator==(const Entries&) const = default;
  };

  /// The controls must outlive the object.
  explicit ContactFields(const Boxes& boxes) : boxes_(boxes) {}

  Entries Current() const;

  /// Fills the controls and the folder id from the current row. A date that cannot be converted
  /// leaves its picker unchanged. A folder id that is null or exceeds 16 bits leaves folderId
  /// unchanged; it is not needed for an existing contact. \return one failure for each such date
  std::vector<Error> Show(const database::Recordset& row, std::int16_t& folderId);

  /// Sets the columns of the current row, except the folder. \param before snapshots of all that
  /// the row may hold; columns that are the same in each are not written, because some values
  /// cannot be shown exactly. Empty for a row that is added. \param isNew whether none of them is
  /// what was shown first. \throws Error TypeMismatch if the age is not a number, else as
  /// Recordset::SetField
  void Write(const std::vector<Entries>& before, bool isNew, database::Recordset& row) const;

 private:
  Boxes boxes_;
};

}  // namespace ktrv::forms
