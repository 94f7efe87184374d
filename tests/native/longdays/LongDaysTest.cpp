#include <cstdlib>
#include <gtest/gtest.h>
#include <ostream>

#include "tests/native/adversary/Stage.h"
#include "tests/native/longdays/OdbcHandles.h"

namespace ktrv::tests {
namespace {

constexpr std::int32_t kAdministrator = 1;
constexpr std::int32_t kShared = 1;

/// Grows if something is not released.
struct Held {
  OdbcHandles Handles = OdbcHandles::Alive();
  std::int64_t Blocks = FailingAllocations::Alive();

  bool operator==(const Held&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Held& held) {
  return out << held.Handles << ", " << held.Blocks << " blocks of memory";
}

struct Cycle {
  const char* Name;
  void (*Do)(Stage&);
};

void WaitForLists(Stage& stage, forms::frmGroupsNew& dialog) {
  ASSERT_TRUE(stage.screen.WaitUntil(
      [&] { return !dialog.Sources().IsLoading() && !dialog.Members().IsLoading(); }));
}

forms::frmAddressBook& OpenBook(Stage& stage) {
  EXPECT_EQ(stage.main->LoadAddressBook(kAdministrator), 1);
  forms::frmAddressBook& window = stage.dialogs->AddressBook();
  EXPECT_TRUE(stage.screen.WaitUntil([&] { return !window.List().IsLoading(); }));
  return window;
}

constexpr Cycle kCycles[] = {
    {"ContactIsMadeAndCancelled",
     [](Stage& stage) {
       stage.InContact = [](forms::frmNewContact& dialog) { dialog.txtFname.UserTypes(u"Nils"); };
       EXPECT_EQ(stage.main->AddContacts(kAdministrator, kShared, u"x", u"1"), 1);
     }},
    {"ContactIsEdited",
     [](Stage& stage) {
       stage.InContact = [&](forms::frmNewContact& dialog) {
         dialog.txtCity.SetText(dialog.txtCity.Text() == u"Oslo" ? u"Rome" : u"Oslo");
         EXPECT_TRUE(stage.PressOk(dialog, dialog.cmdSave));
       };
       EXPECT_EQ(stage.main->EditContacts(kAdministrator, kShared, 5, u"", u""), 1);
     }},
    {"GroupIsMadeAndCancelled",
     [](Stage& stage) {
       stage.InGroup = [&](forms::frmGroupsNew& dialog) { WaitForLists(stage, dialog); };
       EXPECT_EQ(stage.main->AddGroup(kAdministrator, u"0", kShared, u""), 1);
     }},
    {"GroupIsLeftWhileItsListsCome",
     [](Stage& stage) {
       stage.InGroup = [](forms::frmGroupsNew&) {};
       EXPECT_EQ(stage.main->EditGroup(kAdministrator, u"11", kShared, u""), 1);
     }},
    {"GroupIsEdited",
     [](Stage& stage) {
       stage.InGroup = [&](forms::frmGroupsNew& dialog) {
         WaitForLists(stage, dialog);
         dialog.txtGroupName.SetText(dialog.txtGroupName.Text() == u"Team" ? u"Crowd" : u"Team");
         EXPECT_TRUE(stage.PressOk(dialog, dialog.cmdOK));
       };
       EXPECT_EQ(stage.main->EditGroup(kAdministrator, u"11", kShared, u""), 1);
     }},
    {"RecipientsArePicked",
     [](Stage& stage) {
       stage.session.GroupType = TypeOfGroup::SharedGroup;
       stage.InGroup = [&](forms::frmGroupsNew& dialog) {
         WaitForLists(stage, dialog);
         dialog.cmdSelectAll.UserClicks();
         EXPECT_TRUE(stage.PressOk(dialog, dialog.cmdOK));
       };
       EXPECT_EQ(stage.main->LoadRecipients(kAdministrator, true), 1);
     }},
    {"FolderIsEdited",
     [](Stage& stage) {
       forms::frmAddressBook& window = OpenBook(stage);
       window.tvwContacts.UserClicks(*window.tvwContacts.Find(u"SFLD3"));
       window.tvwContacts.UserFocuses(true);
       stage.InFolder = [&](forms::frmSelectFolder& dialog) {
         dialog.txtFolderName.SetText(dialog.txtFolderName.Text() == u"Pals" ? u"Kin" : u"Pals");
         EXPECT_TRUE(stage.PressOk(dialog, dialog.cmdOK));
       };
       window.tlbMain.UserClicks(u"PROPERTIES");
       window.UserCloses();
     }},
    {"AddressBookIsClosedWhileItsListComes",
     [](Stage& stage) {
       forms::frmAddressBook& window = OpenBook(stage);
       window.tvwContacts.UserClicks(*window.tvwContacts.Find(u"SHGR11"));
       window.UserCloses();
     }},
    {"LastObjectGoesWhileAListComes",
     [](Stage& stage) {
       forms::frmAddressBook& window = OpenBook(stage);
       window.tvwContacts.UserClicks(*window.tvwContacts.Find(u"RFLD2"));
       stage.main.reset();
       stage.main = std::make_unique<clsMain>(stage.session, *stage.dialogs);
     }},
};

struct LongDaysTest : testing::TestWithParam<Cycle> {};

/// A sample of seconds without KTRV_CYCLES.
int Cycles() {
  constexpr int kSample = 200;
  const char* const wish = std::getenv("KTRV_CYCLES");
  return wish ? std::atoi(wish) : kSample;
}

TEST_P(LongDaysTest, NothingGrows) {
  constexpr int kWarm = 20;  // until all that is created once exists
  Stage stage(u"SQL");
  int windows = 0;
  const auto turn = [&] {
    GetParam().Do(stage);
    stage.screen.Pump();
    ASSERT_TRUE(WaitForFetches());
    stage.screen.Pump();
    for (const std::string& note : stage.screen.Log) {
      windows += (note == "realise") - (note == "gone");
    }
    stage.screen.Log.clear();
    stage.screen.Messages.clear();
    stage.screen.Menus.clear();
  };
  for (int cycle = 0; cycle < kWarm; ++cycle) turn();
  const Held before;
  EXPECT_TRUE(OdbcHandles::AnyWasMade());
  for (int cycle = 0; cycle < Cycles() && !HasFailure(); ++cycle) turn();
  EXPECT_EQ(Held(), before);
  EXPECT_EQ(windows, 0);
  EXPECT_EQ(stage.screen.Dispatcher.Waiting(), 0U);
  EXPECT_EQ(stage.Log().find("Error Number"), std::string::npos) << stage.Log();
  EXPECT_EQ(stage.Close(), "");
}

INSTANTIATE_TEST_SUITE_P(Dialogs, LongDaysTest, testing::ValuesIn(kCycles),
                         [](const auto& each) { return std::string(each.param.Name); });

}  // namespace
}  // namespace ktrv::tests
