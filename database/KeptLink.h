#pragma once

#include <atomic>
#include <memory>

#include "database/LinkStore.h"

namespace ktrv::database {

/// A link that is returned to the store when it is destroyed, if it is unchanged since opening.
class KeptLink final : public Link {
 public:
  /// \param worked when the link was last known to be alive
  KeptLink(std::shared_ptr<LinkStore> store, LinkStore::Address address, std::unique_ptr<Link> link,
           LinkStore::Clock::time_point worked);
  ~KeptLink() override;

  std::unique_ptr<Statement> Prepare(StringView text,
                                     std::span<const Parameter> parameters) override;
  Engine EngineKind() const override { return link_->EngineKind(); }
  std::vector<String> KeyColumns(StringView table) override;
  bool TellsInsertedId(StringView table, StringView column) override;
  std::int64_t LastInsertedId(StringView table, StringView column) override;
  bool Begin() override;
  void Commit() override;
  void RollBack() override;
  bool SetMark() override;
  void RollBackToMark() override;

 private:
  class Watched;

  /// Runs an operation. After a failure the state of the link is unknown.
  template <class Work>
  decltype(auto) Run(Work&& work);
  /// The same for an operation that the server has answered when it returns.
  template <class Work>
  decltype(auto) Reach(Work&& work);

  std::shared_ptr<LinkStore> store_;
  LinkStore::Address address_;
  std::shared_ptr<LinkFacts> facts_;
  std::unique_ptr<Link> link_;
  std::atomic<bool> asOpened_ = true;  ///< atomic: Cancel is called on another thread
  bool inTransaction_ = false;
  LinkStore::Clock::time_point worked_;
};

}  // namespace ktrv::database
