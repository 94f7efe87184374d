#pragma once

#include <chrono>
#include <map>

#include "database/Driver.h"
#include "database/odbc/Native.h"

namespace ktrv::database::odbc {

/// A session through ODBC.
class OdbcLink final : public Link {
 public:
  /// Opens the session. \throws Error
  OdbcLink(StringView connectionString, StringView user, StringView password);
  ~OdbcLink() override;

  std::unique_ptr<Statement> Prepare(StringView text,
                                     std::span<const Parameter> parameters) override;
  Engine EngineKind() const override { return engine_; }
  std::vector<String> KeyColumns(StringView table) override;
  bool TellsInsertedId(StringView table, StringView column) override;
  std::int64_t LastInsertedId(StringView table, StringView column) override;
  bool Begin() override;
  void Commit() override;
  void RollBack() override;
  bool SetMark() override;
  void RollBackToMark() override;

  /// Allocates a statement handle. \throws Error
  StatementHandle NewStatement() const;

  const Dialogue& HowToSpeak() const { return dialogue_; }

  /// Whether SQLGetData can read a column again after its bound buffer was too small.
  bool CanReadAgain() const { return canReadAgain_; }

  /// The query timeout for statements, if the driver implements it; otherwise 0.
  std::chrono::seconds StatementLimit() const;

  /// Whether the driver supports SQLMoreResults.
  bool HasFurtherResults() const { return hasFurtherResults_; }

 private:
  String Information(SQLUSMALLINT kind) const;
  std::vector<String> AskKeyColumns(StringView table) const;
  void LearnAboutDriver();
  void CommitEachStatement(bool each);
  void Run(StringView text);

  EnvironmentHandle environment_;
  ConnectionHandle connection_;
  Dialogue dialogue_;
  std::chrono::milliseconds statementLimit_{};
  Engine engine_ = Engine::Other;
  bool canReadAgain_ = false;
  bool hasFurtherResults_ = false;
  bool hasTransactions_ = false;
  std::map<String, std::vector<String>> keyColumns_;  // cache by table
};

}  // namespace ktrv::database::odbc
