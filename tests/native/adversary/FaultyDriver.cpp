#include "tests/native/adversary/FaultyDriver.h"

#include <chrono>
#include <new>
#include <utility>

#include "common/Error.h"
#include "tests/native/adversary/FailingAllocations.h"

namespace ktrv::tests {
namespace {

using database::Link;
using database::Statement;

constexpr StringView kOpen = u"Open";
constexpr StringView kPrepare = u"Prepare";
constexpr StringView kExecute = u"Execute";
constexpr StringView kColumns = u"Columns";
constexpr StringView kFetch = u"Fetch";
constexpr StringView kCount = u"RowsAffected";
constexpr StringView kKey = u"KeyColumns";
constexpr StringView kTells = u"TellsInsertedId";
constexpr StringView kId = u"LastInsertedId";
constexpr StringView kBegin = u"Begin";
constexpr StringView kCommit = u"Commit";
constexpr StringView kRollBack = u"RollBack";

Error Broken() {
  return Error(ErrorNumber::DriverFailure, u"The faulty driver failed", u"FaultyDriver");
}

bool StartsWith(const std::string& text, StringView start) {
  return text.rfind(ToUtf8(start), 0) == 0;
}

}  // namespace

const char* NameOf(Fault fault) {
  switch (fault) {
    case Fault::ThrowsBefore:
      return "ThrowsBefore";
    case Fault::ThrowsAfter:
      return "ThrowsAfter";
    case Fault::NothingOpened:
      return "NothingOpened";
    case Fault::LinkDies:
      return "LinkDies";
    case Fault::ServerGoes:
      return "ServerGoes";
    case Fault::Hangs:
      return "Hangs";
    case Fault::CancelHangs:
      return "CancelHangs";
    case Fault::CountUnknown:
      return "CountUnknown";
    case Fault::RowMissed:
      return "RowMissed";
    case Fault::IdUnknown:
      return "IdUnknown";
    case Fault::IdNeverKnown:
      return "IdNeverKnown";
    case Fault::OutOfMemory:
      return "OutOfMemory";
    case Fault::Foreign:
      return "Foreign";
  }
  return "?";
}

class FaultyDriver::FaultyStatement final : public Statement {
 public:
  FaultyStatement(FaultyDriver& owner, StringView text, std::shared_ptr<std::atomic<bool>> dead,
                  std::unique_ptr<Statement> statement)
      : owner_(owner), text_(text), dead_(std::move(dead)), statement_(std::move(statement)) {
    ++owner_.statementsAlive_;
  }
  ~FaultyStatement() override {
    statement_.reset();
    --owner_.statementsAlive_;
  }

  void Execute(std::span<const Variant> values) override {
    if (owner_.counting_) {
      const std::lock_guard lock(owner_.actMutex_);
      if (owner_.act_) owner_.act_(text_);
    }
    const auto fault = owner_.Come(kExecute, text_);
    countIsUnknown_ = fault == Fault::RowMissed;
    if (countIsUnknown_) return;
    Before(fault);
    statement_->Execute(values);
    owner_.After(fault);
  }
  const std::vector<database::Column>& Columns() const override {
    owner_.Before(owner_.Come(kColumns, text_), dead_.get());
    return statement_->Columns();
  }
  std::int64_t RowsAffected() const override {
    const auto fault = owner_.Come(kCount, text_);
    owner_.Before(fault, dead_.get());
    const bool unknown = countIsUnknown_ || owner_.CountsNothing || fault == Fault::CountUnknown;
    return unknown ? -1 : statement_->RowsAffected();
  }
  std::unique_ptr<database::RowBlock> Fetch(std::size_t rows) override {
    const auto fault = owner_.Come(kFetch, text_);
    Before(fault);
    auto block = statement_->Fetch(rows);
    owner_.After(fault);
    return block;
  }
  void Cancel() noexcept override {
    constexpr std::chrono::milliseconds kSlowCancel{20};
    if (cancelHangs_) std::this_thread::sleep_for(kSlowCancel);
    cancelled_ = true;
    statement_->Cancel();
  }

 private:
  void Before(std::optional<Fault> fault) {
    cancelHangs_ = fault == Fault::CancelHangs;
    if (fault == Fault::Hangs || fault == Fault::CancelHangs) owner_.Hang(cancelled_);
    owner_.Before(fault, dead_.get());
  }

  FaultyDriver& owner_;
  const String text_;
  const std::shared_ptr<std::atomic<bool>> dead_;
  std::unique_ptr<Statement> statement_;
  std::atomic<bool> cancelled_ = false;
  std::atomic<bool> cancelHangs_ = false;
  bool countIsUnknown_ = false;
};

class FaultyDriver::FaultyLink final : public Link {
 public:
  /// \param open called at the first use of the link, with the text that it is opened for.
  FaultyLink(FaultyDriver& owner, std::function<std::unique_ptr<Link>(StringView text)> open)
      : owner_(owner), open_(std::move(open)) {
    ++owner_.linksAlive_;
  }
  ~FaultyLink() override {
    link_.reset();
    --owner_.linksAlive_;
  }

  /// Opens it now. \return false when the library gives no session
  bool OpenFor(StringView text) {
    if (!link_) link_ = open_(text);
    return link_ != nullptr;
  }

  std::unique_ptr<Statement> Prepare(StringView text,
                                     std::span<const database::Parameter> parameters) override {
    if (!OpenFor(text)) throw Broken();
    owner_.Before(owner_.Come(kPrepare, text), dead_.get());
    return std::make_unique<FaultyStatement>(owner_, text, dead_, link_->Prepare(text, parameters));
  }
  /// A file never goes away, so nobody asks whether its link still works. A dead link says that it
  /// is one to a server.
  database::Engine EngineKind() const override {
    const bool dead = *dead_ || owner_.serverIsGone_;
    return dead || !link_ ? database::Engine::MySql : link_->EngineKind();
  }
  std::vector<String> KeyColumns(StringView table) override {
    const auto fault = owner_.Come(kKey, table);
    owner_.Before(fault, dead_.get());
    if (fault == Fault::IdUnknown || fault == Fault::IdNeverKnown) return {};
    return link_->KeyColumns(table);
  }
  bool TellsInsertedId(StringView table, StringView column) override {
    const auto fault = owner_.Come(kTells, table);
    owner_.Before(fault, dead_.get());
    if (fault == Fault::IdUnknown || owner_.idNeverKnown_) return false;
    return link_->TellsInsertedId(table, column);
  }
  std::int64_t LastInsertedId(StringView table, StringView column) override {
    const auto fault = owner_.Come(kId, table);
    owner_.Before(fault, dead_.get());
    if (fault == Fault::IdUnknown || owner_.idNeverKnown_) {
      throw Error(ErrorNumber::DriverFailure,
                  u"The database does not tell the id that it gave to the new row");
    }
    const std::int64_t id = link_->LastInsertedId(table, column);
    owner_.After(fault);
    return id;
  }
  bool Begin() override {
    owner_.Before(owner_.Come(kBegin, {}), dead_.get());
    inTransaction_ = link_->Begin();
    return inTransaction_;
  }
  void Commit() override {
    const auto fault = owner_.Come(kCommit, {});
    LoseTransaction();
    owner_.Before(fault, dead_.get());
    inTransaction_ = false;
    link_->Commit();
    owner_.After(fault);
  }
  void RollBack() override {
    LoseTransaction();
    owner_.Before(owner_.Come(kRollBack, {}), dead_.get());
    inTransaction_ = false;
    link_->RollBack();
  }

 private:
  /// A server undoes what a link that died had not committed.
  void LoseTransaction() {
    const bool dead = *dead_ || owner_.serverIsGone_;
    if (dead && std::exchange(inTransaction_, false)) link_->RollBack();
  }

  FaultyDriver& owner_;
  bool inTransaction_ = false;
  const std::function<std::unique_ptr<Link>(StringView)> open_;
  const std::shared_ptr<std::atomic<bool>> dead_ = std::make_shared<std::atomic<bool>>(false);
  std::unique_ptr<Link> link_;
};

std::unique_ptr<Link> FaultyDriver::Open(StringView connectionString, StringView user,
                                         StringView password) {
  const auto open = [this, connection = String(connectionString), name = String(user),
                     secret = String(password)](StringView text) -> std::unique_ptr<Link> {
    const auto fault = Come(kOpen, text);
    if (fault == Fault::NothingOpened) return nullptr;
    Before(fault, nullptr);
    auto link = driver_.Open(connection, name, secret);
    After(fault);
    return link;
  };
  auto link = std::make_unique<FaultyLink>(*this, open);
  // A fetch opens a link for one text, by which that opening is known.
  if (!IsUserThread()) return link;
  return link->OpenFor({}) ? std::move(link) : nullptr;
}

std::vector<DriverCall> FaultyDriver::Calls() const {
  const std::lock_guard lock(mutex_);
  std::vector<DriverCall> calls;
  for (const auto& [what, count] : calls_) {
    for (int which = 1; which <= count.Came; ++which) {
      calls.push_back({what, which, count.CanBeCancelled});
    }
  }
  return calls;
}

std::vector<Fault> FaultyDriver::FaultsOf(const DriverCall& call) {
  using enum Fault;
  const auto is = [&](StringView operation) { return StartsWith(call.What, operation); };
  if (is(kOpen)) {
    std::vector<Fault> faults = {ThrowsBefore, ThrowsAfter, ServerGoes, OutOfMemory, Foreign};
    if (call.What == ToUtf8(kOpen) + " ") faults.push_back(NothingOpened);
    return faults;
  }
  if (is(kPrepare)) return {ThrowsBefore, LinkDies, ServerGoes, OutOfMemory, Foreign};
  if (is(kExecute) || is(kFetch)) {
    std::vector<Fault> faults = {ThrowsBefore, ThrowsAfter, LinkDies, ServerGoes,
                                 Hangs,        OutOfMemory, Foreign};
    if (call.CanBeCancelled) faults.push_back(CancelHangs);
    if (StartsWith(call.What, u"Execute UPDATE")) faults.push_back(RowMissed);
    return faults;
  }
  if (is(kColumns)) return {ThrowsBefore, OutOfMemory};
  if (is(kCount)) return {ThrowsBefore, CountUnknown};
  if (is(kKey)) return {ThrowsBefore, LinkDies, IdUnknown, OutOfMemory};
  if (is(kId)) {
    return {ThrowsBefore, ThrowsAfter,  LinkDies,    ServerGoes,
            IdUnknown,    IdNeverKnown, OutOfMemory, Foreign};
  }
  if (is(kTells)) return {ThrowsBefore, LinkDies, IdUnknown, IdNeverKnown, OutOfMemory};
  if (is(kCommit)) {
    return {ThrowsBefore, ThrowsAfter, LinkDies, ServerGoes, OutOfMemory, Foreign};
  }
  return {ThrowsBefore, LinkDies, ServerGoes, OutOfMemory, Foreign};
}

void FaultyDriver::BeforeExecute(std::function<void(StringView text)> act) {
  const std::lock_guard lock(actMutex_);
  act_ = std::move(act);
}

void FaultyDriver::Arm(DriverCall call, Fault fault) {
  const std::lock_guard lock(mutex_);
  calls_.clear();
  armed_ = std::move(call);
  fault_ = fault;
  healing_ = fired_ = false;
}

void FaultyDriver::ArmAny(int call, unsigned way) {
  const std::lock_guard lock(mutex_);
  calls_.clear();
  armed_.reset();
  callsToCome_ = call;
  way_ = way;
  healing_ = fired_ = false;
}

void FaultyDriver::Heal() {
  {
    const std::lock_guard lock(mutex_);
    armed_.reset();
    callsToCome_ = 0;
    healing_ = true;
    serverIsGone_ = false;
    healed_.notify_all();
  }
  while (hanging_ > 0) std::this_thread::yield();  // or the next to look would find it so
}

std::optional<Fault> FaultyDriver::Come(StringView operation, StringView text) {
  if (!counting_) return std::nullopt;
  const FailingAllocations::Scope uncounted(false);
  const std::lock_guard lock(mutex_);
  const std::string what = ToUtf8(String(operation) + u" " + String(text));
  Count& count = calls_[what];
  const int which = ++count.Came;
  count.CanBeCancelled = !IsUserThread();
  if (callsToCome_ > 0 && IsUserThread() && --callsToCome_ == 0) {
    const auto faults = FaultsOf({what, which, count.CanBeCancelled});
    armed_ = {what, which, count.CanBeCancelled};
    fault_ = faults[way_ % faults.size()];
  }
  if (!armed_ || armed_->What != what || armed_->Which != which) return std::nullopt;
  armed_.reset();
  fired_ = true;
  if (fault_ == Fault::IdNeverKnown) idNeverKnown_ = true;
  return fault_;
}

void FaultyDriver::Before(std::optional<Fault> fault, std::atomic<bool>* linkIsDead) {
  if (fault == Fault::LinkDies && linkIsDead) *linkIsDead = true;
  if (fault == Fault::ServerGoes) serverIsGone_ = true;
  if (linkIsDead && (*linkIsDead || serverIsGone_)) {
    *linkIsDead = true;  // which it stays when the server is back
    throw Error(ErrorNumber::DriverFailure, u"The link was lost", u"FaultyDriver");
  }
  CheckServer();
  if (fault == Fault::ThrowsBefore) throw Broken();
  if (fault == Fault::OutOfMemory) throw std::bad_alloc();
  if (fault == Fault::Foreign) throw 42;
  if (fault == Fault::Hangs || fault == Fault::CancelHangs) {
    const bool cancelled = !IsUserThread();
    throw Error(cancelled ? ErrorNumber::CommandCancelled : ErrorNumber::TimedOut,
                u"The statement was given up", u"FaultyDriver");
  }
}

void FaultyDriver::After(std::optional<Fault> fault) {
  if (fault == Fault::ThrowsAfter) throw Broken();
}

void FaultyDriver::CheckServer() {
  if (serverIsGone_) {
    throw Error(ErrorNumber::DriverFailure, u"The server is gone", u"FaultyDriver");
  }
}

void FaultyDriver::Hang(const std::atomic<bool>& cancelled) {
  if (IsUserThread()) return;  // nobody can cancel there; the driver gives up by itself
  ++hanging_;
  std::unique_lock lock(mutex_);
  // Cancel only sets the flag: it is looked for.
  while (!cancelled && !healing_) healed_.wait_for(lock, std::chrono::milliseconds(1));
  --hanging_;
}

}  // namespace ktrv::tests
