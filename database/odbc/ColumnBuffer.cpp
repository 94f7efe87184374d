#include "database/odbc/ColumnBuffer.h"

#include <algorithm>

#include "common/Variant.h"
#include "database/Conversion.h"

namespace ktrv::database::odbc {
namespace {

constexpr std::size_t kChunkUnits = 4096;

DateTime Moment(const SQL_TIMESTAMP_STRUCT& timestamp) {
  const std::chrono::year_month_day day{std::chrono::year(timestamp.year),
                                        std::chrono::month(timestamp.month),
                                        std::chrono::day(timestamp.day)};
  return DateTime(std::chrono::local_days(day)) + std::chrono::hours(timestamp.hour) +
         std::chrono::minutes(timestamp.minute) + std::chrono::seconds(timestamp.second) +
         std::chrono::milliseconds(timestamp.fraction / 1'000'000);  // nanoseconds
}

bool IsAscii(std::string_view bytes) {
  unsigned char all = 0;
  for (const char byte : bytes) all |= static_cast<unsigned char>(byte);
  return all < 0x80;
}

}  // namespace

ColumnBuffer::ColumnBuffer(SQLUSMALLINT number, Form form, std::size_t units)
    : number_(number), form_(form), text_(form == Form::Text && units > 0 ? units + 1 : 0) {}

void ColumnBuffer::Bind(SQLHANDLE statement, const Dialogue& dialogue) {
  if (!IsBound()) return;
  SQLRETURN result = SQL_SUCCESS;
  switch (form_) {
    case Form::Text:
      // The driver would convert each cell, slower than it is done here.
      isUtf8_ = dialogue.Utf8;
      result = SQLBindCol(statement, number_, isUtf8_ ? SQL_C_CHAR : SQL_C_WCHAR, text_.data(),
                          static_cast<SQLLEN>(text_.size() * sizeof(char16_t)), &length_);
      break;
    case Form::Double:
      result = SQLBindCol(statement, number_, SQL_C_DOUBLE, &double_, sizeof double_, &length_);
      break;
    case Form::Timestamp:
      result = SQLBindCol(statement, number_, SQL_C_TYPE_TIMESTAMP, &timestamp_, sizeof timestamp_,
                          &length_);
      break;
  }
  Checked(result, SQL_HANDLE_STMT, statement, dialogue);
}

void ColumnBuffer::AddTo(RowBlock& block, SQLHANDLE statement, const Dialogue& dialogue) {
  if (!IsBound()) return AddInFull(block, statement, dialogue);
  if (length_ == SQL_NULL_DATA) return block.AddNull();
  if (form_ == Form::Double) return block.Add(*CellTextOf(double_));
  if (form_ == Form::Timestamp) return block.Add(*CellTextOf(Moment(timestamp_)));
  if (isUtf8_) {
    if (!AddUtf8(block)) AddInFull(block, statement, dialogue);
    return;
  }
  const auto room = static_cast<SQLLEN>((text_.size() - 1) * sizeof(char16_t));
  // Check the length: not all drivers also return a warning for truncated text.
  if (length_ < 0 || length_ > room) return AddInFull(block, statement, dialogue);
  block.Add({text_.data(), static_cast<std::size_t>(length_) / sizeof(char16_t)});
}

/// \return false if the text is truncated or no valid UTF-8, which the driver may have made from
/// unpaired surrogates and can convert back
bool ColumnBuffer::AddUtf8(RowBlock& block) {
  const auto room = static_cast<SQLLEN>(text_.size() * sizeof(char16_t) - 1);
  if (length_ < 0 || length_ > room) return false;
  const std::string_view bytes(reinterpret_cast<const char*>(text_.data()),
                               static_cast<std::size_t>(length_));
  if (IsAscii(bytes)) {
    block.AddAscii(bytes);
    return true;
  }
  const String text = FromUtf8(bytes);
  if (text.find(u'\xFFFD') != String::npos) return false;
  block.Add(text);
  return true;
}

void ColumnBuffer::AddInFull(RowBlock& block, SQLHANDLE statement, const Dialogue& dialogue) {
  String text;
  std::vector<char16_t> chunk(kChunkUnits);
  for (;;) {
    SQLLEN length = 0;
    const SQLRETURN result =
        Checked(SQLGetData(statement, number_, SQL_C_WCHAR, chunk.data(),
                           static_cast<SQLLEN>(chunk.size() * sizeof(char16_t)), &length),
                SQL_HANDLE_STMT, statement, dialogue);
    if (result == SQL_NO_DATA) break;
    if (length == SQL_NULL_DATA) return block.AddNull();
    const std::size_t room = chunk.size() - 1;  // the last unit is the terminating zero
    const bool unknown = length == SQL_NO_TOTAL;
    const std::size_t units = unknown ? room : static_cast<std::size_t>(length) / sizeof(char16_t);
    text.append(chunk.data(), std::min(units, room));
    if (!unknown && units <= room) break;
    if (!unknown) chunk.resize(units - room + 1);
  }
  block.Add(text);
}

}  // namespace ktrv::database::odbc
