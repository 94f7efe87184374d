#pragma once

#include "tests/adoserver/ConnectionObject.h"
#include "tests/adoserver/ParameterObjects.h"

namespace ktrv::adoserver {

/// ADODB.Command.
class CommandObject final : public ServerObject {
 public:
  static const IID kId;
  CommandObject();

 protected:
  const IID& OwnId() const override { return kId; }

 private:
  void SetConnection(const Arguments& arguments);
  Value CreateParameter(const Arguments& arguments);
  Value Execute(const Arguments& arguments);
  void RefuseUnlessReady() const;
  std::shared_ptr<Cursor> NewCursor() const;

  windows::ComPtr<ConnectionObject> connection_;
  const windows::ComPtr<ParametersObject> parameters_{new ParametersObject};
  String text_;
  std::int32_t type_;
  std::int32_t timeout_ = 30;
  bool prepared_ = false;
};

}  // namespace ktrv::adoserver
