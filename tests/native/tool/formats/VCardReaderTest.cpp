#include "tool/formats/VCardReader.h"

#include <gmock/gmock.h>
#include <sstream>

namespace ktrv::tool {
namespace {

using testing::ElementsAre;

std::vector<VCard> Read(std::string bytes) {
  std::istringstream stream(std::move(bytes));
  TextSource source(stream, Encoding::Utf8);
  VCardReader reader(source);
  std::vector<VCard> cards;
  for (VCard card; reader.Next(card);) cards.push_back(card);
  return cards;
}

/// The only property of the only card.
VCardProperty Property(const std::string& lines) {
  const auto cards = Read("BEGIN:VCARD\r\n" + lines + "\r\nEND:VCARD\r\n");
  if (cards.size() != 1 || cards[0].Properties.size() != 1) {
    ADD_FAILURE() << cards.size() << " cards";
    return {};
  }
  EXPECT_EQ(cards[0].Problem, u"");
  return cards[0].Properties[0];
}

TEST(VCardReaderTest, ReadsCards) {
  const auto cards = Read(
      "BEGIN:VCARD\nVERSION:3.0\nFN:Anna Ek\nEND:VCARD\n\n"
      "begin:vcard\r\nVERSION:4.0\r\nFN:Bert Al\r\nend:vcard");
  ASSERT_EQ(cards.size(), 2U);
  EXPECT_EQ(cards[0].Line, 1);
  EXPECT_EQ(cards[0].Find(u"FN")->Text(), u"Anna Ek");
  EXPECT_EQ(cards[0].Raw, u"BEGIN:VCARD\nVERSION:3.0\nFN:Anna Ek\nEND:VCARD\n");
  EXPECT_EQ(cards[1].Line, 6);
  EXPECT_EQ(cards[1].Find(u"FN")->Text(), u"Bert Al");
  EXPECT_EQ(cards[1].Find(u"TEL"), nullptr);
}

TEST(VCardReaderTest, FindsNoCardsInOtherTexts) {
  EXPECT_TRUE(Read("").empty());
  EXPECT_TRUE(Read("Name,Mobile\nAnna,98001\n").empty());
}

TEST(VCardReaderTest, SplitsNameTypesAndValue) {
  const VCardProperty property = Property("item1.tel;type=CELL,Voice;TYPE=pref:+46 70");
  EXPECT_EQ(property.Group, u"item1");
  EXPECT_EQ(property.Name, u"TEL");
  EXPECT_THAT(property.Types, ElementsAre(u"cell", u"voice", u"pref"));
  EXPECT_TRUE(property.HasType(u"cell"));
  EXPECT_FALSE(property.HasType(u"home"));
  EXPECT_EQ(property.Preference, 1);
  EXPECT_EQ(property.Value, u"+46 70");
}

TEST(VCardReaderTest, KnowsTypesWithoutAName) {
  EXPECT_THAT(Property("TEL;CELL;VOICE:1").Types, ElementsAre(u"cell", u"voice"));
}

TEST(VCardReaderTest, ReadsQuotedParameters) {
  const VCardProperty property =
      Property("TEL;VALUE=uri;PREF=2;TYPE=\"voice,cell\";X-A=\"a:b;c\":tel:+46-70");
  EXPECT_THAT(property.Types, ElementsAre(u"voice", u"cell"));
  EXPECT_EQ(property.Preference, 2);
  EXPECT_EQ(property.Value, u"tel:+46-70");
}

TEST(VCardReaderTest, TakesAQuotationMarkThatIsNotClosedAsText) {
  EXPECT_EQ(Property("TEL;X-A=\"a:1").Value, u"1");
  EXPECT_EQ(Property("NOTE:say \"hi").Value, u"say \"hi");
}

TEST(VCardReaderTest, Unfolds) {
  EXPECT_EQ(Property("NOTE:one\r\n  two\r\n\tthree\n four").Value, u"one twothreefour");
}

TEST(VCardReaderTest, UnescapesTexts) {
  EXPECT_EQ(Property(R"(NOTE:a\, b\; c\\n\nd\Ne\x\:\)").Text(), u"a, b; c\\n\nd\ne\\x:\\");
}

TEST(VCardReaderTest, SplitsStructuredValues) {
  EXPECT_THAT(Property(R"(N:Ek\; Al;Anna;Maria,Eva;;\,)").Parts(),
              ElementsAre(u"Ek; Al", u"Anna", u"Maria Eva", u"", u","));
  EXPECT_THAT(Property("N:").Parts(), ElementsAre(u""));
}

TEST(VCardReaderTest, DecodesQuotedPrintable) {
  EXPECT_EQ(
      Property("FN;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:J=C3=BCrgen =3D=\r\n Z=C3=B8").Value,
      u"Jürgen = Zø");
  EXPECT_EQ(Property("FN;QUOTED-PRINTABLE:M=FCller=zz=4").Value, u"Müller=zz=4");
  EXPECT_EQ(Property("N;ENCODING=QUOTED-PRINTABLE:=4D=C3=\n=BC=\nller;=0D=0AAnna").Value,
            u"Müller;\r\nAnna");
  EXPECT_EQ(Property("PHOTO;ENCODING=BASE64:AAA=\r\n BBB=").Value, u"AAA=BBB=");
}

TEST(VCardReaderTest, UnfoldsQuotedPrintable) {
  for (const char* text : {"X;ENCODING=QUOTED-PRINTABLE:=\r\n 41=42",
                           "X;QUOTED-PRINTABLE:=4\r\n 1=42", "X;QUOTED-PRINTABLE:=41\r\n =42"}) {
    const VCardProperty property = Property(text);
    EXPECT_EQ(property.Value, u"AB") << text;
    EXPECT_TRUE(property.IsEncoded);
  }
}

TEST(VCardReaderTest, SkipsCardsInsideACard) {
  const auto cards = Read(
      "BEGIN:VCARD\nFN:Anna\nAGENT:\nBEGIN:VCARD\nFN:Bert\nEND:VCARD\nTEL:1\nEND:VCARD\n"
      "BEGIN:VCARD\nFN:Cora\nEND:VCARD\n");
  ASSERT_EQ(cards.size(), 2U);
  EXPECT_EQ(cards[0].Problem, u"");
  EXPECT_EQ(cards[0].Find(u"FN")->Text(), u"Anna");
  EXPECT_EQ(cards[0].Find(u"TEL")->Text(), u"1");
  EXPECT_EQ(cards[1].Find(u"FN")->Text(), u"Cora");
}

TEST(VCardReaderTest, ReportsACardWithoutAnEnd) {
  const auto cards =
      Read("BEGIN:VCARD\nFN:Anna\nBEGIN:VCARD\nFN:Bert\nEND:VCARD\nBEGIN:VCARD\nFN:C");
  ASSERT_EQ(cards.size(), 3U);
  EXPECT_EQ(cards[0].Problem, u"The vCard has no END:VCARD");
  EXPECT_EQ(cards[1].Problem, u"");
  EXPECT_EQ(cards[1].Line, 3);
  EXPECT_EQ(cards[1].Find(u"FN")->Text(), u"Bert");
  EXPECT_EQ(cards[2].Problem, u"The vCard has no END:VCARD");
}

TEST(VCardReaderTest, ReportsALineWithoutAColon) {
  const auto cards = Read("BEGIN:VCARD\nFN:Anna\nunfolded by mistake\nTEL:1\nEND:VCARD\n");
  ASSERT_EQ(cards.size(), 1U);
  EXPECT_EQ(cards[0].Problem, u"The vCard has a line without a colon");
}

TEST(VCardReaderTest, ReadsTenMegabytesInOneLine) {
  std::string photo;
  while (photo.size() < 10'000'000) photo += std::string(74, 'A') + "=\r\n ";
  const auto cards = Read("BEGIN:VCARD\nPHOTO;ENCODING=b:" + photo + "\nFN:Anna\nEND:VCARD\n");
  ASSERT_EQ(cards.size(), 1U);
  EXPECT_EQ(cards[0].Problem, u"");
  EXPECT_EQ(cards[0].Find(u"FN")->Text(), u"Anna");
}

TEST(VCardReaderTest, KeepsNoMoreThanItsLimitOfACard) {
  const auto cards = Read("BEGIN:VCARD\nNOTE:" + std::string(VCardReader::kLongest, 'x') +
                          "\nEND:VCARD\nBEGIN:VCARD\nFN:Bert\nEND:VCARD\n");
  ASSERT_EQ(cards.size(), 2U);
  EXPECT_EQ(cards[0].Problem, u"The vCard is too long. An END:VCARD may be missing");
  EXPECT_LT(cards[0].Raw.size(), 100U);
  EXPECT_EQ(cards[1].Problem, u"");
}

}  // namespace
}  // namespace ktrv::tool
