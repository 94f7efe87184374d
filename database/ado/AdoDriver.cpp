#include "database/ado/AdoDriver.h"

#include "database/ado/AdoLink.h"

namespace ktrv::database {

std::unique_ptr<Link> AdoDriver::Open(StringView connectionString, StringView user,
                                      StringView password) {
  auto link = std::make_unique<ado::AdoLink>(connectionString, user, password);
  if (!link->IsOpen()) return nullptr;
  return link;
}

}  // namespace ktrv::database
