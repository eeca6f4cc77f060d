// Plays sequences on Windows: conformance_windows SEQUENCES TRANSCRIPT. As "conformance_windows end N" it is a program
// that ends with that number.
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include "platform/win32/convert.h"
#include "platform/win32/win32_platform.h"
#include "tests/conformance/player.h"
// After the basic types of windows.h.
#include <wininet.h>

namespace qb::conformance {
namespace {

constexpr UINT kFirstHeard = WM_USER;

class WindowsWorld final : public World {
 public:
  Platform& platform() override { return windows_.platform(); }

  WindowHandle OpenWindow(const std::string& class_name, const std::string& title, bool own, Heard heard) override {
    const std::wstring name = win32::Wide(class_name);
    WNDCLASSW window_class{};
    window_class.lpfnWndProc = Procedure;
    window_class.hInstance = ::GetModuleHandleW(nullptr);
    window_class.hIcon = ::LoadIconW(nullptr, MAKEINTRESOURCEW(32512));
    window_class.lpszClassName = name.c_str();
    ::RegisterClassW(&window_class);  // fails where the class is there already
    const HWND window = ::CreateWindowExW(0, name.c_str(), win32::Wide(title).c_str(), WS_OVERLAPPEDWINDOW, 100, 100,
                                          800, 600, nullptr, nullptr, window_class.hInstance, nullptr);
    // The process's first command is replaced by that of whoever started it.
    ::ShowWindow(window, SW_SHOWNOACTIVATE);
    if (own) heard_[window] = std::move(heard);
    return win32::Wrap<WindowHandle>(window);
  }
  void CloseWindow(WindowHandle window) override {
    heard_.erase(win32::Unwrap<HWND>(window));
    ::DestroyWindow(win32::Unwrap<HWND>(window));
  }
  void AddToCache(const std::string& url, std::uint32_t type) override {
    ::CommitUrlCacheEntryA(url.c_str(), nullptr, {}, {}, type, nullptr, 0, nullptr, nullptr);
  }

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (auto heard = heard_.find(window); message >= kFirstHeard && heard != heard_.end()) {
      heard->second(message, wparam, lparam);
    }
    return ::DefWindowProcW(window, message, wparam, lparam);
  }
  // A window procedure is given no more than its window.
  static inline std::map<HWND, Heard> heard_;
  win32::Win32Platform windows_;
};

int PlayAll(const char* sequences, const char* transcript) {
  std::ifstream in(sequences, std::ios::binary);
  std::ofstream out(transcript, std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(in), {}};
  WindowsWorld world;
  Player player(world);
  for (const Sequence& sequence : ReadSequences(text)) {
    out << "# " << sequence.name << '\n';
    for (const std::string& outcome : player.Play(sequence)) out << outcome << '\n';
    out.flush();  // what came last is known if this program does not reach its end
  }
  return 0;
}

}  // namespace
}  // namespace qb::conformance

int main(int count, char** arguments) {
  if (count != 3) return 2;
  if (std::string_view(arguments[1]) == "end") return std::atoi(arguments[2]);
  return qb::conformance::PlayAll(arguments[1], arguments[2]);
}
