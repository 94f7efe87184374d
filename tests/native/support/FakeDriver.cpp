#include "tests/native/support/FakeDriver.h"

#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

namespace ktrv::tests {

using database::Column;
using database::Engine;
using database::Link;
using database::Parameter;
using database::RowBlock;
using database::Statement;

void Gate::Close() {
  const std::lock_guard lock(mutex_);
  open_ = false;
}

void Gate::Open() {
  const std::lock_guard lock(mutex_);
  open_ = true;
  changed_.notify_all();
}

bool Gate::Pass(const std::atomic<bool>& stop) {
  std::unique_lock lock(mutex_);
  ++waiting_;
  // Stopping wakes nobody, so that a test's Cancel needs no lock of the gate.
  while (!open_ && !stop) changed_.wait_for(lock, std::chrono::milliseconds(1));
  --waiting_;
  return !stop;
}

int Gate::Waiting() const {
  const std::lock_guard lock(mutex_);
  return waiting_;
}

class FakeDriver::FakeStatement final : public Statement {
 public:
  FakeStatement(FakeDriver& driver, const FakeLink& link, StringView text, std::size_t parameters)
      : driver_(driver), link_(link), text_(text), parameters_(parameters) {}

  void Execute(std::span<const Variant> values) override {
    if (values.size() != parameters_) {
      throw Error(ErrorNumber::InvalidProcedureCall, u"Not a value for each parameter",
                  u"FakeDriver");
    }
    scripted_ = driver_.Run(link_, text_, values);
    next_ = 0;
  }

  const std::vector<Column>& Columns() const override { return scripted_.Columns; }

  std::int64_t RowsAffected() const override { return scripted_.Changed; }

  std::unique_ptr<RowBlock> Fetch(std::size_t rows) override {
    driver_.Asked(text_, rows);
    if (text_.find(driver_.FetchGateOf) != String::npos && !driver_.FetchGate.Pass(cancelled_)) {
      throw Error(ErrorNumber::CommandCancelled, u"Cancelled", u"FakeDriver");
    }
    if (const int milliseconds = driver_.FetchMilliseconds) {
      std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    }
    if (next_ == scripted_.Rows.size()) {
      if (scripted_.FailureAtEnd) throw *scripted_.FailureAtEnd;
      return nullptr;
    }
    auto block = std::make_unique<RowBlock>(scripted_.Columns.size(), rows);
    for (; rows > 0 && next_ < scripted_.Rows.size(); --rows, ++next_) {
      block->BeginRow();
      for (const auto& cell : scripted_.Rows[next_]) cell ? block->Add(*cell) : block->AddNull();
    }
    block->Finish();
    return block;
  }

  void Cancel() noexcept override {
    static const std::atomic<bool> kNever = false;
    driver_.CancelGate.Pass(kNever);
    cancelled_ = true;
    ++driver_.cancels_;
  }

 private:
  FakeDriver& driver_;
  const FakeLink& link_;
  String text_;
  std::size_t parameters_;
  Scripted scripted_;
  std::size_t next_ = 0;
  std::atomic<bool> cancelled_ = false;
};

class FakeDriver::FakeLink final : public Link {
 public:
  FakeLink(FakeDriver& driver, String connectionString, std::size_t number)
      : ConnectionString(std::move(connectionString)), Number(number), driver_(driver) {
    ++driver_.linksAlive_;
  }
  ~FakeLink() override { --driver_.linksAlive_; }

  std::unique_ptr<Statement> Prepare(StringView text,
                                     std::span<const Parameter> parameters) override {
    return std::make_unique<FakeStatement>(driver_, *this, text, parameters.size());
  }

  Engine EngineKind() const override { return driver_.Kind; }

  std::vector<String> KeyColumns(StringView) override {
    const std::lock_guard lock(driver_.mutex_);
    return driver_.keyColumns_;
  }

  bool TellsInsertedId(StringView, StringView) override {
    const std::lock_guard lock(driver_.mutex_);
    return driver_.tellsIds_;
  }

  std::int64_t LastInsertedId(StringView, StringView) override {
    const std::lock_guard lock(driver_.mutex_);
    if (driver_.idFailure_) throw *driver_.idFailure_;
    return driver_.lastId_;
  }

  bool Begin() override {
    const std::lock_guard lock(driver_.mutex_);
    if (driver_.hasTransactions_) driver_.transactions_.emplace_back(u"begin");
    return driver_.hasTransactions_;
  }

  void Commit() override {
    static const std::atomic<bool> kNever = false;
    driver_.CommitGate.Pass(kNever);
    End(u"commit", driver_.commitFailure_);
  }
  void RollBack() override { End(u"roll back", driver_.rollBackFailure_); }

  const String ConnectionString;
  const std::size_t Number;  // of the links that were opened

 private:
  void End(StringView how, const std::optional<Error>& failure) {
    const std::lock_guard lock(driver_.mutex_);
    driver_.transactions_.emplace_back(how);
    if (failure) throw *failure;
  }

  FakeDriver& driver_;
};

void FakeDriver::Answer(StringView part, std::vector<Column> columns, std::vector<Row> rows) {
  Scripted scripted;
  scripted.Part = part;
  scripted.Columns = std::move(columns);
  scripted.Rows = std::move(rows);
  const std::lock_guard lock(mutex_);
  answers_.push_front(std::move(scripted));
}

void FakeDriver::Changes(StringView part, std::int64_t rows) {
  Scripted scripted;
  scripted.Part = part;
  scripted.Changed = rows;
  const std::lock_guard lock(mutex_);
  answers_.push_front(std::move(scripted));
}

void FakeDriver::Fail(StringView part, Error error) {
  Scripted scripted;
  scripted.Part = part;
  scripted.Failure = std::move(error);
  const std::lock_guard lock(mutex_);
  answers_.push_front(std::move(scripted));
}

void FakeDriver::FailAtEnd(StringView part, Error error) {
  const std::lock_guard lock(mutex_);
  const auto answer = std::find_if(answers_.begin(), answers_.end(),
                                   [&](const Scripted& each) { return each.Part == part; });
  if (answer != answers_.end()) answer->FailureAtEnd = std::move(error);
}

void FakeDriver::FailOpen(std::optional<Error> error) {
  const std::lock_guard lock(mutex_);
  openFailure_ = std::move(error);
}

void FakeDriver::OpenNothing() {
  const std::lock_guard lock(mutex_);
  opensNothing_ = true;
}

void FakeDriver::LoseLinks() {
  const std::lock_guard lock(mutex_);
  linksLost_ = opened_.size();
}

void FakeDriver::SetKeyColumns(std::vector<String> names) {
  const std::lock_guard lock(mutex_);
  keyColumns_ = std::move(names);
}

void FakeDriver::SetLastInsertedId(std::int64_t id) {
  const std::lock_guard lock(mutex_);
  lastId_ = id;
}

void FakeDriver::TellNoIds() {
  const std::lock_guard lock(mutex_);
  tellsIds_ = false;
}

void FakeDriver::FailLastInsertedId(Error error) {
  const std::lock_guard lock(mutex_);
  idFailure_ = std::move(error);
}

void FakeDriver::HaveNoTransactions() {
  const std::lock_guard lock(mutex_);
  hasTransactions_ = false;
}

void FakeDriver::FailCommit(std::optional<Error> error) {
  const std::lock_guard lock(mutex_);
  commitFailure_ = std::move(error);
}

void FakeDriver::FailRollBack(std::optional<Error> error) {
  const std::lock_guard lock(mutex_);
  rollBackFailure_ = std::move(error);
}

std::vector<String> FakeDriver::Transactions() const {
  const std::lock_guard lock(mutex_);
  return transactions_;
}

std::vector<FakeDriver::Execution> FakeDriver::Executed() const {
  const std::lock_guard lock(mutex_);
  return executed_;
}

std::size_t FakeDriver::MostRowsAsked(StringView text) const {
  const std::lock_guard lock(mutex_);
  const auto asked = mostRowsAsked_.find(String(text));
  return asked == mostRowsAsked_.end() ? 0 : asked->second;
}

std::vector<String> FakeDriver::Opened() const {
  const std::lock_guard lock(mutex_);
  return opened_;
}

std::unique_ptr<Link> FakeDriver::Open(StringView connectionString, StringView, StringView) {
  static const std::atomic<bool> kNever = false;
  OpenGate.Pass(kNever);
  const std::lock_guard lock(mutex_);
  if (openFailure_) throw *openFailure_;
  if (opensNothing_) return nullptr;
  opened_.emplace_back(connectionString);
  return std::make_unique<FakeLink>(*this, String(connectionString), opened_.size());
}

void FakeDriver::Asked(const String& text, std::size_t rows) {
  const std::lock_guard lock(mutex_);
  std::size_t& most = mostRowsAsked_[text];
  most = std::max(most, rows);
}

FakeDriver::Scripted FakeDriver::Run(const FakeLink& link, StringView text,
                                     std::span<const Variant> values) {
  const std::lock_guard lock(mutex_);
  executed_.push_back({String(text), {values.begin(), values.end()}, link.ConnectionString});
  if (link.Number <= linksLost_) {
    throw Error(ErrorNumber::DriverFailure, u"The link is lost", u"FakeDriver");
  }
  for (const Scripted& answer : answers_) {
    if (text.find(answer.Part) == StringView::npos) continue;
    if (answer.Failure) throw *answer.Failure;
    return answer;
  }
  throw Error(ErrorNumber::TableNotFound, u"The test gave no answer for: " + String(text),
              u"FakeDriver");
}

}  // namespace ktrv::tests
