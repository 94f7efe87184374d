#pragma once

#include <memory>

#include "database/Connection.h"
#include "database/SharedLink.h"

namespace ktrv::database {

/// A transaction on a link; rolled back by the destructor unless it was committed. Without support
/// by the engine, each statement is committed separately. A nested transaction is part of the outer
/// one, which decides on commit or rollback.
///
///   Transaction transaction(connection);
///   try {
///     ... commands and recordsets on the connection ...
///     transaction.Commit();
///   } catch (...) {
///     if (!transaction.RollBack()) ... outcome unknown: check the data before a retry
///     throw;
///   }
class Transaction {
 public:
  /// Uses the connection's link, which is not replaced until the end. \throws Error as LiveLink
  explicit Transaction(Connection& connection);
  explicit Transaction(std::shared_ptr<SharedLink> link);
  ~Transaction() { RollBack(); }
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  /// \throws Error; then RollBack returns false, because the outcome is unknown
  void Commit();

  /// Rolls back unless committed. \return whether it is certain that nothing is stored; false after
  /// a call of Commit, and if nothing can be rolled back
  bool RollBack() noexcept;

 private:
  enum class State { Standing, Part, Open, Undone, Ended };

  void Begin();

  std::shared_ptr<SharedLink> link_;
  Connection* connection_ = nullptr;
  State state_ = State::Standing;  ///< Standing: each statement is committed separately
};

}  // namespace ktrv::database
