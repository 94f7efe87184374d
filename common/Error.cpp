#include "common/Error.h"

#include <new>
#include <utility>

namespace ktrv {

Error::Error(std::int32_t number, String description, String source, std::uint32_t lastSystemError)
    : number_(number),
      description_(std::move(description)),
      source_(std::move(source)),
      lastSystemError_(lastSystemError),
      what_(ToUtf8(description_)) {}

Error Error::Current() noexcept {
  try {
    throw;
  } catch (const Error& error) {
    return error;
  } catch (const std::bad_alloc&) {
    return Error(ErrorNumber::OutOfMemory, u"Out of memory");
  } catch (const std::exception& error) {
    return Error(ErrorNumber::InternalError, FromUtf8(error.what()));
  } catch (...) {
    return Error(ErrorNumber::InternalError, u"Internal error");
  }
}

}  // namespace ktrv
