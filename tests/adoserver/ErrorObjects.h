#pragma once

#include <vector>

#include "common/Error.h"
#include "tests/adoserver/ServerObject.h"
#include "windows/base/ComPtr.h"

namespace ktrv::adoserver {

/// One failure of the provider.
class ErrorObject final : public ServerObject {
 public:
  static const IID kId;
  explicit ErrorObject(const Error& error);

 protected:
  const IID& OwnId() const override { return kId; }
};

/// The failures of the provider in the last operation that failed.
class ErrorsObject final : public ServerObject {
 public:
  static const IID kId;
  ErrorsObject();

  /// Takes the place of those that were there.
  void Note(const Error& error);

 protected:
  const IID& OwnId() const override { return kId; }

 private:
  std::vector<windows::ComPtr<ErrorObject>> errors_;
};

}  // namespace ktrv::adoserver
