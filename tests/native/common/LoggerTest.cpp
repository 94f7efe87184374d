#include "common/Logger.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <stdexcept>
#include <thread>

#include "common/Trap.h"
#include "tests/native/common/RecordingSystem.h"

namespace ktrv::tests {
namespace {

const String kPath = u"C:\\logs\\AddressBook.log";

struct LoggerTest : testing::Test {
  RecordingSystem System;
  String Shown;
  Logger Log{System, [this](StringView text, StringView title, std::int32_t style) {
               Shown = String(title) + u"|" + String(text) + u"|" + ToDecimal(style);
               return MessageAnswer::Yes;
             }};
};

TEST_F(LoggerTest, ALineEndsWithCarriageReturnAndLineFeed) {
  Log.WriteLog(kPath, u"KTRVAddressBook: Starting initialization routine...", true, true);
  EXPECT_EQ(System.Contents(), "KTRVAddressBook: Starting initialization routine...\r\n");
}

TEST_F(LoggerTest, ALineGoesToTheFileItNames) {
  Log.WriteLog(kPath, u"line", true, false);
  EXPECT_EQ(System.Appends.at(0).Path, kPath);
}

TEST_F(LoggerTest, LinesComeInTheOrderOfTheCalls) {
  Log.WriteLog(kPath, u"first", true, false);
  Log.WriteLog(kPath, u"second", true, false);
  EXPECT_EQ(System.Contents(), "first\r\nsecond\r\n");
}

TEST_F(LoggerTest, ALineBreakInsideALineBecomesBlanks) {
  Log.WriteLog(kPath, u"one\r\ntwo", true, false);
  EXPECT_EQ(System.Contents(), "one  two\r\n");
}

/// What would break a line, move a cursor or colour a terminal that shows the log.
const StringView kUnprintable(u"\x01\t\v\f\x1B\x7F\u0080\u0085\u009B\u009F\u2028\u2029\0", 13);

TEST_F(LoggerTest, NoControlOrSeparatorReachesALine) {
  Log.WriteLog(kPath, u"a" + String(kUnprintable) + u"z\u00A0", true, false);
  EXPECT_EQ(System.Contents(), "a" + std::string(kUnprintable.size(), ' ') + "z\xC2\xA0\r\n");
}

TEST_F(LoggerTest, NoControlOrSeparatorReachesAnErrorRecord) {
  const String text = u"a" + String(kUnprintable) + u"\r\nz";
  Log.LogError(kPath, Error(1, text, text), text, 0, true);
  const std::string clean = "a" + std::string(kUnprintable.size() + 2, ' ') + "z\r\n";
  const std::string written = System.Contents();
  EXPECT_EQ(std::count(written.begin(), written.end(), '\n'), 8);
  EXPECT_NE(written.find("*\r\n" + clean), std::string::npos);
  EXPECT_NE(written.find("Error Description : " + clean), std::string::npos);
  EXPECT_NE(written.find("Error Source      : " + clean), std::string::npos);
}

TEST_F(LoggerTest, NoPasswordReachesAnErrorRecord) {
  const String text = u"Can't open \"DSN=Book;UID=sms;PWD=s3cret;Port=1\"";
  Log.LogError(kPath, Error(1, text, text), u"context", 0, true);
  const std::string written = System.Contents();
  EXPECT_EQ(written.find("s3cret"), std::string::npos);
  EXPECT_NE(written.find("UID=sms;PWD=***;Port=1"), std::string::npos);
}

TEST_F(LoggerTest, NoPasswordReachesALine) {
  Log.WriteLog(kPath, u"opens DSN=Book;PWD=s3cret", true, false);
  EXPECT_EQ(System.Contents(), "opens DSN=Book;PWD=***\r\n");
}

TEST_F(LoggerTest, AnEmptyLineIsALine) {
  Log.WriteLog(kPath, u"", true, false);
  EXPECT_EQ(System.Contents(), "\r\n");
}

TEST_F(LoggerTest, TextBeyondAsciiIsUtf8) {
  Log.WriteLog(kPath, u"Zo\u00EB \u0930 \U0001F4D2", true, false);
  EXPECT_EQ(System.Contents(), "Zo\xC3\xAB \xE0\xA4\xB0 \xF0\x9F\x93\x92\r\n");
}

TEST_F(LoggerTest, TheFirstFlagOffLeavesTheLineOut) {
  Log.WriteLog(kPath, u"line", false, true);
  EXPECT_TRUE(System.Appends.empty());
}

TEST_F(LoggerTest, TheSecondFlagAsksForTheDisk) {
  Log.WriteLog(kPath, u"safe", true, true);
  Log.WriteLog(kPath, u"fast", true, false);
  EXPECT_TRUE(System.Appends.at(0).Flush);
  EXPECT_FALSE(System.Appends.at(1).Flush);
}

TEST_F(LoggerTest, AnErrorRecordHasItsLabelledLinesInOrder) {
  const Error error(-2147217900, u"Incorrect syntax", u"ODBC driver", 87);
  Log.LogError(kPath, error, u"KTRVAddressBook: Error occured. Sub: Init, Module: clsMain", 0,
               true);
  EXPECT_EQ(System.Contents(),
            "************************* ERROR *************************\r\n"
            "KTRVAddressBook: Error occured. Sub: Init, Module: clsMain\r\n"
            "Error Date/Time   : 05/03/2024  07:08:09\r\n"
            "Error Number      : -2147217900\r\n"
            "Error Description : Incorrect syntax\r\n"
            "Error DLLErrorNum : 87\r\n"
            "Error Source      : ODBC driver\r\n"
            "*********************************************************\r\n");
}

TEST_F(LoggerTest, AnErrorRecordIsOneAppendSoThatNoOtherProcessGetsInBetween) {
  Log.LogError(kPath, Error(91, u"Object variable not set"), u"context", 0, true);
  EXPECT_EQ(System.Appends.size(), 1U);
}

TEST_F(LoggerTest, ADescriptionOfSeveralLinesStaysOneLine) {
  Log.LogError(kPath, Error(5, u"[driver]\r\nbroken"), u"context", 0, true);
  EXPECT_THAT(System.Contents(), testing::HasSubstr("Error Description : [driver]  broken\r\n"));
}

TEST_F(LoggerTest, TheFlagOffLeavesTheRecordOut) {
  Log.LogError(kPath, Error(5, u"broken"), u"context", 0, false);
  EXPECT_TRUE(System.Appends.empty());
}

TEST_F(LoggerTest, TheDateHasTwoDigitsADayAndMonth) {
  System.Clock = *ParseDateTime(u"2031-12-24 23:59:59.999");
  Log.LogError(kPath, Error(5, u"broken"), u"context", 0, true);
  EXPECT_THAT(System.Contents(), testing::HasSubstr(": 24/12/2031  23:59:59\r\n"));
}

TEST_F(LoggerTest, ALogThatCannotBeWrittenIsNobodysFailure) {
  System.Full = true;
  EXPECT_NO_THROW(Log.WriteLog(kPath, u"line", true, true));
  EXPECT_NO_THROW(Log.LogError(kPath, Error(5, u"broken"), u"context", 0, true));
  EXPECT_TRUE(Shown.empty());
}

TEST_F(LoggerTest, AMessageBoxHasTheServersTitleAndAnswersItsButton) {
  EXPECT_EQ(Log.ShowMessage(u"Delete?", MessageStyle::YesNo), MessageAnswer::Yes);
  EXPECT_EQ(Shown, u"TALVERO Notification Server|Delete?|4");
}

TEST_F(LoggerTest, ThreadsThatShareALoggerLoseNoLine) {
  constexpr int kLines = 200;
  {
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < 4; ++thread) {
      threads.emplace_back([this] {
        for (int line = 0; line < kLines; ++line) Log.WriteLog(kPath, u"line", true, false);
      });
    }
  }
  EXPECT_EQ(System.Appends.size(), 4U * kLines);
  EXPECT_TRUE(std::all_of(System.Appends.begin(), System.Appends.end(),
                          [](const auto& append) { return append.Bytes == "line\r\n"; }));
}

struct TrapTest : LoggerTest {};

TEST_F(TrapTest, ASuccessGivesItsResultAndLogsNothing) {
  EXPECT_EQ(Trap(Log, kPath, u"context", 0, [] { return 7; }), 7);
  EXPECT_TRUE(System.Appends.empty());
}

TEST_F(TrapTest, AFailureGivesTheFailureValueAndARecord) {
  const auto fails = []() -> int { throw Error(3021, u"No current record"); };
  EXPECT_EQ(Trap(Log, kPath, u"Sub: Look", -1, fails), -1);
  EXPECT_THAT(System.Contents(),
              testing::AllOf(testing::HasSubstr("Sub: Look\r\n"),
                             testing::HasSubstr("Error Number      : 3021\r\n")));
}

TEST_F(TrapTest, AResultReachedBeforeTheFailureIsKept) {
  int result = 0;
  const auto shownThenFails = [&]() -> int {
    result = 1;
    throw Error(3704, u"closed");
  };
  EXPECT_EQ(Trap(Log, kPath, u"context", result, shownThenFails), 1);
}

TEST_F(TrapTest, WhateverIsThrownIsTrapped) {
  Trap(Log, kPath, u"context", [] { throw 42; });
  EXPECT_THAT(System.Contents(), testing::HasSubstr("Error Description : Internal error\r\n"));
}

TEST_F(TrapTest, AFailureOfTheLanguagesLibraryKeepsItsText) {
  Trap(Log, kPath, u"context", [] { throw std::length_error("too long"); });
  EXPECT_THAT(System.Contents(), testing::HasSubstr("Error Description : too long\r\n"));
}

TEST_F(TrapTest, AFailureIsTrappedThoughTheLogCannotBeWritten) {
  System.Full = true;
  EXPECT_NO_THROW(Trap(Log, kPath, u"context", [] { throw Error(5, u"broken"); }));
}

}  // namespace
}  // namespace ktrv::tests
