// Quillbarrow.exe: the program on Windows itself.
#include <string>

#include "core/program.h"
#include "platform/win32/win32_platform.h"
#include "platform/win32/windows_api.h"
#include "view/win32/native_view.h"

// The command line that Windows passes here lacks the program's name, and nothing else is changed in it.
int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, LPSTR command_line, int /*show*/) {
  qb::win32::Win32Platform windows;
  qb::win32::NativeView view(windows.messages());
  qb::Program program(windows.platform(), view, command_line, view.ApplicationWindow());
  if (!program.Start()) return 0;
  while (!program.Ended() && windows.messages().WaitMessage()) {
  }
  return 0;
}
