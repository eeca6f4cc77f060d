#include "platform/win32/win32_messages.h"

#include <algorithm>

#include "platform/win32/convert.h"

namespace qb::win32 {

namespace {

constexpr wchar_t kTimerClass[] = L"QuillbarrowTimers";

Point FromNative(const POINT& point) {
  return {point.x, point.y};
}
POINT ToNative(const Point& point) {
  return {point.x, point.y};
}

// Fills the buffer from a call that cuts to a size in characters and gives the length.
template <typename Call>
std::uint32_t FilledCut(TextBuffer& buffer, Call call) {
  std::wstring text(buffer.size(), L'\0');
  text.resize(static_cast<std::size_t>(call(text.data(), static_cast<int>(text.size()))));
  return buffer.FillCut(Narrow(text));
}

// Wine places the windows of this process only. What can be seen of another's stands for its placement, and since
// such a window keeps its places by itself, showing it as it was brings it back there.
bool SeenPlacement(HWND window, WINDOWPLACEMENT& placement) {
  placement.flags = 0;
  placement.showCmd = ::IsIconic(window) ? SW_SHOWMINIMIZED : ::IsZoomed(window) ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL;
  placement.ptMinPosition = placement.ptMaxPosition = {-1, -1};
  return ::GetWindowRect(window, &placement.rcNormalPosition) != FALSE;
}
bool ShowAs(HWND window, UINT show_command) {
  ::ShowWindow(window, static_cast<int>(show_command));
  return ::IsWindow(window) && (::IsWindowVisible(window) != FALSE) == (show_command != SW_HIDE);
}

BOOL CALLBACK VisitWindow(HWND window, LPARAM visit) {
  return (*reinterpret_cast<const std::function<bool(WindowHandle)>*>(visit))(Wrap<WindowHandle>(window)) ? TRUE
                                                                                                          : FALSE;
}

}  // namespace

Win32Messages::Win32Messages() {
  WNDCLASSW window_class{};
  window_class.lpfnWndProc = TimerWindowProc;
  window_class.hInstance = ::GetModuleHandleW(nullptr);
  window_class.lpszClassName = kTimerClass;
  ::RegisterClassW(&window_class);  // fails where a second object finds the class made; that serves as well
  // Timers hang on a message-only window: it is in no z-order, and its WM_TIMER is also handed out by
  // the loops that Windows runs for message boxes and menus.
  timer_window_ =
      ::CreateWindowExW(0, kTimerClass, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, window_class.hInstance, nullptr);
  ::SetWindowLongPtrW(timer_window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

Win32Messages::~Win32Messages() {
  ::DestroyWindow(timer_window_);
}

LRESULT CALLBACK Win32Messages::TimerWindowProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  auto* self = reinterpret_cast<Win32Messages*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
  if (message != WM_TIMER || self == nullptr) return ::DefWindowProcW(window, message, wparam, lparam);
  self->Tick(wparam);
  return 0;
}

void Win32Messages::Tick(UINT_PTR native_id) {
  auto found = std::find_if(timers_.begin(), timers_.end(),
                            [=](const auto& entry) { return entry.second.native_id == native_id; });
  if (found == timers_.end()) return;  // killed while its message was on the way
  // It would have gone with its window, did it not hang on another.
  if (const auto window = Unwrap<HWND>(found->first.first); window != nullptr && !::IsWindow(window)) {
    ::KillTimer(timer_window_, native_id);
    timers_.erase(found);
    return;
  }
  const std::function<void()> tick = found->second.tick;  // it may kill its own timer
  tick();
}

WindowHandle Win32Messages::FindWindowA(std::optional<std::string_view> class_name,
                                        std::optional<std::string_view> title) {
  return Wrap<WindowHandle>(::FindWindowW(WideText(class_name).get(), WideText(title).get()));
}

WindowHandle Win32Messages::FindWindowExA(WindowHandle parent, WindowHandle after,
                                          std::optional<std::string_view> class_name,
                                          std::optional<std::string_view> title) {
  return Wrap<WindowHandle>(
      ::FindWindowExW(Unwrap<HWND>(parent), Unwrap<HWND>(after), WideText(class_name).get(), WideText(title).get()));
}

bool Win32Messages::EnumWindows(const std::function<bool(WindowHandle)>& visit) {
  return ::EnumWindows(VisitWindow, reinterpret_cast<LPARAM>(&visit)) != FALSE;
}

std::uint32_t Win32Messages::GetClassNameA(WindowHandle window, TextBuffer& name) {
  return FilledCut(name, [&](wchar_t* text, int size) { return ::GetClassNameW(Unwrap<HWND>(window), text, size); });
}

std::uint32_t Win32Messages::GetWindowTextA(WindowHandle window, TextBuffer& title) {
  return FilledCut(title, [&](wchar_t* text, int size) { return ::GetWindowTextW(Unwrap<HWND>(window), text, size); });
}

std::uint32_t Win32Messages::GetWindowTextLengthA(WindowHandle window) {
  return static_cast<std::uint32_t>(::GetWindowTextLengthW(Unwrap<HWND>(window)));
}

Error Win32Messages::GetWindowPlacement(WindowHandle window, WindowPlacement& placement) {
  WINDOWPLACEMENT native{};
  native.length = placement.length;
  if (!::GetWindowPlacement(Unwrap<HWND>(window), &native)) {
    const Error failed = LastError();
    if (!SeenPlacement(Unwrap<HWND>(window), native)) return failed;
  }
  placement = {native.length,
               native.flags,
               native.showCmd,
               FromNative(native.ptMinPosition),
               FromNative(native.ptMaxPosition),
               {native.rcNormalPosition.left, native.rcNormalPosition.top, native.rcNormalPosition.right,
                native.rcNormalPosition.bottom}};
  return Error::Success;
}

Error Win32Messages::SetWindowPlacement(WindowHandle window, const WindowPlacement& placement) {
  const Rectangle& normal = placement.normal;
  const WINDOWPLACEMENT native{placement.length,
                               placement.flags,
                               placement.show_command,
                               ToNative(placement.minimized),
                               ToNative(placement.maximized),
                               {normal.left, normal.top, normal.right, normal.bottom}};
  if (::SetWindowPlacement(Unwrap<HWND>(window), &native)) return Error::Success;
  const Error failed = LastError();
  return ShowAs(Unwrap<HWND>(window), native.showCmd) ? Error::Success : failed;
}

WindowHandle Win32Messages::GetWindow(WindowHandle window, std::uint32_t relation) {
  return Wrap<WindowHandle>(::GetWindow(Unwrap<HWND>(window), relation));
}

bool Win32Messages::ShowWindow(WindowHandle window, std::uint32_t command) {
  return ::ShowWindow(Unwrap<HWND>(window), static_cast<int>(command)) != FALSE;
}

bool Win32Messages::OpenIcon(WindowHandle window) {
  return ::OpenIcon(Unwrap<HWND>(window)) != FALSE;
}

bool Win32Messages::SetForegroundWindow(WindowHandle window) {
  return ::SetForegroundWindow(Unwrap<HWND>(window)) != FALSE;
}

bool Win32Messages::SetWindowTextA(WindowHandle window, std::string_view text) {
  return ::SetWindowTextW(Unwrap<HWND>(window), Wide(text).c_str()) != FALSE;
}

Error Win32Messages::PostMessageA(WindowHandle window, std::uint32_t message, std::uint64_t wparam,
                                  std::int64_t lparam) {
  return FromBool(::PostMessageW(Unwrap<HWND>(window), message, wparam, lparam));
}

BoxAnswer Win32Messages::MessageBoxA(WindowHandle owner, std::string_view text, std::string_view title,
                                     std::uint32_t type) {
  // A box disables its owner only; one without an owner must hold all windows of the thread.
  const UINT hold = owner == WindowHandle::None ? MB_TASKMODAL : MB_APPLMODAL;
  return static_cast<BoxAnswer>(
      ::MessageBoxW(Unwrap<HWND>(owner), Wide(text).c_str(), Wide(title).c_str(), type | hold));
}

bool Win32Messages::SetTimer(WindowHandle window, std::uint32_t id, std::uint32_t interval,
                             std::function<void()> tick) {
  StepOver(KillTimer(window, id));
  const UINT_PTR native_id = next_native_id_++;
  if (!::SetTimer(timer_window_, native_id, interval, nullptr)) return false;
  timers_[{window, id}] = {native_id, std::move(tick)};
  return true;
}

bool Win32Messages::KillTimer(WindowHandle window, std::uint32_t id) {
  auto found = timers_.find({window, id});
  if (found == timers_.end()) return false;
  const bool killed = ::KillTimer(timer_window_, found->second.native_id) != FALSE;
  timers_.erase(found);
  return killed;
}

void Win32Messages::HandOut(MSG& message) {
  if (filter_ && filter_(message)) return;
  ::TranslateMessage(&message);
  ::DispatchMessageW(&message);
}

void Win32Messages::AnswerSentMessages() {
  if (answering_) return;
  answering_ = true;
  MSG ignored;
  // Hands out what was sent, though it finds nothing of the kind that it is asked for.
  ::PeekMessageW(&ignored, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
  answering_ = false;
  answered_at_ = ::GetTickCount64();
}

void Win32Messages::AnswerWhenDue() {
  constexpr ULONGLONG kBetweenAnswers = 20;  // milliseconds
  if (::GetTickCount64() - answered_at_ >= kBetweenAnswers) AnswerSentMessages();
}

void Win32Messages::PumpMessages() {
  // The end of the session is acted on at once, also by a window that answers: then this is a pump like any other.
  const bool was_answering = std::exchange(answering_, false);
  MSG message;
  while (!quitting_ && ::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    // The quit message comes once, but every loop that is running must hear of it.
    if (message.message == WM_QUIT)
      quitting_ = true;
    else
      HandOut(message);
  }
  answering_ = was_answering;
}

void Win32Messages::RestAndPumpMessages() {
  constexpr DWORD kLongestRest = 10;  // milliseconds
  ::MsgWaitForMultipleObjectsEx(0, nullptr, kLongestRest, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
  PumpMessages();
}

bool Win32Messages::WaitMessage() {
  MSG message;
  if (quitting_ || ::GetMessageW(&message, nullptr, 0, 0) <= 0) {
    quitting_ = true;
    return false;
  }
  HandOut(message);
  return !quitting_;
}

}  // namespace qb::win32
