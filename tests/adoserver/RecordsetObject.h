#pragma once

#include "tests/adoserver/ConnectionObject.h"

namespace ktrv::adoserver {

/// ADODB.Recordset as executing gives it: forward only, read only, on the server.
class RecordsetObject final : public ServerObject {
 public:
  static const IID kId;
  RecordsetObject(ConnectionObject& connection, std::shared_ptr<Cursor> cursor);
  ~RecordsetObject() override;

  /// The cursor of rows that are there. Refuses while it is closed or still executing.
  Cursor& Opened();
  /// The same on a row. Refuses at the end.
  Cursor& OnRow();
  database::Engine EngineKind() const { return connection_->EngineKind(); }

 protected:
  const IID& OwnId() const override { return kId; }

 private:
  std::int32_t State();
  Value GetRows(const Arguments& arguments);
  Value NextRecordset(const Arguments& arguments);

  const windows::ComPtr<ConnectionObject> connection_;
  std::shared_ptr<Cursor> cursor_;
};

}  // namespace ktrv::adoserver
