#pragma once

#include <istream>
#include <ostream>

namespace ktrv::tool {

/// Where a command writes and reads. All text is UTF-8 with line ends "\n".
struct Console {
  std::ostream& Out;           ///< results
  std::ostream& Messages;      ///< progress, findings about the run, errors
  std::istream& In;            ///< answers to questions
  bool IsInteractive = false;  ///< a person reads Messages and can answer questions
  bool Json = false;           ///< results as JSON
};

}  // namespace ktrv::tool
