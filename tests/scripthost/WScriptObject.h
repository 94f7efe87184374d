#pragma once

#include <string>
#include <vector>

#include "tests/scripthost/ScriptObject.h"

namespace ktrv::scripthost {

/// The arguments of the command line, as scripts read them: by number, Count or length.
class ArgumentList final : public ScriptObject {
 public:
  explicit ArgumentList(std::vector<std::wstring> values);

  /// Throws ScriptFailure when there is none.
  Value Item(LONG index) const;

 private:
  std::vector<std::wstring> values_;
};

/// The object that every script finds as WScript: Echo, Sleep, Quit, CreateObject, Arguments and
/// ScriptFullName. Unlike Windows' own under Wine, Sleep handles the thread's messages, so that
/// modeless windows live while a script waits.
class WScriptObject final : public ScriptObject {
 public:
  WScriptObject(std::wstring script, std::vector<std::wstring> arguments);

 private:
  ArgumentList arguments_;
};

}  // namespace ktrv::scripthost
