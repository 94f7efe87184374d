#pragma once

#include "tests/adoserver/RecordsetObject.h"

namespace ktrv::adoserver {

class FieldObject final : public ServerObject {
 public:
  static const IID kId;
  FieldObject(RecordsetObject& recordset, std::size_t column);

 protected:
  const IID& OwnId() const override { return kId; }

 private:
  const windows::ComPtr<RecordsetObject> recordset_;
};

class FieldsObject final : public ServerObject {
 public:
  static const IID kId;
  explicit FieldsObject(RecordsetObject& recordset);

 protected:
  const IID& OwnId() const override { return kId; }

 private:
  std::size_t Find(const Arguments& arguments) const;

  const windows::ComPtr<RecordsetObject> recordset_;
};

}  // namespace ktrv::adoserver
