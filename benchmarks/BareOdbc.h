#pragma once

#include <sql.h>

#include <string>

namespace ktrv::benchmarks {

/// A plain ODBC connection.
class BareOdbc {
 public:
  /// \throws std::runtime_error
  explicit BareOdbc(const std::string& connectionString);
  ~BareOdbc();
  BareOdbc(const BareOdbc&) = delete;
  BareOdbc& operator=(const BareOdbc&) = delete;

  /// Allocates a statement, which the connection frees. \throws std::runtime_error
  SQLHANDLE NewStatement();

  /// Statements are committed by Commit only. \throws std::runtime_error
  void CommitByHand();
  void Commit();

  /// \throws std::runtime_error(what) if the call failed
  static SQLRETURN Succeed(SQLRETURN result, const char* what);

 private:
  SQLHANDLE environment_ = nullptr;
  SQLHANDLE connection_ = nullptr;
};

}  // namespace ktrv::benchmarks
