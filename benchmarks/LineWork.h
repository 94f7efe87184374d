#pragma once

#include <string>

namespace ktrv::benchmarks {

/// Measures what each task of a user takes at the end of a line, and prints its turns and its time
/// at several lengths of the line. \param connection string of an address book on a server on this
/// machine, whose rows are replaced by others
void MeasureLineWork(const std::string& connection);

}  // namespace ktrv::benchmarks
