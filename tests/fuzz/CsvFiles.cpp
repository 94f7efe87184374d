#include <sstream>

#include "tests/fuzz/Input.h"
#include "tool/formats/CsvReader.h"

namespace ktrv::fuzz {
namespace {

using namespace tool;

std::vector<CsvRecord> Read(const std::string& bytes, Encoding encoding, char16_t delimiter) {
  std::istringstream stream(bytes);
  TextSource source(stream, encoding);
  CsvReader reader(source, delimiter);
  std::vector<CsvRecord> records;
  for (CsvRecord record; reader.Next(record);) records.push_back(record);
  return records;
}

/// The record, each field in quotation marks.
String Written(const CsvRecord& record) {
  String line;
  for (std::size_t field = 0; field < record.Count(); ++field) {
    line += field == 0 ? u"\"" : u";\"";
    for (const char16_t unit : record.Text(field))
      line += unit == u'"' ? String(2, unit) : String(1, unit);
    line += u'"';
  }
  return line + u"\r\n";
}

void Try(Input input) {
  const std::size_t form = input.Number(5);
  const char16_t delimiter = u"\0\0;,\t|"[input.Number(5)];
  const std::string bytes(input.Bytes());
  std::istringstream stream(bytes);
  const Encoding detected = DetectEncoding(stream);
  const auto records = Read(bytes, form < 4 ? static_cast<Encoding>(form) : detected, delimiter);
  std::int64_t line = 0;
  String again;
  for (const CsvRecord& record : records) {
    Demand(record.Line > line, "records begin on lines of their own");
    Demand(record.Count() > 0, "a record has a field");
    Demand(!record.Raw.empty(), "a record has a text");
    line = record.Line;
    again += Written(record);
  }
  if (HasInvalid(again)) return;
  // What was read can be written and is then read as the same.
  const auto same = Read("\xEF\xBB\xBF" + ToUtf8(again), Encoding::Utf8, u';');
  Demand(same.size() == records.size(), "as many records are read again");
  for (std::size_t at = 0; at < same.size(); ++at) {
    Demand(same[at].Problem.empty(), "a record that we write is well-formed");
    Demand(same[at].Count() == records[at].Count(), "as many fields are read again");
    for (std::size_t field = 0; field < same[at].Count(); ++field) {
      DemandEqual(same[at].Text(field), records[at].Text(field), "a field is read again");
    }
  }
}

}  // namespace
}  // namespace ktrv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ktrv::fuzz::Try(ktrv::fuzz::Input(data, size));
  return 0;
}
