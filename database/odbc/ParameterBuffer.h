#pragma once

#include "database/Driver.h"
#include "database/odbc/Native.h"

namespace ktrv::database::odbc {

/// Prepares a text for the engine's driver. \throws Error DataConversion if the driver cannot send
/// it
String TextForDriver(String text, Engine engine, const Dialogue& dialogue);

/// The date and time in the form that drivers read.
SQL_TIMESTAMP_STRUCT TimestampOf(DateTime moment);

/// The value of one parameter, in the form that the driver reads.
class ParameterBuffer {
 public:
  /// Binds the value. The buffer must not move until the statement is executed. \param number
  /// 1-based. \throws Error
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
