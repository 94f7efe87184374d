#pragma once

#include "tests/contract/TestDatabase.h"
#include "tests/native/support/SqliteFile.h"

namespace ktrv::tests {

class SqliteDatabase final : public TestDatabase {
 public:
  /// Waits a minute for another writer: on a busy machine that is no failure.
  String ConnectionString() const override { return file_.ConnectionString() + u";Timeout=60000"; }
  database::Driver& Driver() override { return driver_; }
  StringView KeyColumn() const override { return u"ID INTEGER PRIMARY KEY AUTOINCREMENT"; }
  StringView EndlessQuery() const override {
    return u"WITH RECURSIVE N(I) AS (SELECT 1 UNION ALL SELECT I + 1 FROM N) "
           u"SELECT COUNT(*) AS TOTAL FROM N";
  }

 private:
  SqliteFile file_;
  database::OdbcDriver driver_;
};

}  // namespace ktrv::tests
