#include "tests/adoserver/FieldObjects.h"

#include "database/ado/Constants.h"
#include "tests/adoserver/Conversions.h"
#include "tests/adoserver/Refusal.h"

namespace ktrv::adoserver {

const IID FieldObject::kId = {
    0x6a1f0c10, 0x93d2, 0x4b7e, {0xa1, 0x10, 0x5c, 0x2e, 0x11, 0x08, 0x77, 0x0a}};
const IID FieldsObject::kId = {
    0x6a1f0c10, 0x93d2, 0x4b7e, {0xa1, 0x10, 0x5c, 0x2e, 0x11, 0x08, 0x77, 0x0b}};

FieldObject::FieldObject(RecordsetObject& recordset, std::size_t column)
    : recordset_(windows::ComPtr<RecordsetObject>::Share(&recordset)) {
  const auto described = [this, column]() -> const database::Column& {
    return recordset_->Opened().Columns()[column];
  };
  Property(L"Name", [described] { return Value(StringView(described().Name)); });
  Property(L"Type", [described] { return Value(FieldType(described())); });
  Property(L"DefinedSize", [described] {
    constexpr std::int32_t kWithoutLimit = 0x3FFFFFFF;
    const std::int64_t size = described().Size;
    return Value(size > 0 ? static_cast<std::int32_t>(size) : kWithoutLimit);
  });
  Property(L"Attributes", [described] {
    const bool isLong = database::IsTextType(described().Type) && described().Size == 0;
    return Value(isLong ? database::ado::kFieldIsLong : std::int32_t{0});
  });
  Property(L"NumericScale", [] { return Value(std::int32_t{0}); });
  Property(L"Value", [this, described, column] {
    return FieldValue(described(), recordset_->OnRow().Cell(column), recordset_->EngineKind());
  });
}

FieldsObject::FieldsObject(RecordsetObject& recordset)
    : recordset_(windows::ComPtr<RecordsetObject>::Share(&recordset)) {
  Property(L"Count", [this] {
    return Value(static_cast<std::int32_t>(recordset_->Opened().Columns().size()));
  });
  Item([this](const Arguments& arguments) {
    const windows::ComPtr<FieldObject> field(new FieldObject(*recordset_.Get(), Find(arguments)));
    return Value(static_cast<IDispatch*>(field.Get()));
  });
}

std::size_t FieldsObject::Find(const Arguments& arguments) const {
  const auto& columns = recordset_->Opened().Columns();
  const bool byName = V_VT(&arguments.At(0)) == VT_BSTR;
  for (std::size_t index = 0; index < columns.size(); ++index) {
    const bool found = byName ? EqualsIgnoringCase(columns[index].Name, arguments.Text(0))
                              : static_cast<std::int32_t>(index) == arguments.Number(0);
    if (found) return index;
  }
  throw Refusal(ErrorNumber::ItemNotFound);
}

}  // namespace ktrv::adoserver
