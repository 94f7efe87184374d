#include "tests/line/Stopwatch.h"

#include <algorithm>
#include <utility>

namespace ktrv::tests {

using database::Column;
using database::Engine;
using database::Link;
using database::Parameter;
using database::RowBlock;
using database::Statement;
using Clock = std::chrono::steady_clock;

/// The time from here to its end.
class Stopwatch::Measured {
 public:
  explicit Measured(Stopwatch& by) : by_(by) {}
  ~Measured() {
    if (std::this_thread::get_id() != by_.user_) return;
    by_.longest_ = std::max(by_.longest_, Clock::now() - began_);
  }
  Measured(const Measured&) = delete;
  Measured& operator=(const Measured&) = delete;

 private:
  Stopwatch& by_;
  const Clock::time_point began_ = Clock::now();
};

class Stopwatch::MeasuredStatement final : public Statement {
 public:
  MeasuredStatement(Stopwatch& by, std::unique_ptr<Statement> statement)
      : by_(by), statement_(std::move(statement)) {}
  ~MeasuredStatement() override {
    const Measured measured(by_);
    statement_.reset();
  }

  void Execute(std::span<const Variant> values) override {
    const Measured measured(by_);
    statement_->Execute(values);
  }
  bool ExecuteAll(std::span<const std::vector<Variant>> rows) override {
    const Measured measured(by_);
    return statement_->ExecuteAll(rows);
  }
  void LiftTimeLimit() override { statement_->LiftTimeLimit(); }
  const std::vector<Column>& Columns() const override { return statement_->Columns(); }
  std::int64_t RowsAffected() const override { return statement_->RowsAffected(); }
  std::unique_ptr<RowBlock> Fetch(std::size_t rows) override {
    const Measured measured(by_);
    return statement_->Fetch(rows);
  }
  void Cancel() noexcept override {
    const Measured measured(by_);
    statement_->Cancel();
  }

 private:
  Stopwatch& by_;
  std::unique_ptr<Statement> statement_;
};

class Stopwatch::MeasuredLink final : public Link {
 public:
  MeasuredLink(Stopwatch& by, std::unique_ptr<Link> link) : by_(by), link_(std::move(link)) {}
  ~MeasuredLink() override {
    const Measured measured(by_);
    link_.reset();
  }

  std::unique_ptr<Statement> Prepare(StringView text,
                                     std::span<const Parameter> parameters) override {
    const Measured measured(by_);
    return std::make_unique<MeasuredStatement>(by_, link_->Prepare(text, parameters));
  }
  Engine EngineKind() const override { return link_->EngineKind(); }
  std::vector<String> KeyColumns(StringView table) override {
    const Measured measured(by_);
    return link_->KeyColumns(table);
  }
  bool TellsInsertedId(StringView table, StringView column) override {
    const Measured measured(by_);
    return link_->TellsInsertedId(table, column);
  }
  std::int64_t LastInsertedId(StringView table, StringView column) override {
    const Measured measured(by_);
    return link_->LastInsertedId(table, column);
  }
  bool Begin() override {
    const Measured measured(by_);
    return link_->Begin();
  }
  void Commit() override {
    const Measured measured(by_);
    link_->Commit();
  }
  void RollBack() override {
    const Measured measured(by_);
    link_->RollBack();
  }
  bool SetMark() override {
    const Measured measured(by_);
    return link_->SetMark();
  }
  void RollBackToMark() override {
    const Measured measured(by_);
    link_->RollBackToMark();
  }

 private:
  Stopwatch& by_;
  std::unique_ptr<Link> link_;
};

std::unique_ptr<Link> Stopwatch::Open(StringView connectionString, StringView user,
                                      StringView password) {
  const Measured measured(*this);
  auto link = driver_.Open(connectionString, user, password);
  if (!link) return nullptr;
  return std::make_unique<MeasuredLink>(*this, std::move(link));
}

std::chrono::milliseconds Stopwatch::Longest() const {
  return std::chrono::duration_cast<std::chrono::milliseconds>(longest_);
}

}  // namespace ktrv::tests
