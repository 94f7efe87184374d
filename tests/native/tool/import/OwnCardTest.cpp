#include "tests/native/tool/import/ImportFixture.h"

namespace ktrv::tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

/// Cards of our export that another program may have changed.
class OwnCardTest : public ImportFixture {
 protected:
  /// Replaces a line of the card.
  void Change(const std::string& line, const std::string& by) {
    const std::size_t at = card_.find("\r\n" + line + "\r\n");
    ASSERT_NE(at, std::string::npos);
    card_.replace(at + 2, line.size() + 2, by.empty() ? by : by + "\r\n");
  }
  void ImportCard() { EXPECT_EQ(Import(card_), 0) << Messages.str(); }
  std::vector<String> Contacts() {
    return Rows(
        u"SELECT FNAME, MNAME, LNAME, COUNTRYCODE, MOBILENO, HOMEPHONE, EMAIL, AGE, BIRTHDAY FROM "
        u"SMS_ABCONTACTS");
  }

 private:
  std::string card_ =
      "BEGIN:VCARD\r\nVERSION:4.0\r\nFN:Anna Ek\r\nN:Ek;Anna;;;\r\nTEL;TYPE=CELL:+4670174\r\n"
      "TEL;TYPE=\"HOME,VOICE\":08-465\r\nEMAIL:anna@ek.example\r\nBDAY:19850314\r\n"
      "GENDER:F\r\nX-KTRV-SEX:F\r\n"
      "X-KTRV-FOLDER:Staff\r\nX-KTRV-FNAME:Anna\r\nX-KTRV-LNAME:Ek\r\nX-KTRV-COUNTRYCODE:46\r\n"
      "X-KTRV-MOBILENO:70174\r\nX-KTRV-HOMEPHONE:08-465\r\nX-KTRV-EMAIL:anna@ek.example\r\n"
      "X-KTRV-AGE:30\r\nX-KTRV-BIRTHDAY:1985-03-14\r\nEND:VCARD\r\n";
};

TEST_F(OwnCardTest, TakesWhatWasChanged) {
  Change("TEL;TYPE=CELL:+4670174", "TEL;TYPE=CELL:+46 70-999");
  Change("N:Ek;Anna;;;", "N:Al;Anna;;;");
  ImportCard();
  EXPECT_THAT(Contacts(),
              ElementsAre(u"Anna|null|Al||4670999|08-465|anna@ek.example|30|1985-03-14"));
  EXPECT_THAT(Rows(u"SELECT NAME FROM SMS_ABFOLDERS"), ElementsAre(u"Staff"));
  EXPECT_THAT(Messages.str(),
              HasSubstr("people.csv:1: changed since our export wrote it: LNAME, MOBILENO"));
}

TEST_F(OwnCardTest, TakesValuesWhosePropertyOfOursWasDropped) {
  Change("X-KTRV-EMAIL:anna@ek.example", "");
  ImportCard();
  EXPECT_THAT(Contacts(),
              ElementsAre(u"Anna|null|Ek|46|70174|08-465|anna@ek.example|30|1985-03-14"));
}

TEST_F(OwnCardTest, TakesAChangedNameOrAddressAsAWhole) {
  Change("N:Ek;Anna;;;", "N:Al;Anna;;;\r\nADR:;;Gata 2;Oslo;;;Norway");
  Change("X-KTRV-LNAME:Ek",
         "X-KTRV-LNAME:Ek\r\nX-KTRV-MNAME:Maria\r\nX-KTRV-ADDRESS:Gata 2\r\n"
         "X-KTRV-CITY:Springfield\r\nX-KTRV-STATE:IL\r\nX-KTRV-ZIP:1\r\nX-KTRV-COUNTRY:USA");
  ImportCard();
  EXPECT_THAT(Rows(u"SELECT FNAME, MNAME, LNAME, ADDRESS, CITY, STATE, ZIP, COUNTRY FROM "
                   u"SMS_ABCONTACTS"),
              ElementsAre(u"Anna||Al|Gata 2|Oslo|||Norway"));
  EXPECT_THAT(
      Messages.str(),
      HasSubstr("changed since our export wrote it: MNAME, LNAME, CITY, STATE, COUNTRY, ZIP"));
}

/// Cleaning would leave them out.
TEST_F(OwnCardTest, KeepsOtherValuesAsTheyAre) {
  Change("EMAIL:anna@ek.example", "EMAIL:anna@al.example");
  Change("BDAY:19850314", "BDAY:16040314");
  Change("X-KTRV-BIRTHDAY:1985-03-14", "X-KTRV-BIRTHDAY:1604-03-14");
  ImportCard();
  EXPECT_THAT(Contacts(),
              ElementsAre(u"Anna|null|Ek|46|70174|08-465|anna@al.example|30|1604-03-14"));
}

TEST_F(OwnCardTest, StaysAsItIsIfValuesAreOnlyWrittenInAnotherWay) {
  Change("VERSION:4.0", "VERSION:3.0");
  Change("TEL;TYPE=CELL:+4670174", "item1.TEL;type=CELL;type=pref:+46 70-174");
  Change("TEL;TYPE=\"HOME,VOICE\":08-465", "TEL;type=HOME:08465");
  Change("BDAY:19850314", "BDAY;VALUE=date:1985-03-14T00:00:00Z");
  Change("GENDER:F", "X-GENDER:F");
  Change("EMAIL:anna@ek.example", "EMAIL;type=INTERNET: anna@ek.example ");
  ImportCard();
  EXPECT_THAT(Contacts(),
              ElementsAre(u"Anna|null|Ek|46|70174|08-465|anna@ek.example|30|1985-03-14"));
  EXPECT_THAT(Messages.str(), Not(HasSubstr("changed")));
}

TEST_F(OwnCardTest, TakesNoNumberOfNoKindForTheMobileNumber) {
  Change("TEL;TYPE=CELL:+4670174", "TEL;TYPE=VOICE:08-999");
  ImportCard();
  EXPECT_THAT(Contacts(),
              ElementsAre(u"Anna|null|Ek|46|70174|08-465|anna@ek.example|30|1985-03-14"));
}

/// The other program may not know the property.
TEST_F(OwnCardTest, KeepsValuesWhosePropertyIsGone) {
  Change("EMAIL:anna@ek.example", "");
  Change("TEL;TYPE=\"HOME,VOICE\":08-465", "TEL;TYPE=HOME:08-999");
  ImportCard();
  EXPECT_THAT(Contacts(),
              ElementsAre(u"Anna|null|Ek|46|70174|08-999|anna@ek.example|30|1985-03-14"));
}

}  // namespace
}  // namespace ktrv::tests
