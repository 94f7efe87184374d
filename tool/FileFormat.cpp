#include "tool/FileFormat.h"

#include "tool/CsvWriter.h"
#include "tool/JsonWriter.h"
#include "tool/VCardWriter.h"

namespace ktrv::tool {

std::unique_ptr<ContactWriter> MakeWriter(FileFormat format, std::ostream& file,
                                          bool byteOrderMark) {
  switch (format) {
    case FileFormat::Csv:
      return std::make_unique<CsvWriter>(file, byteOrderMark);
    case FileFormat::VCard3:
      return std::make_unique<VCardWriter>(file, VCardWriter::Version::Three);
    case FileFormat::VCard4:
      return std::make_unique<VCardWriter>(file, VCardWriter::Version::Four);
    case FileFormat::Json:
      break;
  }
  return std::make_unique<JsonWriter>(file);
}

}  // namespace ktrv::tool
