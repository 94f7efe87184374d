#pragma once

#include <memory>
#include <vector>

#include "database/Driver.h"

namespace ktrv::database {

class PreparedStatement;

/// The open link of a connection, with its prepared statements. Other users hold it by weak_ptr, so
/// that closing the connection ends the session.
class SharedLink : public std::enable_shared_from_this<SharedLink> {
 public:
  explicit SharedLink(std::unique_ptr<Link> link) : link_(std::move(link)) {}

  Link& Get() const { return *link_; }

  /// Inside a transaction the link must not be replaced: the following statements would be stored
  /// without the preceding ones.
  bool InTransaction = false;

  /// A transaction could not be ended, so later statements might never be committed.
  bool Unusable = false;

  PreparedStatement Prepare(StringView text, std::span<const Parameter> parameters);

 private:
  friend class PreparedStatement;
  void Drop(const Statement* statement);

  std::unique_ptr<Link> link_;
  std::vector<std::unique_ptr<Statement>> statements_;  // after link_: destroyed before it
};

/// A handle of a statement on a SharedLink. Valid as long as the link exists.
class PreparedStatement {
 public:
  PreparedStatement() = default;
  PreparedStatement(const std::shared_ptr<SharedLink>& link, Statement& statement)
      : link_(link), statement_(&statement) {}
  ~PreparedStatement() { Release(); }
  PreparedStatement(PreparedStatement&& other) noexcept;
  PreparedStatement& operator=(PreparedStatement&& other) noexcept;

  /// Null if the link is closed or there is no statement.
  Statement* Get() const { return link_.expired() ? nullptr : statement_; }

  /// Whether the statement belongs to this link and both are alive.
  bool IsOn(const std::shared_ptr<SharedLink>& link) const { return Get() && link_.lock() == link; }

 private:
  void Release();

  std::weak_ptr<SharedLink> link_;
  Statement* statement_ = nullptr;
};

}  // namespace ktrv::database
