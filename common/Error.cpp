#include "common/Error.h"

#include <new>
#include <utility>

namespace ktrv {
namespace {

const String kNoText;

constexpr std::pair<std::int32_t, StringView> kUsualTexts[] = {
    {ErrorNumber::InvalidProcedureCall, u"Invalid procedure call or argument"},
    {ErrorNumber::Overflow, u"Overflow"},
    {ErrorNumber::OutOfMemory, u"Out of memory"},
    {ErrorNumber::SubscriptOutOfRange, u"Subscript out of range"},
    {ErrorNumber::TypeMismatch, u"Type mismatch"},
    {ErrorNumber::InternalError, u"Internal error"},
    {ErrorNumber::ObjectNotSet, u"Object variable or With block variable not set"},
    {ErrorNumber::InvalidUseOfNull, u"Invalid use of Null"},
    {ErrorNumber::InvalidPropertyValue, u"Invalid property value"},
    {ErrorNumber::ElementNotFound, u"Element not found"},
};

String UsualText(std::int32_t number) {
  for (const auto& [known, text] : kUsualTexts) {
    if (known == number) return String(text);
  }
  return {};
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

Error::Error(std::int32_t number) : Error(number, UsualText(number)) {}

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
