#pragma once

#include "tests/contract/TestDatabase.h"
#include "tests/native/support/DatabaseServer.h"

namespace ktrv::tests {

class MariaDbDatabase final : public TestDatabase {
 public:
  String ConnectionString() const override { return database_.ConnectionString(); }
  database::Driver& Driver() override { return database_.Driver(); }
  StringView KeyColumn() const override { return u"ID INTEGER AUTO_INCREMENT PRIMARY KEY"; }
  StringView LongTextType() const override { return u"LONGTEXT"; }
  StringView DateType() const override { return u"DATETIME(3)"; }
  StringView EndlessQuery() const override {
    return u"SELECT COUNT(*) AS TOTAL FROM seq_1_to_1000000 A, seq_1_to_1000000 B";
  }
  bool IsRunning(StringView statement) override { return database_.IsRunning(statement); }

 private:
  ServerDatabase database_{ServerKind::MariaDb};
};

}  // namespace ktrv::tests
