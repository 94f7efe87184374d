#include "tests/native/tool/import/ImportFixture.h"

namespace ktrv::tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

/// Files in the forms that other programs write.
using SamplesTest = ImportFixture;

constexpr StringView kAll =
    u"SELECT FNAME, MNAME, LNAME, MOBILENO, OFFICEPHONE, HOMEPHONE, FAX, EMAIL, ORGANISATION, "
    u"ADDRESS, CITY, STATE, COUNTRY, ZIP, SEX, BIRTHDAY, ANNIVERSARY, HOBBY FROM SMS_ABCONTACTS "
    u"ORDER BY ID";

TEST_F(SamplesTest, Outlook) {
  EXPECT_EQ(ImportSample("outlook.csv"), 1);
  EXPECT_THAT(
      Rows(kAll),
      ElementsAre(u"Jürgen||Müller|491711234567|+49 (221) 12345-0|||juergen@mueller.example|Müller "
                  u"& Söhne \"GmbH\"|Hauptstraße 5|Köln||Germany|50667|M|1985-05-17|null|Schach",
                  u"Zoë||O'Neill|00447700900123||||||1 High St, Flat 2|Leeds||United "
                  u"Kingdom||F|null|null|"));
  EXPECT_THAT(Messages.str(), HasSubstr("outlook.csv:5: Please enter the Mobile No."));
}

TEST_F(SamplesTest, Google) {
  EXPECT_EQ(ImportSample("google.csv"), 0);
  EXPECT_THAT(
      Rows(kAll),
      ElementsAre(u"Priya||Sharma|919820012345|+91 22 2651 2345|||priya@example.in|Monsoon, "
                  u"Media|14 Marine Drive|Mumbai||India||F|1993-07-02|null|",
                  u"राजेश||कुमार|9811123456|||||||||||null|null|null|",
                  u"Taxi|||5550100|||||||||||null|null|null|"));
  EXPECT_THAT(Messages.str(), HasSubstr("The birthday \"--05-17\" has no year and is left out"));
}

TEST_F(SamplesTest, GoogleSince2024) {
  EXPECT_EQ(ImportSample("google-2024.csv"), 0);
  EXPECT_THAT(Rows(kAll),
              ElementsAre(u"Anna|Maria|Ek|46701740611|||08-465 00 12|anna@ek.example|Ek "
                          u"AB||||||null|1990-02-28|2015-06-01|",
                          u"Acme|||5550199|||||Acme||||||null|null|null|"));
}

TEST_F(SamplesTest, Thunderbird) {
  EXPECT_EQ(ImportSample("thunderbird.csv"), 0);
  EXPECT_THAT(Rows(kAll),
              ElementsAre(u"Zoltán||Kovács|36301234567||||zoltan@example.hu||Fő utca 8, 2. "
                          u"em.|Győr||Magyarország|9021|null|1979-03-09|null|",
                          u"Control Room|||5550100|||5550101||||||||null|null|null|"));
}

TEST_F(SamplesTest, SpreadsheetInUtf16) {
  EXPECT_EQ(ImportSample("spreadsheet-utf16.txt"), 0);
  EXPECT_THAT(Rows(u"SELECT FNAME, LNAME, MOBILENO, CITY FROM SMS_ABCONTACTS ORDER BY ID"),
              ElementsAre(u"Łukasz|Żak|48601222333|Łódź", u"Two\r\n\"lines\"|😀|48601222334|"));
}

TEST_F(SamplesTest, SpreadsheetWithSemicolons) {
  Options.Format.Mapped = {"Vorname=FNAME", "Nachname=lname", "handy=Mobile", "Straße=Address",
                           "Geburtstag=Birthday"};
  EXPECT_EQ(ImportSample("spreadsheet-semicolons.csv"), 1);
  EXPECT_THAT(Rows(u"SELECT FNAME, LNAME, MOBILENO, ADDRESS, BIRTHDAY FROM SMS_ABCONTACTS"),
              ElementsAre(u"Jörg|Weiß|01711234568|Bäckerweg 3|1985-05-17"));
  // A spreadsheet has destroyed this number.
  EXPECT_THAT(Messages.str(), HasSubstr(":5: Enter a proper Mobile No. \"4,91711E+11\""));
}

TEST_F(SamplesTest, Apple) {
  EXPECT_EQ(ImportSample("apple.vcf"), 0);
  EXPECT_THAT(Rows(kAll), ElementsAre(u"Anna|Maria|Lindgren|46701740611|08-465 00 11||08-465 00 "
                                      u"12|anna@work.example|Lindgren Design|Storgatan 12\nHus "
                                      u"B|Stockholm||Sweden|111 22|null|1985-03-14|2010-08-21|"));
}

TEST_F(SamplesTest, Phone) {
  EXPECT_EQ(ImportSample("phone-21.vcf"), 0);
  EXPECT_THAT(Rows(kAll), ElementsAre(u"Иван||Иванов|79161234567||84951234567||ivan@example.ru|||||"
                                      u"||null|1985-05-17|null|"));
}

TEST_F(SamplesTest, VCard4) {
  EXPECT_EQ(ImportSample("vcard-4.vcf"), 1);
  EXPECT_THAT(Rows(kAll),
              ElementsAre(u"Éloïse||Dupont|33612345678|+33-4-1234-5678|+33-4-8765-4321||eloise@"
                          u"example.fr|Atelier, Dupont|22 rue de la "
                          u"Paix|Lyon||France|69002|F|1996-10-22|2020-02-14|Échecs"));
  EXPECT_THAT(Read("rejects"),
              "\xEF\xBB\xBF"
              "BEGIN:VCARD\nVERSION:4.0\nFN:Nobody\nN:;;;;\nEMAIL:nobody@example.org\nEND:VCARD\n");
}

}  // namespace
}  // namespace ktrv::tests
