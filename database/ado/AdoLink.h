#pragma once

#include <map>

#include "database/Driver.h"
#include "database/ado/Apartment.h"
#include "database/ado/Object.h"

namespace ktrv::database::ado {

/// A session through ADO. Use it only on the thread that created it.
class AdoLink final : public Link {
 public:
  /// Opens the session. \throws Error
  AdoLink(StringView connectionString, StringView user, StringView password);
  ~AdoLink() override;

  bool IsOpen() const;

  std::unique_ptr<Statement> Prepare(StringView text,
                                     std::span<const Parameter> parameters) override;
  Engine EngineKind() const override { return engine_; }
  std::vector<String> KeyColumns(StringView table) override;
  bool TellsInsertedId(StringView table, StringView column) override;
  std::int64_t LastInsertedId(StringView table, StringView column) override;
  bool Begin() override;
  void Commit() override;
  void RollBack() override;

  const Object& Connection() const { return connection_; }
  const Apartment& Surroundings() const { return apartment_; }

  /// \throws Error the first error in ADO's Errors collection since ForgetFailures
  void PassUnlessFailed() const;
  void ForgetFailures() const;

 private:
  Engine AskEngine() const;
  std::vector<String> AskKeyColumns(StringView table) const;

  Apartment apartment_;  // first, so that it is destroyed after all COM objects
  Object connection_;
  Engine engine_ = Engine::Other;
  std::map<String, std::vector<String>> keyColumns_;  // cache by table
};

}  // namespace ktrv::database::ado
