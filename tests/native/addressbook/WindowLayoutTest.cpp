#include "tests/native/addressbook/AddressBookFixture.h"
#include "tests/native/support/NoPeers.h"

namespace ktrv::tests {
namespace {

using controls::MouseButton;

struct WindowLayoutTest : AddressBookTest {
  WindowLayoutTest() {
    Open();
    form->UserResizes(12000, 8000);
  }
  void Press() { form->picSlider.MouseDown(MouseButton::Left, 0, 0, 0); }
  void MovePointer(int x) { form->picSlider.MouseMove(MouseButton::Left, 0, x, 0); }
  void Release() { form->picSlider.MouseUp(MouseButton::Left, 0, 0, 0); }
  int ShadowLeft() const { return form->picShadow.Left(); }
};

TEST_F(WindowLayoutTest, TheSplitterBarAndItsShadowAreAsTheWindowLoads) {
  EXPECT_EQ(form->picSlider.Width(), 50);
  EXPECT_EQ(form->picSlider.BackColor(), 0x8000000FU);
  EXPECT_EQ(form->picShadow.Width(), 25);
  EXPECT_FALSE(form->picShadow.Visible());
}

TEST_F(WindowLayoutTest, ThePanesTakeTheHeightLessEightHundred) {
  const int height = 8000 - form->vsfContacts.Top() - 800;
  EXPECT_EQ(form->tvwContacts.Left(), 0);
  EXPECT_EQ(form->tvwContacts.Top(), form->vsfContacts.Top());
  EXPECT_EQ(form->vsfContacts.Height(), height);
  EXPECT_EQ(form->tvwContacts.Height(), height);
  EXPECT_EQ(form->picSlider.Height(), height);
  EXPECT_EQ(form->picShadow.Height(), height);
}

TEST_F(WindowLayoutTest, TheGridFillsTheRestLessFifty) {
  EXPECT_EQ(form->vsfContacts.Left(), form->picSlider.Left() + 50);
  EXPECT_EQ(form->vsfContacts.Left() + form->vsfContacts.Width(), 12000 - 50);
}

TEST_F(WindowLayoutTest, ALargerWindowLeavesTheTreeItsWidth) {
  const int width = form->tvwContacts.Width();
  form->UserResizes(15000, 10000);
  EXPECT_EQ(form->tvwContacts.Width(), width);
  EXPECT_EQ(form->vsfContacts.Left() + form->vsfContacts.Width(), 15000 - 50);
  EXPECT_EQ(form->vsfContacts.Height(), 10000 - form->vsfContacts.Top() - 800);
}

TEST_F(WindowLayoutTest, AWindowSmallerThanItsPartsGivesNoNegativeSizes) {
  form->UserResizes(1000, 300);
  EXPECT_EQ(form->vsfContacts.Width(), 0);
  EXPECT_EQ(form->tvwContacts.Height(), 0);
  EXPECT_EQ(Log(), u"");
}

TEST_F(WindowLayoutTest, AWindowNarrowerThanItsTreeDoesNotLoseTheList) {
  const auto tree = form->tvwContacts.Bounds();
  const auto grid = form->vsfContacts.Bounds();
  form->UserResizes(tree.Width - 500, 8000);
  EXPECT_EQ(form->tvwContacts.Bounds(), tree);
  EXPECT_EQ(form->vsfContacts.Left(), tree.Width + 50);
  EXPECT_EQ(form->vsfContacts.Width(), 0);
  EXPECT_EQ(form->lblContacts.Width(), 0);
  form->UserResizes(12000, 8000);
  EXPECT_EQ(form->tvwContacts.Bounds(), tree);
  EXPECT_EQ(form->vsfContacts.Bounds(), grid);
}

TEST_F(WindowLayoutTest, WhileDraggedTheShadowFollowsThePointer) {
  const int bar = form->picSlider.Left();
  Press();
  MovePointer(700);
  EXPECT_TRUE(form->picShadow.Visible());
  EXPECT_EQ(ShadowLeft(), bar + 700);
  EXPECT_EQ(form->picSlider.Left(), bar);
}

TEST_F(WindowLayoutTest, ReleasedTheBarAndThePanesGoWhereTheShadowIs) {
  const int bar = form->picSlider.Left();
  Press();
  MovePointer(700);
  Release();
  EXPECT_FALSE(form->picShadow.Visible());
  EXPECT_EQ(form->picSlider.Left(), bar + 700);
  EXPECT_EQ(form->tvwContacts.Width(), bar + 700);
  EXPECT_EQ(form->vsfContacts.Left(), bar + 700 + 50);
  EXPECT_EQ(form->lblContacts.Left(), bar + 700 + 50 + 15);
  EXPECT_EQ(form->vsfContacts.Left() + form->vsfContacts.Width(), 12000 - 50);
}

TEST_F(WindowLayoutTest, WithoutAPressTheShadowStaysHidden) {
  MovePointer(700);
  EXPECT_FALSE(form->picShadow.Visible());
  EXPECT_EQ(ShadowLeft(), form->picSlider.Left());
}

TEST_F(WindowLayoutTest, AfterTheReleaseMovesDoNothing) {
  Press();
  Release();
  MovePointer(700);
  EXPECT_FALSE(form->picShadow.Visible());
}

TEST_F(WindowLayoutTest, ReleasedWithoutAMoveThePanesStayAsTheyWere) {
  const auto tree = form->tvwContacts.Bounds();
  const auto grid = form->vsfContacts.Bounds();
  Press();
  Release();
  EXPECT_EQ(form->tvwContacts.Bounds(), tree);
  EXPECT_EQ(form->vsfContacts.Bounds(), grid);
}

TEST_F(WindowLayoutTest, DraggedFarLeftTheShadowStopsAtOneThousand) {
  Press();
  MovePointer(-9000);
  EXPECT_EQ(ShadowLeft(), 1000);
  MovePointer(-9500);
  EXPECT_EQ(ShadowLeft(), 1000);
}

TEST_F(WindowLayoutTest, DraggedFarRightTheShadowStopsOneThousandBeforeTheEdge) {
  Press();
  MovePointer(20000);
  EXPECT_EQ(ShadowLeft(), 11000);
  MovePointer(21000);
  EXPECT_EQ(ShadowLeft(), 11000);
}

TEST_F(WindowLayoutTest, AtTheLeftLimitOnlyAPointerRightOfTheBarFreesTheShadow) {
  const int bar = form->picSlider.Left();
  Press();
  MovePointer(-9000);
  MovePointer(-100);
  EXPECT_EQ(ShadowLeft(), 1000);
  MovePointer(100);
  EXPECT_EQ(ShadowLeft(), bar + 100);
}

TEST_F(WindowLayoutTest, ABarDroppedAtALimitCanBeDraggedBack) {
  Press();
  MovePointer(20000);
  Release();
  Press();
  MovePointer(-500);
  Release();
  EXPECT_EQ(form->picSlider.Left(), 10500);
}

TEST_F(WindowLayoutTest, ReleasedAtTheLimitThePanesKeepTheirMinimum) {
  Press();
  MovePointer(-9000);
  Release();
  EXPECT_EQ(form->tvwContacts.Width(), 1000);
}

TEST_F(WindowLayoutTest, TheProgressBarStartsInTheSecondPanelHidden) {
  EXPECT_EQ(form->ProgressBar1.HostPanel(), 2);
  EXPECT_FALSE(form->ProgressBar1.Visible());
  EXPECT_EQ(form->ProgressBar1.Value(), form->ProgressBar1.Min());
}

TEST_F(WindowLayoutTest, ThePanesKeepTheirPlacesWhenTheWindowIsShownAgain) {
  Press();
  MovePointer(700);
  Release();
  const auto grid = form->vsfContacts.Bounds();
  form->Unload();
  screen.Pump();
  Open();
  EXPECT_EQ(form->vsfContacts.Bounds(), grid);
}

TEST_F(WindowLayoutTest, ClosingReleasesTheCountingCommands) {
  EXPECT_TRUE(form->List().CanCount());
  form->Unload();
  EXPECT_FALSE(form->List().CanCount());
}

// Failures.

/// A window that cannot be moved.
struct StuckPicture final : controls::PictureBoxPeer {
  void BoundsChanged() override { throw Error(ErrorNumber::DriverFailure, u"stuck"); }
  void VisibleChanged() override {}
  void EnabledChanged() override {}
  void TextChanged() override {}
  void FocusRequested() override {}
  void RefreshRequested() override {}
  void BackColorChanged() override {}
};

/// Makes windows for pictures only.
struct StuckPictures final : NoPeers {
  using NoPeers::Make;
  Window<controls::PictureBoxPeer> Make(controls::PictureBox&) override {
    return std::make_unique<StuckPicture>();
  }
};

TEST_F(WindowLayoutTest, AMoveOfTheSplitterThatFailsIsLogged) {
  StuckPictures stuck;
  Press();
  form->picShadow.Realise(stuck);
  MovePointer(700);
  EXPECT_EQ(ErrorsLogged(u"KTRVAddressBook: Error occured. Sub: picSlider_MouseMove, Module: "
                         u"frmAddressBook"),
            1);
}

TEST_F(WindowLayoutTest, AReleaseOfTheSplitterThatFailsIsLogged) {
  StuckPictures stuck;
  Press();
  MovePointer(700);
  form->picSlider.Realise(stuck);
  Release();
  EXPECT_EQ(ErrorsLogged(u"KTRVAddressBook: Error occured. Sub: picSlider_MouseUp, Module: "
                         u"frmAddressBook"),
            1);
}

}  // namespace
}  // namespace ktrv::tests
