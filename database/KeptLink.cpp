#include "database/KeptLink.h"

#include <utility>

#include "common/ScopeExit.h"
#include "database/SqlTokenizer.h"

namespace ktrv::database {
namespace {

/// Whether the statement changes rows only, not session settings.
bool ChangesRowsAlone(StringView text) {
  for (const SqlToken& token : TokenizeSql(text)) {
    if (token.KindOf == SqlToken::Kind::Space) continue;
    const auto is = [&](StringView word) { return EqualsIgnoringCase(token.Text, word); };
    return is(u"SELECT") || is(u"INSERT") || is(u"UPDATE") || is(u"DELETE");
  }
  return false;
}

}  // namespace

template <class Work>
decltype(auto) KeptLink::Run(Work&& work) {
  try {
    return work();
  } catch (...) {
    asOpened_ = false;
    throw;
  }
}

template <class Work>
decltype(auto) KeptLink::Reach(Work&& work) {
  return Run([&]() -> decltype(auto) {
    const ScopeExit reached([&] { worked_ = LinkStore::Clock::now(); });
    return work();
  });
}

/// A statement that reports failures and cancels to its link.
class KeptLink::Watched final : public Statement {
 public:
  Watched(KeptLink& link, std::unique_ptr<Statement> statement)
      : link_(link), statement_(std::move(statement)) {}

  void Execute(std::span<const Variant> values) override {
    link_.Reach([&] { statement_->Execute(values); });
  }
  bool ExecuteAll(std::span<const std::vector<Variant>> rows) override {
    return link_.Reach([&] { return statement_->ExecuteAll(rows); });
  }
  void LiftTimeLimit() override { statement_->LiftTimeLimit(); }
  const std::vector<Column>& Columns() const override { return statement_->Columns(); }
  std::int64_t RowsAffected() const override { return statement_->RowsAffected(); }
  std::unique_ptr<RowBlock> Fetch(std::size_t rows) override {
    return link_.Reach([&] { return statement_->Fetch(rows); });
  }
  void Cancel() noexcept override {
    link_.asOpened_ = false;  // some engines handle it late and would cancel the next statement
    statement_->Cancel();
  }

 private:
  KeptLink& link_;
  std::unique_ptr<Statement> statement_;
};

KeptLink::KeptLink(std::shared_ptr<LinkStore> store, LinkStore::Address address,
                   std::unique_ptr<Link> link, LinkStore::Clock::time_point worked)
    : store_(std::move(store)),
      address_(std::move(address)),
      facts_(store_->FactsOf(address_)),
      link_(std::move(link)),
      worked_(worked) {}

KeptLink::~KeptLink() {
  if (!asOpened_ || inTransaction_) return;
  try {
    store_->Keep(address_, std::move(link_), worked_);
  } catch (...) {
    // The link is closed instead.
  }
}

std::unique_ptr<Statement> KeptLink::Prepare(StringView text,
                                             std::span<const Parameter> parameters) {
  if (!ChangesRowsAlone(text)) asOpened_ = false;
  return Run([&] { return std::make_unique<Watched>(*this, link_->Prepare(text, parameters)); });
}

std::vector<String> KeptLink::KeyColumns(StringView table) {
  return Run([&] { return facts_->KeyColumns(*link_, table); });
}

bool KeptLink::TellsInsertedId(StringView table, StringView column) {
  return Run([&] { return facts_->TellsInsertedId(*link_, table, column); });
}

std::int64_t KeptLink::LastInsertedId(StringView table, StringView column) {
  return Run([&] { return link_->LastInsertedId(table, column); });
}

bool KeptLink::Begin() {
  inTransaction_ = Run([&] { return link_->Begin(); });
  return inTransaction_;
}

void KeptLink::Commit() {
  Reach([&] { link_->Commit(); });
  inTransaction_ = false;
}

bool KeptLink::SetMark() {
  return Run([&] { return link_->SetMark(); });
}

void KeptLink::RollBackToMark() {
  Run([&] { link_->RollBackToMark(); });
}

void KeptLink::RollBack() {
  Reach([&] { link_->RollBack(); });
  inTransaction_ = false;
}

}  // namespace ktrv::database
