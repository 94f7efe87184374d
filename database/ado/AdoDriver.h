#pragma once

#include "database/Driver.h"

namespace ktrv::database {

/// Opens links through ADO, so it supports all OLE DB providers. Stateless and thread-safe.
///
/// ADO objects belong to the apartment that created them, and their calls cannot be interrupted
/// from another thread. A link on a thread with COM, such as the host's, uses that apartment and
/// makes synchronous calls. A link on a thread without COM, such as a fetching thread, creates its
/// own apartment. There statements are executed asynchronously by ADO, so that Cancel can stop
/// them; the number of affected rows is not available then. In both cases Cancel also stops
/// fetching before the next block.
class AdoDriver final : public Driver {
 public:
  std::unique_ptr<Link> Open(StringView connectionString, StringView user,
                             StringView password) override;
};

}  // namespace ktrv::database
