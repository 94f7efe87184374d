#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "common/Text.h"
#include "controls/Geometry.h"
#include "controls/Input.h"
#include "controls/Screen.h"

namespace ktrv::controls {

class CommandButton;
class Control;

/// The window of a form. Created by the Screen when the form is loaded.
class FormPeer {
 public:
  virtual ~FormPeer() = default;

  virtual void CaptionChanged() = 0;
  virtual void SizeChanged() = 0;
  virtual void PointerChanged() = 0;
  /// Shows the window in front with the focus and returns.
  virtual void Show() = 0;
  /// Shows the window and disables the other windows of the thread. Returns after Hide.
  virtual void ShowModal() = 0;
  /// Hides the window at once and ends ShowModal. The window is destroyed, or shown again, when no
  /// event handler of the form is running.
  virtual void Hide() = 0;
  /// Called during Form::Work: paints the windows of the thread and processes pending input. A
  /// press of the stop button or the window's close button calls Form::UserStops; all other input
  /// is discarded. Other messages stay in the queue, so no event handlers run.
  virtual void TakeInput() = 0;
};

/// A dialog or window. On the first Show it is loaded: its window and the peers of its controls are
/// created, then Form_Load, then Form_Resize run, then it is shown. It is unloaded by Unload or the
/// close button, also from its own event handlers. Then it is hidden at once, and its peers are
/// destroyed later, when none of them is in use. A form with a Form_QueryUnload must call Unload in
/// its destructor.
class Form {
 public:
  struct Design {
    String Caption{};
    int Width = 0;  ///< inner size in twips
    int Height = 0;
    bool Resizable = false;
    int MinimumWidth = 0;  ///< minimum inner size in twips
    int MinimumHeight = 0;
  };

  Form(Screen& screen, Design design);
  virtual ~Form();
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  /// Loads the form if necessary, shows it and returns. If it is shown already, brings it to the
  /// front.
  void Show();
  /// Loads the form and shows it modally without an owner. Returns after it is unloaded.
  void ShowModal();
  /// Creates the window and runs Form_Load without showing it.
  void Load();
  /// Runs Form_QueryUnload and hides the window. No effect if the form is not loaded or is being
  /// unloaded.
  void Unload();
  bool IsLoaded() const { return loaded_; }
  bool IsVisible() const { return visible_; }
  /// Whether it is unloaded, its window is destroyed and no Stay exists.
  bool IsGone() const { return !loaded_ && !peer_ && stays_ == 0; }

  const Design& Layout() const { return design_; }
  const String& Caption() const { return design_.Caption; }
  void SetCaption(String caption);
  int ScaleWidth() const { return design_.Width; }
  int ScaleHeight() const { return design_.Height; }
  /// Changes the inner size, in twips.
  void Resize(int width, int height);
  /// Changes the minimum inner width, in twips. Does not make a narrower form wider.
  void SetMinimumWidth(int width) { design_.MinimumWidth = width; }

  MousePointer Pointer() const { return pointer_; }
  void SetPointer(MousePointer pointer);

  Screen& Display() const { return screen_; }
  const std::vector<Control*>& Controls() const { return controls_; }

  /// Delays the destruction of an unloaded form's peers until the object is destroyed. For event
  /// handlers in which a message box or dialog runs a nested message loop.
  class Stay {
   public:
    explicit Stay(Form& form);
    ~Stay();
    Stay(const Stay&) = delete;
    Stay& operator=(const Stay&) = delete;

   private:
    Form& form_;
  };

  /// Shows the hourglass during its lifetime.
  class Wait {
   public:
    explicit Wait(Form& form);
    ~Wait();
    Wait(const Wait&) = delete;
    Wait& operator=(const Wait&) = delete;

   private:
    Form& form_;
    const MousePointer formerPointer_;
  };

  /// A job that blocks the thread. During its lifetime the form shows the hourglass and accepts
  /// only a press of the stop button, by mouse, access key or Escape. Closing the window has the
  /// same effect.
  class Work {
   public:
    /// \param stop a button of the form; both must outlive the work.
    Work(Form& form, CommandButton& stop);
    ~Work();
    Work(const Work&) = delete;
    Work& operator=(const Work&) = delete;

    /// Repaints and processes input. Call it several times per second. \return whether the work
    /// must stop
    bool IsToStop();

   private:
    Form& form_;
    Wait wait_;
  };
  bool IsWorking() const { return stop_ != nullptr; }
  /// The stop button of the running work; null without work.
  CommandButton* StopButton() const { return stop_; }
  /// The user or the end of the host stops the work. No effect without work.
  void UserStops() { stopped_ = true; }

  /// A key of the form that works whichever control has the focus.
  struct Shortcut {
    std::int16_t KeyCode = 0;
    std::int16_t Shift = ShiftMask::None;  ///< exactly these modifier keys
    std::function<void()> Run;
    std::function<bool()> When{};  ///< whether it works now; empty: always
    bool Repeats = false;          ///< also works repeatedly while the key is held down
  };
  /// In order of precedence.
  std::vector<Shortcut> Shortcuts;
  /// The shortcut that this key has now; null if it has none.
  const Shortcut* ShortcutOf(std::int16_t keyCode, std::int16_t shift) const;
  /// The user pressed a key of a shortcut. No effect if it has none now.
  void UserPresses(std::int16_t keyCode, std::int16_t shift);

  /// The user changed the inner size, in twips.
  void UserResizes(int width, int height);
  /// The user requested to close the window.
  void UserCloses() {
    if (IsWorking()) return UserStops();
    if (loaded_ && Form_MayClose()) Unload();
  }

 protected:
  virtual void Form_Load() {}
  virtual void Form_Resize() {}
  /// Whether the user may close the window. Not called when the program unloads the form.
  virtual bool Form_MayClose() { return true; }
  /// The form is about to be unloaded. Cannot be cancelled.
  virtual void Form_QueryUnload() {}

 private:
  friend class Control;

  void TearDown();
  /// Posts TearDown, which runs unless the form was loaded again or a Stay exists.
  void PostTearDown();

  Screen& screen_;
  Design design_;
  std::vector<Control*> controls_;
  std::unique_ptr<FormPeer> peer_;
  MousePointer pointer_ = MousePointer::Default;
  bool loaded_ = false;
  bool unloading_ = false;
  bool visible_ = false;
  bool modal_ = false;
  int stays_ = 0;
  CommandButton* stop_ = nullptr;
  bool stopped_ = false;
  /// For posted closures: expired when the form has been destroyed.
  std::shared_ptr<Form*> self_ = std::make_shared<Form*>(this);
};

}  // namespace ktrv::controls
