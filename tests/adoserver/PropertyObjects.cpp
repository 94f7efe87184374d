#include "tests/adoserver/PropertyObjects.h"

#include "tests/adoserver/Refusal.h"
#include "windows/base/ComPtr.h"

namespace ktrv::adoserver {

const IID PropertyObject::kId = {
    0x6a1f0c10, 0x93d2, 0x4b7e, {0xa1, 0x10, 0x5c, 0x2e, 0x11, 0x08, 0x77, 0x04}};
const IID PropertiesObject::kId = {
    0x6a1f0c10, 0x93d2, 0x4b7e, {0xa1, 0x10, 0x5c, 0x2e, 0x11, 0x08, 0x77, 0x05}};

PropertyObject::PropertyObject(const String& name, const String& value) {
  Property(L"Name", [name] { return Value(StringView(name)); });
  Property(L"Value", [value] { return Value(StringView(value)); });
}

PropertiesObject::PropertiesObject(std::vector<std::pair<String, String>> values) {
  Item([values = std::move(values)](const Arguments& arguments) {
    for (const auto& [name, value] : values) {
      if (!EqualsIgnoringCase(name, arguments.Text(0))) continue;
      const windows::ComPtr<PropertyObject> property(new PropertyObject(name, value));
      return Value(static_cast<IDispatch*>(property.Get()));
    }
    throw Refusal(ErrorNumber::ItemNotFound);
  });
}

}  // namespace ktrv::adoserver
