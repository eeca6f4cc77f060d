// Calls the operations that Windows answers without the program around them: with answers of Windows that a test cannot
// bring about otherwise, and with processes that end while nobody looks.
#include <windows.h>

#include <atomic>
#include <cstdio>
#include <cwchar>
#include <functional>
#include <string>
#include <thread>

#include "platform/win32/convert.h"
#include "platform/win32/factories.h"

namespace {

int passed = 0, failed = 0;

void Check(bool held, const std::string& what) {
  (held ? passed : failed)++;
  std::printf("%s %s\n", held ? "ok  " : "FAIL", what.c_str());
}

// What Windows is made to say of every path.
DWORD answered_attributes = 0, answered_tag = 0;
bool can_be_opened = true;

const HANDLE kFake = reinterpret_cast<HANDLE>(0x7777);

DWORD WINAPI FakeGetFileAttributes(LPCWSTR /*path*/) {
  return answered_attributes;
}
HANDLE WINAPI FakeFindFirstFile(LPCWSTR /*pattern*/, WIN32_FIND_DATAW* data) {
  *data = {};
  data->dwFileAttributes = answered_attributes;
  data->dwReserved0 = answered_tag;
  std::wcscpy(data->cFileName, L"name");
  return kFake;
}
HANDLE WINAPI FakeCreateFile(LPCWSTR /*path*/, DWORD /*access*/, DWORD /*share*/, SECURITY_ATTRIBUTES* /*security*/,
                             DWORD /*disposition*/, DWORD /*flags*/, HANDLE /*like*/) {
  return can_be_opened ? ::CreateEventW(nullptr, TRUE, FALSE, nullptr) : INVALID_HANDLE_VALUE;
}
BOOL WINAPI FakeGetFileInformation(HANDLE /*file*/, FILE_INFO_BY_HANDLE_CLASS kind, void* info, DWORD size) {
  if (kind != FileAttributeTagInfo || size != sizeof(FILE_ATTRIBUTE_TAG_INFO)) return FALSE;
  *static_cast<FILE_ATTRIBUTE_TAG_INFO*>(info) = {answered_attributes, answered_tag};
  return TRUE;
}

}  // namespace

// The places where the calls of the operations find these functions of Windows: the linker takes these instead of those
// that the system fills.
// NOLINTBEGIN(bugprone-reserved-identifier): the names are the linker's
extern "C" {
decltype(&GetFileAttributesW) __imp_GetFileAttributesW = FakeGetFileAttributes;
decltype(&FindFirstFileW) __imp_FindFirstFileW = FakeFindFirstFile;
decltype(&CreateFileW) __imp_CreateFileW = FakeCreateFile;
decltype(&GetFileInformationByHandleEx) __imp_GetFileInformationByHandleEx = FakeGetFileInformation;
}
// NOLINTEND(bugprone-reserved-identifier)

namespace {

// Of the points at which a file system hands over to somebody, those that lead to another place.
void ReparseTags() {
  const struct {
    DWORD tag;
    bool leads_elsewhere;
    const char* what;
  } kTags[] = {
      {0xA0000003, true, "a junction"},
      {0xA000000C, true, "a symbolic link"},
      {0xA000001D, true, "a symbolic link of Linux"},
      {0x80000013, false, "a deduplicated file"},
      {0x9000001A, false, "a file of a cloud folder"},
      {0x9000601A, false, "a file of another cloud folder"},
      {0x80000017, false, "a compressed file of the system"},
      {0x8000001B, false, "an entry for a program of the shop"},
  };
  qb::win32::Win32Messages messages;
  const auto files = qb::win32::MakeFiles(messages);
  for (const auto& c : kTags) {
    answered_tag = c.tag;
    bool right = true;
    for (const DWORD kind : {FILE_ATTRIBUTE_ARCHIVE, FILE_ATTRIBUTE_DIRECTORY}) {
      answered_attributes = kind | FILE_ATTRIBUTE_REPARSE_POINT;
      const DWORD wanted = c.leads_elsewhere ? answered_attributes : kind;
      auto first = files->FindFirstFileA("C:\\x\\*");
      auto asked = files->GetFileAttributesA("C:\\x\\name");
      right = right && first.ok() && first.value.data.attributes == wanted && asked.ok() && asked.value == wanted;
    }
    Check(right,
          std::string(c.what) + (c.leads_elsewhere ? " leads elsewhere" : " is a file or folder like all others"));
  }
  can_be_opened = false;
  auto asked = files->GetFileAttributesA("C:\\x\\name");
  Check(asked.ok() && asked.value == answered_attributes, "what cannot be read counts as leading elsewhere");
}

bool NumberIsTaken(DWORD process) {
  HANDLE opened = ::OpenProcess(SYNCHRONIZE, FALSE, process);
  if (opened != nullptr) ::CloseHandle(opened);
  return opened != nullptr;
}

void ProcessNumbers() {
  const auto processes = qb::win32::MakeProcesses();
  auto started = processes->CreateProcessA("C:\\windows\\system32\\cmd.exe /c exit 3", SW_HIDE);
  Check(started.ok(), "a program starts");
  if (!started.ok()) return;
  HANDLE other = ::OpenProcess(SYNCHRONIZE, FALSE, started.value);
  ::WaitForSingleObject(other, 20000);
  ::CloseHandle(other);
  Sleep(3000);  // what the system itself still holds of it goes
  Check(NumberIsTaken(started.value), "its number is not given to another while nobody has asked after it");
  auto opened = processes->OpenProcess(PROCESS_QUERY_INFORMATION, false, started.value);
  auto code = opened.ok() ? processes->GetExitCodeProcess(opened.value) : qb::Result<std::uint32_t>(opened.error);
  Check(code.ok() && code.value == 3, "it tells how it ended");
  Check(NumberIsTaken(started.value), "nor while it is asked after");
  Check(opened.ok() && qb::Ok(processes->CloseHandle(opened.value)), "the handle is given back");
  bool taken = true;
  for (int tries = 0; taken && tries < 50; ++tries, Sleep(100)) taken = NumberIsTaken(started.value);
  Check(!taken, "and then it is free");
}

// Windows would act on what stands before the zero.
void PathsWithAZero() {
  qb::win32::Win32Messages messages;
  const auto files = qb::win32::MakeFiles(messages);
  const std::string path("C:\\windows\0x", 12);
  can_be_opened = true;
  const qb::Error errors[] = {
      files->CreateFileA(path, GENERIC_READ, 0, OPEN_EXISTING, 0).error,
      files->DeleteFileA(path),
      files->MoveFileExA(path, "C:\\y", 0),
      files->MoveFileExA("C:\\y", path, MOVEFILE_DELAY_UNTIL_REBOOT),
      files->CopyFileA("C:\\y", path, true),
      files->CreateDirectoryA(path),
      files->RemoveDirectoryA(path),
      files->GetFileAttributesA(path).error,
      files->SetFileAttributesA(path, 0),
      files->FindFirstFileA(path).error,
      files->SetCurrentDirectoryA(path),
      qb::win32::MakeProcesses()->CreateProcessA(path, SW_HIDE).error,
  };
  bool refused = true;
  for (const qb::Error error : errors) refused = refused && error == qb::Error::InvalidName;
  Check(refused, "a path with a zero in it is refused before Windows is asked");
}

constexpr UINT kSent = WM_APP, kPosted = WM_APP + 1;
qb::win32::Win32Messages* asked_messages = nullptr;
int answered = 0, acted = 0;

LRESULT CALLBACK AskedProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == kSent && asked_messages->Answering()) ++answered;
  if (message == kPosted) ++acted;
  return DefWindowProcW(window, message, wparam, lparam);
}

// Work on files between two pumps: whoever asks a window meanwhile is answered, and the queue stays as it is.
void WindowsThatAnswer() {
  qb::win32::Win32Messages messages;
  asked_messages = &messages;
  const auto files = qb::win32::MakeFiles(messages);
  HWND window =
      CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, GetModuleHandleW(nullptr), nullptr);
  SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(AskedProc));
  std::atomic<bool> over = false;
  std::thread asking([&] {
    while (!over) SendMessageTimeoutW(window, kSent, 0, 0, SMTO_NORMAL, 100, nullptr);
  });
  const auto create = reinterpret_cast<decltype(&::CreateFileW)>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "CreateFileW")));
  HANDLE native = create(L"C:\\seam.bin", GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                         FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  const auto file = qb::win32::Wrap<qb::FileHandle>(native);
  std::string bytes(std::size_t{64} << 20, 'x');
  int in_flush = 0;
  bool right = true;
  auto write = [&](std::size_t count) {
    right = right && files->SetFilePointer(file, 0, qb::SeekFrom::Begin).ok() &&
            files->WriteFile(file, std::string_view(bytes).substr(0, count)).value == count;
  };
  const struct {
    const char* what;
    std::function<void()> work;
    const int& answers;
  } kWork[] = {
      {"written", [&] { write(4096); }, answered},
      {"flushed",
       [&] {
         write(std::size_t{8} << 20);
         const int before = answered;
         right = right && qb::Ok(files->FlushFileBuffers(file));
         in_flush += answered - before;
       },
       in_flush},
      {"read",
       [&] {
         right = right && files->SetFilePointer(file, 0, qb::SeekFrom::Begin).ok() &&
                 files->ReadFile(file, bytes).value == (std::size_t{8} << 20);
       },
       answered},
      {"opened", [&] { static_cast<void>(files->CreateFileA("C:\\x", GENERIC_READ, 0, OPEN_EXISTING, 0)); }, answered},
  };
  PostMessageW(window, kPosted, 0, 0);
  can_be_opened = false;
  for (const auto& c : kWork) {
    const int before = c.answers;
    const ULONGLONG until = GetTickCount64() + 20000;
    while (c.answers - before < 3 && GetTickCount64() < until) c.work();
    Check(c.answers - before >= 3 && right, std::string("a window answers while a file is ") + c.what);
  }
  Check(acted == 0, "and the queue is left alone");
  messages.PumpMessages();
  Check(acted == 1, "until the next pump");
  over = true;
  asking.join();
  Check(qb::Ok(files->CloseHandle(file)), "the file is closed");
  DestroyWindow(window);
}

}  // namespace

int main() {
  ReparseTags();
  WindowsThatAnswer();
  PathsWithAZero();
  ProcessNumbers();
  std::printf("driver: %d passed, %d failed\n", passed, failed);
  return failed == 0 ? 0 : 1;
}
