#include "tests/native/longdays/OdbcHandles.h"

#include <sql.h>

#include <atomic>
#include <dlfcn.h>

namespace ktrv::tests {
namespace {

std::atomic<int> environments = 0;
std::atomic<int> connections = 0;
std::atomic<int> statements = 0;
std::atomic<bool> anyWasMade = false;

void Count(SQLSMALLINT kind, int difference) {
  if (kind == SQL_HANDLE_ENV) environments += difference;
  if (kind == SQL_HANDLE_DBC) connections += difference;
  if (kind == SQL_HANDLE_STMT) statements += difference;
}

template <class Function>
Function Next(Function, const char* name) {
  return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

}  // namespace

OdbcHandles OdbcHandles::Alive() {
  return {environments, connections, statements};
}

bool OdbcHandles::AnyWasMade() {
  return anyWasMade;
}

std::ostream& operator<<(std::ostream& out, const OdbcHandles& handles) {
  return out << handles.Environments << " environments, " << handles.Connections << " connections, "
             << handles.Statements << " statements";
}

}  // namespace ktrv::tests

// Defined in the program, these two come before those of the driver manager.

extern "C" SQLRETURN SQL_API SQLAllocHandle(SQLSMALLINT kind, SQLHANDLE from, SQLHANDLE* made) {
  static const auto next = ktrv::tests::Next(&SQLAllocHandle, "SQLAllocHandle");
  const SQLRETURN result = next(kind, from, made);
  if (SQL_SUCCEEDED(result)) {
    ktrv::tests::anyWasMade = true;
    ktrv::tests::Count(kind, 1);
  }
  return result;
}

extern "C" SQLRETURN SQL_API SQLFreeHandle(SQLSMALLINT kind, SQLHANDLE handle) {
  static const auto next = ktrv::tests::Next(&SQLFreeHandle, "SQLFreeHandle");
  const SQLRETURN result = next(kind, handle);
  if (SQL_SUCCEEDED(result)) ktrv::tests::Count(kind, -1);
  return result;
}
