#pragma once

#include "controls/FlexGrid.h"
#include "forms/ContactKind.h"

namespace ktrv::forms {

/// One contact, group or remote contact of a list, its texts without blanks at both ends.
struct ContactRow {
  String Id;
  String Name;
  String MobileNo;
  String CountryCode;
  String MobileDisplay;
  String Kind;
};

/// The columns of both lists, found by their keys once.
class ContactColumns {
 public:
  /// \param grid laid out by LayOut; must outlive this.
  explicit ContactColumns(controls::FlexGrid& grid);

  /// Keys, captions and pictures of a list. Done after each binding.
  static void LayOut(controls::FlexGrid& grid);
  /// Takes all rows away and leaves the laid-out columns.
  static void Empty(controls::FlexGrid& grid);

  /// Puts the sort indicator on the heading of the column and takes it off the others.
  static void ShowOrder(controls::FlexGrid& grid, int sorted, controls::SortOrder order);

  int Id() const { return id_; }
  int Name() const { return name_; }
  int Kind() const { return kind_; }

  /// \throws Error SubscriptOutOfRange
  ContactRow Read(int row) const;
  String ReadId(int row) const { return Trimmed(row, id_); }
  String ReadKind(int row) const { return Trimmed(row, kind_); }
  /// The first row of this kind and id; 0 when there is none. Ids of different kinds may be equal.
  int Find(StringView kind, StringView id) const;
  /// Writes all but id and kind.
  void Write(int row, const ContactRow& contact) const;
  void Add(ContactRow contact) const;

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

/// Country code, a blank and the mobile number; the number alone without a country code.
String MobileDisplayOf(StringView countryCode, StringView mobileNo);

}  // namespace ktrv::forms
