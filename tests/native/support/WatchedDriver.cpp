#include "tests/native/support/WatchedDriver.h"

#include <utility>

namespace ktrv::tests {
namespace {

using database::Link;
using database::Statement;

class WatchedStatement final : public Statement {
 public:
  WatchedStatement(WatchedDriver& watch, StringView text, std::unique_ptr<Statement> statement)
      : watch_(watch), text_(text), statement_(std::move(statement)) {}

  void Execute(std::span<const Variant> values) override {
    if (const auto hook = watch_.BeforeExecute) hook(text_);  // which may take itself off
    statement_->Execute(values);
  }
  const std::vector<database::Column>& Columns() const override { return statement_->Columns(); }
  std::int64_t RowsAffected() const override {
    return watch_.CountsRows ? statement_->RowsAffected() : -1;
  }
  std::unique_ptr<database::RowBlock> Fetch(std::size_t rows) override {
    if (const auto hook = watch_.BeforeFetch) hook(text_);
    return statement_->Fetch(rows);
  }
  void Cancel() noexcept override { statement_->Cancel(); }

 private:
  WatchedDriver& watch_;
  String text_;
  std::unique_ptr<Statement> statement_;
};

class WatchedLink final : public Link {
 public:
  WatchedLink(WatchedDriver& watch, std::unique_ptr<Link> link)
      : watch_(watch), link_(std::move(link)) {}

  std::unique_ptr<Statement> Prepare(StringView text,
                                     std::span<const database::Parameter> parameters) override {
    if (watch_.BeforePrepare) watch_.BeforePrepare(text, parameters);
    return std::make_unique<WatchedStatement>(watch_, text, link_->Prepare(text, parameters));
  }
  database::Engine EngineKind() const override { return link_->EngineKind(); }
  std::vector<String> KeyColumns(StringView table) override { return link_->KeyColumns(table); }
  bool TellsInsertedId(StringView table, StringView column) override {
    return link_->TellsInsertedId(table, column);
  }
  std::int64_t LastInsertedId(StringView table, StringView column) override {
    if (const auto hook = watch_.BeforeLastInsertedId) hook();
    return link_->LastInsertedId(table, column);
  }
  bool Begin() override {
    if (const auto hook = watch_.BeforeBegin) hook();
    return watch_.HasTransactions && link_->Begin();
  }
  void Commit() override {
    watch_.UndoTransactions ? link_->RollBack() : link_->Commit();
    if (const auto hook = watch_.AfterCommit) hook();
  }
  void RollBack() override {
    link_->RollBack();
    if (const auto hook = watch_.AfterRollBack) hook();
  }

 private:
  WatchedDriver& watch_;
  std::unique_ptr<Link> link_;
};

}  // namespace

std::unique_ptr<Link> WatchedDriver::Open(StringView connectionString, StringView user,
                                          StringView password) {
  auto link = driver_.Open(connectionString, user, password);
  return link ? std::make_unique<WatchedLink>(*this, std::move(link)) : nullptr;
}

}  // namespace ktrv::tests
