#include <algorithm>
#include <new>

#include "common/TextIndex.h"
#include "tests/native/adversary/FailingAllocations.h"
#include "tests/native/groups/GroupsFixture.h"

namespace ktrv::forms {
namespace {

using tests::FailingAllocations;

TEST(TextIndex, AdditionThatFailedLeavesNothing) {
  bool failed = true;
  for (int allocation = 1; failed; ++allocation) {
    TextIndex index;
    FailingAllocations::FailAt(allocation);
    const std::vector<String> texts{u"a long text on the heap", u"another, still longer text"};
    try {
      const FailingAllocations::Scope counted;
      index.Add(texts[0]);
    } catch (const std::bad_alloc&) {
    }
    failed = FailingAllocations::HasFailed();
    FailingAllocations::FailAt(0);
    EXPECT_TRUE(failed || allocation > 1);
    EXPECT_EQ(index.Contains(texts[0]), !failed);
    index.Add(texts[0]);
    index.Add(texts[1]);
    EXPECT_TRUE(index.Contains(texts[0]));
    EXPECT_EQ(index.Find(texts[1]), 1U);
  }
}

/// The right list where one allocation fails during a command. Rows change in portions of four.
class ShortMemoryTest : public tests::GroupsTest {
 protected:
  static constexpr int kPeople = 11;

  ShortMemoryTest() { Candidates(Contacts(kPeople)); }

  /// Fails each allocation of the command in turn, each time in a new dialog.
  void FailEach(const std::function<void()>& before, const std::function<void()>& command,
                const std::function<void()>& after) {
    bool failed = true;
    for (int allocation = 1; failed; ++allocation) {
      SCOPED_TRACE("allocation " + std::to_string(allocation));
      OpenPicker();
      ASSERT_TRUE(Complete());
      form->Members().SetPortion(4);
      before();
      FailingAllocations::FailAt(allocation);
      {
        const FailingAllocations::Scope counted;
        command();
      }
      failed = FailingAllocations::HasFailed();
      FailingAllocations::FailAt(0);
      EachRowIsThereOnceAndKnown();
      after();
      EachRowIsThereOnceAndKnown();
      EXPECT_EQ(Ids().size(), std::size_t{kPeople});
      if (HasFailure()) return;
      EXPECT_TRUE(failed || allocation > 1);
    }
  }

  std::vector<String> Ids() const { return Column(form->vsfGroupContacts, u"ID"); }
  void All() { form->cmdSelectAll.UserClicks(); }
  void RemoveAll() { form->cmdRemoveAll.UserClicks(); }
  void Undo() { form->cmdUndo.UserClicks(); }

 private:
  void EachRowIsThereOnceAndKnown() {
    const std::vector<String> ids = Ids();
    for (const String& id : Column(form->vsfFolderContacts, u"ID")) {
      const auto rows = std::count(ids.begin(), ids.end(), id);
      EXPECT_LE(rows, 1) << ToUtf8(id);
      EXPECT_EQ(form->Members().Has(ContactKind::Contact, id), rows > 0) << ToUtf8(id);
    }
    EXPECT_EQ(MemberCount(), ToDecimal(static_cast<std::int64_t>(ids.size())) + u" Member(s)");
  }
};

TEST_F(ShortMemoryTest, WhoWasNotAddedCanBeAdded) {
  FailEach([] {}, [&] { All(); }, [&] { All(); });
}

TEST_F(ShortMemoryTest, WhoWasRemovedCanBeAdded) {
  FailEach([&] { All(); }, [&] { RemoveAll(); }, [&] { All(); });
}

TEST_F(ShortMemoryTest, WhoWasRemovedComesBack) {
  FailEach([&] { All(); }, [&] { RemoveAll(); },
           [&] {
             if (Ids().size() < kPeople) Undo();
           });
}

TEST_F(ShortMemoryTest, UndoThatFailedIsRepeated) {
  FailEach(
      [&] {
        All();
        RemoveAll();
      },
      [&] { Undo(); },
      [&] {
        if (Ids().size() < kPeople) Undo();
      });
}

TEST_F(ShortMemoryTest, UndoneAdditionThatFailedCanBeAddedAgain) {
  FailEach([&] { All(); }, [&] { Undo(); }, [&] { All(); });
}

}  // namespace
}  // namespace ktrv::forms
