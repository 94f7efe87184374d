#pragma once

#include <vector>

#include "database/Types.h"
#include "tests/adoserver/ServerObject.h"
#include "windows/base/ComPtr.h"

namespace ktrv::adoserver {

class ParameterObject final : public ServerObject {
 public:
  static const IID kId;
  ParameterObject(String name, std::int32_t type, std::int32_t direction, std::int64_t size);

  const String& Name() const { return name_; }
  /// Whether all is said that its type needs.
  bool IsComplete() const;
  database::Parameter ForOdbc() const;
  /// Refuses a value that was never set.
  Variant ValueForOdbc() const;
  void SetValue(const VARIANT& value);

 protected:
  const IID& OwnId() const override { return kId; }

 private:
  String name_;
  std::int32_t type_;
  std::int64_t size_;
  Value value_;
};

class ParametersObject final : public ServerObject {
 public:
  static const IID kId;
  ParametersObject();

  const std::vector<windows::ComPtr<ParameterObject>>& All() const { return parameters_; }

 protected:
  const IID& OwnId() const override { return kId; }

 private:
  ParameterObject& Find(const Arguments& arguments) const;
  Value Append(const Arguments& arguments);

  std::vector<windows::ComPtr<ParameterObject>> parameters_;
};

}  // namespace ktrv::adoserver
