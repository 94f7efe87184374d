#pragma once

#include <list>
#include <memory>

#include "database/Canceller.h"
#include "database/Driver.h"
#include "database/LimitedCalls.h"
#include "database/TimeLimits.h"

namespace ktrv::database {

/// A link with time limits. After an abandoned call all other calls fail at once.
class LimitedLink final : public Link {
 public:
  LimitedLink(std::shared_ptr<LimitedCalls> calls, TimeLimits limits, std::unique_ptr<Link> link);
  ~LimitedLink() override;

  std::unique_ptr<Statement> Prepare(StringView text,
                                     std::span<const Parameter> parameters) override;
  Engine EngineKind() const override { return engine_; }
  std::vector<String> KeyColumns(StringView table) override;
  bool TellsInsertedId(StringView table, StringView column) override;
  std::int64_t LastInsertedId(StringView table, StringView column) override;
  bool Begin() override;
  void Commit() override;
  void RollBack() override;
  bool SetMark() override;
  void RollBackToMark() override;

 private:
  class Limited;

  /// A statement and its canceller.
  struct Held {
    ~Held() { Cancelling->End(); }

    std::unique_ptr<Statement> Of;
    std::shared_ptr<Canceller> Cancelling = std::make_shared<Canceller>();
  };
  /// The objects that an abandoned call keeps alive.
  struct Session {
    std::unique_ptr<Link> Of;
    std::list<Held> Statements;  // after the link: they are destroyed first
  };

  /// Runs the work, which must own what it uses. \param late called at the limit. \throws Error
  /// TimedOut if the work was abandoned
  template <class Work>
  auto Call(std::chrono::milliseconds limit, Work work, const std::function<void()>& late = {});
  template <class Work>
  auto Ask(Work work);

  const std::shared_ptr<LimitedCalls> calls_;
  const TimeLimits limits_;
  const Engine engine_;
  std::shared_ptr<Session> session_;  // null after an abandoned call
};

}  // namespace ktrv::database
