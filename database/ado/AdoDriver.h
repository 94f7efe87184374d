#pragma once

#include "database/Driver.h"

namespace ktrv::database {

/// Opens links through ADO, so with every OLE DB provider. Has no state, so one object serves any
/// number of threads.
///
/// ADO's objects belong to the apartment that made them. A link made on a thread with COM, such as
/// the host's, uses that apartment and works as a script would: each call is done when it returns,
/// and Cancel tells between blocks. A link made on a thread without COM, such as one that fetches,
/// brings an apartment of its own; statements run there in the background of ADO, and Cancel ends
/// them. How many rows they change is then not told.
class AdoDriver final : public Driver {
 public:
  std::unique_ptr<Link> Open(StringView connectionString, StringView user,
                             StringView password) override;
};

}  // namespace ktrv::database
