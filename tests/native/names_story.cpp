#include "computer.h"
#include "remote_program.h"
#include "stories.h"

namespace native {

namespace {

constexpr const char* kProgram = "C:\\Program Files\\Quillbarrow\\Quillbarrow.exe";
const std::wstring kTemp = L"C:\\windows\\temp\\";
// Fullwidth forms: a conversion by best fit makes dots, backslashes, a colon, an asterisk of them.
const std::wstring kUp = L"\uFF0E\uFF0E\uFF3C";

bool Make(const std::wstring& path) {
  HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
  return file != INVALID_HANDLE_VALUE && CloseHandle(file);
}

bool IsThere(const std::wstring& path) {
  return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

}  // namespace

void NamesStory() {
  EmptyUrlCache();
  MakeFile("C:\\victim\\letter.txt", "keep");
  MakeFile("C:\\victim\\sub\\letter.txt", "keep");
  const std::wstring baits[] = {
      kUp + kUp + L"victim\uFF3Cletter.txt",
      kUp + kUp + L"victim\uFF3Csub",
      L"C\uFF1A\uFF3Cvictim\uFF3Cletter.txt",
      L"\uFF0E\uFF0E",
      L"\uFF0A",
      std::wstring(255, L'n'),
      L"\u0436\u4E16\U0001F5D1.tmp",
  };
  std::vector<std::wstring> files, folders;
  bool made = true;
  for (const std::wstring& bait : baits) {
    files.push_back(kTemp + bait);
    made = Make(files.back()) && made;
    // Beside the file, as a folder of the same length that holds it once more.
    std::wstring folder = bait;
    folder.back() = folder.back() == L'\uFF0E' ? L'\uFF3C' : L'_';
    folders.push_back(kTemp + folder);
    files.push_back(folders.back() + L"\\" + bait);
    made = CreateDirectoryW(folders.back().c_str(), nullptr) && Make(files.back()) && made;
  }
  // A file system that keeps names in UTF-8 may refuse an unpaired surrogate; Windows takes it.
  for (const wchar_t* lone : {L"\xD800z.tmp", L"z\xDC00.tmp"}) {
    if (Make(kTemp + lone)) files.push_back(kTemp + lone);
  }
  std::wstring deep = L"\\\\?\\" + kTemp + L"deep";
  for (int level = 0; level < 12; ++level) {
    made = CreateDirectoryW(deep.c_str(), nullptr) && made;
    files.push_back(deep + L"\\page.htm");
    made = Make(files.back()) && made;
    deep += L"\\" + std::wstring(60, L'd');
  }
  Check(made, "names that a conversion bends, and a tree of 700 characters, are in the temp folder");

  Check(CopyFileA("C:\\program_of_bytes.exe", kProgram, FALSE) != FALSE,
        "the program runs in the code page of the system");
  const State before = TakeState();
  {
    RemoteProgram program;
    Check(program.Tick(4, {"Windows Temp Folder"}) && program.Kill(), "a run over the temp folder ends");
    Check(program.End(), "and the program");
  }
  CopyFileA("C:\\program_of_unicode.exe", kProgram, FALSE);

  std::size_t left = 0;
  for (const std::wstring& file : files) left += IsThere(file) ? 1 : 0;
  Check(left == 0, "the baits themselves are gone");
  for (const std::wstring& folder : folders) left += IsThere(folder) ? 0 : 1;
  Check(left == 0, "their folders stay");
  CheckNothingElse(before, {"C:\\windows\\temp\\", kProgram}, "nothing outside the temp folder changed, byte for byte");
}

}  // namespace native
