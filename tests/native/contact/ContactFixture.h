#pragma once

#include "forms/contact/frmNewContact.h"
#include "tests/native/support/DialogFixture.h"

namespace ktrv::tests {

/// The contact editor, loaded and not shown.
class ContactFixture : public DialogFixture {
 protected:
  /// Contact 5, whose columns all hold something. \param changes assignments to its columns, as in
  /// an UPDATE; none when empty.
  void Ann(StringView changes = {}) {
    database.Run(
        {u"INSERT INTO SMS_ABCONTACTS VALUES (5, 3, 'Ann', 'B', 'Lee', '44', '7700900', 'off', "
         u"'home', 'fax', 'ann@lee.org', 'Acme', 'Street 1', 'Leeds', 'York', 'UK', 'LS1', 30, 'F',"
         u" '1990-02-28', '2015-06-01', 'Chess')"});
    if (!changes.empty()) {
      database.Run({u"UPDATE SMS_ABCONTACTS SET " + String(changes) + u" WHERE ID = 5"});
    }
  }
  forms::frmNewContact& Add() {
    form.Load();
    return form;
  }
  forms::frmNewContact& Edit(String id = u"5") {
    session.EditContactId = std::move(id);
    form.Mode = ModeOfOperation::Modify;
    form.Load();
    return form;
  }
  /// A new contact with the two boxes filled that must be.
  void AddNamed(StringView firstName) {
    Add();
    form.txtFname.SetText(String(firstName));
  }
  /// The columns of the last contact, joined with "|".
  String Row(StringView columns) {
    const auto rows = database.Rows(u"SELECT " + String(columns) +
                                    u" FROM SMS_ABCONTACTS ORDER BY ID DESC LIMIT 1");
    return rows.empty() ? u"no row" : rows.front();
  }
  String Saved() const {
    return session.SavedContactId + u"|" + session.SavedContactName + u"|" +
           session.SavedContactMobile + u"|" + session.SavedContactEmail + u"|" +
           session.SavedContactAddress + u"|" + session.SavedContactOrganisation;
  }
  int LoadErrors() const {
    return ErrorsLogged(u"KTRVAddressBook: Error occured. Sub : Form_Load, Module: frmNewContact");
  }
  int SaveErrors() const {
    return ErrorsLogged(
        u"KTRVAddressBook:  Error occured. Sub : cmdSave_Click, Module: frmNewContact()");
  }
  void Local() { session.SharedMode = static_cast<std::int32_t>(TypeOfContact::LocalContact); }
  void Shared() { session.SharedMode = static_cast<std::int32_t>(TypeOfContact::SharedContact); }
  void AtServer() { session.RunAt = static_cast<std::int32_t>(RunApplicationAt::RuntAtServer); }
  static DateTime Date(int year, unsigned month, unsigned day) {
    return DateTime{std::chrono::local_days(std::chrono::year(year) / month / day)};
  }

  forms::frmNewContact form{session};
};

}  // namespace ktrv::tests
