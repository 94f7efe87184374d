#pragma once

#include <vector>

#include "controls/FlexGrid.h"
#include "forms/ContactKind.h"

namespace ktrv::forms {

/// One contact, group or remote contact of a list; texts are trimmed.
struct ContactRow {
  String Id;
  String Name;
  String MobileNo;
  String CountryCode;
  String MobileDisplay;
  String Kind;
};

/// Access to the columns of a list; column indices are looked up once.
class ContactColumns {
 public:
  /// \param grid laid out by LayOut; must outlive the object
  explicit ContactColumns(controls::FlexGrid& grid);

  /// Sets keys, headings and pictures of the columns. Call it after each binding.
  static void LayOut(controls::FlexGrid& grid);
  /// Removes all rows; the columns stay laid out.
  static void Empty(controls::FlexGrid& grid);

  /// Shows the sort indicator in the heading of the column only.
  static void ShowOrder(controls::FlexGrid& grid, int sorted, controls::SortOrder order);
  /// Shows that the rows may be in no order, after some were added or changed.
  static void ShowNoOrder(controls::FlexGrid& grid) {
    ShowOrder(grid, 0, controls::SortOrder::None);
  }

  /// The order that the heading of the column shows.
  static controls::SortOrder OrderShown(const controls::GridColumn& column);

  int Id() const { return id_; }
  int Name() const { return name_; }
  int Kind() const { return kind_; }

  /// \throws Error SubscriptOutOfRange
  ContactRow Read(int row) const;
  String ReadId(int row) const { return Trimmed(row, id_); }
  String ReadName(int row) const { return Trimmed(row, name_); }
  String ReadKind(int row) const { return Trimmed(row, kind_); }
  String ReadCountryCode(int row) const { return Trimmed(row, countryCode_); }
  String ReadMobileNo(int row) const { return Trimmed(row, mobileNo_); }
  /// Writes the cells of each row with its kind and id; ids are unique only within a kind. There
  /// are several if a contact was added while it was being loaded. \return whether there are any
  bool Write(const ContactRow& contact) const;
  void Add(ContactRow contact) const;
  /// The texts of a row, in the order of the columns.
  static std::vector<String> Cells(ContactRow contact);

 private:
  String Trimmed(int row, int column) const;

  controls::FlexGrid& grid_;
  int id_;
  int name_;
  int mobileNo_;
  int countryCode_;
  int kind_;
  int mobileDisplay_;
};

/// Country code, blank and mobile number; without a country code only the number.
String MobileDisplayOf(StringView countryCode, StringView mobileNo);

}  // namespace ktrv::forms
