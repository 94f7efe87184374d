#include "database/LimitedLink.h"

#include <algorithm>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

#include "database/DataError.h"
#include "database/Engines.h"

namespace ktrv::database {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds kClosing{1000};

struct Nothing {};

/// The result of a call, shared by its thread and the caller.
template <class Result>
struct Outcome {
  std::optional<Result> Got;
  std::optional<Error> Failure;
};

}  // namespace

template <class Work>
auto LimitedLink::Call(milliseconds limit, Work work, const std::function<void()>& late) {
  using Result = std::invoke_result_t<Work&, Session&>;
  constexpr bool kGivesNothing = std::is_void_v<Result>;
  using Kept = std::conditional_t<kGivesNothing, Nothing, Result>;
  if (!session_) throw DataError(ErrorNumber::TimedOut);
  if (limit.count() == 0) return work(*session_);
  auto outcome = std::make_shared<Outcome<Kept>>();
  auto call = [outcome, session = session_, work = std::move(work)]() mutable {
    try {
      if constexpr (kGivesNothing) {
        work(*session);
      } else {
        outcome->Got = work(*session);
      }
    } catch (...) {
      outcome->Failure = Error::Current();
    }
  };
  if (!calls_->Run(std::move(call), limit, late)) {
    session_.reset();
    throw DataError(ErrorNumber::TimedOut);
  }
  if (outcome->Failure) throw *outcome->Failure;
  if constexpr (!kGivesNothing) return std::move(*outcome->Got);
}

template <class Work>
auto LimitedLink::Ask(Work work) {
  return Call(limits_.Statement, std::move(work));
}

/// A statement of the session. It is unusable after the session was abandoned.
class LimitedLink::Limited final : public Statement {
 public:
  Limited(LimitedLink& link, Held& held, milliseconds limit)
      : link_(link),
        held_(held),
        statement_(*held.Of),
        canceller_(held.Cancelling),
        limit_(limit),
        left_(limit) {}

  ~Limited() override {
    if (!link_.session_) return;
    try {
      link_.Call(limit_.count() == 0 || !ran_ ? milliseconds(0) : kClosing,
                 [held = &held_](Session& session) {
                   session.Statements.remove_if([=](const Held& each) { return &each == held; });
                 });
    } catch (...) {
      // It is destroyed with the link.
    }
  }

  void Execute(std::span<const Variant> values) override {
    left_ = limit_;
    Run([values = std::vector<Variant>(values.begin(), values.end())](Statement& statement) {
      statement.Execute(values);
      return Nothing{};
    });
    Learn();
  }

  bool ExecuteAll(std::span<const std::vector<Variant>> rows) override {
    left_ = limit_;
    const bool ran = Run([rows = std::vector<std::vector<Variant>>(rows.begin(), rows.end())](
                             Statement& statement) { return statement.ExecuteAll(rows); });
    Learn();
    return ran;
  }

  void LiftTimeLimit() override {
    statement_.LiftTimeLimit();
    limit_ = left_ = milliseconds(0);
  }

  const std::vector<Column>& Columns() const override { return columns_; }
  std::int64_t RowsAffected() const override { return rowsAffected_; }

  std::unique_ptr<RowBlock> Fetch(std::size_t rows) override {
    return Run([rows](Statement& statement) { return statement.Fetch(rows); });
  }

  void Cancel() noexcept override { canceller_->Cancel(); }

 private:
  /// The limit applies to an Execute together with its Fetch calls.
  template <class Work>
  std::invoke_result_t<Work&, Statement&> Run(Work work) {
    const auto began = Clock::now();
    ran_ = true;
    // At least 1, because 0 means no limit.
    const milliseconds limit = limit_.count() == 0 ? limit_ : std::max(left_, milliseconds(1));
    struct Spending {
      milliseconds& Left;
      const Clock::time_point Began;
      ~Spending() { Left -= std::chrono::ceil<milliseconds>(Clock::now() - Began); }
    } const spending{left_, began};
    try {
      return link_.Call(
          limit,
          [statement = &statement_, work = std::move(work)](Session&) { return work(*statement); },
          [&] {
            late_ = true;
            Tell();
          });
    } catch (const Error&) {
      if (late_) throw DataError(ErrorNumber::TimedOut);
      throw;
    }
  }

  /// If no thread can be started, the call is abandoned without a cancel.
  void Tell() noexcept {
    try {
      canceller_->StartThread();
      canceller_->Tell();
    } catch (...) {
      // No cancel.
    }
  }

  void Learn() {
    columns_ = statement_.Columns();
    rowsAffected_ = statement_.RowsAffected();
  }

  LimitedLink& link_;
  Held& held_;
  Statement& statement_;
  const std::shared_ptr<Canceller> canceller_;
  milliseconds limit_;
  milliseconds left_;
  bool ran_ = false;
  bool late_ = false;  // then it is cancelled and cannot be executed again
  std::vector<Column> columns_;
  std::int64_t rowsAffected_ = -1;
};

LimitedLink::LimitedLink(std::shared_ptr<LimitedCalls> calls, TimeLimits limits,
                         std::unique_ptr<Link> link)
    : calls_(std::move(calls)),
      limits_(limits),
      engine_(link->EngineKind()),
      session_(std::make_shared<Session>()) {
  session_->Of = std::move(link);
}

LimitedLink::~LimitedLink() {
  if (!session_) return;
  try {
    Call(kClosing, [](Session& session) {
      session.Statements.clear();
      session.Of.reset();
    });
  } catch (...) {
    // It is closed when the call returns.
  }
}

std::unique_ptr<Statement> LimitedLink::Prepare(StringView text,
                                                std::span<const Parameter> parameters) {
  if (!session_) throw DataError(ErrorNumber::TimedOut);
  Held& held = session_->Statements.emplace_back();
  try {
    held.Of = session_->Of->Prepare(text, parameters);  // does not access the server
    held.Cancelling->Begin(*held.Of);
    return std::make_unique<Limited>(*this, held,
                                     IsQuestion(text) ? limits_.Answer : limits_.Statement);
  } catch (...) {
    session_->Statements.pop_back();
    throw;
  }
}

std::vector<String> LimitedLink::KeyColumns(StringView table) {
  return Ask([table = String(table)](Session& session) { return session.Of->KeyColumns(table); });
}

bool LimitedLink::TellsInsertedId(StringView table, StringView column) {
  return Ask([table = String(table), column = String(column)](Session& session) {
    return session.Of->TellsInsertedId(table, column);
  });
}

std::int64_t LimitedLink::LastInsertedId(StringView table, StringView column) {
  return Ask([table = String(table), column = String(column)](Session& session) {
    return session.Of->LastInsertedId(table, column);
  });
}

bool LimitedLink::Begin() {
  return Ask([](Session& session) { return session.Of->Begin(); });
}

void LimitedLink::Commit() {
  Ask([](Session& session) { session.Of->Commit(); });
}

void LimitedLink::RollBack() {
  Ask([](Session& session) { session.Of->RollBack(); });
}

bool LimitedLink::SetMark() {
  return Ask([](Session& session) { return session.Of->SetMark(); });
}

void LimitedLink::RollBackToMark() {
  Ask([](Session& session) { session.Of->RollBackToMark(); });
}

}  // namespace ktrv::database
