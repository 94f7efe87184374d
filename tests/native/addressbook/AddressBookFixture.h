#pragma once

#include <memory>
#include <vector>

#include "data/AddressBookQueries.h"
#include "forms/addressbook/frmAddressBook.h"
#include "tests/native/support/SessionFixture.h"

namespace ktrv::tests {

namespace Queries = data::AddressBookQueries;

/// The address book window on a database that answers as the test says: at first with no folder,
/// no group and no contact.
class AddressBookTest : public SessionFixture {
 protected:
  using Row = FakeDriver::Row;

  AddressBookTest();

  static constexpr StringView kLoadContext =
      u"KTRVAddressBook: Error occurred. Sub: LoadContacts, Module: frmAddressBook";
  static constexpr StringView kDeleteContext =
      u"KTRVKTRVAddressBook: Error occurred. Sub: ContactDelete(), Module: frmAddressBook";
  static constexpr StringView kGroupsInFolder = u"SELECT ID FROM SMS_ABGROUPS WHERE FOLDER_ID = ";

  /// As a host's initialisation leaves the session.
  void RunAt(RunApplicationAt where) { session.RunAt = where; }
  void SharedFolders(std::vector<Row> idsAndNames);
  void RemoteFolders(std::vector<Row> idsAndNames);
  /// \param rows id, name and folder id
  void Groups(std::vector<Row> rows);
  /// What the counting command of this text answers.
  void Counts(StringView query, std::int64_t count);
  /// The groups that a folder is found to hold before it is deleted.
  void GroupsInFolders(std::vector<Row> ids);
  /// The rows of every list from now on.
  void Lists(std::vector<Row> rows);
  /// A row of a list with this id and name, of a local contact unless told otherwise.
  static Row Item(String id, String name, String type = u"1");

  /// Makes the window and shows it.
  forms::frmAddressBook& Open();
  /// Clicks the node of this key. \throws when there is none.
  void Click(StringView key);
  /// Clicks the node and lets its rows come.
  void ClickAndWait(StringView key);
  /// Waits until the fetch that runs is complete. \return false when it is not in time.
  bool Complete();

  controls::TreeNode& Node(StringView key);
  /// "key:text" of the nodes in insertion order, indented by their depth with dots.
  std::vector<String> Tree() const;
  std::vector<String> Column(StringView key) const;
  String Panel(int panel) const { return form->StatusBar1.PanelAt(panel).Text; }

  forms::Editors editors{session};
  std::unique_ptr<forms::frmAddressBook> form;
};

}  // namespace ktrv::tests
