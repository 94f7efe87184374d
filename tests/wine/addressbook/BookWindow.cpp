#include "tests/wine/addressbook/BookWindow.h"

#include "data/AddressBookQueries.h"

namespace ktrv::windows {

using database::DataType;
namespace Queries = data::AddressBookQueries;

Workplace BookWindow::Place() {
  session_.LogFilePath = u"log";
  session_.Database.Renew();
  session_.SessionConnectionString = u"DSN=Test";
  session_.DbType = u"SQL";
  session_.IsAdmin = UserType::Administrator;
  session_.RunAt = RunApplicationAt::RuntAtServer;
  return session_.Place();
}

BookWindow::BookWindow() {
  driver_.Answer(Queries::kSharedFolders,
                 {{u"ID", DataType::Integer}, {u"NAME"}, {u"PARENTFOLDERID", DataType::Integer}},
                 {{u"1", u"Customers", u"0"}, {u"2", u"Suppliers", u"0"}});
  driver_.Answer(Queries::kRemoteFolders,
                 {{u"ID", DataType::Integer},
                  {u"NAME"},
                  {u"PARENTFOLDERID", DataType::Integer},
                  {u"REMOTE_CONTACTS_CATEGORY"}},
                 {{u"3", u"Dealers", u"0", u"D"}});
  driver_.Answer(Queries::kGroups,
                 {{u"ID", DataType::Integer}, {u"NAME"}, {u"FOLDER_ID", DataType::Integer}},
                 {{u"11", u"Team", u"0"}, {u"12", u"Buyers", u"1"}, {u"13", u"Boat", u"2"}});
  for (const StringView query : {Queries::kCountFolderContacts, Queries::kCountRemoteContacts,
                                 Queries::kCountFolderGroups, Queries::kCountGroupMembers}) {
    driver_.Answer(query, {{u"TOTALRECORDS", DataType::Integer}}, {{u"1"}});
  }
  Lists(30);
  form_.Show();
  Settle();
}

void BookWindow::Lists(int rows) {
  std::vector<tests::FakeDriver::Row> items;
  for (int row = 1; row <= rows; ++row) {
    const String id = ToDecimal(row);
    items.push_back({id, u"Name " + ToDecimal(row * 37 % 100), u"1", u"0" + id, u"", u"", u"", u"0",
                     row % 7 == 0 ? u"2" : u"1"});
  }
  driver_.Answer(u"AS CONTACTTYPE",
                 {{u"ID"},
                  {u"NAME"},
                  {u"SHARED", DataType::Integer},
                  {u"MOBILENO"},
                  {u"EMAIL"},
                  {u"ADDRESS"},
                  {u"ORGANISATION"},
                  {u"FOLDER_ID", DataType::Integer},
                  {u"CONTACTTYPE", DataType::Integer}},
                 std::move(items));
}

void BookWindow::Settle() {
  Pump();
  ASSERT_TRUE(PumpUntil([this] { return !form_.List().IsLoading(); }));
  ASSERT_TRUE(PumpUntil([this] { return ListView_GetItemCount(List()) == Rows(); }));
}

}  // namespace ktrv::windows
