#pragma once

#include <memory>
#include <ostream>

#include "tests/native/support/SqliteFile.h"
#include "tests/native/support/TestDispatcher.h"

namespace ktrv::tests {

/// A fresh database of one engine behind one driver, and how that engine spells what the suite
/// needs.
class TestDatabase {
 public:
  virtual ~TestDatabase() = default;
  virtual String ConnectionString() const = 0;
  virtual database::Driver& Driver() = 0;

  virtual String KeyColumn() const = 0;  ///< definition of a number ID that the engine assigns
  virtual String NumberType() const { return u"INTEGER"; }
  virtual String FractionType() const = 0;
  virtual String TextType() const { return u"VARCHAR(100)"; }
  virtual String LongTextType() const = 0;
  virtual String DateType() const = 0;

  /// Whether a statement that fails in the same way fails on this engine, too.
  virtual bool IsFile() const { return false; }
};

struct TestEngine {
  const char* Name;
  std::unique_ptr<TestDatabase> (*Create)();
};

inline void PrintTo(const TestEngine& engine, std::ostream* out) {
  *out << engine.Name;
}

}  // namespace ktrv::tests
