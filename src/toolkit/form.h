// A window with controls, made by Toolkit::CreateForm from a table.
//
// Life: created (no event) -> loaded (on_load) -> shown and hidden as often as wanted -> unloaded
// (on_query_unload, which can cancel, then on_unload). An unloaded form stays unloaded: make a new
// one to show it again. Destroying a loaded form takes its windows away without events. A form may
// be unloaded, but not destroyed, from inside one of its own events.
#pragma once

#include <string>
#include <string_view>
#include <typeinfo>

#include "toolkit/control.h"
#include "toolkit/menu.h"

namespace declarium {

// How a window is shown; the numbers are the ones that window placements are stored with. Other
// numbers are passed on as they are.
enum class ShowCommand : int {
  kHide = 0,
  kNormal = 1,
  kMinimized = 2,
  kMaximized = 3,
};

// Where a window stands when it is neither minimized nor maximized, and how it is shown. The edges
// are physical pixels, not scaled: they are for storing and giving back.
struct Placement {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
  ShowCommand show = ShowCommand::kNormal;
  bool operator==(const Placement&) const = default;
};

enum class UnloadReason { kUser, kCode, kSessionEnd };

struct QueryUnload {
  UnloadReason reason = UnloadReason::kCode;
  bool cancel = false;  // true keeps the form
};

enum class ShowMode {
  kModeless,
  kModal,  // Show returns when the form is hidden or unloaded; the other forms take no input so
           // long
};

class Form {
 public:
  virtual ~Form();
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  [[nodiscard]] const std::string& Name() const { return name_; }

  // The control, timer or menu entry of this name. Throws std::logic_error, naming form and
  // component, when there is none or it is of another type.
  template <class T>
  [[nodiscard]] T& Get(std::string_view name) const {
    Component& component = Find(name);
    if (T* typed = dynamic_cast<T*>(&component)) return *typed;
    FailWrongType(name, typeid(T).name());
  }

  // Raises on_load, once; nothing happens to a form that is loaded or unloaded.
  virtual void Load() = 0;
  [[nodiscard]] virtual bool IsLoaded() const = 0;
  // Loads the form if needed, and shows it in front of `owner`'s window (nullptr: of the active
  // form's when modal, else of none). The first time: on_load, on_resize, on_activate, then
  // on_got_focus of the first control in the table that takes the focus. Showing a shown form
  // brings it forward, maximized if it is; one that was minimized is restored, and one that was
  // hidden comes back as it was before. Nothing happens to an unloaded form.
  virtual void Show(ShowMode mode = ShowMode::kModeless, Form* owner = nullptr) = 0;
  virtual void Hide() = 0;
  [[nodiscard]] virtual bool Visible() const = 0;
  // Raises on_query_unload, then on_unload, and takes the windows away; either event can cancel,
  // which keeps the form as it is and returns false. Nothing happens, and true is returned, when
  // the form is not loaded. An Unload from inside these two events returns false and does nothing.
  bool Unload(UnloadReason reason = UnloadReason::kCode);
  // The two halves of Unload, for a session that asks first and ends later, or not at all:
  // on_query_unload, and on_unload with what follows.
  [[nodiscard]] bool AskToUnload(UnloadReason reason);
  bool UnloadUnasked();

  [[nodiscard]] virtual std::u16string Caption() const = 0;
  virtual void SetCaption(std::u16string_view caption) = 0;
  [[nodiscard]] virtual bool Enabled() const = 0;
  virtual void SetEnabled(bool enabled) = 0;

  // The inner area, in which the controls stand (without border, title and menu bar).
  [[nodiscard]] virtual int ScaleWidth() const = 0;
  [[nodiscard]] virtual int ScaleHeight() const = 0;
  // The whole window. Setting raises on_resize when the inner area changes.
  [[nodiscard]] virtual int OuterWidth() const = 0;
  [[nodiscard]] virtual int OuterHeight() const = 0;
  virtual void SetOuterWidth(int width) = 0;
  virtual void SetOuterHeight(int height) = 0;

  // Of a hidden form: as it was shown last, or is to be shown first.
  [[nodiscard]] virtual Placement GetPlacement() const = 0;
  // Moves and sizes the window; on_resize is raised when the inner area changes. A placement whose
  // title bar is on no screen is moved onto one (toolkit/screen_place.h).
  virtual void SetPlacement(const Placement& placement) = 0;
  // Shows, hides, minimizes, maximizes or restores, without loading. While a form is hidden before
  // its first Show, the command is kept for that Show.
  virtual void SetShowCommand(ShowCommand command) = 0;

  // Keeps the window above those of all programs.
  virtual void SetTopmost() = 0;
  // Puts the shown window above those of all programs for once and takes no input from them: for a
  // program that may not take the foreground, which leaves a window that is only shown behind.
  virtual void BringToTop() = 0;
  // While locked nothing of the window is repainted; unlocking paints it.
  virtual void LockUpdate() = 0;
  virtual void UnlockUpdate() = 0;

  // Opens a top-level entry of the form's table as a popup menu at the pointer, or where
  // the keyboard asked for it, and returns when it is closed; the chosen entry's on_click has been
  // raised by then. on_click of `menu` itself is not raised.
  virtual void ShowPopupMenu(MenuItem& menu) = 0;

  // Where the mouse pointer stands on the screen, in pixels at 96 dpi of this form's screen: good
  // for differences.
  [[nodiscard]] virtual Point CursorPosition() const = 0;

  Event<> on_load;
  Event<> on_activate;
  Event<> on_deactivate;
  Event<> on_resize;  // the inner area's size changed; not raised while minimized or before loading
  Event<QueryUnload&> on_query_unload;
  Event<bool&> on_unload;  // true in the argument keeps the form after all

 protected:
  explicit Form(std::string_view name) : name_(name) {}

 private:
  // Throws std::logic_error when there is none.
  [[nodiscard]] virtual Component& Find(std::string_view name) const = 0;
  [[noreturn]] void FailWrongType(std::string_view name, const char* wanted) const;
  // Takes the windows away without events; a modal Show returns.
  virtual void Close() = 0;

  std::string name_;
  bool unloading_ = false;  // asking is not repeated by an Unload inside the question
};

// Locks a form's repainting for as long as it lives.
class UpdateLock {
 public:
  explicit UpdateLock(Form& form) : form_(form) { form_.LockUpdate(); }
  ~UpdateLock() { form_.UnlockUpdate(); }
  UpdateLock(const UpdateLock&) = delete;
  UpdateLock& operator=(const UpdateLock&) = delete;

 private:
  Form& form_;
};

}  // namespace declarium
