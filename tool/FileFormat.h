#pragma once

#include <memory>
#include <ostream>

#include "tool/ContactWriter.h"

namespace ktrv::tool {

enum class FileFormat { Csv, VCard3, VCard4, Json };

/// \param byteOrderMark a CSV file starts with one, which some spreadsheets need to recognise UTF-8
std::unique_ptr<ContactWriter> MakeWriter(FileFormat format, std::ostream& file,
                                          bool byteOrderMark);

}  // namespace ktrv::tool
