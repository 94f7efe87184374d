#include "controls/RowFinder.h"

#include <gtest/gtest.h>
#include <random>
#include <vector>

#include "controls/RowSort.h"
#include "controls/SoughtNumber.h"
#include "controls/SoughtWords.h"
#include "tests/native/support/UserLanguage.h"

namespace ktrv::controls {
namespace {

/// Rows of a name, a company and a number.
struct People : RowSource {
  using Person = std::vector<String>;
  std::vector<Person> Persons;

  std::int64_t RecordCount() const override { return static_cast<std::int64_t>(Persons.size()); }
  std::size_t ColumnCount() const override { return 3; }
  std::optional<StringView> CellText(std::int64_t row, std::size_t column) const override {
    return Persons[static_cast<std::size_t>(row)][column];
  }
};

struct RowFinderTest : testing::Test {
  void Show(std::vector<People::Person> persons) {
    people.Persons = std::move(persons);
    rows.Bind(&people);
    finder.Start({.Name = 1, .Company = 2, .Number = 3});
    finder.Extend(people, folding);
  }
  void Sort(int column) {
    RowSort sort(rows, *language, column, true);
    while (sort.GoOn()) {
    }
    sort.Finish();
  }
  int First(StringView typed, int start = 0) { return finder.First(rows, folding, typed, start); }
  int Next(StringView typed, int row, bool backward = false) {
    return finder.Next(rows, folding, typed, row, backward);
  }

  std::unique_ptr<Language> language = tests::MakeUserLanguage();
  LetterFolding folding{*language};
  People people;
  GridRows rows;
  RowFinder finder;
};

TEST_F(RowFinderTest, ANameThatBeginsSoComesBeforeOtherWords) {
  Show({{u"Anna Zoll", u"", u""}, {u"Zoltán Kovács", u"", u""}, {u"Zoë Ek", u"", u""}});
  EXPECT_EQ(First(u"zo"), 1);
  EXPECT_EQ(First(u"zoe"), 2);
  EXPECT_EQ(First(u"zol"), 1);
  EXPECT_EQ(First(u"zoll"), 0);
  EXPECT_EQ(First(u"zo", 2), 2);
  EXPECT_EQ(First(u"zoll", 1), -1);
}

TEST_F(RowFinderTest, ACompanyIsFoundWhenThereIsNoSuchName) {
  Show({{u"Zoe", u"Acme Ltd", u""}, {u"Acton", u"", u""}});
  EXPECT_EQ(First(u"ac"), 1);
  EXPECT_EQ(First(u"acm"), 0);
  EXPECT_EQ(First(u"ltd"), 0);
}

TEST_F(RowFinderTest, ANumberIsFoundWhenThereIsNoSuchWord) {
  Show({{u"Zoe", u"", u"91 98200"}, {u"Studio 98", u"", u""}});
  EXPECT_EQ(First(u"98"), 1);
  EXPECT_EQ(First(u"982"), 0);
  EXPECT_EQ(First(u"+9198"), 0);
}

TEST_F(RowFinderTest, ANumberTooLongForTheIndexIsFoundToo) {
  Show({{u"Zoe", u"", u"12345678901234567890"}});
  EXPECT_EQ(First(u"34567890123456789"), 0);
  EXPECT_EQ(First(u"4567890"), 0);
  EXPECT_EQ(First(u"333"), -1);
}

TEST_F(RowFinderTest, TheNextRowIsSoughtInBothDirectionsAroundTheList) {
  Show({{u"Zoe", u"", u""}, {u"Anna", u"", u""}, {u"Ed Zorn", u"", u""}, {u"Zoe", u"", u""}});
  EXPECT_EQ(Next(u"zo", 0), 2);
  EXPECT_EQ(Next(u"zo", 3), 0);
  EXPECT_EQ(Next(u"zo", -1), 0);
  EXPECT_EQ(Next(u"zo", 2, true), 0);
  EXPECT_EQ(Next(u"zo", 0, true), 3);
  EXPECT_EQ(Next(u"zo", -1, true), 3);
  EXPECT_EQ(Next(u"an", 1), 1);
  EXPECT_EQ(Next(u"x", 1), -1);
}

TEST_F(RowFinderTest, AnEmptyTextAndAnEmptyListFindNothing) {
  Show({{u"Zoe", u"", u"1"}});
  for (const StringView typed : {u"", u" "}) {
    EXPECT_EQ(First(typed), -1);
    EXPECT_EQ(Next(typed, 0), -1);
  }
  Show({});
  EXPECT_EQ(First(u"z"), -1);
  EXPECT_EQ(Next(u"z", -1, true), -1);
}

TEST_F(RowFinderTest, SortedAndAddedRowsAreFoundInTheirOrder) {
  Show({{u"Zoe", u"", u""}, {u"Zoa", u"", u""}});
  rows.Append({u"", u"Zob", u"", u"77"});
  EXPECT_EQ(First(u"zob"), 2);
  EXPECT_EQ(First(u"77"), 2);
  Sort(1);
  EXPECT_EQ(First(u"zo"), 0);
  EXPECT_EQ(rows.Text(First(u"zoe"), 1), u"Zoe");
}

/// The index must not change what is found: compares it with the texts themselves.
TEST_F(RowFinderTest, ManyRowsAreFoundAsFewAre) {
  std::mt19937 random(16);
  const StringView parts[] = {u"Zo", u"ë",  u" ",  u"Ek", u"an", u"A", u"na",
                              u"-",  u"Ök", u"12", u"3",  u"0",  u"  "};
  const auto text = [&](int most) {
    String made;
    for (int count = static_cast<int>(random() % static_cast<unsigned>(most)); count > 0; --count) {
      made += parts[random() % std::size(parts)];
    }
    return made;
  };
  std::vector<People::Person> persons;
  for (int i = 0; i < 9000; ++i) persons.push_back({text(7), text(4), text(5)});
  Show(persons);
  for (int i = 0; i < 5000; ++i) rows.Append({u"", text(7), text(4), text(5)});
  while (finder.ExtendOwn(rows, folding)) {
  }
  rows.SetText(3, 1, u"Zo");
  rows.SetText(9003, 1, u"Zo");
  rows.Append({u"", u"Zoe", u"", u"77"});  // not in the index
  Sort(3);
  for (int trial = 0; trial < 300; ++trial) {
    const String typed = text(5);
    const SoughtWords words(typed, folding);
    const SoughtNumber number(typed);
    int begun = -1;
    int named = -1;
    int company = -1;
    int numbered = -1;
    for (int row = rows.Count() - 1; row >= 0; --row) {
      if (words.Begin(rows.Text(row, 1))) begun = row;
      if (words.StartWordsOf(rows.Text(row, 1))) named = row;
      if (words.StartWordsOf(rows.Text(row, 2))) company = row;
      if (number.IsIn(rows.Text(row, 3))) numbered = row;
    }
    const int expected = begun >= 0     ? begun
                         : named >= 0   ? named
                         : company >= 0 ? company
                                        : numbered;
    EXPECT_EQ(First(typed), expected) << ToUtf8(typed);
    const int next = named >= 0 ? named : company >= 0 ? company : numbered;
    EXPECT_EQ(Next(typed, -1), next) << ToUtf8(typed);
  }
}

}  // namespace
}  // namespace ktrv::controls
