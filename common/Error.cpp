#include "common/Error.h"

#include <new>
#include <utility>

namespace ktrv {
namespace {

const String kNoText;

StringView UsualText(std::int32_t number) {
  switch (number) {
    case ErrorNumber::InvalidProcedureCall:
      return u"Invalid procedure call or argument";
    case ErrorNumber::Overflow:
      return u"Overflow";
    case ErrorNumber::OutOfMemory:
      return u"Out of memory";
    case ErrorNumber::SubscriptOutOfRange:
      return u"Subscript out of range";
    case ErrorNumber::TypeMismatch:
      return u"Type mismatch";
    case ErrorNumber::InternalError:
      return u"Internal error";
    case ErrorNumber::ObjectNotSet:
      return u"Object variable or With block variable not set";
    case ErrorNumber::InvalidUseOfNull:
      return u"Invalid use of Null";
    case ErrorNumber::InvalidPropertyValue:
      return u"Invalid property value";
    case ErrorNumber::ElementNotFound:
      return u"Element not found";
    default:
      return {};
  }
}

/// The exception being handled, as an Error. \throws std::bad_alloc
Error Describe() {
  try {
    throw;
  } catch (const Error& error) {
    return error;
  } catch (const std::bad_alloc&) {
    return Error(ErrorNumber::OutOfMemory);
  } catch (const std::exception& error) {
    return Error(ErrorNumber::InternalError, FromUtf8(error.what()));
  } catch (...) {
    return Error(ErrorNumber::InternalError);
  }
}

}  // namespace

struct Error::Texts {
  String Description;
  String Source;
  std::string Utf8;
};

Error::Error(std::int32_t number, String description, String source, std::uint32_t lastSystemError)
    : number_(number), lastSystemError_(lastSystemError) {
  std::string utf8 = ToUtf8(description);
  texts_ = std::make_shared<const Texts>(
      Texts{std::move(description), std::move(source), std::move(utf8)});
}

Error::Error(std::int32_t number) : Error(number, String(UsualText(number))) {}

Error::Error() noexcept : number_(ErrorNumber::OutOfMemory) {}

Error Error::Current() noexcept {
  try {
    return Describe();
  } catch (...) {
    return Error();
  }
}

const String& Error::Description() const noexcept {
  return texts_ ? texts_->Description : kNoText;
}

const String& Error::Source() const noexcept {
  return texts_ ? texts_->Source : kNoText;
}

const char* Error::what() const noexcept {
  return texts_ ? texts_->Utf8.c_str() : "";
}

}  // namespace ktrv
