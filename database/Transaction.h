#pragma once

#include <memory>

#include "database/Connection.h"
#include "database/SharedLink.h"

namespace ktrv::database {

/// Makes the statements that run on a link while this lives one: all of them are stored, or none.
/// Where the engine has no transactions each stands alone, as without this. One that begins within
/// another is part of it, and leaves the end to that one.
///
///   Transaction transaction(connection);
///   try {
///     ... commands and recordsets on the connection ...
///     transaction.Commit();
///   } catch (...) {
///     if (!transaction.RollBack()) ... nobody knows what is stored: look before it is done again
///     throw;
///   }
class Transaction {
 public:
  /// On the connection's link, which is not replaced until the end. \throws Error as LiveLink
  explicit Transaction(Connection& connection);
  explicit Transaction(std::shared_ptr<SharedLink> link);
  ~Transaction() { RollBack(); }
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  /// \throws Error after which RollBack tells that nobody knows what is stored
  void Commit();

  /// Undoes everything since the beginning, unless it is committed. \return whether it is certain
  /// that nothing is stored: not when Commit was called, nor where nothing can be undone.
  bool RollBack() noexcept;

 private:
  enum class State { Standing, Part, Open, Undone, Ended };

  void Begin();

  std::shared_ptr<SharedLink> link_;
  Connection* connection_ = nullptr;
  State state_ = State::Standing;  ///< each statement for itself
};

}  // namespace ktrv::database
