#include "tests/native/contact/ContactFixture.h"

namespace ktrv::tests {
namespace {

using controls::Control;
using controls::TextBox;

struct ContactBoxesTest : ContactFixture {};

TEST_F(ContactBoxesTest, EveryBoxHasItsLimit) {
  for (const TextBox* box :
       {&form->txtFname, &form->txtMname, &form->txtLname, &form->txtEmail, &form->txtOrganisation,
        &form->txtAddress, &form->txtCity, &form->txtState, &form->txtCountry}) {
    EXPECT_EQ(box->MaxLength(), 50);
  }
  for (const TextBox* box : {&form->txtMobileno, &form->txtOfficePhone, &form->txtHomePhone,
                             &form->txtFax, &form->txtZip}) {
    EXPECT_EQ(box->MaxLength(), 20);
  }
  EXPECT_EQ(form->txtCountryCode.MaxLength(), 10);
  EXPECT_EQ(form->txtAge.MaxLength(), 3);
  EXPECT_EQ(form->txtHobby.MaxLength(), 100);
}

TEST_F(ContactBoxesTest, PastedTextIsCutAtTheLimitAndNoSurrogatePairIs) {
  Add();
  form->txtLname.UserTypes(String(200, u'x'));
  EXPECT_EQ(form->txtLname.Text().size(), 50u);
  form->txtCity.UserTypes(String(49, u'x') + u"\U0001F600");
  EXPECT_EQ(form->txtCity.Text(), String(49, u'x'));
}

TEST_F(ContactBoxesTest, TheFirstNameHasTheFocusAndTheFocusedBoxIsExplained) {
  Add();
  EXPECT_TRUE(form->txtFname.HasFocus());
  EXPECT_EQ(form->lblNotice.Caption(), u"Required, up to 50 characters.");
  form->txtZip.UserFocuses(true);
  EXPECT_EQ(form->lblNotice.Caption(), u"Up to 20 characters.");
  form->dtAnniversary.UserFocuses(true);
  EXPECT_EQ(form->lblNotice.Caption(),
            u"Tick the box to enter a date. It is stored only with a birthday.");
  form->chkContacts.UserFocuses(true);
  EXPECT_EQ(form->lblNotice.Caption(), u"");
}

TEST_F(ContactBoxesTest, EveryInputIsExplained) {
  Add();
  for (Control* control : form->Controls()) {
    if (!dynamic_cast<TextBox*>(control) && !dynamic_cast<controls::DatePicker*>(control)) continue;
    control->UserFocuses(true);
    EXPECT_NE(form->lblNotice.Caption(), u"");
  }
}

struct Typed {
  StringView Text;
  StringView Result;
};

class DigitFilterTest : public ContactFixture, public testing::WithParamInterface<Typed> {};

TEST_P(DigitFilterTest, OnlyDigitsAreTyped) {
  Add();
  form->txtMobileno.SetText({});
  form->txtAge.UserTypes(GetParam().Text);
  form->txtMobileno.UserTypes(GetParam().Text);
  EXPECT_EQ(form->txtAge.Text(), GetParam().Result);
  EXPECT_EQ(form->txtMobileno.Text(), GetParam().Result);
}

INSTANTIATE_TEST_SUITE_P(Keys, DigitFilterTest,
                         testing::Values(Typed{u"7", u"7"}, Typed{u"0", u"0"}, Typed{u"-", u""},
                                         Typed{u".", u""}, Typed{u"+", u""}, Typed{u" ", u""},
                                         Typed{u";", u""}, Typed{u"a", u""}, Typed{u"٣", u""}));

/// What the key handlers leave of the paste key's code.
std::int16_t AfterPaste(TextBox& box) {
  std::int16_t code = 22;
  box.KeyPress(code);
  return code;
}

struct Clip {
  std::optional<String> Text;
  bool Accepted;
};

class PasteFilterTest : public ContactFixture, public testing::WithParamInterface<Clip> {};

TEST_P(PasteFilterTest, OnlyNumbersOfZeroOrMoreArePasted) {
  Add();
  screen.Clipboard = GetParam().Text;
  EXPECT_EQ(AfterPaste(form->txtAge), GetParam().Accepted ? 22 : 0);
  EXPECT_EQ(AfterPaste(form->txtMobileno), GetParam().Accepted ? 22 : 0);
}

INSTANTIATE_TEST_SUITE_P(Clips, PasteFilterTest,
                         testing::Values(Clip{u"12", true}, Clip{u"0", true}, Clip{u"12\r\n", true},
                                         Clip{u"-5", false}, Clip{u"abc", false},
                                         Clip{u"12a", false}, Clip{u"", false},
                                         Clip{std::nullopt, false}));

struct Pasted {
  StringView Text;
  StringView Result;
};

class PastedTextTest : public ContactFixture, public testing::WithParamInterface<Pasted> {};

TEST_P(PastedTextTest, NoWayOfPastingBringsInWhatIsNoNumber) {
  Add();
  form->txtMobileno.SetText({});
  form->txtAge.UserTypes(GetParam().Text);
  form->txtMobileno.UserTypes(GetParam().Text);
  EXPECT_EQ(form->txtAge.Text(), GetParam().Result);
  EXPECT_EQ(form->txtMobileno.Text(), GetParam().Result);
}

INSTANTIATE_TEST_SUITE_P(Texts, PastedTextTest,
                         testing::Values(Pasted{u"12", u"12"}, Pasted{u"-5", u""},
                                         Pasted{u"abc", u""}, Pasted{u"12a", u""},
                                         Pasted{u"1;2", u""}, Pasted{u"٣٤", u""},
                                         Pasted{u"12\r\n", u"12"}, Pasted{u"12\n", u"12"},
                                         Pasted{u"12\t\r\n", u"12"}, Pasted{u"7\r\n", u"7"},
                                         Pasted{u" 12 ", u"12"}, Pasted{u"1\r\n2", u""},
                                         Pasted{u"\r\n", u""}));

struct ControlKey {
  std::int16_t Code;
  bool Accepted;
};

class ControlKeyTest : public ContactFixture, public testing::WithParamInterface<ControlKey> {};

TEST_P(ControlKeyTest, BackspaceTabAndCopyPassAndTheOthersAreDiscarded) {
  Add();
  for (TextBox* box : {&form->txtAge, &form->txtMobileno}) {
    std::int16_t code = GetParam().Code;
    box->KeyPress(code);
    EXPECT_EQ(code, GetParam().Accepted ? GetParam().Code : 0);
  }
}

constexpr std::int16_t kSelectAll = 1;
constexpr std::int16_t kCopy = 3;
constexpr std::int16_t kBackspace = 8;
constexpr std::int16_t kTab = 9;
constexpr std::int16_t kCut = 24;
constexpr std::int16_t kUndo = 26;

INSTANTIATE_TEST_SUITE_P(Keys, ControlKeyTest,
                         testing::Values(ControlKey{kCopy, true}, ControlKey{kBackspace, true},
                                         ControlKey{kTab, true}, ControlKey{kSelectAll, false},
                                         ControlKey{kCut, false}, ControlKey{kUndo, false}));

TEST_F(ContactBoxesTest, OtherBoxesTakeEveryCharacter) {
  Add();
  form->txtOfficePhone.UserTypes(u"+");
  EXPECT_EQ(form->txtOfficePhone.Text(), u"+");
}

TEST_F(ContactBoxesTest, TheMobileNumberGetsTheFocusWithTheCaretBehindIt) {
  Add();
  form->txtMobileno.SetText(u"9120");
  form->txtMobileno.SetFocus();
  EXPECT_EQ(form->txtMobileno.SelectionStart(), 4);
  EXPECT_EQ(form->txtMobileno.SelectionLength(), 0);
}

TEST_F(ContactBoxesTest, AnEmptyMobileNumberKeepsItsCaretWhereItIs) {
  Add();
  form->txtMobileno.SetText({});
  form->txtMobileno.SetFocus();
  EXPECT_EQ(form->txtMobileno.SelectionStart(), 0);
}

TEST_F(ContactBoxesTest, TypingGoesOnBehindThePrefix) {
  Add();
  form->txtMobileno.SetFocus();
  form->txtMobileno.UserTypes(u"9");
  EXPECT_EQ(form->txtMobileno.Text(), u"919");
}

TEST_F(ContactBoxesTest, TheArrowsCountTheAge) {
  Add();
  form->UpDnLast.UserSteps(1);
  EXPECT_EQ(form->txtAge.Text(), u"1");
  form->UpDnLast.UserSteps(-5);
  EXPECT_EQ(form->txtAge.Text(), u"0");
}

TEST_F(ContactBoxesTest, EnterIsOkAndEscapeIsCancel) {
  EXPECT_TRUE(form->cmdSave.IsDefault());
  EXPECT_TRUE(form->cmdCancel.IsCancel());
  EXPECT_EQ(form->cmdSave.Caption(), u"&OK");
  EXPECT_EQ(form->cmdCancel.Caption(), u"&Cancel");
}

TEST_F(ContactBoxesTest, InputThatIsSwitchedOffKeepsItsColour) {
  Add();
  form->EnableControls(false);
  for (const Control* control : form->Controls()) {
    const auto* box = dynamic_cast<const TextBox*>(control);
    const auto* list = dynamic_cast<const controls::ComboBox*>(control);
    if (!box && !list) continue;
    EXPECT_FALSE(control->Enabled());
    EXPECT_EQ(box ? box->BackColor() : list->BackColor(), controls::kSystemWindowBackground);
  }
  EXPECT_FALSE(form->dtBirthday.Enabled());
  EXPECT_FALSE(form->dtAnniversary.Enabled());
  EXPECT_FALSE(form->cmdSave.Enabled());
  EXPECT_FALSE(form->Frame1.Enabled());
  EXPECT_TRUE(form->cmdCancel.Enabled());
  EXPECT_TRUE(form->Frame2.Enabled());
}

TEST_F(ContactBoxesTest, EveryInputStandsRightBehindItsLabel) {
  const auto& all = form->Controls();
  const auto labelOf = [&](const Control& control) -> String {
    const auto at = std::find(all.begin(), all.end(), &control);
    const auto* label = dynamic_cast<const controls::Label*>(*(at - 1));
    return label ? label->Caption() : u"no label";
  };
  const std::vector<std::pair<const Control*, StringView>> labels{
      {&form->txtFname, u"First"},
      {&form->txtMname, u"Middle"},
      {&form->txtLname, u"Last"},
      {&form->txtCountryCode, u"Country Code "},
      {&form->txtMobileno, u"Mobile No"},
      {&form->txtEmail, u"Email Id"},
      {&form->txtOrganisation, u"Company"},
      {&form->txtOfficePhone, u"Office Phone"},
      {&form->txtHomePhone, u"Home Phone"},
      {&form->txtFax, u"Fax"},
      {&form->txtAge, u"Age"},
      {&form->cboSex, u"Sex"},
      {&form->dtBirthday, u"Birthday"},
      {&form->dtAnniversary, u"Anniversary"},
      {&form->txtAddress, u"Street"},
      {&form->txtCity, u"City"},
      {&form->txtState, u"State"},
      {&form->txtCountry, u"Country"},
      {&form->txtZip, u"Zip"},
      {&form->txtHobby, u"Hobby"},
  };
  for (const auto& [control, label] : labels) EXPECT_EQ(labelOf(*control), label);
}

TEST_F(ContactBoxesTest, FramesAndBoxSayWhatTheyHold) {
  EXPECT_EQ(form->Frame1.Caption(), u" Contact Information ");
  EXPECT_EQ(form->Frame2.Caption(), u" Name ");
  EXPECT_EQ(form->fraPhones.Caption(), u" Phone Numbers ");
  EXPECT_EQ(form->fraPersonals.Caption(), u" Personal Info ");
  EXPECT_EQ(form->fraAddress.Caption(), u" Address ");
  EXPECT_EQ(form->chkContacts.Caption(), u"This is a Shared Contact");
  EXPECT_EQ(form->Caption(), u"New Contact");
}

TEST_F(ContactBoxesTest, NoTwoControlsLieOnEachOtherAndAllLieInTheForm) {
  const auto overlap = [](const Control& one, const Control& other) {
    return one.Left() < other.Left() + other.Width() && other.Left() < one.Left() + one.Width() &&
           one.Top() < other.Top() + other.Height() && other.Top() < one.Top() + one.Height();
  };
  for (const Control* one : form->Controls()) {
    EXPECT_LE(one->Left() + one->Width(), form->ScaleWidth());
    EXPECT_LE(one->Top() + one->Height(), form->ScaleHeight());
    if (dynamic_cast<const controls::Frame*>(one)) continue;
    for (const Control* other : form->Controls()) {
      if (one == other || dynamic_cast<const controls::Frame*>(other)) continue;
      EXPECT_FALSE(overlap(*one, *other)) << one->Left() << "," << one->Top();
    }
  }
}

}  // namespace
}  // namespace ktrv::tests
