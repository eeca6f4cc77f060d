// Quillbarrow.exe: the program on Windows itself.
#include "core/program.h"
#include "platform/win32/convert.h"
#include "platform/win32/win32_platform.h"
#include "platform/win32/windows_api.h"
#include "view/win32/native_view.h"

// The command line that Windows passes here lacks the program's name, and nothing else is changed in it.
int WINAPI wWinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, LPWSTR command_line, int /*show*/) {
  qb::win32::Win32Platform windows;
  qb::win32::NativeView view(windows.messages());
  qb::Program program(windows.platform(), view, qb::win32::Narrow(command_line), view.ApplicationWindow());
  if (!program.Start()) return 0;
  while (!program.Ended() && windows.messages().WaitMessage()) {
  }
  return 0;
}
