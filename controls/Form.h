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

/// The window of one form. Made by the Screen when the form is loaded.
class FormPeer {
 public:
  virtual ~FormPeer() = default;

  virtual void CaptionChanged() = 0;
  virtual void SizeChanged() = 0;
  virtual void PointerChanged() = 0;
  /// Shows the window, in front and with the focus in it, and returns.
  virtual void Show() = 0;
  /// Shows the window with the thread's other windows disabled and returns when Hide was called.
  virtual void ShowModal() = 0;
  /// Takes the window out of sight at once and makes ShowModal return. The window itself goes, or
  /// is shown again, when no event of the form runs any more.
  virtual void Hide() = 0;
  /// While the form works: paints the thread's windows and takes the input that has come. A press
  /// of the button that ends the work calls Form::UserStops; everything else that was typed and
  /// clicked is dropped. No other message is handed out, so nobody's code runs in it.
  virtual void TakeInput() = 0;
};

/// A dialog or window. Loaded when it is first shown: its window and its controls' peers are made,
/// then Form_Load runs, then Form_Resize, then it appears. Unloaded by Unload or by its user's
/// close button, also from within its own events: it is gone from sight at once, and its peers go
/// later, when none of them can be at work. A form that does something in Form_QueryUnload calls
/// Unload in its destructor.
class Form {
 public:
  struct Design {
    String Caption{};
    int Width = 0;  ///< inner size in twips
    int Height = 0;
    bool Resizable = false;
    int MinimumWidth = 0;  ///< smallest inner size that the user can choose, twips
    int MinimumHeight = 0;
  };

  Form(Screen& screen, Design design);
  virtual ~Form();
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  /// Loads it unless it is loaded, shows it and returns. Shown again, it comes to the front.
  void Show();
  /// Loads and shows it modally with no owner; returns when it is unloaded.
  void ShowModal();
  /// Makes the window and runs Form_Load, without showing it.
  void Load();
  /// Runs Form_QueryUnload and takes the window away. No effect when it is not loaded or on its way
  /// out.
  void Unload();
  bool IsLoaded() const { return loaded_; }
  bool IsVisible() const { return visible_; }
  /// Whether it is unloaded, its window has gone too and no event of it runs that kept it.
  bool IsGone() const { return !loaded_ && !peer_ && stays_ == 0; }

  const Design& Layout() const { return design_; }
  const String& Caption() const { return design_.Caption; }
  void SetCaption(String caption);
  int ScaleWidth() const { return design_.Width; }
  int ScaleHeight() const { return design_.Height; }
  /// Makes the form another inner size, in twips.
  void Resize(int width, int height);

  MousePointer Pointer() const { return pointer_; }
  void SetPointer(MousePointer pointer);

  Screen& Display() const { return screen_; }
  const std::vector<Control*>& Controls() const { return controls_; }

  /// Keeps the peers of a form that is unloaded meanwhile until the event that made this is over:
  /// for events in which a message box or a dialog runs a message loop of its own.
  class Stay {
   public:
    explicit Stay(Form& form);
    ~Stay();
    Stay(const Stay&) = delete;
    Stay& operator=(const Stay&) = delete;

   private:
    Form& form_;
  };

  /// A job that keeps the thread busy while this lives: the form shows the hourglass and takes no
  /// input but a press of the one button, by the mouse, its letter or Escape. Closing the window is
  /// such a press too.
  class Work {
   public:
    /// \param stop a button of the form; both must outlive the work.
    Work(Form& form, CommandButton& stop);
    ~Work();
    Work(const Work&) = delete;
    Work& operator=(const Work&) = delete;

    /// Paints, takes input, and tells whether the work is to end. To be called several times a
    /// second.
    bool IsToStop();

   private:
    Form& form_;
    const MousePointer formerPointer_;
  };
  bool IsWorking() const { return stop_ != nullptr; }
  /// The button that ends the work; null without any.
  CommandButton* StopButton() const { return stop_; }
  /// The user, or the end of the host, ends the work. No effect without any.
  void UserStops() { stopped_ = true; }

  /// The user made the window another inner size, in twips.
  void UserResizes(int width, int height);
  /// The user asked to close the window.
  void UserCloses() {
    if (IsWorking()) return UserStops();
    if (loaded_ && Form_MayClose()) Unload();
  }

 protected:
  virtual void Form_Load() {}
  virtual void Form_Resize() {}
  /// Whether the user may close the window. Not asked when it goes for another reason.
  virtual bool Form_MayClose() { return true; }
  /// The window is about to go; it cannot be kept.
  virtual void Form_QueryUnload() {}

 private:
  friend class Control;

  void TearDown();
  /// Tears the form down later, when it is still unloaded then and nothing wants it to stay.
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
  /// Tells closures that wait on the screen whether the form is still there.
  std::shared_ptr<Form*> self_ = std::make_shared<Form*>(this);
};

}  // namespace ktrv::controls
