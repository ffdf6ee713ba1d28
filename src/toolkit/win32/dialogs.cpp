// The system's dialogs: messages, files, colors; and the input box, which is a form of ours.

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "text/user_texts.h"
#include "toolkit/captioned.h"
#include "toolkit/text_box.h"
#include "toolkit/win32/scale.h"
#include "toolkit/win32/toolkit.h"
#include "win32/system.h"
#include "win32/wide.h"

namespace declarium::win32 {

namespace {

constexpr std::size_t kLongestPath = 32768;

using ShowFileDialog = BOOL(WINAPI*)(OPENFILENAMEW*);

std::optional<std::u16string> ChooseFile(const FileDialog& dialog, HWND owner, DWORD flags,
                                         ShowFileDialog show) {
  std::u16string filter = dialog.filter + u"||";
  std::ranges::replace(filter, u'|', u'\0');
  std::u16string path = dialog.file_name;
  path.resize(kLongestPath);
  OPENFILENAMEW request{};
  request.lStructSize = sizeof request;
  request.hwndOwner = owner;
  request.lpstrFilter = dialog.filter.empty() ? nullptr : Wide(filter);
  request.lpstrFile = WideBuffer(path);
  request.nMaxFile = kLongestPath;
  if (!dialog.initial_folder.empty()) request.lpstrInitialDir = Wide(dialog.initial_folder);
  if (!dialog.default_extension.empty()) request.lpstrDefExt = Wide(dialog.default_extension);
  request.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR | OFN_PATHMUSTEXIST | flags;
  if (!show(&request)) return std::nullopt;
  return std::u16string(path.c_str());
}

// Notices the first dialog that the thread opens: MessageBoxW does not tell its window.
class DialogFinder {
 public:
  DialogFinder()
      : previous_(std::exchange(current_, this)),
        hook_(SetWindowsHookExW(WH_CBT, Notice, nullptr, GetCurrentThreadId())) {}
  DialogFinder(const DialogFinder&) = delete;
  DialogFinder& operator=(const DialogFinder&) = delete;
  ~DialogFinder() {
    current_ = previous_;
    if (hook_) UnhookWindowsHookEx(hook_);
  }

  [[nodiscard]] HWND Found() const noexcept { return found_; }

 private:
  static LRESULT CALLBACK Notice(int code, WPARAM window, LPARAM details) noexcept {
    const auto created = reinterpret_cast<HWND>(window);
    if (code == HCBT_CREATEWND && current_ && !current_->found_ && IsDialog(created)) {
      current_->found_ = created;
    }
    return CallNextHookEx(nullptr, code, window, details);
  }
  static bool IsDialog(HWND window) noexcept {
    std::array<wchar_t, 8> name{};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return std::wstring_view(name.data()) == L"#32770";
  }

  static thread_local DialogFinder* current_;  // of the innermost box
  DialogFinder* previous_;
  HWND found_ = nullptr;
  HHOOK hook_;
};

thread_local DialogFinder* DialogFinder::current_ = nullptr;

constexpr ControlDefinition kInputControls[] = {
    {.kind = ControlKind::kLabel, .name = "Label1", .bounds = {12, 12, 336, 34}},
    {.kind = ControlKind::kTextBox, .name = "Text1", .bounds = {12, 50, 336, 21}},
    {.kind = ControlKind::kCommandButton,
     .name = "Command1",
     .caption = texts::kOk,
     .bounds = {192, 82, 75, 23},
     .role = ButtonRole::kDefault},
    {.kind = ControlKind::kCommandButton,
     .name = "Command2",
     .caption = texts::kCancel,
     .bounds = {273, 82, 75, 23},
     .role = ButtonRole::kCancel},
};

constexpr FormDefinition kInputForm = {
    .name = "frmInput", .size = {360, 116}, .controls = kInputControls};

}  // namespace

Answer Win32Toolkit::ShowMessage(const Message& message, OpenMessage& box) {
  if (box.Place() == MessagePlace::kOtherProgram) {
    const auto window = reinterpret_cast<HWND>(box.Window());
    return ShowBox(message, box, IsWindow(window) ? window : nullptr);
  }
  const ModalScope modal(*this, active_);
  return ShowBox(message, box, OwnerWindow());
}

Answer Win32Toolkit::ShowBox(const Message& message, OpenMessage& box, HWND owner) {
  // Without a window to stand before, a box would open behind those of the program that is in the
  // foreground, and nobody would find it.
  const UINT order = owner ? MB_SETFOREGROUND : MB_SETFOREGROUND | MB_TOPMOST;
  const DialogFinder finder;
  const OpenMessage::Shown shown(
      box, [&finder](Answer answer) { EndDialog(finder.Found(), static_cast<INT_PTR>(answer)); });
  const int answer = MessageBoxW(owner, Wide(message.text), Wide(title_),
                                 static_cast<UINT>(message.Style()) | order);
  return static_cast<Answer>(answer);
}

std::u16string Win32Toolkit::AskText(std::u16string_view prompt, std::u16string_view initial_text) {
  const std::unique_ptr<Form> form = CreateForm(kInputForm);
  auto& box = form->Get<TextBox>("Text1");
  form->SetCaption(title_);
  form->Get<Label>("Label1").SetCaption(prompt);
  box.SetText(initial_text);
  box.Select(0, static_cast<int>(initial_text.size()));
  std::u16string answer;
  form->Get<CommandButton>("Command1").on_click = [&] {
    answer = box.Text();
    form->Unload();
  };
  form->Get<CommandButton>("Command2").on_click = [&] { form->Unload(); };
  form->Show(ShowMode::kModal);
  return answer;
}

std::optional<std::u16string> Win32Toolkit::ChooseFileToOpen(const FileDialog& dialog) {
  const ModalScope modal(*this, active_);
  return ChooseFile(dialog, OwnerWindow(), OFN_FILEMUSTEXIST, GetOpenFileNameW);
}

std::optional<std::u16string> Win32Toolkit::ChooseFileToSave(const FileDialog& dialog) {
  const ModalScope modal(*this, active_);
  return ChooseFile(dialog, OwnerWindow(), OFN_OVERWRITEPROMPT, GetSaveFileNameW);
}

std::optional<Color> Win32Toolkit::AskColor(Color initial) {
  const ModalScope modal(*this, active_);
  CHOOSECOLORW request{};
  request.lStructSize = sizeof request;
  request.hwndOwner = OwnerWindow();
  request.rgbResult = ToColorRef(initial);
  request.lpCustColors = custom_colors_.data();
  request.Flags = CC_RGBINIT | CC_FULLOPEN;
  if (!ChooseColorW(&request)) return std::nullopt;
  return request.rgbResult;
}

}  // namespace declarium::win32
