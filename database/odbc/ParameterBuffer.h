#pragma once

#include "database/Driver.h"
#include "database/odbc/Native.h"

namespace ktrv::database::odbc {

/// The text as the engine's driver can take it. \throws Error when it can take none of it
String TextForDriver(String text, Engine engine, const Dialogue& dialogue);

/// One value on its way into a statement, in the form that the driver reads.
class ParameterBuffer {
 public:
  /// Binds the value; the buffer must stay where it is until the statement was executed.
  /// \param number from 1. \throws Error
  void Bind(SQLHANDLE statement, SQLUSMALLINT number, const Parameter& parameter,
            const Variant& value, Engine engine, const Dialogue& dialogue);

 private:
  SQLRETURN BindText(SQLHANDLE statement, SQLUSMALLINT number, const Parameter& parameter,
                     String text);

  String text_;
  SQLBIGINT integer_ = 0;
  SQLINTEGER narrowInteger_ = 0;
  double double_ = 0;
  unsigned char truth_ = 0;
  SQL_TIMESTAMP_STRUCT timestamp_ = {};
  SQLLEN length_ = 0;
};

}  // namespace ktrv::database::odbc
