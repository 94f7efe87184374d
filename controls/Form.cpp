#include "controls/Form.h"

#include <algorithm>
#include <utility>

#include "controls/Control.h"

namespace ktrv::controls {

Form::Form(Screen& screen, Design design) : screen_(screen), design_(std::move(design)) {}

Form::~Form() {
  // Members of derived forms, the controls and their peers, are destroyed already.
  self_.reset();
}

void Form::Load() {
  if (loaded_) return;
  if (!peer_) peer_ = screen_.Realise(*this);
  loaded_ = true;
  try {
    Form_Load();
  } catch (...) {
    Unload();
    throw;
  }
}

void Form::Show() {
  const Stay stay(*this);  // its host may run a message loop when it loses the activation
  Load();
  if (!loaded_) return;  // Form_Load has unloaded it
  if (!std::exchange(visible_, true)) Form_Resize();
  if (loaded_ && peer_) peer_->Show();
}

void Form::ShowModal() {
  Load();
  if (!loaded_) return;
  visible_ = true;
  Form_Resize();
  if (!loaded_ || !peer_) return;
  modal_ = true;
  peer_->ShowModal();
  modal_ = false;
  // The modal loop has ended, so no event handler of the form is running.
  Unload();
  TearDown();
}

void Form::Unload() {
  if (!loaded_ || unloading_) return;
  unloading_ = true;
  try {
    Form_QueryUnload();
  } catch (...) {
    unloading_ = false;
    throw;
  }
  unloading_ = false;
  loaded_ = false;
  visible_ = false;
  pointer_ = MousePointer::Default;
  if (!peer_) return;
  peer_->Hide();
  if (modal_) return;
  // The caller may be an event of a peer. Let it return before the peer is destroyed.
  PostTearDown();
}

void Form::PostTearDown() {
  screen_.Post([form = std::weak_ptr<Form*>(self_)] {
    const auto self = form.lock();
    if (self && !(*self)->loaded_ && (*self)->stays_ == 0) (*self)->TearDown();
  });
}

Form::Stay::Stay(Form& form) : form_(form) {
  ++form_.stays_;
}

Form::Stay::~Stay() {
  // The windows of a modal form are destroyed after its loop.
  if (--form_.stays_ > 0 || form_.loaded_ || form_.modal_ || !form_.peer_) return;
  try {
    form_.PostTearDown();
  } catch (...) {
    // Out of memory: the hidden windows stay until the form is shown again or destroyed.
  }
}

Form::Wait::Wait(Form& form) : form_(form), formerPointer_(form.pointer_) {
  form_.SetPointer(MousePointer::Hourglass);
}

Form::Wait::~Wait() {
  try {
    form_.SetPointer(formerPointer_);
  } catch (...) {
    // A failure of the job is more important than the pointer shape.
  }
}

Form::Work::Work(Form& form, CommandButton& stop) : form_(form), wait_(form) {
  form_.stop_ = &stop;
  form_.stopped_ = false;
}

Form::Work::~Work() {
  try {
    // The user may have stopped it again before he saw that it stops. That must not close the form.
    if (form_.stopped_ && form_.peer_) form_.peer_->TakeInput();
  } catch (...) {
    // A failure of the job is more important.
  }
  form_.stop_ = nullptr;
}

bool Form::Work::IsToStop() {
  if (form_.peer_) form_.peer_->TakeInput();
  return form_.stopped_;
}

void Form::TearDown() {
  for (Control* control : controls_) control->Unrealise();
  peer_.reset();
}

void Form::SetCaption(String caption) {
  design_.Caption = std::move(caption);
  if (peer_) peer_->CaptionChanged();
}

void Form::Resize(int width, int height) {
  if (width == design_.Width && height == design_.Height) return;
  design_.Width = width;
  design_.Height = height;
  if (peer_) peer_->SizeChanged();
  if (visible_) Form_Resize();
}

void Form::SetPointer(MousePointer pointer) {
  if (pointer == pointer_) return;
  pointer_ = pointer;
  if (peer_) peer_->PointerChanged();
}

const Form::Shortcut* Form::ShortcutOf(std::int16_t keyCode, std::int16_t shift) const {
  const auto found = std::find_if(Shortcuts.begin(), Shortcuts.end(), [&](const Shortcut& each) {
    return each.KeyCode == keyCode && each.Shift == shift && (!each.When || each.When());
  });
  return found == Shortcuts.end() ? nullptr : &*found;
}

void Form::UserPresses(std::int16_t keyCode, std::int16_t shift) {
  if (!loaded_ || IsWorking()) return;
  if (const Shortcut* shortcut = ShortcutOf(keyCode, shift)) shortcut->Run();
}

void Form::UserResizes(int width, int height) {
  if (width == design_.Width && height == design_.Height) return;
  design_.Width = width;
  design_.Height = height;
  if (visible_) Form_Resize();
}

}  // namespace ktrv::controls
