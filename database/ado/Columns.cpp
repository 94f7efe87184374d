#include "database/ado/Columns.h"

#include "database/ado/Constants.h"

namespace ktrv::database::ado {
namespace {

DataType TypeOf(const Object& field, std::int32_t type) {
  switch (type) {
    case AdoType::TinyInt:
    case AdoType::SmallInt:
    case AdoType::Integer:
    case AdoType::BigInt:
    case AdoType::UnsignedTinyInt:
    case AdoType::UnsignedSmallInt:
    case AdoType::UnsignedInt:
    case AdoType::UnsignedBigInt:
      return DataType::Integer;
    case AdoType::Decimal:
    case AdoType::Numeric:
    case AdoType::VarNumeric:
      return field.GetWhole(L"NumericScale") == 0 ? DataType::Integer : DataType::Double;
    case AdoType::Single:
    case AdoType::Double:
    case AdoType::Currency:
      return DataType::Double;
    case AdoType::Boolean:
      return DataType::Boolean;
    case AdoType::Date:
    case AdoType::DbDate:
    case AdoType::DbTimeStamp:
      return DataType::Date;
    case AdoType::Char:
    case AdoType::VarChar:
    case AdoType::LongVarChar:
      return DataType::VarChar;
    default:
      return DataType::VarWChar;
  }
}

}  // namespace

std::vector<Column> ColumnsOf(const Object& recordset) {
  const Object fields = recordset.Part(L"Fields");
  const auto count = static_cast<std::int32_t>(fields.GetWhole(L"Count"));
  std::vector<Column> columns;
  for (std::int32_t index = 0; index < count; ++index) {
    const Value place(index);
    const Object field = fields.Part(L"Item", {&place});
    Column column;
    column.Name = field.Get(L"Name").Text();
    column.Type = TypeOf(field, static_cast<std::int32_t>(field.GetWhole(L"Type")));
    const bool isLong = (field.GetWhole(L"Attributes") & kFieldIsLong) != 0;
    if (IsTextType(column.Type) && !isLong) column.Size = field.GetWhole(L"DefinedSize");
    columns.push_back(std::move(column));
  }
  return columns;
}

}  // namespace ktrv::database::ado
