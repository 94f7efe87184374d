#include "tests/native/groups/GroupsFixture.h"

namespace ktrv::forms {
namespace {

using controls::Rectangle;

struct GroupDialogSizeTest : tests::GroupsTest {
  /// Makes the dialog larger than designed, or smaller.
  void Grow(int width, int height) {
    form->Show();
    form->UserResizes(form->ScaleWidth() + width, form->ScaleHeight() + height);
  }
  static Rectangle Grown(const Rectangle& design, const Rectangle& by) {
    return {design.Left + by.Left, design.Top + by.Top, design.Width + by.Width,
            design.Height + by.Height};
  }
};

TEST_F(GroupDialogSizeTest, TheListsShareWhatALargerDialogGains) {
  OpenToAdd();
  const Rectangle left = form->vsfFolderContacts.Bounds();
  const Rectangle right = form->vsfGroupContacts.Bounds();
  const Rectangle frame = form->Frame2.Bounds();
  const Rectangle select = form->cmdSelect.Bounds();
  const Rectangle find = form->txtFind.Bounds();
  const Rectangle ok = form->cmdOK.Bounds();
  const Rectangle loading = form->PbrGrp.Bounds();
  Grow(2000, 1000);
  EXPECT_EQ(form->vsfFolderContacts.Bounds(), Grown(left, {0, 0, 1000, 1000}));
  EXPECT_EQ(form->vsfGroupContacts.Bounds(), Grown(right, {1000, 0, 1000, 1000}));
  EXPECT_EQ(form->Frame2.Bounds(), Grown(frame, {0, 0, 2000, 1000}));
  EXPECT_EQ(form->cmdSelect.Bounds(), Grown(select, {1000, 0, 0, 0}));
  EXPECT_EQ(form->txtFind.Bounds(), Grown(find, {0, 0, 1000, 0}));
  EXPECT_EQ(form->cmdOK.Bounds(), Grown(ok, {2000, 1000, 0, 0}));
  EXPECT_EQ(form->PbrGrp.Bounds(), Grown(loading, {2000, 1000, 0, 0}));
}

TEST_F(GroupDialogSizeTest, NothingOverlapsAndNothingLeavesTheDialogAtAnySize) {
  OpenPicker();
  std::vector<std::pair<controls::Control*, controls::Control*>> apart;
  const auto touch = [](const Rectangle& a, const Rectangle& b) {
    return a.Left < b.Left + b.Width && b.Left < a.Left + a.Width && a.Top < b.Top + b.Height &&
           b.Top < a.Top + a.Height;
  };
  for (controls::Control* one : form->Controls()) {
    for (controls::Control* other : form->Controls()) {
      if (!touch(one->Bounds(), other->Bounds())) apart.push_back({one, other});
    }
  }
  form->Show();
  const int width = form->ScaleWidth();
  const int height = form->ScaleHeight();
  for (const int more : {0, 15, 777, 12345}) {
    form->UserResizes(width + more, height + more / 2);
    for (const auto& [one, other] : apart) EXPECT_FALSE(touch(one->Bounds(), other->Bounds()));
    for (const controls::Control* control : form->Controls()) {
      EXPECT_LE(control->Left() + control->Width(), form->ScaleWidth());
      EXPECT_LE(control->Top() + control->Height(), form->ScaleHeight());
    }
  }
}

TEST_F(GroupDialogSizeTest, ItIsNeverLaidOutSmallerThanDesigned) {
  OpenPicker();
  const Rectangle ok = form->cmdOK.Bounds();
  EXPECT_EQ(form->Layout().MinimumWidth, form->ScaleWidth());
  EXPECT_EQ(form->Layout().MinimumHeight, form->ScaleHeight());
  Grow(-500, -500);
  EXPECT_EQ(form->cmdOK.Bounds(), ok);
}

TEST_F(GroupDialogSizeTest, TheSizeIsKeptForTheNextDialogOfTheSameUse) {
  OpenToAdd();
  const Rectangle ok = form->cmdOK.Bounds();
  Grow(600, 300);
  form->Unload();
  OpenPicker();
  form->Show();
  EXPECT_EQ(form->ScaleWidth(), form->Layout().MinimumWidth);
  form->Unload();
  OpenToAdd();
  form->Show();
  EXPECT_EQ(form->cmdOK.Bounds(), Grown(ok, {600, 300, 0, 0}));
}

}  // namespace
}  // namespace ktrv::forms
