#include <algorithm>
#include <chrono>

#include "tests/native/adversary/FailingAllocations.h"
#include "tests/native/groups/GroupsFixture.h"

namespace ktrv::forms {
namespace {

/// Milliseconds since it was made.
class Time {
 public:
  double Taken() const {
    return std::chrono::duration<double, std::milli>(Clock::now() - start_).count();
  }

 private:
  using Clock = std::chrono::steady_clock;
  const Clock::time_point start_ = Clock::now();
};

/// The most bytes at a time since it was made, beyond those that were allocated then.
class Memory {
 public:
  Memory() { tests::FailingAllocations::LowerPeak(); }
  double Taken() const {
    return static_cast<double>(tests::FailingAllocations::PeakBytes() - before_);
  }

 private:
  const std::int64_t before_ = tests::FailingAllocations::AliveBytes();
};

/// Group 20 "Crowd" with all contacts of folder 3 "Hall".
struct BigGroup : tests::GroupsOnDatabase {
  void Fill(int members) {
    const String last = ToDecimal(1000 + members);
    const String numbers =
        u"WITH RECURSIVE N(I) AS (SELECT 1001 UNION ALL SELECT I + 1 FROM N WHERE I < " + last +
        u") ";
    Run(u"DELETE FROM SMS_ABGROUPMAPS WHERE GROUP_ID = 20");
    Run(u"DELETE FROM SMS_ABCONTACTS WHERE FOLDER_ID = 3");
    Run(u"DELETE FROM SMS_ABGROUPS WHERE ID = 20");
    Run(u"DELETE FROM SMS_ABFOLDERS WHERE ID = 3");
    Run(u"INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME, PARENTFOLDERID, USER_ID, "
        u"REMOTE_CONTACTS_CATEGORY) VALUES (3, 'S', 'Hall', 0, 1, '')");
    Run(u"INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) VALUES (20, 'Crowd', 0)");
    Run(u"INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, COUNTRYCODE, MOBILENO) " + numbers +
        u"SELECT I, 3, 'Name ' || I, '91', '98' || I FROM N");
    Run(u"INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) " + numbers +
        u"SELECT 20, I, 'S' FROM N");
  }

  /// What each task takes.
  struct Costs {
    double Opening = 0, Saving = 0, Choosing = 0, Picking = 0;
  };
  template <class Meter>
  Costs Work(int members) {
    Fill(members);
    Costs costs;
    {
      const Meter meter;
      OpenToModify(u"20", u"Crowd");
      EXPECT_TRUE(Complete());
      EXPECT_EQ(form->Members().Count(), members);
      costs.Opening = meter.Taken();
    }
    {
      const Meter meter;
      form->cmdOK.UserClicks();
      EXPECT_FALSE(form->IsLoaded());
      costs.Saving = meter.Taken();
    }
    EXPECT_EQ(Query(u"SELECT COUNT(*) FROM SMS_ABGROUPMAPS WHERE GROUP_ID = 20"),
              ToDecimal(members));
    form.reset();
    {
      const Meter meter;
      OpenToAdd();
      EXPECT_TRUE(Choose(u"Hall"));
      form->cmdSelectAll.UserClicks();
      EXPECT_EQ(form->Members().Count(), members);
      costs.Choosing = meter.Taken();
    }
    session.ExpandGroups = true;
    OpenPicker();
    EXPECT_TRUE(Complete());
    const auto names = Column(form->vsfFolderContacts, u"NAME");
    Take({static_cast<int>(std::find(names.begin(), names.end(), u"Crowd") - names.begin()) + 1});
    const Meter meter;
    form->cmdOK.UserClicks();
    EXPECT_FALSE(form->IsLoaded());
    EXPECT_EQ(form->Picked()->Selected->Count(), members);
    costs.Picking = meter.Taken();
    return costs;
  }
};

TEST_F(BigGroup, TakesTimeInProportion) {
  constexpr double kTenTimes = 30;  // the square would be 100
  // A busy machine may hold up one of the two; it does not do so each time.
  bool inProportion = false;
  for (int attempt = 0; attempt < 4 && !inProportion; ++attempt) {
    const Costs small = Work<Time>(2000);
    const Costs large = Work<Time>(20000);
    inProportion =
        large.Opening < kTenTimes * small.Opening && large.Saving < kTenTimes * small.Saving &&
        large.Choosing < kTenTimes * small.Choosing && large.Picking < kTenTimes * small.Picking;
  }
  EXPECT_TRUE(inProportion);
}

// Twice as much would be too much for each.
TEST_F(BigGroup, TakesLittleMemory) {
#ifdef __SANITIZE_THREAD__
  constexpr int kMembers = 10000;  // a hundred thousand take two minutes there
#else
  constexpr int kMembers = 100000;
#endif
  const Costs bytes = Work<Memory>(kMembers);
  EXPECT_LT(bytes.Opening / kMembers, 300);
  EXPECT_LT(bytes.Saving / kMembers, 35);
  EXPECT_LT(bytes.Choosing / kMembers, 780);
  EXPECT_LT(bytes.Picking / kMembers, 690);
}

}  // namespace
}  // namespace ktrv::forms
