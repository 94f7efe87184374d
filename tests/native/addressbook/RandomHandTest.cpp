#include <algorithm>
#include <iterator>
#include <random>
#include <set>
#include <utility>

#include "forms/addressbook/frmAddressBook.h"
#include "tests/native/support/DialogFixture.h"

namespace ktrv::tests {
namespace {

using Keys = std::set<String>;

/// Somebody who does one thing after another by chance, the same for the same seed, and knows at
/// any time what is selected, by kind and id. Whatever a command then does is done to just that.
struct RandomHandTest : DialogFixture, testing::WithParamInterface<unsigned> {
  RandomHandTest() {
    session.RunAt = static_cast<RunApplicationAt>(GetParam() % 2);
    database.Run({
        u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME, PARENTFOLDERID, REMOTE_CONTACTS_CATEGORY)"
        u" VALUES (1, 'S', 'Staff', 0, ''), (2, 'S', 'Friends', 0, ''), (3, 'S', 'None', 0, ''),"
        u" (4, 'R', 'Dealers', 0, 'D')",
        u"INSERT INTO \"ZUL$CONTACTS\" (CODE, NAME, MOBILENO, EMAIL, CATEGORY) VALUES"
        u" ('D1', 'Acme', '111', NULL, 'D'), ('D2', 'Zenith', '112', NULL, 'D')",
        u"INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) VALUES"
        u" (100, 'Boat', 0), (101, 'Crew', 1), (102, 'Deck', 2)",
    });
    for (int id = 100; id < 124; ++id) AddContact(id, (id - 100) % 4);
    database.Run(
        {u"INSERT INTO SMS_ABGROUPMAPS VALUES (100, '100', 'S'), (100, 'D1', 'R'),"
         u" (101, '101', 'S'), (101, '105', 'S'), (102, '100', 'S')"});
    form = std::make_unique<forms::frmAddressBook>(session.Place(), editors);
    form->Show();
    Complete();
    listed = form->Current().Key;
  }
  ~RandomHandTest() override { form.reset(); }

  void AddContact(int id, int folder) {
    database.Run(
        {u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, MNAME, LNAME, MOBILENO)"
         u" VALUES (" +
         ToDecimal(id) + u", " + ToDecimal(folder) + u", 'Name " + ToDecimal(id * 7 % 100) +
         u"', '', '', '" + ToDecimal(id) + u"')"});
  }
  void Complete() {
    ASSERT_TRUE(
        screen.WaitUntil([this] { return !form->List().IsLoading() && !form->IsDeleting(); }));
  }
  int Any(int count) {
    return count > 0 ? static_cast<int>(random() % static_cast<unsigned>(count)) : 0;
  }
  int Rows() const {
    return form->vsfContacts.ColIndex(u"CONTACTTYPE") < 0 ? 0 : form->vsfContacts.Rows() - 1;
  }
  String Cell(int row, StringView column) const {
    return form->vsfContacts.Text(row, form->vsfContacts.ColIndex(column));
  }
  String KeyOf(int row) const { return Cell(row, u"CONTACTTYPE") + u":" + Cell(row, u"ID"); }
  std::ptrdiff_t Loads() const {
    return std::count(screen.Log.begin(), screen.Log.end(), "hourglass");
  }
  static String KindOf(const String& key) { return key.substr(0, 1); }
  static String IdOf(const String& key) { return key.substr(2); }

  /// Everything that the window can delete.
  Keys Stored() {
    Keys stored;
    const auto take = [&](StringView letter, StringView query) {
      for (const String& row : database.Rows(query)) stored.insert(String(letter) + row);
    };
    take(u"1:", u"SELECT ID FROM SMS_ABCONTACTS");
    take(u"2:", u"SELECT ID FROM SMS_ABGROUPS");
    take(u"F:", u"SELECT ID FROM SMS_ABFOLDERS");
    return stored;
  }
  Keys Read(StringView prefix, const String& query) {
    Keys read;
    for (const String& row : database.Rows(query)) read.insert(String(prefix) + row);
    return read;
  }

  /// What Delete, agreed to, takes away now.
  Keys Meant() {
    Keys meant;
    if (form->tvwContacts.HasFocus()) {
      const controls::TreeNode* node = form->tvwContacts.SelectedNode();
      if (!node || node->Key == u"SHARED") return {};
      const String id = node->Key.substr(4);
      if (node->Key.starts_with(u"SHGR")) return {u"2:" + id};
      if (node->Key.starts_with(u"SFLD")) {
        if (!node->Children.empty() ||
            !Read(u"", u"SELECT ID FROM SMS_ABGROUPS WHERE FOLDER_ID = " + id).empty()) {
          return {};
        }
        meant = Read(u"1:", u"SELECT ID FROM SMS_ABCONTACTS WHERE FOLDER_ID = " + id);
      }
      meant.insert(u"F:" + id);
      return meant;
    }
    if (form->Current().Key.starts_with(u"RFLD")) return {};
    for (const String& key : selected) {
      if (KindOf(key) != u"3") meant.insert(key);
    }
    return meant;
  }

  void Select(const std::vector<int>& rows, int focused) {
    form->vsfContacts.UserFocuses(true);
    form->vsfContacts.UserSelects(rows, focused);
    selected.clear();
    for (const int row : rows) selected.insert(KeyOf(row));
    current = focused > 0 ? KeyOf(focused) : String();
  }
  void SelectSome() {
    if (Rows() == 0) return;
    const int row = 1 + Any(Rows());
    const int other = 1 + Any(Rows());
    std::vector<int> rows;
    switch (Any(5)) {
      case 0:
        return Select({row}, row);
      case 1:
        for (int each = std::min(row, other); each <= std::max(row, other); ++each) {
          rows.push_back(each);
        }
        return Select(rows, row);
      case 2: {
        const bool add = !selected.contains(KeyOf(row));
        form->vsfContacts.UserFocuses(true);
        form->vsfContacts.UserSelectsRange(row, row, add, row);
        if (add) {
          selected.insert(KeyOf(row));
        } else {
          selected.erase(KeyOf(row));
        }
        current = KeyOf(row);
        return;
      }
      case 3:
        form->vsfContacts.UserFocuses(true);
        form->vsfContacts.SelectAll();
        for (int each = 1; each <= Rows(); ++each) selected.insert(KeyOf(each));
        return;
      default:
        form->vsfContacts.UserReleases(controls::MouseButton::Right, 0, row);
        if (selected.size() == 1) {
          selected = {KeyOf(row)};
          current = KeyOf(row);
        }
    }
  }
  void ClickNode() {
    controls::TreeView& tree = form->tvwContacts;
    controls::TreeNode& node = tree.At(1 + Any(tree.Count()));
    for (auto* above = node.Parent; above; above = above->Parent) tree.UserExpands(*above, true);
    tree.UserFocuses(true);
    tree.UserClicks(node);
  }
  void Delete() {
    const bool agreed = Any(3) > 0;
    Keys expected = Stored();
    if (agreed) {
      for (const String& key : Meant()) expected.erase(key);
    }
    // One for each question; boxes take those that are left, so that none waits for a later one.
    screen.Answer(agreed ? MessageAnswer::Yes : MessageAnswer::No);
    screen.Answer(MessageAnswer::Ok);
    form->tlbMain.UserClicks(u"DELETE");
    Complete();
    for (int unasked = 0; unasked < 2; ++unasked) screen.ShowMessage(u"", u"", 0);
    EXPECT_EQ(Stored(), expected);
  }
  void Properties() {
    String expected;
    if (form->tvwContacts.HasFocus()) {
      const controls::TreeNode* node = form->tvwContacts.SelectedNode();
      if (node && node->Key != u"SHARED") {
        expected = node->Key.starts_with(u"SHGR") ? u"Modify Group" : u"Edit Folder";
      }
    } else {
      const String meant = Chosen();
      if (!meant.empty() && KindOf(meant) != u"3") {
        expected = KindOf(meant) == u"1" ? u"Edit Shared Contact" : u"Modify Group";
        expectedId = IdOf(meant);
      }
    }
    String opened;
    if (!expected.empty()) {
      screen.PlayModal([&](controls::Form& editor) {
        opened = editor.Caption();
        if (opened == u"Edit Shared Contact") {
          EXPECT_EQ(session.EditContactId, expectedId);
        }
        editor.UserCloses();
      });
    }
    form->ContactProperties();
    EXPECT_EQ(opened, expected);
  }
  void Copy() {
    screen.Clipboard = u"";
    form->Copy();
    Keys lines;
    const String& text = *screen.Clipboard;
    for (std::size_t start = 0; start < text.size();) {
      const std::size_t end = text.find(u"\r\n", start);
      lines.insert(text.substr(start, text.find(u'\t', start) - start));
      start = end + 2;
    }
    Keys names;
    if (!selected.empty()) names.insert(u"Name");
    for (int row = 1; row <= Rows(); ++row) {
      if (selected.contains(KeyOf(row))) names.insert(Cell(row, u"NAME"));
    }
    EXPECT_EQ(lines, names);
  }
  void SomebodyElse() {
    const int id = 1000 + steps;
    if (Any(2) == 0) return AddContact(id, Any(4));
    database.Run({u"INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) SELECT " + ToDecimal(id) +
                  u", 'Theirs " + ToDecimal(id) +
                  u"', ID FROM SMS_ABFOLDERS WHERE TYPE = 'S' AND ID = " + ToDecimal(1 + Any(3))});
  }

  /// The row for commands on one row; empty for none.
  String Chosen() const {
    if (selected.contains(current)) return current;
    return selected.size() == 1 ? *selected.begin() : String();
  }
  std::vector<String> Listed() const {
    std::vector<String> keys;
    for (int row = 1; row <= Rows(); ++row) keys.push_back(KeyOf(row));
    return keys;
  }
  /// After the list was loaded again: the chosen row of the rows before, or else the next one or
  /// the previous one that is still listed and was not selected.
  String Kept(const std::vector<String>& before) const {
    const auto chosen = std::find(before.begin(), before.end(), Chosen());
    if (chosen == before.end()) return {};
    std::vector<String> wanted = {*chosen};
    const auto take = [&](const String& key) {
      if (!selected.contains(key)) wanted.push_back(key);
    };
    std::for_each(std::next(chosen), before.end(), take);
    std::for_each(std::reverse_iterator(chosen), before.rend(), take);
    const std::vector<String> now = Listed();
    for (const String& key : wanted) {
      if (std::find(now.begin(), now.end(), key) != now.end()) return key;
    }
    return {};
  }

  void Step() {
    ++steps;
    const auto loads = Loads();
    const std::vector<String> before = Listed();
    switch (Any(14)) {
      case 0:
      case 1:
      case 2:
      case 3:
        what = "selects";
        SelectSome();
        break;
      case 4:
      case 5:
        what = "chooses a node";
        ClickNode();
        break;
      case 6:
        what = "sorts";
        if (Rows() > 0) form->vsfContacts.UserClicksHeading(2 + 2 * Any(2));
        break;
      case 7:
        what = "goes elsewhere";
        (Any(2) == 0 ? static_cast<controls::Control&>(form->txtFind) : form->tvwContacts)
            .UserFocuses(true);
        break;
      case 8:
        what = "loads anew";
        form->tlbMain.UserClicks(u"REFRESH");
        break;
      case 9:
        what = "sees the tree built anew";
        form->LoadTreeView();
        break;
      case 10:
        what = "is not alone";
        SomebodyElse();
        break;
      case 11:
        what = "copies";
        Copy();
        break;
      case 12:
        what = "opens";
        Properties();
        break;
      default:
        what = "deletes";
        Delete();
    }
    Complete();
    if (Loads() == loads) return;
    const bool isSameList = std::exchange(listed, form->Current().Key) == form->Current().Key;
    current = isSameList ? Kept(before) : String();
    selected.clear();
    if (!current.empty()) selected.insert(current);
  }
  void ExpectOne() {
    Keys believed;
    for (const int row : form->vsfContacts.SelectedRows()) believed.insert(KeyOf(row));
    EXPECT_EQ(believed, selected);
    const int row = form->vsfContacts.Row();
    EXPECT_EQ(row > 0 ? KeyOf(row) : String(), current);
    int focused = 0;
    for (const controls::Control* control : form->Controls()) focused += control->HasFocus();
    EXPECT_LE(focused, 1);
    EXPECT_EQ(Log(), u"");
  }

  std::mt19937 random{GetParam()};
  forms::Editors editors{session};
  std::unique_ptr<forms::frmAddressBook> form;
  Keys selected;   ///< "kind:id" of the rows
  String current;  ///< empty for none
  String listed;   ///< the node whose list is shown
  String expectedId;
  std::string what;
  int steps = 0;
};

TEST_P(RandomHandTest, NothingIsDoneToWhatIsNotSelected) {
  std::string before;
  for (int step = 1; step <= 60; ++step) {
    Step();
    before += "\n  " + std::to_string(step) + ": " + what;
    ExpectOne();
    if (HasFailure()) FAIL() << "seed " << GetParam() << ", somebody" << before;
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomHandTest, testing::Range(1U, 13U));

}  // namespace
}  // namespace ktrv::tests
