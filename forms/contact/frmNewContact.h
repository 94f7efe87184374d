#pragma once

#include <optional>
#include <vector>

#include "controls/CheckBox.h"
#include "controls/ComboBox.h"
#include "controls/CommandButton.h"
#include "controls/DatePicker.h"
#include "controls/Form.h"
#include "controls/Frame.h"
#include "controls/Label.h"
#include "controls/TextBox.h"
#include "controls/UpDown.h"
#include "data/ContactQueries.h"
#include "data/ContactRules.h"
#include "database/NewRow.h"
#include "database/Transaction.h"
#include "forms/contact/ContactFields.h"
#include "forms/contact/ContactLayout.h"
#include "forms/contact/ContactRequest.h"
#include "forms/contact/StoredValues.h"
#include "services/Workplace.h"

namespace ktrv::forms {

/// The contact editor, for a new or an existing contact. Failures of loading and saving are logged,
/// and the dialog stays open. A contact that was not loaded completely is not saved.
class frmNewContact final : public controls::Form {
 public:
  frmNewContact(Workplace place, ContactRequest request);
  ~frmNewContact() override;

  /// The result; final after the dialog has closed.
  ContactResult Result() const {
    return {request_.SharedMode, request_.EditContactId, request_.PresetMobileNo, saved_};
  }

  std::int16_t FolderId;  ///< as requested; for an existing contact, from its row

  // Tab order is the order of declaration. Each label belongs to the box that follows it.
  using Key = controls::CommandButton::Key;
  using Text = data::ContactText;
  static constexpr auto& kKind = ContactLayout::kKind;
  static constexpr auto& kName = ContactLayout::kName;
  static constexpr auto& kPhones = ContactLayout::kPhones;
  static constexpr auto& kPersonals = ContactLayout::kPersonals;
  static constexpr auto& kAddress = ContactLayout::kAddress;
  static constexpr int kAgeWidth = 795;

  controls::Frame Frame1{*this, kKind, u" Contact Information "};
  controls::CheckBox chkContacts{
      *this,
      {kKind.Left + ContactLayout::kLabelLeft, ContactLayout::LineTop(kKind, 0), 6000, 315},
      u"This is a Shared Contact"};

  controls::Frame Frame2{*this, kName, u" Name "};
  controls::Label lblFname{*this, ContactLayout::Label(kName, 0), u"First"};
  controls::TextBox txtFname{*this, ContactLayout::Box(kName, 0), data::LimitOf(Text::FirstName)};
  controls::Label lblMname{*this, ContactLayout::Label(kName, 1), u"Middle"};
  controls::TextBox txtMname{*this, ContactLayout::Box(kName, 1), data::LimitOf(Text::MiddleName)};
  controls::Label lblLname{*this, ContactLayout::Label(kName, 2), u"Last"};
  controls::TextBox txtLname{*this, ContactLayout::Box(kName, 2), data::LimitOf(Text::LastName)};

  controls::Frame fraPhones{*this, kPhones, u" Phone Numbers "};
  controls::Label lblCountryCode{*this, ContactLayout::Label(kPhones, 0), u"Country Code "};
  controls::TextBox txtCountryCode{*this, ContactLayout::Box(kPhones, 0, 1200),
                                   data::LimitOf(Text::CountryCode)};
  controls::Label lblMobileno{*this, ContactLayout::Label(kPhones, 1), u"Mobile No"};
  controls::TextBox txtMobileno{*this, ContactLayout::Box(kPhones, 1),
                                data::LimitOf(Text::MobileNo)};
  controls::Label lblEmail{*this, ContactLayout::Label(kPhones, 2), u"Email Id"};
  controls::TextBox txtEmail{*this, ContactLayout::Box(kPhones, 2), data::LimitOf(Text::Email)};
  controls::Label lblOrganisation{*this, ContactLayout::Label(kPhones, 3), u"Company"};
  controls::TextBox txtOrganisation{*this, ContactLayout::Box(kPhones, 3),
                                    data::LimitOf(Text::Organisation)};
  controls::Label lblOfficePhone{*this, ContactLayout::Label(kPhones, 4), u"Office Phone"};
  controls::TextBox txtOfficePhone{*this, ContactLayout::Box(kPhones, 4),
                                   data::LimitOf(Text::OfficePhone)};
  controls::Label lblHomePhone{*this, ContactLayout::Label(kPhones, 5), u"Home Phone"};
  controls::TextBox txtHomePhone{*this, ContactLayout::Box(kPhones, 5),
                                 data::LimitOf(Text::HomePhone)};
  controls::Label lblFax{*this, ContactLayout::Label(kPhones, 6), u"Fax"};
  controls::TextBox txtFax{*this, ContactLayout::Box(kPhones, 6), data::LimitOf(Text::Fax)};

  controls::Frame fraPersonals{*this, kPersonals, u" Personal Info "};
  controls::Label lblAge{*this, ContactLayout::Label(kPersonals, 0), u"Age"};
  controls::TextBox txtAge{*this, ContactLayout::Box(kPersonals, 0, kAgeWidth), data::kAgeLimit};
  controls::UpDown UpDnLast{*this,
                            ContactLayout::Arrows(kPersonals, 0, kAgeWidth),
                            txtAge,
                            {.Min = 0, .Max = 150, .Step = 1}};
  controls::Label lblSex{*this, ContactLayout::Label(kPersonals, 1), u"Sex"};
  controls::ComboBox cboSex{*this, ContactLayout::Box(kPersonals, 1, 1800)};
  controls::Label lblBirthday{*this, ContactLayout::Label(kPersonals, 2), u"Birthday"};
  controls::DatePicker dtBirthday{*this, ContactLayout::Box(kPersonals, 2, 2220)};
  controls::Label lblAnniversary{*this, ContactLayout::Label(kPersonals, 3), u"Anniversary"};
  controls::DatePicker dtAnniversary{*this, ContactLayout::Box(kPersonals, 3, 2220)};

  controls::Frame fraAddress{*this, kAddress, u" Address "};
  controls::Label lblAddress{*this, ContactLayout::Label(kAddress, 0), u"Street"};
  controls::TextBox txtAddress{*this, ContactLayout::Box(kAddress, 0),
                               data::LimitOf(Text::Address)};
  controls::Label lblCity{*this, ContactLayout::Label(kAddress, 1), u"City"};
  controls::TextBox txtCity{*this, ContactLayout::Box(kAddress, 1), data::LimitOf(Text::City)};
  controls::Label lblState{*this, ContactLayout::Label(kAddress, 2), u"State"};
  controls::TextBox txtState{*this, ContactLayout::Box(kAddress, 2), data::LimitOf(Text::State)};
  controls::Label lblCountry{*this, ContactLayout::Label(kAddress, 3), u"Country"};
  controls::TextBox txtCountry{*this, ContactLayout::Box(kAddress, 3),
                               data::LimitOf(Text::Country)};
  controls::Label lblZip{*this, ContactLayout::Label(kAddress, 4), u"Zip"};
  controls::TextBox txtZip{*this, ContactLayout::Box(kAddress, 4, 1800), data::LimitOf(Text::Zip)};
  controls::Label lblHobby{*this, ContactLayout::Label(kAddress, 5), u"Hobby"};
  controls::TextBox txtHobby{*this, ContactLayout::Box(kAddress, 5), data::LimitOf(Text::Hobby)};

  controls::CommandButton cmdSave{*this, ContactLayout::Button(1), u"&OK", Key::Enter};
  controls::CommandButton cmdCancel{*this, ContactLayout::Button(0), u"&Cancel", Key::Escape};
  /// What the focused box accepts. A failure stays until the next OK.
  controls::Label lblNotice{*this, ContactLayout::kNotice, u""};

  /// Enables or disables all input controls and the save button.
  void EnableControls(bool enable);

 protected:
  void Form_Load() override;

 private:
  void PresentNew();
  void PresentExisting();
  void Populate_Data();
  std::int16_t Validate_Data();
  /// \return false if the save was refused, which the user has been told
  bool Save_Data();
  /// Writes what the user has changed, and commits. \param row a new contact as it was found; empty
  /// for another one. \throws Error
  void Change(database::Recordset& contact, database::NewRow row,
              database::Transaction& transaction);
  /// Adds the contact, or changes what an earlier save has stored, and commits. \throws Error,
  /// ContactRefused
  void Insert(database::Connection& connection, database::Recordset& contact,
              database::Transaction& transaction);
  /// Why the companion refuses a new contact; nullopt if it does not. \throws Error; ContactRefused
  /// if the check itself has failed
  std::optional<ContactRefused> CheckCompanion(database::Connection& connection) const;
  /// What the save stores of the controls.
  ContactFields::Entries Entered() const;
  /// Keeps what is being saved, because it may be stored without an answer.
  void Remember(database::NewRow row);
  /// Finds the new contact if one of the saves that were kept has stored it, and makes it the
  /// current row.
  std::optional<database::NewRow> FindStored(database::Recordset& contact) const;
  /// Drops all but the first `count` of the saves that were kept: the others are not stored.
  void ForgetSince(std::size_t count);
  void CheckFolder(database::Connection& connection) const;
  SavedContact Summary(const String& id) const;

  void cmdSave_Click();
  void cmdCancel_Click();
  /// Shows the hint while the control has the focus.
  void Explain(controls::Control& control, StringView hint);
  void ExplainBoxes();
  /// Completes boxes from the values of other contacts.
  void CompleteBoxes();
  /// Shows why the contact is not saved.
  void ShowFailure(StringView reason);
  /// Shows that a save failed, and whether its outcome is unknown.
  void ShowNotSaved();

  void txtMobileno_GotFocus();
  /// Key filter of a box for digits.
  void FilterDigits(std::int16_t& code);

  Workplace place_;
  StoredValues companies_{place_.Services, place_.Database, data::ContactQueries::kCompanies};
  StoredValues cities_{place_.Services, place_.Database, data::ContactQueries::kCities};
  StoredValues states_{place_.Services, place_.Database, data::ContactQueries::kStates};
  StoredValues countries_{place_.Services, place_.Database, data::ContactQueries::kCountries};
  ContactRequest request_;
  ContactFields fields_;
  String contactId_;  ///< trimmed id of the contact to edit
  /// Snapshots of the controls for all that the stored contact may hold: when they showed it, then
  /// one for each save of unknown outcome. The first is missing for a new contact, and if the
  /// contact does not exist or was not loaded completely.
  std::vector<ContactFields::Entries> held_;
  /// The contact as in each save of unknown outcome, oldest first; not identified unless it is new.
  std::vector<database::NewRow> inDoubt_;
  bool loadFailed_ = false;
  bool showsFailure_ = false;  ///< instead of hints
  std::optional<SavedContact> saved_;
};

}  // namespace ktrv::forms
