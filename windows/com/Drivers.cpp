#include "windows/com/Drivers.h"

namespace ktrv::windows {

database::Driver& Drivers::For(StringView /*connectionString*/) {
  return odbc_;
}

}  // namespace ktrv::windows
