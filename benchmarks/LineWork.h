#pragma once

#include <string>

namespace ktrv::benchmarks {

/// Measures each task of a user over a network connection with several delays. Prints its round
/// trips and times. \param connection string of an address book on a local server, whose rows will
/// be replaced
void MeasureLineWork(const std::string& connection);

}  // namespace ktrv::benchmarks
