#pragma once

#include <memory>
#include <vector>

#include "database/Driver.h"

namespace ktrv::database {

class PreparedStatement;

/// The open link of a connection, with the statements that are prepared on it. Who only uses the
/// link holds it weakly, so that closing the connection really ends the session.
class SharedLink : public std::enable_shared_from_this<SharedLink> {
 public:
  explicit SharedLink(std::unique_ptr<Link> link) : link_(std::move(link)) {}

  Link& Get() const { return *link_; }

  /// Between the beginning of a transaction and its end nothing may put another link in this one's
  /// place: what follows would be stored without what came before.
  bool InTransaction = false;

  /// A transaction on it could not be ended: what would run on it next might never be stored.
  bool Unusable = false;

  PreparedStatement Prepare(StringView text, std::span<const Parameter> parameters);

 private:
  friend class PreparedStatement;
  void Drop(const Statement* statement);

  std::unique_ptr<Link> link_;
  std::vector<std::unique_ptr<Statement>> statements_;  // behind the link: they go before it
};

/// A statement that lasts as long as this handle and the link both do.
class PreparedStatement {
 public:
  PreparedStatement() = default;
  PreparedStatement(const std::shared_ptr<SharedLink>& link, Statement& statement)
      : link_(link), statement_(&statement) {}
  ~PreparedStatement() { Release(); }
  PreparedStatement(PreparedStatement&& other) noexcept;
  PreparedStatement& operator=(PreparedStatement&& other) noexcept;

  /// Null when the link is closed, or there never was one.
  Statement* Get() const { return link_.expired() ? nullptr : statement_; }

  /// Whether it was prepared on this link.
  bool IsOn(const std::shared_ptr<SharedLink>& link) const { return Get() && link_.lock() == link; }

 private:
  void Release();

  std::weak_ptr<SharedLink> link_;
  Statement* statement_ = nullptr;
};

}  // namespace ktrv::database
