#include "tests/scripthost/PlayerObject.h"

#include <climits>
#include <utility>

#include "tests/scripthost/Console.h"
#include "tests/scripthost/Engine.h"
#include "tests/scripthost/MessagePump.h"
#include "tests/scripthost/ScriptFailure.h"

namespace ktrv::scripthost {

PlayerObject::PlayerObject(const std::wstring& script) : wscript_(script, {}) {
  Offer(L"Play", [this](const Arguments& arguments) -> Value {
    Play(arguments.Text(0));
    return {};
  });
  Offer(L"Wait", [this](const Arguments&) -> Value {
    Wait();
    return {};
  });
}

PlayerObject::~PlayerObject() {
  Wait();
}

void PlayerObject::Play(std::wstring text) {
  Wait();
  ended_ = false;
  thread_ = std::thread([this, text = std::move(text)] { Run(text); });
}

void PlayerObject::Run(const std::wstring& text) {
  OleInitialize(nullptr);
  std::wstring failure;
  try {
    Engine engine(L"JScript", {{L"WScript", &wscript_}, {L"Ui", &ui_}});
    failure = engine.Run(L"player", text);
  } catch (const ScriptFailure& thrown) {
    failure = thrown.description;
  }
  if (!failure.empty()) {
    // The script may stand in a dialog that now nobody will close.
    Console::PrintErrorLine(failure);
    ExitProcess(kScriptError);
  }
  OleUninitialize();
  ended_ = true;
}

void PlayerObject::Wait() {
  if (!thread_.joinable()) {
    return;
  }
  MessagePump::RunUntil([this] { return ended_.load(); }, ULONG_MAX);
  thread_.join();
}

}  // namespace ktrv::scripthost
