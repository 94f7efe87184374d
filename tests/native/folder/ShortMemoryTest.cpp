#include <cstdlib>
#include <new>

#include "tests/native/folder/FolderFixture.h"

namespace {

/// Counts down to the one allocation that fails; 0 or less when none does.
thread_local int failingAllocation = 0;

}  // namespace

// The allocations of this program. Those for arrays and without exceptions come here too.
void* operator new(std::size_t size) {
  if (failingAllocation > 0 && --failingAllocation == 0) throw std::bad_alloc();
  if (void* memory = std::malloc(size > 0 ? size : 1)) return memory;
  throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}

namespace ktrv::tests {
namespace {

struct ShortMemoryTest : FolderFixture {
  /// Loads dialogs that are each short of memory a little later than the last, until one of them
  /// logs a failure of the procedure. \return the dialog's number; 0 when none did
  int LoadUntilFailureOf(StringView procedure) {
    constexpr int kMost = 200;
    for (int number = 1; number <= kMost; ++number) {
      Workplace place = session.Place();
      place.Database.Open();
      dialog = std::make_unique<forms::frmSelectFolder>(std::move(place), request);
      failingAllocation = number;
      try {
        dialog->Load();
      } catch (const Error&) {
      } catch (const std::bad_alloc&) {
      }
      failingAllocation = 0;
      if (ErrorsIn(procedure) > 0) return number;
    }
    return 0;
  }

  std::unique_ptr<forms::frmSelectFolder> dialog;
};

TEST_F(ShortMemoryTest, CommandsThatCannotBeMadeAreLoggedAndTheDialogGoesOn) {
  Categories({u"A", u"B"});
  ASSERT_GT(LoadUntilFailureOf(u"PrepareCommand"), 0);
  EXPECT_EQ(ErrorsIn(u"PrepareCommand"), 1);
  EXPECT_TRUE(LoggedNumber(ErrorNumber::OutOfMemory));
  EXPECT_TRUE(dialog->IsLoaded());
  EXPECT_EQ(dialog->Caption(), u"Add Folder");
  EXPECT_EQ(ErrorsIn(u"LoadRemoteFolderViews"), 1) << "which misses its command";
}

}  // namespace
}  // namespace ktrv::tests
