#pragma once

#include <atomic>
#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <optional>
#include <vector>

#include "common/Error.h"
#include "database/Driver.h"

namespace ktrv::tests {

/// Holds fetches until the test lets them go on.
class Gate {
 public:
  void Close();
  void Open();
  /// Called by the driver. \return false when `stop` became true while it waited.
  bool Pass(const std::atomic<bool>& stop);
  int Waiting() const;  ///< threads that are held now

 private:
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  bool open_ = true;
  int waiting_ = 0;
};

/// A database without a database: answers each text as the test says, and remembers what was run.
///
///   FakeDriver driver;
///   driver.Answer(u"FROM SMS_ABFOLDERS", {{u"ID", DataType::Integer}, {u"NAME"}},
///                 {{u"1", u"Friends"}, {u"2", std::nullopt}});      // cells are texts, or null
///   driver.Fail(u"INSERT INTO", Error(ErrorNumber::IntegrityViolation, u"taken"));
///   driver.Changes(u"UPDATE SMS_ABGROUPS", 1);                      // returns no rows
///   ...
///   driver.Executed().back().Text, .Values
///
/// An answer belongs to every text that contains its part (any text when the part is empty); the
/// one that was given last counts. A text without an answer fails with TableNotFound. All may be
/// called while fetches run.
class FakeDriver final : public database::Driver {
 public:
  using Row = std::vector<std::optional<String>>;
  struct Execution {
    String Text;
    std::vector<Variant> Values;
    String On;  ///< the connection string of its link
  };

  void Answer(StringView part, std::vector<database::Column> columns, std::vector<Row> rows);
  void Changes(StringView part, std::int64_t rows);
  void Fail(StringView part, Error error);

  /// Lets the fetch of the answer given last for this part fail behind its last row.
  void FailAtEnd(StringView part, Error error);

  /// The next and all later opens fail; nothing lets them succeed again.
  void FailOpen(std::optional<Error> error);

  /// All later opens give no link and no failure.
  void OpenNothing();

  /// Every statement on a link that is open now fails from here on.
  void LoseLinks();
  std::atomic<database::Engine> Kind = database::Engine::Other;

  void SetKeyColumns(std::vector<String> names);
  void SetLastInsertedId(std::int64_t id);
  void TellNoIds();  ///< which is known before a row is inserted
  void FailLastInsertedId(Error error);

  // There are transactions, unless taken away; what was executed in them stays executed here.
  void HaveNoTransactions();
  void FailCommit(std::optional<Error> error);
  void FailRollBack(std::optional<Error> error);
  /// "begin", "commit" and "roll back", as they were called.
  std::vector<String> Transactions() const;

  std::vector<Execution> Executed() const;
  /// The most rows that one Fetch of this very text asked for; 0 when none did.
  std::size_t MostRowsAsked(StringView text) const;
  std::vector<String> Opened() const;  ///< the connection strings of the links that were opened
  int LinksAlive() const { return linksAlive_; }
  int Cancels() const { return cancels_; }

  Gate OpenGate;       ///< while closed, opening waits in the driver
  Gate FetchGate;      ///< while closed, each Fetch waits in the driver, until Cancel
  String FetchGateOf;  ///< the gate is only for texts with this part; set while nothing runs
  Gate CancelGate;     ///< while closed, each Cancel waits in the driver before it has an effect
  Gate CommitGate;     ///< while closed, each Commit waits in the driver
  std::atomic<int> FetchMilliseconds = 0;  ///< that each Fetch takes

  std::unique_ptr<database::Link> Open(StringView connectionString, StringView user,
                                       StringView password) override;

 private:
  struct Scripted {
    String Part;
    std::vector<database::Column> Columns;
    std::vector<Row> Rows;
    std::int64_t Changed = -1;
    std::optional<Error> Failure;
    std::optional<Error> FailureAtEnd;
  };
  class FakeStatement;
  class FakeLink;

  Scripted Run(const FakeLink& link, StringView text, std::span<const Variant> values);
  void Asked(const String& text, std::size_t rows);

  mutable std::mutex mutex_;
  std::deque<Scripted> answers_;
  std::vector<Execution> executed_;
  std::map<String, std::size_t> mostRowsAsked_;
  std::vector<String> opened_;
  std::optional<Error> openFailure_;
  bool opensNothing_ = false;
  std::size_t linksLost_ = 0;  // of those that were opened
  std::vector<String> keyColumns_;
  std::int64_t lastId_ = 0;
  bool tellsIds_ = true;
  std::optional<Error> idFailure_;
  bool hasTransactions_ = true;
  std::optional<Error> commitFailure_;
  std::optional<Error> rollBackFailure_;
  std::vector<String> transactions_;
  std::atomic<int> linksAlive_ = 0;
  std::atomic<int> cancels_ = 0;
};

}  // namespace ktrv::tests
