#include "tests/scripthost/WScriptObject.h"

#include <utility>

#include "tests/scripthost/Console.h"
#include "tests/scripthost/MessagePump.h"
#include "tests/scripthost/ScriptFailure.h"

namespace ktrv::scripthost {
namespace {

Value Echo(const Arguments& arguments) {
  std::wstring line;
  for (size_t index = 0; index < arguments.Count(); ++index) {
    line += (index == 0 ? L"" : L" ") + arguments.Text(index);
  }
  Console::PrintLine(line);
  return {};
}

Value Sleep(const Arguments& arguments) {
  MessagePump::RunUntil([] { return false; }, static_cast<unsigned long>(arguments.Number(0)));
  return {};
}

Value CreateObject(const Arguments& arguments) {
  const std::wstring name = arguments.Text(0);
  CLSID id;
  IDispatch* object = nullptr;
  HRESULT result = CLSIDFromProgID(name.c_str(), &id);
  if (SUCCEEDED(result)) {
    result = CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER,
                              IID_IDispatch, reinterpret_cast<void**>(&object));
  }
  if (FAILED(result)) {
    throw ScriptFailure{L"Cannot create " + name};
  }
  Value value(object);
  object->Release();
  return value;
}

}  // namespace

ArgumentList::ArgumentList(std::vector<std::wstring> values) : values_(std::move(values)) {
  const auto count = [this](const Arguments&) { return Value(static_cast<LONG>(values_.size())); };
  Offer(L"Item", [this](const Arguments& arguments) { return Item(arguments.Number(0)); });
  Offer(L"Count", count);
  Offer(L"length", count);
}

Value ArgumentList::Item(LONG index) const {
  if (index < 0 || static_cast<size_t>(index) >= values_.size()) {
    throw ScriptFailure{L"There is no argument " + std::to_wstring(index)};
  }
  return Value(values_[static_cast<size_t>(index)]);
}

WScriptObject::WScriptObject(std::wstring script, std::vector<std::wstring> arguments)
    : arguments_(std::move(arguments)) {
  Offer(L"Echo", Echo);
  Offer(L"Sleep", Sleep);
  Offer(L"CreateObject", CreateObject);
  Offer(L"Arguments", [this](const Arguments& passed) {
    return passed.Count() == 0 ? Value(&arguments_) : arguments_.Item(passed.Number(0));
  });
  Offer(L"ScriptFullName",
        [script = std::move(script)](const Arguments&) { return Value(script); });
  Offer(L"Quit", [](const Arguments& passed) -> Value {
    // No error handling of the script may survive it.
    ExitProcess(static_cast<UINT>(passed.Number(0, 0)));
  });
}

}  // namespace ktrv::scripthost
