#pragma once

#include "database/Driver.h"

namespace ktrv::database {

/// Opens links through ADO, so with every OLE DB provider. Has no state, so one object serves any
/// number of threads.
///
/// ADO's objects belong to the apartment that made them, and their calls cannot be interrupted from
/// outside. A link made on a thread with COM, such as the host's, uses that apartment and works as
/// a script would: each call is done when it returns. A link made on a thread without COM, such as
/// one that fetches, brings an apartment of its own; texts are executed there in ADO's background,
/// so that Cancel ends them, and how many rows they change is not told. Everywhere Cancel also
/// stops the reading of rows before their next block.
class AdoDriver final : public Driver {
 public:
  std::unique_ptr<Link> Open(StringView connectionString, StringView user,
                             StringView password) override;
};

}  // namespace ktrv::database
