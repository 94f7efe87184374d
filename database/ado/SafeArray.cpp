#include "database/ado/SafeArray.h"

#include <cstdint>
#include <new>

#include "common/Error.h"

namespace ktrv::database::ado {
namespace {

/// Locked access to the elements of an array of VARIANTs.
class Elements {
 public:
  explicit Elements(SAFEARRAY* array) : array_(array) {
    if (FAILED(SafeArrayAccessData(array, reinterpret_cast<void**>(&data_)))) {
      throw Error(ErrorNumber::DriverFailure, u"The rows cannot be read", u"ADODB");
    }
  }
  ~Elements() { SafeArrayUnaccessData(array_); }
  Elements(const Elements&) = delete;
  Elements& operator=(const Elements&) = delete;

  VARIANT& operator[](std::size_t index) const { return data_[index]; }

 private:
  SAFEARRAY* array_;
  VARIANT* data_ = nullptr;
};

std::size_t Count(SAFEARRAY* array, UINT dimension) {
  LONG first = 0;
  LONG last = -1;
  SafeArrayGetLBound(array, dimension, &first);
  SafeArrayGetUBound(array, dimension, &last);
  return static_cast<std::size_t>(std::int64_t{last} - first + 1);
}

}  // namespace

Value ArrayOf(std::initializer_list<Value> values) {
  Value array;
  SAFEARRAY* const made = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(values.size()));
  if (!made) throw std::bad_alloc();
  V_VT(&array.Raw()) = VT_ARRAY | VT_VARIANT;
  V_ARRAY(&array.Raw()) = made;
  const Elements elements(made);
  std::size_t index = 0;
  for (const Value& value : values) {
    if (FAILED(VariantCopy(&elements[index++], const_cast<VARIANT*>(&value.Raw()))))
      throw std::bad_alloc();
  }
  return array;
}

std::unique_ptr<RowBlock> RowsOf(const Value& array, std::size_t columns) {
  const VARIANT& raw = array.Raw();
  SAFEARRAY* const cells = V_VT(&raw) == (VT_ARRAY | VT_VARIANT) ? V_ARRAY(&raw) : nullptr;
  if (!cells || SafeArrayGetDim(cells) != 2 || Count(cells, 1) != columns) {
    throw Error(ErrorNumber::DriverFailure, u"The rows came in an unknown form", u"ADODB");
  }
  const std::size_t rows = Count(cells, 2);
  auto block = std::make_unique<RowBlock>(columns, rows);
  const Elements elements(cells);
  for (std::size_t cell = 0; cell < rows * columns; ++cell) {  // the cells of a row are contiguous
    if (cell % columns == 0) block->BeginRow();
    const VARIANT& value = elements[cell];
    if (V_VT(&value) == VT_BSTR) {
      block->Add({reinterpret_cast<const char16_t*>(V_BSTR(&value)), SysStringLen(V_BSTR(&value))});
    } else if (const auto text = CellTextOf(value)) {
      block->Add(*text);
    } else {
      block->AddNull();
    }
  }
  block->Finish();
  return block;
}

}  // namespace ktrv::database::ado
