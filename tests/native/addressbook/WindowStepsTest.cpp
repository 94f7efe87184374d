#include <algorithm>
#include <thread>

#include "controls/CheckBox.h"
#include "controls/ComboBox.h"
#include "controls/CommandButton.h"
#include "controls/DatePicker.h"
#include "controls/Frame.h"
#include "controls/UpDown.h"
#include "tests/native/addressbook/AddressBookFixture.h"
#include "tests/native/addressbook/ToldPeers.h"
#include "tests/native/support/WatchedDriver.h"

namespace ktrv::tests {
namespace {

/// What the window does, and in which order.
struct WindowStepsTest : AddressBookTest {
  WindowStepsTest() {
    RunAt(RunApplicationAt::RuntAtServer);
    Counts(Queries::kCountFolderContacts, 2);
    Lists({Item(u"1", u"Anna"), Item(u"2", u"Bert")});
    watched.BeforeExecute = [this, window = std::this_thread::get_id()](StringView text) {
      if (std::this_thread::get_id() != window) return;  // the list comes on a thread of its own
      steps.push_back(text.find(u"COUNT(1)") != StringView::npos ? "counted" : "tree read");
    };
    session.Database.Environment = {[this](StringView) -> database::Driver& {
                                      if (std::this_thread::get_id() == thread)
                                        steps.push_back("link");
                                      return watched;
                                    },
                                    screen.Dispatcher.Post()};
    session.Database.Renew();
    form = std::make_unique<forms::frmAddressBook>(session.Place(), editors);
  }
  ~WindowStepsTest() override {
    form.reset();
    WaitForFetches();  // they use the driver
    session.SessionConnection.reset();
  }

  /// Gives the controls windows that tell.
  void Watch() {
    form->vsfContacts.Realise(peers);
    form->ProgressBar1.Realise(peers);
    form->StatusBar1.Realise(peers);
    form->picSlider.Realise(peers);
    steps.clear();
  }
  /// Each of these happened, one behind the other, whatever lies between them.
  void ExpectInOrder(const Steps& wanted) {
    auto from = steps.begin();
    for (const std::string& step : wanted) {
      from = std::find(from, steps.end(), step);
      std::string all;
      for (const std::string& each : steps) all += each + "; ";
      ASSERT_NE(from, steps.end()) << "not in its place: " << step << "\nof: " << all;
      ++from;
    }
  }

  const std::thread::id thread = std::this_thread::get_id();
  WatchedDriver watched{driver};
  Steps steps;
  ToldPeers peers{steps};
};

TEST_F(WindowStepsTest, NoStepOfTheLoadIsTakenBeforeItsTime) {
  form->picSlider.SetWidth(70);
  Watch();
  form->ProgressBar1.SetVisible(false);
  form->Show();
  ExpectInOrder({"tree read", "tree read", "tree read", "bar in 2", "bar shown", "link",
                 "panels 1: Loading Contacts...", "bar hidden", "counted", "counted",
                 "panels 1: 2 item(s)", "panels 3", "bar in 3", "bar shown", "bar hidden",
                 "splitter placed"});
  EXPECT_EQ(form->picSlider.Width(), 50);
}

TEST_F(WindowStepsTest, AListThatIsCountedIsNotShownAsLoaded) {
  form->Show();
  ASSERT_TRUE(Complete());
  Watch();
  form->LoadContacts();
  ExpectInOrder({"panels 1: Loading Contacts...", "counted", "counted", "panels 1: 2 item(s)"});
  ASSERT_TRUE(Complete());
}

TEST_F(WindowStepsTest, NothingIsPaintedBeforeTheListIsComplete) {
  form->Show();
  ASSERT_TRUE(Complete());
  Watch();
  form->LoadContacts();
  ASSERT_TRUE(Complete());
  ExpectInOrder({"grid held", "bar hidden", "panels 3: ", "panels 2", "grid rows",
                 "grid sorted by NAME", "grid painted"});
}

TEST_F(WindowStepsTest, ARowThatIsFoundDoesNotStayOutOfSight) {
  form->Show();
  ASSERT_TRUE(Complete());
  Watch();
  form->txtFind.UserTypes(u"be");
  EXPECT_EQ(steps, (Steps{"panels 2: 1 selected", "grid row 2 in sight"}));
}

TEST_F(WindowStepsTest, AProgressBarInNoPanelIsOnlyMovedToTheStatusBar) {
  form->Show();
  ASSERT_TRUE(Complete());
  Watch();
  form->PlaceProgressBar(form->StatusBar1, form->ProgressBar1, 0);
  EXPECT_EQ(steps, (Steps{"bar in 0"}));
}

TEST_F(WindowStepsTest, ADetachedListWritesNothing) {
  form->Show();
  ASSERT_TRUE(Complete());
  database::Recordset* rows = form->rsUserContacts();
  ASSERT_NE(rows, nullptr);
  rows->MoveFirst();
  const auto number = [&] {
    try {
      rows->SetField(u"NAME", String(u"Other"));
      rows->Update();
    } catch (const Error& error) {
      return error.Number();
    }
    return 0;
  };
  EXPECT_EQ(number(), ErrorNumber::NotUpdatable);
  EXPECT_EQ(rows->State(), database::ObjectState::Open);
}

TEST_F(WindowStepsTest, ACountIsNotSentWithAnotherParameter) {
  RunAt(RunApplicationAt::RuntAtClient);
  SharedFolders({{u"7", u"Staff"}});
  RemoteFolders({{u"3", u"Dealers"}});
  Groups({{u"6", u"Drivers", u"0"}});
  struct Prepared {
    String Text;
    std::vector<database::Parameter> Parameters;
  };
  std::vector<Prepared> prepared;
  watched.BeforePrepare = [&](StringView text, std::span<const database::Parameter> parameters) {
    if (parameters.empty()) return;  // the lists, on threads of their own
    prepared.push_back({String(text), {parameters.begin(), parameters.end()}});
  };
  form->Show();
  for (int turn = 0; turn < 2; ++turn) {
    for (const StringView key : {u"SFLD7", u"RFLD3", u"SHGR6"}) ClickAndWait(key);
  }
  // Each is prepared once, however often it counts.
  ASSERT_EQ(prepared.size(), 4U);
  for (const auto& each : prepared) {
    const bool ofGroup = each.Text == Queries::kCountGroupMembers;
    ASSERT_EQ(each.Parameters.size(), 1U);
    EXPECT_EQ(each.Parameters[0].Name, ofGroup ? u"GROUP_ID" : u"FOLDER_ID");
    EXPECT_EQ(each.Parameters[0].Type, database::DataType::Integer);
    EXPECT_EQ(each.Parameters[0].Size, 0);
  }
}

}  // namespace
}  // namespace ktrv::tests
