#pragma once

#include <istream>
#include <ostream>

namespace ktrv::tool {

/// How much of a JSON result a command has written.
enum class JsonPart {
  Nothing,
  Rows,     ///< of an array, without its end
  Members,  ///< of an object, with a comma at the end
};

/// Where a command writes and reads. All text is UTF-8 with line ends "\n".
struct Console {
  std::ostream& Out;           ///< results
  std::ostream& Messages;      ///< progress, findings about the run, errors
  std::istream& In;            ///< answers to questions
  bool IsInteractive = false;  ///< a person reads Messages and can answer questions
  bool Json = false;           ///< results as JSON
  /// If the command fails, its error completes them. Set by the command.
  JsonPart Written = JsonPart::Nothing;
};

}  // namespace ktrv::tool
