#include "tests/native/support/ScriptedScreen.h"

#include <stdexcept>
#include <utility>

#include "common/Logger.h"
#include "controls/Form.h"

namespace ktrv::tests {
namespace {

template <class Item>
std::optional<Item> Next(std::deque<Item>& script) {
  if (script.empty()) return std::nullopt;
  Item item = std::move(script.front());
  script.pop_front();
  return item;
}

}  // namespace

class ScriptedScreen::ScriptedWindow final : public controls::FormPeer {
 public:
  ScriptedWindow(ScriptedScreen& screen, controls::Form& form) : screen_(screen), form_(form) {
    screen_.Log.push_back("realise");
  }
  ~ScriptedWindow() override { screen_.Log.push_back("gone"); }

  void CaptionChanged() override { screen_.Log.push_back("caption"); }
  void SizeChanged() override { screen_.Log.push_back("size"); }
  void PointerChanged() override {
    const bool busy = form_.Pointer() == controls::MousePointer::Hourglass;
    screen_.Log.push_back(busy ? "hourglass" : "default");
  }
  void Show() override {
    screen_.Log.push_back("show");
    if (const auto happens = std::exchange(screen_.WhileShown, {})) happens(form_);
  }
  void ShowModal() override {
    screen_.Log.push_back("modal");
    const auto play = Next(screen_.plays_);
    if (!play) throw std::logic_error("a form was shown modally that the test did not expect");
    (*play)(form_);
    if (form_.IsLoaded() && !screen_.HostQuits)
      throw std::logic_error("the test left a modal form open");
  }
  void Hide() override {
    screen_.Log.push_back("hide");
    if (const auto happens = std::exchange(screen_.WhileHidden, {})) happens(form_);
  }
  void TakeInput() override {
    if (screen_.HostQuits) form_.UserStops();
    if (screen_.WhileWorking) screen_.WhileWorking(form_);
  }

 private:
  ScriptedScreen& screen_;
  controls::Form& form_;
};

ScriptedScreen::ScriptedScreen() = default;
ScriptedScreen::~ScriptedScreen() = default;

std::unique_ptr<controls::FormPeer> ScriptedScreen::Realise(controls::Form& form) {
  if (RealiseFailure) throw *RealiseFailure;
  return std::make_unique<ScriptedWindow>(*this, form);
}

std::int16_t ScriptedScreen::ShowMessage(StringView text, StringView title, std::int32_t style) {
  Messages.push_back({String(text), String(title), style});
  if (const auto happens = Next(happenings_)) (*happens)();
  return Next(answers_).value_or(MessageAnswer::Ok);
}

void ScriptedScreen::ShowMenu(controls::Form&, controls::Menu& menu, std::optional<Point> at) {
  ShownMenu shown{{}, at};
  for (const controls::MenuItem& item : menu.Items) {
    if (item.Visible) shown.Names.push_back(item.Name);
  }
  Menus.push_back(std::move(shown));
  if (const auto happens = Next(menuHappenings_)) (*happens)();
  const String choice = Next(choices_).value_or(String());
  if (choice.empty()) return;
  controls::MenuItem* item = menu.Find(choice);
  if (!item || !item->Visible) throw std::logic_error("the menu does not show the chosen item");
  if (item->Enabled && item->Click) item->Click();
}

}  // namespace ktrv::tests
