#include <gtest/gtest.h>

#include "component/Session.h"
#include "data/GroupQueries.h"
#include "forms/groups/frmGroupsNew.h"
#include "tests/native/support/FakeDriver.h"
#include "tests/native/support/FakeOperatingSystem.h"
#include "tests/native/support/OnDemand.h"
#include "tests/wine/controls/Play.h"
#include "tests/wine/groups/PaintWatch.h"

namespace ktrv::windows {
namespace {

using database::DataType;
using tests::FakeDriver;
namespace Queries = data::GroupQueries;

/// The picker on a real window, with a hundred thousand contacts to choose from.
class TheBusyPicker : public testing::Test {
 protected:
  using Texts = std::vector<std::wstring>;
  static constexpr int kContacts = 100000;

  TheBusyPicker() {
    session_.LogFilePath = u"log";
    session_.Database.Renew();
    session_.SessionConnectionString = u"DSN=Test";
    session_.DbType = u"SQL";
    session_.IsAdmin = UserType::Administrator;
    driver_.Answer(Queries::kFolders, {{u"ID"}, {u"NAME"}, {u"TYPE"}}, {});
    driver_.Answer(u"SELECT COUNT(1)", {{u"TOTAL", DataType::Integer}}, {{u"1"}});
    Offer(kContacts, u"1");
  }

  /// The source's rows, all of one kind.
  void Offer(int rows, const char16_t* kind) {
    offered_ = rows;
    std::vector<FakeDriver::Row> offered;
    for (int id = 1; id <= rows; ++id) {
      offered.push_back({ToDecimal(id), u"Name " + ToDecimal(id), u"9", u"", kind, u"9"});
    }
    driver_.Answer(
        u"AS MOBILE_DISPLAY FROM",
        {{u"ID"}, {u"FNAME"}, {u"MOBILENO"}, {u"COUNTRYCODE"}, {u"1"}, {u"MOBILE_DISPLAY"}},
        std::move(offered));
  }
  void Show() {
    form_->Show();
    for (int patience = 0; patience < 4 && form_->Sources().IsLoading(); ++patience) {
      PumpUntil([&] { return !form_->Sources().IsLoading(); });
    }
    ASSERT_EQ(form_->vsfFolderContacts.Rows() - 1, offered_);
    Pump();
  }
  /// All zeroes when the window has the system's font, or one that is no more.
  static LOGFONTW FontOf(HWND window) {
    LOGFONTW font{};
    const auto handle = reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0));
    GetObjectW(handle, sizeof font, &font);
    return font;
  }
  static LONG RowHeight(HWND list) {
    RECT row{};
    ListView_GetItemRect(list, 0, &row, LVIR_BOUNDS);
    return row.bottom - row.top;
  }
  bool CanSee(int candidate) const {
    const HWND list = WindowOf(form_->vsfFolderContacts);
    const int top = ListView_GetTopIndex(list) + 1;
    return candidate >= top && candidate < top + ListView_GetCountPerPage(list);
  }
  /// As Windows tells when the user moves the window to another monitor.
  void GoToDpi(WORD dpi) {
    constexpr UINT kDpiChanged = 0x02E0;  // WM_DPICHANGED
    RECT place{};
    GetWindowRect(WindowOf(*form_), &place);
    SendMessageW(WindowOf(*form_), kDpiChanged, MAKEWPARAM(dpi, dpi),
                 reinterpret_cast<LPARAM>(&place));
  }

  int offered_ = 0;
  FakeDriver driver_;
  Win32Screen screen_;
  tests::FakeOperatingSystem system_;
  Session session_{screen_,
                   system_,
                   {[this](StringView) -> database::Driver& { return driver_; }, screen_.Poster()}};
  forms::GroupRequest request_{.LoadGroupFor = LoadGroupFor::SelectReceipient,
                               .GroupType = TypeOfGroup::SharedGroup};
  tests::OnDemand<forms::frmGroupsNew> form_{
      [this] { return std::make_unique<forms::frmGroupsNew>(session_.Place(), request_); }};
};

TEST_F(TheBusyPicker, WritesBothListsInArialOfTheFormsSize) {
  Offer(3, u"1");
  Show();
  for (HWND list : {WindowOf(form_->vsfFolderContacts), WindowOf(form_->vsfGroupContacts)}) {
    for (HWND window : {list, ListView_GetHeader(list)}) {
      EXPECT_STREQ(FontOf(window).lfFaceName, L"Arial");
      EXPECT_EQ(FontOf(window).lfHeight, FontOf(WindowOf(form_->cmdOK)).lfHeight);
    }
    EXPECT_STRNE(FontOf(WindowOf(form_->cmdOK)).lfFaceName, L"Arial");
  }
}

TEST_F(TheBusyPicker, WritesBothListsInArialOnAMonitorOfAnotherResolutionToo) {
  Offer(3, u"1");
  Show();
  const LONG former = FontOf(WindowOf(form_->vsfFolderContacts)).lfHeight;
  const LONG formerRow = RowHeight(WindowOf(form_->vsfFolderContacts));
  GoToDpi(192);
  for (HWND list : {WindowOf(form_->vsfFolderContacts), WindowOf(form_->vsfGroupContacts)}) {
    for (HWND window : {list, ListView_GetHeader(list)}) {
      EXPECT_STREQ(FontOf(window).lfFaceName, L"Arial");
      EXPECT_EQ(FontOf(window).lfHeight, FontOf(WindowOf(form_->cmdOK)).lfHeight);
    }
  }
  EXPECT_EQ(FontOf(WindowOf(form_->vsfFolderContacts)).lfHeight, 2 * former);
  EXPECT_NEAR(RowHeight(WindowOf(form_->vsfFolderContacts)), 2 * formerRow, 2);
}

TEST_F(TheBusyPicker, MovesItsBarAndPaintsItselfWhileAllAreTaken) {
  Show();
  PaintWatch bar(WindowOf(form_->pbrSave));
  PaintWatch cancel(WindowOf(form_->cmdCancel));
  PaintWatch source(WindowOf(form_->vsfFolderContacts));
  const ULONGLONG start = GetTickCount64();
  form_->SelectAllMembers();
  // Ten times a second, but the machine may be busy with other tests.
  const auto often = static_cast<int>((GetTickCount64() - start) / 1000);
  EXPECT_EQ(form_->Members().Count(), kContacts);
  EXPECT_GE(bar.Paints, 2 + often);
  EXPECT_GE(bar.Positions.size(), static_cast<std::size_t>(2 + often));
  EXPECT_GE(cancel.Paints, 1 + often);
  EXPECT_GE(source.Paints, 1 + often);
}

TEST_F(TheBusyPicker, MovesItsBarAndPaintsItselfWhileGroupsAreExpanded) {
  Offer(60, u"2");
  driver_.Answer(Queries::kExpandedMembers, {{u"ID"}, {u"FNAME"}, {u"MOBILENO"}, {u"COUNTRYCODE"}},
                 {{u"7", u"Anna", u"9", u""}});
  request_.ExpandGroups = true;
  Show();
  form_->SelectAllMembers();
  PaintWatch bar(WindowOf(form_->pbrSave));
  PaintWatch members(WindowOf(form_->vsfGroupContacts));
  PaintWatch label(WindowOf(form_->lblSave));
  driver_.FetchMilliseconds = 3;
  EXPECT_TRUE(form_->Save_Data());
  EXPECT_EQ(form_->Picked().value().Selected->Count(), 60);
  EXPECT_GE(bar.Positions.size(), 3U);
  EXPECT_GE(members.Paints, 2);
  EXPECT_GE(label.Paints, 2);
}

TEST_F(TheBusyPicker, SaysThatItAddsContacts) {
  Offer(3, u"1");
  Show();
  PaintWatch label(WindowOf(form_->lblSave));
  form_->SelectAllMembers();
  EXPECT_EQ(label.Texts, (Texts{L"Adding Contacts..."}));
}

TEST_F(TheBusyPicker, SaysWhichGroupItExpandsAndThatItIsDone) {
  Offer(2, u"2");
  driver_.Answer(Queries::kExpandedMembers, {{u"ID"}, {u"FNAME"}, {u"MOBILENO"}, {u"COUNTRYCODE"}},
                 {{u"7", u"Anna", u"9", u""}});
  request_.ExpandGroups = true;
  Show();
  form_->SelectAllMembers();
  PaintWatch label(WindowOf(form_->lblSave));
  EXPECT_TRUE(form_->Save_Data());
  EXPECT_EQ(label.Texts, (Texts{L"Selecting members..", L"Exploring members for group - Name 1",
                                L"Selecting members..", L"Exploring members for group - Name 2",
                                L"Selecting members.."}));
}

TEST_F(TheBusyPicker, SaysThatItSavesWhenItIsTheEditor) {
  Offer(3, u"1");
  driver_.Changes(u"DELETE FROM", 0);
  driver_.Changes(u"INSERT INTO", 1);
  driver_.Answer(Queries::kGroupIdByName, {{u"ID", DataType::Integer}}, {{u"77"}});
  driver_.Answer(u"FROM SMS_ABCONTACTS WHERE ID IN", {{u"ID"}}, {{u"1"}, {u"2"}, {u"3"}});
  request_.LoadGroupFor = LoadGroupFor::AddModify;
  Show();
  form_->SelectAllMembers();
  PaintWatch label(WindowOf(form_->lblSave));
  EXPECT_TRUE(form_->Save_Data());
  EXPECT_EQ(label.Texts, (Texts{L"Saving Group..."}));
}

TEST_F(TheBusyPicker, ScrollsToTheNameThatIsTyped) {
  Show();
  ASSERT_FALSE(CanSee(90000));
  SetWindowTextW(WindowOf(form_->txtFind), L"name 90000");
  EXPECT_EQ(form_->vsfFolderContacts.SelectedRows(), (std::vector<int>{90000}));
  EXPECT_TRUE(CanSee(90000));
}

TEST_F(TheBusyPicker, ScrollsBackToTheNameThatIsTypedAgain) {
  Show();
  SetWindowTextW(WindowOf(form_->txtFind), L"name 90000");
  ListView_EnsureVisible(WindowOf(form_->vsfFolderContacts), 0, FALSE);
  ASSERT_FALSE(CanSee(90000));
  SetWindowTextW(WindowOf(form_->txtFind), L"Name 90000");
  EXPECT_TRUE(CanSee(90000));
}

}  // namespace
}  // namespace ktrv::windows
