#include "tests/adoserver/ParameterObjects.h"

#include <utility>

#include "tests/adoserver/Conversions.h"
#include "tests/adoserver/Refusal.h"

namespace ktrv::adoserver {

const IID ParameterObject::kId = {
    0x6a1f0c10, 0x93d2, 0x4b7e, {0xa1, 0x10, 0x5c, 0x2e, 0x11, 0x08, 0x77, 0x06}};
const IID ParametersObject::kId = {
    0x6a1f0c10, 0x93d2, 0x4b7e, {0xa1, 0x10, 0x5c, 0x2e, 0x11, 0x08, 0x77, 0x07}};

ParameterObject::ParameterObject(String name, std::int32_t type, std::int32_t direction,
                                 std::int64_t size)
    : name_(std::move(name)), type_(type), size_(size) {
  Property(L"Name", [this] { return Value(StringView(name_)); });
  Property(L"Type", [this] { return Value(type_); });
  Property(L"Direction", [direction] { return Value(direction); });
  Property(L"Size", [this] { return Value(static_cast<std::int32_t>(size_)); });
  Property(
      L"Value",
      [this] {
        Value copy;
        VariantCopy(&copy.Raw(), &value_.Raw());
        return copy;
      },
      [this](const Arguments& arguments) { SetValue(arguments.At(0)); });
}

bool ParameterObject::IsComplete() const {
  return IsParameterType(type_) && (size_ > 0 || !IsVariableLength(type_));
}

database::Parameter ParameterObject::ForOdbc() const {
  return {name_, DataTypeOf(type_), IsVariableLength(type_) ? size_ : 0};
}

Variant ParameterObject::ValueForOdbc() const {
  return adoserver::ForOdbc(value_, type_);
}

void ParameterObject::SetValue(const VARIANT& value) {
  value_ = Coerced(value, type_, size_);
}

ParametersObject::ParametersObject() {
  Property(L"Count", [this] { return Value(static_cast<std::int32_t>(parameters_.size())); });
  Item([this](const Arguments& arguments) {
    return Value(static_cast<IDispatch*>(&Find(arguments)));
  });
  Method(L"Append", 1, 1, [this](const Arguments& arguments) { return Append(arguments); });
}

ParameterObject& ParametersObject::Find(const Arguments& arguments) const {
  const bool byName = V_VT(&arguments.At(0)) == VT_BSTR;
  for (std::size_t index = 0; index < parameters_.size(); ++index) {
    const bool found = byName ? EqualsIgnoringCase(parameters_[index]->Name(), arguments.Text(0))
                              : static_cast<std::int32_t>(index) == arguments.Number(0);
    if (found) return *parameters_[index].Get();
  }
  throw Refusal(ErrorNumber::ItemNotFound);
}

Value ParametersObject::Append(const Arguments& arguments) {
  auto* const added = OwnObject<ParameterObject>(arguments.Object(0));
  if (!added) throw Refusal(ErrorNumber::InvalidArgument);
  if (!added->IsComplete()) throw Refusal(kInvalidParameter);
  for (const auto& each : parameters_) {
    if (each.Get() == added) throw Refusal(kObjectInCollection);
  }
  parameters_.push_back(windows::ComPtr<ParameterObject>::Share(added));
  return Value();
}

}  // namespace ktrv::adoserver
