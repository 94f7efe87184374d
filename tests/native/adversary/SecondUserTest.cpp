#include <algorithm>
#include <gtest/gtest.h>
#include <iostream>

#include "tests/native/adversary/Comparing.h"
#include "tests/native/adversary/Tasks.h"

namespace ktrv::tests {
namespace {

/// What the second user does, properly: whole, and only where it can be done.
struct Act {
  const char* Name;
  std::vector<String> Statements;
};

const std::vector<Act>& Acts() {
  static const auto folderGoes = [](const char16_t* id) {
    const String number(id);
    return std::vector<String>{
        u"DELETE FROM SMS_ABGROUPMAPS WHERE CONTACT_TYPE = 'S' AND CAST(CONTACT_ID AS INTEGER) IN "
        u"(SELECT ID FROM SMS_ABCONTACTS WHERE FOLDER_ID = " +
            number +
            u") AND NOT EXISTS (SELECT "
            u"1 FROM SMS_ABGROUPS WHERE FOLDER_ID = " +
            number + u")",
        u"DELETE FROM SMS_ABCONTACTS WHERE FOLDER_ID = " + number +
            u" AND NOT EXISTS (SELECT 1 FROM SMS_ABGROUPS WHERE FOLDER_ID = " + number + u")",
        u"DELETE FROM SMS_ABFOLDERS WHERE ID = " + number +
            u" AND NOT EXISTS (SELECT 1 FROM SMS_ABGROUPS WHERE FOLDER_ID = " + number + u")"};
  };
  static const auto groupGoes = [](const char16_t* id) {
    return std::vector<String>{u"DELETE FROM SMS_ABGROUPS WHERE ID = " + String(id),
                               u"DELETE FROM SMS_ABGROUPMAPS WHERE GROUP_ID = " + String(id)};
  };
  static const auto contactGoes = [](const char16_t* id) {
    return std::vector<String>{u"DELETE FROM SMS_ABCONTACTS WHERE ID = " + String(id),
                               u"DELETE FROM SMS_ABGROUPMAPS WHERE CONTACT_TYPE = 'S' AND "
                               u"CONTACT_ID = '" +
                                   String(id) + u"'"};
  };
  static const std::vector<Act> acts = {
      {"DeletesStaff", folderGoes(u"1")},
      {"DeletesFriends", folderGoes(u"3")},
      {"DeletesOld", folderGoes(u"4")},
      {"DeletesDealers", {u"DELETE FROM SMS_ABFOLDERS WHERE ID = 2"}},
      {"RenamesFriends", {u"UPDATE SMS_ABFOLDERS SET NAME = 'Pals' WHERE ID = 3"}},
      {"AddsFolderClients",
       {u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME, PARENTFOLDERID, USER_ID, "
        u"REMOTE_CONTACTS_CATEGORY) SELECT 900, 'S', 'Clients', 0, 2, '' WHERE NOT EXISTS (SELECT "
        u"1 FROM SMS_ABFOLDERS WHERE NAME = 'Clients')"}},
      {"DeletesTeam", groupGoes(u"11")},
      {"DeletesCrew", groupGoes(u"12")},
      {"RenamesTeam", {u"UPDATE SMS_ABGROUPS SET NAME = 'Gang' WHERE ID = 11"}},
      {"AddsMember",
       {u"INSERT INTO SMS_ABGROUPMAPS SELECT 11, '3', 'S' WHERE EXISTS (SELECT 1 FROM SMS_ABGROUPS "
        u"WHERE ID = 11) AND EXISTS (SELECT 1 FROM SMS_ABCONTACTS WHERE ID = 3)"}},
      {"RemovesMember", {u"DELETE FROM SMS_ABGROUPMAPS WHERE GROUP_ID = 11 AND CONTACT_ID = '1'"}},
      {"AddsGroupToOld",
       {u"INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) SELECT 900, 'Late', 4 WHERE EXISTS "
        u"(SELECT "
        u"1 FROM SMS_ABFOLDERS WHERE ID = 4)"}},
      {"AddsContactToOld",
       {u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, MOBILENO) SELECT 900, 4, 'Late', '1' "
        u"WHERE EXISTS (SELECT 1 FROM SMS_ABFOLDERS WHERE ID = 4)"}},
      {"DeletesAnna", contactGoes(u"1")},
      {"DeletesBert", contactGoes(u"2")},
      {"DeletesCora", contactGoes(u"3")},
      {"DeletesAnn", contactGoes(u"5")},
      {"EditsAnn", {u"UPDATE SMS_ABCONTACTS SET ORGANISATION = 'Other' WHERE ID = 5"}},
      {"MovesAnn",
       {u"UPDATE SMS_ABCONTACTS SET FOLDER_ID = 1 WHERE ID = 5 AND EXISTS (SELECT 1 FROM "
        u"SMS_ABFOLDERS WHERE ID = 1)"}},
      {"DisablesTheUser", {u"UPDATE SMS_USERS SET DISABLED = 1 WHERE ID = 1"}},
  };
  return acts;
}

/// A state that the database may be in at the end, and what the host then reads.
struct End {
  Rows Contents;
  String Results;
  std::vector<std::string> Orphans;
  bool Confirmed = false;
  bool WithFirst = false;  ///< the first one's work was done before, and must not be refused
};

struct Meeting {
  std::size_t Task;
  const char16_t* Word;
};

struct SecondUserTest : testing::TestWithParam<Meeting> {
  const UserTask& Task() const { return UserTasks()[GetParam().Task]; }

  static void Settle(Stage& stage) {
    // Who deletes wants to. Whatever else is asked has to do with the other user.
    stage.screen.OnQuestion = [](StringView text) {
      return text.starts_with(u"Are you sure you want to") ? MessageAnswer::Yes : MessageAnswer::No;
    };
  }
  End EndOf(Stage& stage, bool confirmed) const {
    return {stage.book.Contents(), Task().Results(stage), stage.book.Orphans(), confirmed, false};
  }
  std::vector<DriverCall> Statements() const {
    Stage stage(GetParam().Word);
    EXPECT_TRUE(Task().Act(stage));
    auto calls = stage.driver.Calls();
    std::erase_if(calls, [](const auto& call) { return call.What.rfind("Execute ", 0) != 0; });
    return calls;
  }
  End FirstThenSecond(const Act& act) const {
    Stage stage(GetParam().Word);
    Settle(stage);
    const bool confirmed = Task().Act(stage);
    const String results = Task().Results(stage);
    EXPECT_TRUE(stage.book.Run(act.Statements));
    return {stage.book.Contents(), results, stage.book.Orphans(), confirmed, true};
  }
  End SecondThenFirst(const Act& act) const {
    Stage stage(GetParam().Word);
    Settle(stage);
    EXPECT_TRUE(stage.book.Run(act.Statements));
    const bool confirmed = Task().Act(stage);
    return EndOf(stage, confirmed);
  }
  static End SecondOnly(const Act& act) {
    const SampleBook book;
    EXPECT_TRUE(book.Run(act.Statements));
    return {book.Contents(), {}, book.Orphans(), false, false};
  }

  /// \return what is wrong; empty when all is well
  std::string Try(const DriverCall& before, const Act& act, bool counts,
                  const std::vector<End>& ends) const {
    Stage stage(GetParam().Word);
    Settle(stage);
    stage.driver.CountsNothing = !counts;
    std::map<std::string, int> seen;
    bool acted = false;
    stage.driver.BeforeExecute([&](StringView text) {
      const std::string what = "Execute " + ToUtf8(text);
      if (what != before.What || ++seen[what] != before.Which) return;
      acted = stage.book.Run(act.Statements);
    });
    const bool confirmed = Task().Act(stage);
    stage.driver.BeforeExecute(nullptr);
    // The first one's transaction was in the way: the second user waited.
    if (!acted) {
      EXPECT_TRUE(stage.book.Run(act.Statements));
    }
    const End end = EndOf(stage, confirmed);
    std::string wrong;
    const auto complain = [&](const std::string& text) { wrong += "\n    " + text; };
    if (stage.Escaped > 0) complain("a failure came out of an event");
    const auto isEnd = [&](const End& each) {
      if (each.Contents != end.Contents) return false;
      return confirmed ? each.Confirmed && each.Results == end.Results : !each.WithFirst;
    };
    if (std::none_of(ends.begin(), ends.end(), isEnd)) {
      complain(std::string(confirmed ? "confirmed" : "refused") +
               ", and the database is as after neither order:");
      for (const End& each : ends) wrong += "\n     or" + Difference(end.Contents, each.Contents);
      if (confirmed) complain("results: " + ToUtf8(end.Results));
    }
    // Who does not find what to work on has seen it, and needs no word.
    if (stage.Refused > 0 && !stage.WasTold() && stage.screen.Messages.empty()) {
      complain("refused without a word");
    }
    for (const std::string& orphan : end.Orphans) {
      const bool known = std::any_of(ends.begin(), ends.end(), [&](const End& each) {
        return std::find(each.Orphans.begin(), each.Orphans.end(), orphan) != each.Orphans.end();
      });
      if (!known) complain("left behind: " + orphan);
    }
    if (!wrong.empty()) wrong += LogFor(stage);
    if (const auto left = stage.Close(); !left.empty()) complain("left: " + left);
    return wrong;
  }
};

TEST_P(SecondUserTest, NeitherUsersWorkIsLost) {
  const auto statements = Statements();
  if (HasFailure()) return;
  const std::string& name = Task().Name;
  const auto says = [&](const char* word) { return name.find(word) != std::string::npos; };
  const bool edits = says("Edit") || says("Properties") || says("Rename") || says("Anew");
  const std::vector<bool> countings = edits ? std::vector<bool>{true, false} : std::vector{true};
  const std::size_t all = statements.size() * Acts().size() * countings.size();
  Choice choice("SecondUser", name, all, 4, 9, GetParam().Task);
  std::size_t index = 0;
  std::size_t ran = 0;
  std::map<std::string, int> red;
  for (const Act& act : Acts()) {
    std::vector<End> ends;
    for (const bool counts : countings) {
      for (const DriverCall& before : statements) {
        const std::string trial =
            std::string(act.Name) + (counts ? "" : " uncounted") + " before " + before.Name();
        if (!choice.Takes(index++, trial)) continue;
        Announce(trial);
        if (ends.empty()) ends = {FirstThenSecond(act), SecondThenFirst(act), SecondOnly(act)};
        ++ran;
        const std::string wrong = Try(before, act, counts, ends);
        if (wrong.empty()) continue;
        ++red[act.Name];
        ADD_FAILURE() << trial << wrong;
      }
    }
  }
  std::cout << "[ adversary] " << name << " " << ToUtf8(GetParam().Word) << ": " << all
            << " trials, " << ran << " tried";
  for (const auto& [act, count] : red) std::cout << ", " << act << " red " << count;
  std::cout << std::endl;
  if (const auto open = choice.Open(); !open.empty()) GTEST_SKIP() << open;
}

std::vector<Meeting> Meetings() {
  std::vector<Meeting> cases;
  for (std::size_t task = 0; task < UserTasks().size(); ++task) {
    for (const char16_t* word : {u"SQL", u"ORACLE"}) cases.push_back({task, word});
  }
  return cases;
}

INSTANTIATE_TEST_SUITE_P(Tasks, SecondUserTest, testing::ValuesIn(Meetings()),
                         [](const auto& each) {
                           return UserTasks()[each.param.Task].Name + "_" + ToUtf8(each.param.Word);
                         });

}  // namespace
}  // namespace ktrv::tests
