#include "tests/adoserver/ErrorObjects.h"

#include "tests/adoserver/Refusal.h"

namespace ktrv::adoserver {

const IID ErrorObject::kId = {
    0x6a1f0c10, 0x93d2, 0x4b7e, {0xa1, 0x10, 0x5c, 0x2e, 0x11, 0x08, 0x77, 0x01}};
const IID ErrorsObject::kId = {
    0x6a1f0c10, 0x93d2, 0x4b7e, {0xa1, 0x10, 0x5c, 0x2e, 0x11, 0x08, 0x77, 0x02}};

ErrorObject::ErrorObject(const Error& error) {
  Property(L"Number", [number = error.Number()] { return Value(number); });
  Property(L"Description", [text = error.Description()] { return Value(StringView(text)); });
  Property(L"Source", [text = error.Source()] { return Value(StringView(text)); });
}

ErrorsObject::ErrorsObject() {
  Property(L"Count", [this] { return Value(static_cast<std::int32_t>(errors_.size())); });
  Item([this](const Arguments& arguments) {
    const auto index = static_cast<std::size_t>(arguments.Number(0));
    if (index >= errors_.size()) throw Refusal(ErrorNumber::ItemNotFound);
    return Value(static_cast<IDispatch*>(errors_[index].Get()));
  });
  Method(L"Clear", 0, 0, [this](const Arguments&) {
    errors_.clear();
    return Value();
  });
}

void ErrorsObject::Note(const Error& error) {
  errors_.clear();
  errors_.emplace_back(new ErrorObject(error));
}

}  // namespace ktrv::adoserver
