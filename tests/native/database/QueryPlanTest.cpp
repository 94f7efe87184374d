#include <cstdlib>
#include <gtest/gtest.h>

#include "data/AddressBookQueries.h"
#include "data/ContactQueries.h"
#include "data/GroupQueries.h"
#include "tests/native/support/AddressBookDatabase.h"

namespace ktrv::tests {
namespace {

using data::Dialect;
namespace Book = data::AddressBookQueries;
namespace Groups = data::GroupQueries;

/// A book of 60,000 contacts, 40,000 remote contacts and 100 groups of 40 members. A list of a
/// folder or a group must not read them all.
class QueryPlan : public testing::Test {
 protected:
  QueryPlan() {
    const char* engine = std::getenv("KTRV_TEST_ENGINE");
    name_ = engine ? engine : "sqlite";
    Fill();
  }

  /// The plan's lines that say that a large table is read from end to end; empty is good.
  String WholeTablesIn(StringView query) {
    const bool sqlite = name_ == "sqlite";
    String found;
    for (const String& line :
         database.Rows((sqlite ? u"EXPLAIN QUERY PLAN " : u"EXPLAIN ") + String(query))) {
      const String upper = ToUpperAscii(line);
      const bool whole = name_ == "mariadb" ? upper.find(u"|ALL|") != String::npos ||
                                                  upper.find(u"|INDEX|") != String::npos
                         : sqlite ? upper.find(u"SCAN ") != String::npos
                                  : upper.find(u"SEQ SCAN ON ") != String::npos;
      if (whole && IsLarge(upper)) found += line + u"\n";
    }
    return found;
  }

  AddressBookDatabase database;

 private:
  /// By the names that the texts give the large tables. SQLite tells the short ones.
  static bool IsLarge(StringView line) {
    for (const StringView name : {u"SMS_ABCONTACTS", u"SMS_ABGROUPMAPS", u"ZUL$CONTACTS", u"SCAN A",
                                  u"SCAN C", u"SCAN M", u"|A|", u"|C|", u"|M|"}) {
      const std::size_t at = line.find(name);
      if (at == StringView::npos) continue;
      const std::size_t end = at + name.size();
      const bool wholeWord = end == line.size() || line[end] == u' ' || line[end] == u'|' ||
                             name.back() == u'|' || line[end] == u'"';
      if (wholeWord) return true;
    }
    return false;
  }

  /// A query of a column N with the numbers from 1 on.
  String Numbers(int count) const {
    const String last = ToDecimal(count);
    if (name_ == "mariadb") return u"(SELECT seq AS N FROM seq_1_to_" + last + u") S";
    if (name_ == "postgresql") return u"(SELECT GENERATE_SERIES(1, " + last + u") AS N) S";
    return u"(WITH RECURSIVE S(N) AS (SELECT 1 UNION ALL SELECT N + 1 FROM S LIMIT " + last +
           u") SELECT N FROM S) S";
  }

  void Fill() {
    database.Run(
        {u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME, REMOTE_CONTACTS_CATEGORY) VALUES "
         u"(1, 'S', 'Staff', ''), (2, 'R', 'Dealers', 'C7'), (9, 'S', 'All', '')",
         u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME) SELECT N, CASE WHEN N <= 20 THEN 1 "
         u"WHEN N <= 40 THEN 0 ELSE 9 END, 'Name' FROM " +
             Numbers(60000),
         u"INSERT INTO ZUL$CONTACTS (CODE, NAME, CATEGORY) SELECT 'R' || N, 'Name', 'C' || "
         u"(N % 500) FROM " +
             Numbers(40000),
         u"INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) SELECT N, 'Group' || N, 0 FROM " +
             Numbers(100),
         u"INSERT INTO SMS_ABGROUPMAPS SELECT 1 + N % 100, CASE WHEN N < 2000 THEN '' || N ELSE "
         u"'R' || N END, CASE WHEN N < 2000 THEN 'S' ELSE 'R' END FROM " +
             Numbers(4000)});
    if (name_ == "mariadb") {
      database.Run(
          {u"ANALYZE TABLE SMS_ABCONTACTS, SMS_ABGROUPMAPS, SMS_ABGROUPS, "
           u"SMS_ABFOLDERS, ZUL$CONTACTS"});
    } else {
      database.Run({u"ANALYZE"});
    }
  }

  std::string name_;
};

TEST_F(QueryPlan, OfEachListReadsNoLargeTableWhole) {
  for (const Dialect dialect : {Dialect::Sql, Dialect::Oracle}) {
    for (const String& query :
         {Book::RootItems(dialect), Book::FolderItems(dialect, u"1"), Book::RemoteFolderItems(u"2"),
          Book::GroupItems(dialect, u"7"),
          Groups::SharedCandidates(dialect, Groups::Purpose::EditGroup, u"1"),
          Groups::SharedCandidates(dialect, Groups::Purpose::PickRecipients, u"1"),
          Groups::RemoteCandidates(dialect, Groups::Purpose::PickRecipients, u"2"),
          Groups::Members(dialect, u"7")}) {
      EXPECT_EQ(ToUtf8(WholeTablesIn(query)), "") << ToUtf8(query);
    }
  }
}

TEST_F(QueryPlan, OfEachCountAndLookUpReadsNoLargeTableWhole) {
  for (const StringView text :
       {Book::kCountFolderContacts, Book::kCountRemoteContacts, Book::kCountGroupMembers,
        Groups::kContact, Groups::kClearMembers, Groups::kExpandedMembers}) {
    String query(text);
    for (std::size_t at = query.find(u'?'); at != String::npos; at = query.find(u'?')) {
      query.replace(at, 1, u"7");
    }
    EXPECT_EQ(ToUtf8(WholeTablesIn(query)), "") << ToUtf8(query);
  }
  EXPECT_EQ(ToUtf8(WholeTablesIn(data::ContactQueries::ById(u"7"))), "");
  EXPECT_EQ(ToUtf8(WholeTablesIn(u"DELETE FROM SMS_ABGROUPMAPS WHERE CONTACT_ID = '7'")), "");
}

TEST_F(QueryPlan, ThatReadsALargeTableWholeIsSeen) {
  EXPECT_NE(WholeTablesIn(u"SELECT * FROM SMS_ABCONTACTS WHERE HOBBY = 'x'"), u"");
  EXPECT_NE(WholeTablesIn(u"SELECT * FROM SMS_ABGROUPMAPS M WHERE M.CONTACT_TYPE = 'x'"), u"");
  EXPECT_NE(WholeTablesIn(u"SELECT * FROM V_ZUL$REMOTE_CONTACTS C WHERE C.NAME = 'x'"), u"");
}

}  // namespace
}  // namespace ktrv::tests
