#pragma once

#include <map>

#include "forms/contact/frmNewContact.h"
#include "tests/native/support/DialogFixture.h"
#include "tests/native/support/OnDemand.h"

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
  void Folder(StringView id) {
    database.Run({u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME, PARENTFOLDERID) VALUES (" +
                  String(id) + u", 'S', 'Day', 0)"});
  }
  forms::frmNewContact& Add() {
    form->Load();
    return *form;
  }
  forms::frmNewContact& Edit(String id = u"5") {
    request.EditContactId = std::move(id);
    request.Mode = ModeOfOperation::Modify;
    form->Load();
    return *form;
  }
  /// Contact 5 on the fake driver, with these columns and all others null.
  void EditRowWith(const std::map<StringView, StringView>& cells) {
    FakeDriver::Row row;
    for (const database::Column& column : Columns()) {
      const auto cell = cells.find(column.Name);
      row.push_back(cell == cells.end() ? std::nullopt : std::optional<String>(cell->second));
    }
    driver.Answer(u"SELECT * FROM SMS_ABCONTACTS", Columns(), {row});
    UseFakeDriver();
    Edit();
  }
  /// Of SMS_ABCONTACTS, as the fake driver has them.
  static std::vector<database::Column> Columns() {
    using database::DataType;
    std::vector<database::Column> columns{{u"ID", DataType::Integer},
                                          {u"FOLDER_ID", DataType::Integer}};
    for (const StringView name :
         {u"FNAME", u"MNAME", u"LNAME", u"COUNTRYCODE", u"MOBILENO", u"OFFICEPHONE", u"HOMEPHONE",
          u"FAX", u"EMAIL", u"ORGANISATION", u"ADDRESS", u"CITY", u"STATE", u"COUNTRY", u"ZIP"}) {
      columns.push_back({String(name), DataType::VarWChar, 50});
    }
    columns.push_back({u"AGE", DataType::Integer});
    columns.push_back({u"SEX", DataType::VarWChar, 1});
    columns.push_back({u"BIRTHDAY", DataType::Date});
    columns.push_back({u"ANNIVERSARY", DataType::Date});
    columns.push_back({u"HOBBY", DataType::VarWChar, 100});
    return columns;
  }
  /// A new contact with the two boxes filled that must be.
  void AddNamed(StringView firstName) {
    Add();
    form->txtFname.SetText(String(firstName));
  }
  /// The columns of the last contact, joined with "|".
  String Row(StringView columns) {
    const auto rows = database.Rows(u"SELECT " + String(columns) +
                                    u" FROM SMS_ABCONTACTS ORDER BY ID DESC LIMIT 1");
    return rows.empty() ? u"no row" : rows.front();
  }
  void PressOk() { form->cmdSave.UserClicks(); }
  /// What it leaves; empty when there is none.
  forms::SavedContact Left() const { return form->Result().Saved.value_or(forms::SavedContact{}); }
  /// What the host's record holds once the dialog has closed.
  String Saved() {
    session.Take(form->Result());
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
  void Local() { request.SharedMode = TypeOfContact::LocalContact; }
  void Shared() { request.SharedMode = TypeOfContact::SharedContact; }
  void AtServer() { session.RunAt = RunApplicationAt::RuntAtServer; }
  static DateTime Date(int year, unsigned month, unsigned day) {
    return DateTime{std::chrono::local_days(std::chrono::year(year) / std::chrono::month(month) /
                                            std::chrono::day(day))};
  }

  forms::ContactRequest request;
  OnDemand<forms::frmNewContact> form{
      [this] { return std::make_unique<forms::frmNewContact>(session.Place(), request); }};
};

}  // namespace ktrv::tests
