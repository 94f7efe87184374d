#pragma once

#include <functional>
#include <span>

#include "database/Driver.h"

namespace ktrv::tests {

/// A driver that lets the test do something at a point of its choice in another driver's work.
///
///   WatchedDriver watched(driver);
///   watched.BeforeExecute = [&](StringView text) { if (text.starts_with(u"UPDATE")) ...; };
class WatchedDriver final : public database::Driver {
 public:
  /// \param driver does the work; must outlive this one and its links.
  explicit WatchedDriver(database::Driver& driver) : driver_(driver) {}

  /// Called on the thread that executes, with the text that goes to the driver next. May be
  /// replaced from within.
  std::function<void(StringView text)> BeforeExecute;
  /// The same for a text that a link prepares, with its parameters.
  std::function<void(StringView text, std::span<const database::Parameter> parameters)>
      BeforePrepare;
  /// Called before rows of the text's result are fetched.
  std::function<void(StringView text)> BeforeFetch;

  /// Called before the engine is asked for the id of the row that was inserted last.
  std::function<void()> BeforeLastInsertedId;

  /// Whether the engine tells how many rows a statement has changed.
  bool CountsRows = true;

  /// Whether the engine has transactions.
  bool HasTransactions = true;
  /// Whether it undoes a transaction that it was told to store.
  bool UndoTransactions = false;

  /// Called before a transaction begins.
  std::function<void()> BeforeBegin;

  /// Called when a transaction has been stored.
  std::function<void()> AfterCommit;

  /// Called when a transaction has been rolled back.
  std::function<void()> AfterRollBack;

  std::unique_ptr<database::Link> Open(StringView connectionString, StringView user,
                                       StringView password) override;

 private:
  database::Driver& driver_;
};

}  // namespace ktrv::tests
