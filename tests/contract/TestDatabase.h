#pragma once

#include <memory>
#include <ostream>
#include <vector>

#include "database/Driver.h"

namespace ktrv::tests {

/// A fresh database of one engine behind one driver, and how that engine spells what the suite
/// needs. To have another engine pass the suite, derive from this and name it in Engines().
class TestDatabase {
 public:
  virtual ~TestDatabase() = default;
  virtual String ConnectionString() const = 0;
  virtual database::Driver& Driver() = 0;

  virtual StringView KeyColumn() const = 0;  ///< definition of a number ID that the engine assigns
  virtual StringView NumberType() const { return u"INTEGER"; }
  virtual StringView FractionType() const { return u"DOUBLE PRECISION"; }
  virtual StringView TextType() const { return u"VARCHAR(100)"; }
  virtual StringView LongTextType() const { return u"TEXT"; }
  virtual StringView DateType() const { return u"TIMESTAMP"; }

  /// A query of one column that runs for much longer than any test.
  virtual StringView EndlessQuery() const = 0;

  /// Whether a session of the database is at work on the statement. Always true where the engine
  /// cannot tell.
  virtual bool IsRunning(StringView) { return true; }
  /// Whether a statement can be cancelled while the engine works on it.
  virtual bool CanBeCancelled() const { return true; }
  /// Ends the sessions of everybody who uses the database.
  virtual void EndSessions() {}
};

struct TestEngine {
  const char* Name;
  std::unique_ptr<TestDatabase> (*Create)();
};

/// The engines that this machine has.
std::vector<TestEngine> Engines();

inline void PrintTo(const TestEngine& engine, std::ostream* out) {
  *out << engine.Name;
}

}  // namespace ktrv::tests
