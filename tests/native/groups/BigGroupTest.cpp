#include <algorithm>
#include <chrono>

#include "tests/native/groups/GroupsFixture.h"

namespace ktrv::forms {
namespace {

using Clock = std::chrono::steady_clock;

double MillisecondsSince(Clock::time_point start) {
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

/// Group 20 "Crowd" with all contacts of folder 3.
struct BigGroup : tests::GroupsOnDatabase {
  void Fill(int members) {
    const String last = ToDecimal(1000 + members);
    const String numbers =
        u"WITH RECURSIVE N(I) AS (SELECT 1001 UNION ALL SELECT I + 1 FROM N WHERE I < " + last +
        u") ";
    Run(u"DELETE FROM SMS_ABGROUPMAPS WHERE GROUP_ID = 20");
    Run(u"DELETE FROM SMS_ABCONTACTS WHERE FOLDER_ID = 3");
    Run(u"DELETE FROM SMS_ABGROUPS WHERE ID = 20");
    Run(u"INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) VALUES (20, 'Crowd', 0)");
    Run(u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, COUNTRYCODE, MOBILENO) " + numbers +
        u"SELECT I, 3, 'Name ' || I, '91', '98' || I FROM N");
    Run(u"INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) " + numbers +
        u"SELECT 20, I, 'S' FROM N");
  }

  /// Milliseconds of each task.
  struct Times {
    double Opening = 0, Saving = 0, Picking = 0;
  };
  Times Work(int members) {
    Fill(members);
    Times times;
    auto start = Clock::now();
    OpenToModify(u"20", u"Crowd");
    EXPECT_TRUE(Complete());
    EXPECT_EQ(form->Members().Count(), members);
    times.Opening = MillisecondsSince(start);

    start = Clock::now();
    form->cmdOK.UserClicks();
    EXPECT_FALSE(form->IsLoaded());
    times.Saving = MillisecondsSince(start);
    EXPECT_EQ(Query(u"SELECT COUNT(*) FROM SMS_ABGROUPMAPS WHERE GROUP_ID = 20"),
              ToDecimal(members));

    session.ExpandGroups = true;
    OpenPicker();
    EXPECT_TRUE(Complete());
    const auto names = Column(form->vsfFolderContacts, u"NAME");
    Take({static_cast<int>(std::find(names.begin(), names.end(), u"Crowd") - names.begin()) + 1});
    start = Clock::now();
    form->cmdOK.UserClicks();
    times.Picking = MillisecondsSince(start);
    EXPECT_FALSE(form->IsLoaded());
    EXPECT_EQ(form->Picked()->Selected->Count(), members);
    return times;
  }
};

TEST_F(BigGroup, TakesTimeInProportion) {
  constexpr double kTenTimes = 30;  // the square would be 100
  // A busy machine may hold up one of the two; it does not do so each time.
  bool inProportion = false;
  for (int attempt = 0; attempt < 4 && !inProportion; ++attempt) {
    const Times small = Work(2000);
    const Times large = Work(20000);
    inProportion = large.Opening < kTenTimes * small.Opening &&
                   large.Saving < kTenTimes * small.Saving &&
                   large.Picking < kTenTimes * small.Picking;
  }
  EXPECT_TRUE(inProportion);
}

}  // namespace
}  // namespace ktrv::forms
