#include "database/Transaction.h"

#include <utility>

namespace ktrv::database {

Transaction::Transaction(Connection& connection)
    : link_(connection.LiveLink()), connection_(&connection) {
  Begin();
}

Transaction::Transaction(std::shared_ptr<SharedLink> link) : link_(std::move(link)) {
  Begin();
}

void Transaction::Begin() {
  if (link_->InTransaction) {
    state_ = State::Part;
    return;
  }
  try {
    if (!link_->Get().Begin()) return;
  } catch (...) {
    // The transaction may have been started nevertheless.
    link_->Unusable = true;
    throw;
  }
  state_ = State::Open;
  link_->InTransaction = true;
}

void Transaction::Commit() {
  if (state_ == State::Open) {
    state_ = State::Ended;
    link_->InTransaction = false;
    try {
      link_->Get().Commit();
    } catch (...) {
      link_->Unusable = true;
      throw;
    }
    if (connection_) connection_->StatementWorked();
  }
  if (state_ == State::Standing) state_ = State::Ended;
}

bool Transaction::RollBack() noexcept {
  if (state_ == State::Open) {
    state_ = State::Ended;
    link_->InTransaction = false;
    try {
      link_->Get().RollBack();
      state_ = State::Undone;
    } catch (...) {
      link_->Unusable = true;
    }
  }
  return state_ == State::Undone;
}

}  // namespace ktrv::database
