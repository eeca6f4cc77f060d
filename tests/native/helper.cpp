// Stands for a helper program: notes in C:\helper-calls.txt how it was started, and that it ended a while
// later.
#include <windows.h>

#include <cstdio>
#include <string>

namespace {

void Note(const std::string& line) {
  FILE* file = std::fopen("C:\\helper-calls.txt", "ab");
  if (file == nullptr) return;
  std::fprintf(file, "%s\n", line.c_str());
  std::fclose(file);
}

}  // namespace

int main(int count, char** arguments) {
  std::string given;
  for (int i = 1; i < count; ++i) given += std::string(" ") + arguments[i];
  STARTUPINFOA startup{};
  GetStartupInfoA(&startup);
  const bool hidden = (startup.dwFlags & STARTF_USESHOWWINDOW) != 0 && startup.wShowWindow == SW_HIDE;
  Note((hidden ? "hidden" : "shown") + given);
  // Long enough for a program that does not wait to start the next one in between.
  Sleep(700);
  Note("ended" + given);
  return 0;
}
