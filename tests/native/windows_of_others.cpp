// Stands for the other programs of a desktop: opens one top-level window for each argument CLASS|TITLE|SHOW, where
// SHOW is 1 normal, 2 minimised or 3 maximised. A window that is closed goes; with the last one the program ends.
#include <windows.h>

#include <string>

namespace {

int open_windows = 0;

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_DESTROY && --open_windows == 0) PostQuitMessage(0);
  return DefWindowProcA(window, message, wparam, lparam);
}

bool Open(const std::string& argument, int index) {
  const std::size_t first = argument.find('|'), last = argument.rfind('|');
  if (first == last) return false;
  const std::string class_name = argument.substr(0, first), title = argument.substr(first + 1, last - first - 1);
  WNDCLASSA window_class{};
  window_class.lpfnWndProc = Procedure;
  window_class.hInstance = GetModuleHandleA(nullptr);
  window_class.hbrBackground = GetSysColorBrush(COLOR_WINDOW);
  window_class.lpszClassName = class_name.c_str();
  // The class of dialog boxes is the system's own.
  if (class_name != "#32770") RegisterClassA(&window_class);
  HWND window = CreateWindowExA(0, class_name.c_str(), title.c_str(), WS_OVERLAPPEDWINDOW, 100 + 40 * index,
                                60 + 30 * index, 300, 200, nullptr, nullptr, window_class.hInstance, nullptr);
  if (window == nullptr) return false;
  ++open_windows;
  ShowWindow(window, std::stoi(argument.substr(last + 1)));
  return true;
}

}  // namespace

int main(int count, char** arguments) {
  for (int i = 1; i < count; ++i) {
    if (!Open(arguments[i], i - 1)) return 1;
  }
  MSG message;
  while (GetMessageA(&message, nullptr, 0, 0) > 0) {
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
  return 0;
}
