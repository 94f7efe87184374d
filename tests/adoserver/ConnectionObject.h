#pragma once

#include <memory>
#include <vector>

#include "database/odbc/OdbcLink.h"
#include "tests/adoserver/Cursor.h"
#include "tests/adoserver/ErrorObjects.h"

namespace ktrv::adoserver {

/// ADODB.Connection over ODBC: the provider "MSDASQL", which is also the one that a connection
/// string without a provider gets.
class ConnectionObject final : public ServerObject {
 public:
  static const IID kId;
  ConnectionObject();
  ~ConnectionObject() override;

  bool IsOpen() const { return link_ != nullptr; }
  /// \pre IsOpen()
  database::Engine EngineKind() const { return link_->EngineKind(); }
  /// Whether a text runs in the background; notes the failure of one that has just ended.
  bool IsExecuting();

  /// A cursor for the text, which ends with the connection. \pre IsOpen()
  std::shared_ptr<Cursor> NewCursor(const String& text, std::vector<database::Parameter> parameters,
                                    std::vector<Variant> values);

  /// Runs what asks the provider; its failure is noted in Errors as well.
  template <class Action>
  void Provide(Action&& action) {
    try {
      action();
    } catch (const Error& error) {
      errors_->Note(error);
      throw;
    }
  }

 protected:
  const IID& OwnId() const override { return kId; }

 private:
  Value Open(const Arguments& arguments);
  Value Close();
  Value Cancel();
  Value BeginTrans();
  Value EndTrans(bool commit);
  Value OpenSchema(const Arguments& arguments);
  void RefuseUnlessOpen() const;

  const windows::ComPtr<ErrorsObject> errors_{new ErrorsObject};
  String text_;
  std::unique_ptr<database::odbc::OdbcLink> link_;
  bool inTransaction_ = false;
  std::vector<std::weak_ptr<Cursor>> cursors_;
};

}  // namespace ktrv::adoserver
