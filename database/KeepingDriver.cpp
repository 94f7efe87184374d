#include "database/KeepingDriver.h"

#include <utility>

#include "database/Engines.h"
#include "database/KeptLink.h"

namespace ktrv::database {
namespace {

bool IsOnServer(Engine engine) {
  return engine == Engine::MySql || engine == Engine::PostgreSql || engine == Engine::SqlServer ||
         engine == Engine::Oracle;
}

}  // namespace

KeepingDriver::KeepingDriver(Driver& driver, std::chrono::milliseconds longest)
    : driver_(driver), store_(std::make_shared<LinkStore>(longest)) {}

KeepingDriver::~KeepingDriver() {
  CloseKept();
}

void KeepingDriver::CloseKept() noexcept {
  store_->Close();
}

std::unique_ptr<Link> KeepingDriver::Open(StringView connectionString, StringView user,
                                          StringView password) {
  store_->Open();
  LinkStore::Address address{connectionString, user, password};
  LinkStore::Found found = store_->Take(address);
  auto link = std::move(found.Unused);
  const bool isFresh = link && LinkStore::Clock::now() - found.Worked < kIdle;
  if (link && !isFresh && !Answers(*link)) {
    // The other links were opened before the server went down too.
    store_->Drop(address);
    link.reset();
  }
  if (!link) link = driver_.Open(connectionString, user, password);
  if (!link || !IsOnServer(link->EngineKind())) return link;
  return std::make_unique<KeptLink>(store_, std::move(address), std::move(link),
                                    isFresh ? found.Worked : LinkStore::Clock::now());
}

}  // namespace ktrv::database
