#pragma once

#include <array>
#include <bitset>
#include <functional>
#include <optional>
#include <vector>

#include "common/Variant.h"
#include "data/ContactRules.h"

namespace ktrv::tool {

/// The values that a file can have of a contact: the texts of data::ContactText in their order, and
/// these.
enum class Field : std::size_t {
  Age = data::kContactTexts,
  Sex,
  Birthday,
  Anniversary,
  FullName,  ///< the first name of a contact whose name is not divided
};
inline constexpr std::size_t kFields = data::kContactTexts + 5;

constexpr Field FieldOf(data::ContactText text) {
  return static_cast<Field>(text);
}

/// The field of a column of the table; nullopt for other columns. Ignores case.
std::optional<Field> FieldOfColumn(StringView name);

/// The texts of a contact as a file has them; nullopt for no value.
class RawContact {
 public:
  /// Written by our export: the values are stored as they are, and no value is a null. Not those
  /// that Replace has set.
  bool IsOwn = false;
  String Folder;               ///< name; empty: none
  std::vector<String> Groups;  ///< names
  String Note;                 ///< for the user; empty: none

  std::optional<String>& operator[](Field field) {
    return values_[static_cast<std::size_t>(field)];
  }
  StringView Text(Field field) const {
    const auto& value = values_[static_cast<std::size_t>(field)];
    return value ? StringView(*value) : StringView();
  }
  /// Sets a value of another program, which is cleaned.
  void Replace(Field field, StringView text) {
    (*this)[field] = String(text);
    replaced_.set(static_cast<std::size_t>(field));
  }
  bool IsStoredAsItIs(Field field) const {
    return IsOwn && !replaced_.test(static_cast<std::size_t>(field));
  }
  bool Has(Field field) const { return values_[static_cast<std::size_t>(field)].has_value(); }
  /// Sets a value that the contact does not have yet. Empty texts do not count.
  void Offer(Field field, StringView text) {
    if (Text(field).empty() && !text.empty()) (*this)[field] = String(text);
  }

 private:
  std::array<std::optional<String>, kFields> values_;
  std::bitset<kFields> replaced_;
};

/// A contact as it is stored; nullopt is null.
struct Contact {
  std::array<std::optional<String>, data::kContactTexts> Texts;
  std::optional<double> Age;
  std::optional<String> Sex;  ///< "M" or "F"
  std::optional<DateTime> Birthday;
  std::optional<DateTime> Anniversary;

  StringView Text(data::ContactText text) const {
    const auto& value = Texts[static_cast<std::size_t>(text)];
    return value ? StringView(*value) : StringView();
  }
};

/// Which texts of the other contact fill gaps of a contact. The country code and the mobile number
/// are one value: both fill an empty mobile number, else neither is taken. \param textOf gives the
/// texts of the contact
std::vector<data::ContactText> TextsForGaps(
    const Contact& other, const std::function<String(data::ContactText text)>& textOf);

/// Takes values of the other contact for its gaps; the texts as TextsForGaps tells.
void FillGaps(Contact& contact, const Contact& other);

}  // namespace ktrv::tool
