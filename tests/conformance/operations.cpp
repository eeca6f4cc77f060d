// The operations that sequences are made of, one row each.
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <tuple>

#include "runtime/text.h"
#include "tests/conformance/player.h"

namespace qb::conformance {

namespace {

// What is not compared, as no program acts on it: the archive bit, which Wine reports of every file, and with it the
// bit for "no attribute".
std::uint32_t Compared(std::uint32_t attributes) {
  return attributes & ~(kAttributeArchive | kAttributeNormal);
}

// A time that a sequence set is itself; all others are the time of the run.
std::string Time(FileTime time) {
  constexpr std::uint64_t kRunsBegin = 131900000000000000;  // 2018-12
  return time.ticks < kRunsBegin ? std::to_string(time.ticks) : "now";
}

std::string Number(std::uint64_t number) {
  return std::to_string(number);
}

// Windows counts made 8.3 names up and Wine adds up the letters: what stands round the "~" differs.
std::string WithoutMadeNames(const std::string& path) {
  std::string shown;
  for (std::size_t at = 0; at <= path.size();) {
    const std::size_t cut = std::min(path.find('\\', at), path.size());
    const std::string part = path.substr(at, cut - at);
    shown += (at == 0 ? "" : "\\") + (part.find('~') == std::string::npos ? part : std::string("~"));
    at = cut + 1;
  }
  return shown;
}

std::string Found(const FindData& data) {
  char attributes[16];
  std::snprintf(attributes, sizeof attributes, " %x ", Compared(data.attributes));
  return Visible(data.name) + attributes + Number((static_cast<std::uint64_t>(data.size_high) << 32) + data.size_low) +
         ' ' + Time(data.written) + (data.short_name.empty() ? "" : " ~");
}

std::string Listed(Player& c) {
  auto first = c.on().files.FindFirstFileA(c.Text(0));
  if (!first.ok()) return Show(first.error);
  std::string all = Found(first.value.data);
  Error end = Error::Success;
  while (Ok(end)) {
    auto next = c.on().files.FindNextFileA(first.value.handle);
    end = next.error;
    if (next.ok()) all += "; " + Found(next.value);
  }
  return all + "; " + Show(end) + ' ' + Show(c.on().files.FindClose(first.value.handle));
}

// How a value came out of the registry.
std::string Value(Error error, const RegValueInfo& info, std::string_view data) {
  if (!Ok(error) && error != Error::MoreData) return Show(error);
  return Show(error) + ' ' + Number(info.type) + ' ' + Number(info.size) + ' ' +
         Visible(data.substr(0, Ok(error) ? info.size : 0));
}

std::string Bytes(const std::string& buffer, std::size_t count) {
  return Visible(std::string_view(buffer).substr(0, count));
}

std::string Yes(bool yes) {
  return yes ? "yes" : "no";
}

std::string Placement(const WindowPlacement& p) {
  return "ok " + Number(p.show_command) + " (" + std::to_string(p.normal.left) + ' ' + std::to_string(p.normal.top) +
         ' ' + std::to_string(p.normal.right) + ' ' + std::to_string(p.normal.bottom) + ')';
}

std::string OpenWindow(Player& c, bool own) {
  const std::string slot = c.Name(0);
  auto& events = c.events();
  auto heard = [&events, slot](std::uint32_t message, std::uint64_t wparam, std::int64_t lparam) {
    events.push_back(slot + " heard " + Number(message) + ' ' + Number(wparam) + ' ' + std::to_string(lparam));
  };
  c.Keep(0, static_cast<std::uint64_t>(c.world().OpenWindow(c.Text(1), c.Text(2), own, heard)));
  return "ok";
}

// Pumps until so many events came; a pump that is empty for long ends it.
std::string Pumped(Player& c) {
  const std::uint64_t start = c.on().system.GetTickCount();
  do {
    c.on().pump.PumpMessages();
  } while (c.events().size() < c.Number(0) && c.on().system.GetTickCount() - start < 2000);
  std::string all = "ok";
  for (const std::string& event : c.events()) all += "; " + event;
  c.events().clear();
  return all;
}

NotifyIconData Icon(Player& c) {
  NotifyIconData data;
  data.window = c.In<WindowHandle>(1);
  data.id = c.Count(2);
  data.flags = kTrayMessageIconTip;
  data.callback_message = kMessageMouseMove;
  data.tip = c.Text(3);
  return data;
}

std::string CacheFound(const CacheCall& call, const CacheEntryInfo& entry) {
  if (call.result == 0) return Show(call.last_error);
  char type[16];
  std::snprintf(type, sizeof type, " %x", entry.type);
  return "ok " + entry.source_url + type;
}

// The word at a place of the call as an argument of an operation.
template <typename T>
auto Argument(const Player& c, std::size_t i) {
  if constexpr (std::is_same_v<T, std::string_view>) {
    return c.Text(i);
  } else if constexpr (std::is_same_v<T, std::optional<std::string_view>>) {
    return c.MaybeText(i);
  } else if constexpr (std::is_same_v<T, std::optional<FileTime>>) {
    return c.Given(i) ? std::optional(FileTime{c.Number(i)}) : std::nullopt;
  } else if constexpr (std::is_enum_v<T> && !std::is_same_v<T, SeekFrom>) {
    return c.In<T>(i);
  } else {
    return static_cast<T>(c.Number(i));
  }
}

// What an operation gives for the words of the call from one of them on.
template <typename Answer, typename Part, typename... Types>
Answer AnswerOf(Player& c, Answer (Part::*operation)(Types...), std::size_t first = 0) {
  Platform& on = c.on();
  auto& part =
      std::get<Part&>(std::tie(on.registry, on.files, on.shell, on.system, on.processes, on.desktop,
                               on.hot_keys_and_tray, on.pump, on.random_source, on.url_cache, on.key_security));
  return [&]<std::size_t... kAt>(std::index_sequence<kAt...>) {
    return (part.*operation)(Argument<Types>(c, first + kAt)...);
  }
  (std::index_sequence_for<Types...>());
}

template <auto kOperation>
std::string Plain(Player& c) {
  const auto answer = AnswerOf(c, kOperation);
  using Answer = std::remove_const_t<decltype(answer)>;
  if constexpr (std::is_same_v<Answer, bool>) {
    return Yes(answer);
  } else if constexpr (std::is_same_v<Answer, Result<std::string>>) {
    return answer.ok() ? "ok " + Visible(answer.value) : Show(answer.error);
  } else if constexpr (std::is_integral_v<Answer> || std::is_same_v<Answer, DriveType>) {
    return Number(static_cast<std::uint64_t>(answer));
  } else {
    return Show(answer);
  }
}

template <auto kOperation>
std::string Opens(Player& c) {
  return c.Opened(0, AnswerOf(c, kOperation, 1));
}

template <auto kOperation>
std::string OpensKey(Player& c) {
  const auto opened = AnswerOf(c, kOperation, 1);
  const bool same = opened.ok() && opened.value == c.In<KeyHandle>(1);
  return c.Opened(0, opened) + (same ? " same" : "");
}

template <auto kOperation>
std::string Closes(Player& c) {
  return c.Closed(0, AnswerOf(c, kOperation));
}

template <auto kOperation>
std::string FindsWindow(Player& c) {
  return c.SlotOf(static_cast<std::uint64_t>(AnswerOf(c, kOperation)));
}

template <auto kOperation>
std::string Named(Player& c) {
  TextBuffer name(c.Number(1));
  const auto length = (c.on().desktop.*kOperation)(c.In<WindowHandle>(0), name);
  return Number(length) + ' ' + Visible(name.text());
}

// A path that was filled in; "~" stands for a made 8.3 name, whose length differs with it.
template <auto kOperation>
std::string OtherForm(Player& c) {
  TextBuffer buffer(c.Number(1));
  const Result<std::uint32_t> length = (c.on().files.*kOperation)(c.Text(0), buffer);
  const std::string text = buffer.text();
  if (length.ok() && length.value < buffer.size()) c.KeepText(2, text);
  if (text.find('~') != std::string::npos) return "ok " + WithoutMadeNames(text);
  return length.ok() ? Show(length) + ' ' + Visible(text) : Show(length);
}

constexpr std::uint32_t kAmple = 4096;  // bytes for one entry of the cache

// clang-format off
const Row kRows[] = {
    // files
    {"CreateFileA", "Fpahdg", Opens<&Files::CreateFileA>},
    {"ReadFile", "fn", [](Player& c) {
       std::string buffer(c.Number(1), '?');
       auto read = c.on().files.ReadFile(c.In<FileHandle>(0), buffer);
       return read.ok() ? Show(read) + ' ' + Bytes(buffer, read.value) : Show(read); }},
    {"WriteFile", "fb", Plain<&Files::WriteFile>},
    {"SetFilePointer", "fDo", Plain<&Files::SetFilePointer>},
    {"SetEndOfFile", "f", Plain<&Files::SetEndOfFile>},
    {"GetFileSize", "f", Plain<&Files::GetFileSize>},
    {"FlushFileBuffers", "f", Plain<&Files::FlushFileBuffers>},
    {"SetFileTime", "fTTT", Plain<&Files::SetFileTime>},
    {"CloseHandle", "f", Closes<&Files::CloseHandle>},
    {"DeleteFileA", "p", Plain<&Files::DeleteFileA>},
    {"MoveFileExA", "pEm", Plain<&Files::MoveFileExA>},
    {"CopyFileA", "ppB", Plain<&Files::CopyFileA>},
    {"CreateDirectoryA", "p", Plain<&Files::CreateDirectoryA>},
    {"RemoveDirectoryA", "p", Plain<&Files::RemoveDirectoryA>},
    {"GetFileAttributesA", "p", [](Player& c) {
       auto attributes = c.on().files.GetFileAttributesA(c.Text(0));
       attributes.value = Compared(attributes.value);
       return Show(attributes); }},
    {"SetFileAttributesA", "pA", Plain<&Files::SetFileAttributesA>},
    {"List", "P", Listed},
    {"FindFirstFileA", "SP", [](Player& c) {
       auto first = c.on().files.FindFirstFileA(c.Text(1));
       if (first.ok()) c.Keep(0, static_cast<std::uint64_t>(first.value.handle));
       return first.ok() ? "ok " + Found(first.value.data) : Show(first.error); }},
    {"FindNextFileA", "s", [](Player& c) {
       auto next = c.on().files.FindNextFileA(c.In<FindHandle>(0));
       return next.ok() ? "ok " + Found(next.value) : Show(next.error); }},
    {"FindClose", "s", Closes<&Files::FindClose>},
    {"GetShortPathNameA", "pzt", OtherForm<&Files::GetShortPathNameA>},
    {"GetLongPathNameA", "pzt", OtherForm<&Files::GetLongPathNameA>},
    {"GetTempFileNameA", "pbt", [](Player& c) {
       auto name = c.on().files.GetTempFileNameA(c.Text(0), c.Text(1));
       if (!name.ok()) return Show(name.error);
       c.KeepText(2, name.value);
       // The digits are those of the clock.
       const std::string file = name.value.substr(name.value.find_last_of('\\') + 1);
       return "ok " + name.value.substr(0, name.value.size() - file.size()) +
              file.substr(0, std::min<std::size_t>(3, std::strlen(c.Text(1).c_str()))) +
              (file.ends_with(".tmp") || file.ends_with(".TMP") ? " .tmp" : ""); }},
    {"MakeLink", "pp", [](Player& c) { c.world().MakeLink(c.Text(0), c.Text(1)); return std::string("ok"); }},
    {"GetTempPathA", "", [](Player& c) {
       auto path = c.on().files.GetTempPathA();
       return path.ok() ? "ok " + Yes(path.value.ends_with('\\')) : Show(path.error); }},
    {"GetCurrentDirectoryA", "", Plain<&Files::GetCurrentDirectoryA>},
    {"SetCurrentDirectoryA", "V", Plain<&Files::SetCurrentDirectoryA>},
    {"GetLogicalDriveStringsA", "z", [](Player& c) {
       std::string buffer(c.Number(0), '?');
       auto length = c.on().files.GetLogicalDriveStringsA(buffer);
       return length.ok() ? Show(length) + ' ' + (length.value < buffer.size() ? Bytes(buffer, length.value) : "")
                          : Show(length); }},
    {"GetDriveTypeA", "p", Plain<&Files::GetDriveTypeA>},
    {"GetVolumeInformationA", "p", [](Player& c) { return Show(c.on().files.GetVolumeInformationA(c.Text(0)).error); }},
    {"GetDiskFreeSpaceExA", "p", [](Player& c) {
       auto space = c.on().files.GetDiskFreeSpaceExA(c.Text(0));
       return Show(space.error) + (space.ok() ? ' ' + Yes(space.value.free <= space.value.total) : ""); }},

    // registry
    {"RegOpenKeyA", "Kky", OpensKey<&Registry::RegOpenKeyA>},
    {"RegOpenKeyExA", "KkyR", Opens<&Registry::RegOpenKeyExA>},
    {"RegCreateKeyA", "Kky", OpensKey<&Registry::RegCreateKeyA>},
    {"RegCreateKeyExA", "KkyR", Opens<&Registry::RegCreateKeyExA>},
    {"RegCloseKey", "k", Closes<&Registry::RegCloseKey>},
    {"RegQueryValueExA", "kvN", [](Player& c) {
       std::string buffer(c.Given(2) ? c.Number(2) : 0, '?');
       RegValueInfo info;
       const Error error = c.on().registry.RegQueryValueExA(c.In<KeyHandle>(0), c.Text(1),
                                                            c.Given(2) ? Buffer(buffer) : Buffer(), info);
       return Value(error, info, buffer); }},
    {"RegSetValueExA", "kvYx", Plain<&Registry::RegSetValueExA>},
    {"RegDeleteKeyA", "ky", Plain<&Registry::RegDeleteKeyA>},
    {"RegDeleteValueA", "kv", Plain<&Registry::RegDeleteValueA>},
    {"RegEnumKeyA", "kIz", [](Player& c) {
       TextBuffer name(c.Number(2));
       const Error error = c.on().registry.RegEnumKeyA(c.In<KeyHandle>(0), c.Count(1), name);
       return Show(error) + (Ok(error) ? ' ' + Visible(name.text()) : ""); }},
    {"RegEnumKeyExA", "kIz", [](Player& c) {
       TextBuffer name(c.Number(2));
       std::uint32_t length = 0;
       const Error error = c.on().key_security.RegEnumKeyExA(c.In<KeyHandle>(0), c.Count(1), name, length);
       return Show(error) + (Ok(error) ? ' ' + Number(length) + ' ' + Visible(name.text()) : ""); }},
    {"RegEnumValueA", "kIzN", [](Player& c) {
       TextBuffer name(c.Number(2));
       std::string buffer(c.Given(3) ? c.Number(3) : 0, '?');
       RegValueInfo info;
       const Error error = c.on().registry.RegEnumValueA(c.In<KeyHandle>(0), c.Count(1), name,
                                                         c.Given(3) ? Buffer(buffer) : Buffer(), info);
       return Value(error, info, buffer) + (Ok(error) ? ' ' + Visible(name.text()) : ""); }},
    {"RegGetKeySecurity", "kn", [](Player& c) {
       std::string buffer(c.Number(1), '?');
       std::uint32_t size = 0;
       return Show(c.on().key_security.RegGetKeySecurity(c.In<KeyHandle>(0), kDaclInformation, buffer, size)); }},
    {"RegSetKeySecurity", "k", [](Player& c) {
       std::string descriptor(kDescriptorLength, '\0');
       StepOver(c.on().key_security.InitializeSecurityDescriptor(descriptor, kDescriptorRevision));
       return Show(c.on().key_security.RegSetKeySecurity(c.In<KeyHandle>(0), kDaclInformation, descriptor)); }},
    {"InitializeSecurityDescriptor", "n", [](Player& c) {
       std::string descriptor(kDescriptorLength, '\0');
       return Show(c.on().key_security.InitializeSecurityDescriptor(descriptor, c.Count(0))); }},
    {"LookupAccountNameA", "bN", [](Player& c) {
       std::string identifier(64, '\0');
       TextBuffer domain(c.Given(1) ? c.Number(1) : 0);
       std::uint32_t size = 0;
       return Show(c.on().key_security.LookupAccountNameA(c.Text(0), identifier, c.Given(1) ? &domain : nullptr,
                                                          size)); }},

    // the system
    {"GetPrivateProfileStringA", "jjbzp", [](Player& c) {
       TextBuffer buffer(c.Number(3));
       const auto length = c.on().system.GetPrivateProfileStringA(c.Text(0), c.Text(1), c.Text(2), buffer, c.Text(4));
       return Number(length) + ' ' + Visible(buffer.text()); }},
    {"GetEnvironmentVariableA", "b", [](Player& c) {
       const auto value = c.on().system.GetEnvironmentVariableA(c.Text(0));
       return value ? "ok " + Visible(*value) : "none"; }},
    {"GetVersionExA", "", [](Player& c) {
       auto version = c.on().system.GetVersionExA();
       return Show(version.error) + ' ' + Number(version.value.platform_id); }},
    {"GetUserNameA", "z", [](Player& c) {
       TextBuffer buffer(c.Number(0));
       auto length = c.on().system.GetUserNameA(buffer);
       return length.ok() ? "ok " + Yes(length.value == buffer.text().size() + 1) : Show(length); }},
    {"GetWindowsDirectoryA", "z", [](Player& c) {
       TextBuffer buffer(c.Number(0));
       auto length = c.on().system.GetWindowsDirectoryA(buffer);
       return Show(length) + ' ' + Yes(SameText(buffer.text(), "C:\\WINDOWS")); }},
    {"WideCharToMultiByte", "b", Plain<&System::WideCharToMultiByte>},
    {"MultiByteToWideChar", "b", Plain<&System::MultiByteToWideChar>},
    {"InitCommonControlsEx", "n", [](Player& c) { return Yes(c.on().system.InitCommonControlsEx(c.Count(0), 0xFF)); }},
    {"FileTimeToLocalFileTime", "T", [](Player& c) {
       auto local = c.on().system.FileTimeToLocalFileTime({c.Number(0)});
       if (!local.ok()) return Show(local.error);
       auto back = c.on().system.LocalFileTimeToFileTime(local.value);
       return Show(back.error) + ' ' + Number(back.value.ticks); }},
    {"GetLocalTime", "", [](Player& c) {
       const SystemTime time = c.on().system.GetLocalTime(), utc = c.on().system.GetSystemTime();
       return Yes(time.year >= 2019 && time.month <= 12 && utc.year >= 2019 && utc.hour < 24); }},

    // the shell
    {"SHGetFolderPathA", "n", [](Player& c) {
       TextBuffer path(260);
       const auto result = c.on().shell.SHGetFolderPathA(c.Count(0), path);
       return Number(result) + ' ' + Show(c.on().files.GetFileAttributesA(path.text())); }},
    {"SHGetSpecialFolderLocation", "Jn", [](Player& c) {
       auto item = c.on().shell.SHGetSpecialFolderLocation(WindowHandle::None, c.Count(1));
       TextBuffer path(260), same(260);
       if (!item.ok()) return std::string("error");
       c.Keep(0, static_cast<std::uint64_t>(item.value));
       StepOver(c.on().shell.SHGetFolderPathA(c.Count(1), same));
       const bool told = c.on().shell.SHGetPathFromIDListA(item.value, path);
       return Yes(told) + ' ' + Yes(path.text() == same.text()); }},
    {"CoTaskMemFree", "i", [](Player& c) {
       c.on().shell.CoTaskMemFree(c.In<ItemIdList>(0));
       return c.Closed(0, Error::Success); }},
    {"SHFileOperationA", "pn", [](Player& c) {
       constexpr std::uint32_t kDelete = 3, kSilent = 0x4 | 0x10 | 0x400;
       const FileOperation operation{WindowHandle::None, kDelete, c.Text(0), kSilent | c.Count(1)};
       return Show(static_cast<Error>(c.on().shell.SHFileOperationA(operation))); }},
    {"ShellExecuteA", "p", [](Player& c) {
       return Number(c.on().shell.ShellExecuteA(WindowHandle::None, "open", c.Text(0), std::nullopt, std::nullopt, 1)); }},
    {"FindExecutableA", "p", [](Player& c) {
       TextBuffer program(260);
       const auto result = c.on().shell.FindExecutableA(c.Text(0), std::nullopt, program);
       return result > 32 ? "found" : Number(result); }},
    {"SHQueryRecycleBinA", "", [](Player& c) {
       auto bin = c.on().shell.SHQueryRecycleBinA("C:\\");
       return bin.ok() ? "ok " + Number(bin.value.items) : Show(bin.error); }},
    {"SHEmptyRecycleBinA", "", [](Player& c) {
       return Number(c.on().shell.SHEmptyRecycleBinA(WindowHandle::None, std::nullopt, 7)); }},

    // processes and mutexes
    {"CreateProcessA", "tp", [](Player& c) {
       auto id = c.on().processes.CreateProcessA(c.Text(1), 0);
       if (id.ok()) c.KeepText(0, Number(id.value));
       return Show(id.error); }},
    {"OpenProcess", "Ht", [](Player& c) {
       const auto id = static_cast<std::uint32_t>(std::strtoul(c.Text(1).c_str(), nullptr, 10));
       return c.Opened(0, c.on().processes.OpenProcess(kProcessQueryInformation, false, id)); }},
    {"WaitForEnd", "h", [](Player& c) {  // GetExitCodeProcess until the process has ended
       for (;;) {
         auto code = c.on().processes.GetExitCodeProcess(c.In<ProcessHandle>(0));
         if (!code.ok() || code.value != kStillActive) return Show(code);
         c.on().pump.PumpMessages();
       } }},
    {"CloseProcess", "h", [](Player& c) {
       return c.Closed(0, c.on().processes.CloseHandle(c.In<ProcessHandle>(0))); }},
    {"CreateMutexA", "Mb", [](Player& c) {
       auto made = c.on().processes.CreateMutexA(c.Text(1));
       if (made.ok()) c.Keep(0, static_cast<std::uint64_t>(made.value.handle));
       return Show(made.error) + (made.value.existed ? " existed" : ""); }},
    {"CloseMutex", "M", [](Player& c) { return c.Closed(0, c.on().processes.CloseHandle(c.In<MutexHandle>(0))); }},

    // random source
    {"CryptAcquireContextA", "CqqnG", [](Player& c) {
       const auto container = c.MaybeText(1);
       const std::optional<std::string> provider = c.Name(2) == "enhanced" ? kEnhancedProvider : c.MaybeText(2);
       return c.Opened(0, c.on().random_source.CryptAcquireContextA(container, provider, c.Count(3), c.Count(4))); }},
    {"CryptGenRandom", "cn", [](Player& c) {
       std::string buffer(c.Number(1), '\0');
       const Error error = c.on().random_source.CryptGenRandom(c.In<CryptContext>(0), buffer);
       return Show(error) + ' ' + Yes(std::any_of(buffer.begin(), buffer.end(), [](char byte) { return byte != 0; })); }},
    {"CryptReleaseContext", "cn", Closes<&RandomSource::CryptReleaseContext>},

    // the URL cache
    {"AddToCache", "ln", [](Player& c) { c.world().AddToCache(c.Text(0), c.Count(1)); return std::string("ok"); }},
    {"FindFirstUrlCacheEntryA", "UqN", [](Player& c) {
       std::uint32_t size = c.Given(2) ? c.Count(2) : kAmple;
       CacheEntryInfo entry;
       const auto pattern = c.MaybeText(1);
       const CacheCall call = c.on().url_cache.FindFirstUrlCacheEntryA(pattern, c.Name(2) == "0" ? nullptr : &entry, size);
       if (call.result != 0) c.Keep(0, call.result);
       return CacheFound(call, entry); }},
    {"FindNextUrlCacheEntryA", "uN", [](Player& c) {
       std::uint32_t size = c.Given(1) ? c.Count(1) : kAmple;
       CacheEntryInfo entry;
       return CacheFound(c.on().url_cache.FindNextUrlCacheEntryA(c.In<std::uint64_t>(0),
                                                                 c.Name(1) == "0" ? nullptr : &entry, size), entry); }},
    {"FindCloseUrlCache", "u", [](Player& c) {
       return c.Closed(0, c.on().url_cache.FindCloseUrlCache(c.In<std::uint64_t>(0))); }},
    {"DeleteUrlCacheEntryA", "l", Plain<&UrlCache::DeleteUrlCacheEntryA>},

    // windows
    {"OpenWindow", "Wbb", [](Player& c) { return OpenWindow(c, false); }},
    {"OpenOwnWindow", "Wbb", [](Player& c) { return OpenWindow(c, true); }},
    {"CloseWindow", "w", [](Player& c) {
       c.world().CloseWindow(c.In<WindowHandle>(0));
       return c.Closed(0, Error::Success); }},
    {"FindWindowA", "qq", FindsWindow<&Desktop::FindWindowA>},
    {"FindWindowExA", "wwqq", FindsWindow<&Desktop::FindWindowExA>},
    {"EnumWindows", "n", [](Player& c) {  // until so many of the sequence's windows were seen
       std::string all;
       std::uint64_t left = c.Number(0);
       const bool whole = c.on().desktop.EnumWindows([&](WindowHandle window) {
         const std::string slot = c.SlotOf(static_cast<std::uint64_t>(window));
         if (slot == "other") return true;
         all += slot + ' ';
         return --left != 0;
       });
       return all + Yes(whole); }},
    {"GetWindow", "wn", FindsWindow<&Desktop::GetWindow>},
    {"GetClassNameA", "wz", Named<&Desktop::GetClassNameA>},
    {"GetWindowTextA", "wz", Named<&Desktop::GetWindowTextA>},
    {"GetWindowTextLengthA", "w", Plain<&Desktop::GetWindowTextLengthA>},
    {"SetWindowTextA", "wb", Plain<&Desktop::SetWindowTextA>},
    {"GetWindowPlacement", "wn", [](Player& c) {
       WindowPlacement placement;
       placement.length = c.Count(1);
       const Error error = c.on().desktop.GetWindowPlacement(c.In<WindowHandle>(0), placement);
       return Ok(error) ? Placement(placement) : Show(error); }},
    {"SetWindowPlacement", "wnnn", [](Player& c) {  // command, left, and the length of the structure
       WindowPlacement placement;
       placement.length = c.Count(3);
       placement.show_command = c.Count(1);
       const auto left = static_cast<std::int32_t>(c.Number(2));
       placement.normal = {left, 50, left + 300, 250};
       return Show(c.on().desktop.SetWindowPlacement(c.In<WindowHandle>(0), placement)); }},
    {"ShowWindow", "wn", Plain<&Desktop::ShowWindow>},
    {"OpenIcon", "w", Plain<&Desktop::OpenIcon>},
    {"SetForegroundWindow", "w", Plain<&Desktop::SetForegroundWindow>},

    // hot keys, tray, procedures
    {"RegisterHotKey", "wnnn", Plain<&HotKeysAndTray::RegisterHotKey>},
    {"UnregisterHotKey", "wn", Plain<&HotKeysAndTray::UnregisterHotKey>},
    {"Shell_NotifyIconA", "nwnb", [](Player& c) {
       return Yes(c.on().hot_keys_and_tray.Shell_NotifyIconA(c.Count(0), Icon(c))); }},
    {"RegisterWindowMessageA", "bb", [](Player& c) {
       const auto one = c.on().hot_keys_and_tray.RegisterWindowMessageA(c.Text(0));
       const auto other = c.on().hot_keys_and_tray.RegisterWindowMessageA(c.Text(1));
       return Yes(one >= 0xC000) + ' ' + Yes(one == other); }},
    {"SetWindowLongA", "wb", [](Player& c) {  // a procedure that tells of itself and passes on
       auto before = std::make_shared<WindowProcedure>(WindowProcedure::None);
       auto& events = c.events();
       Platform& on = c.on();
       *before = on.hot_keys_and_tray.SetWindowLongA(
           c.In<WindowHandle>(0), kIndexWindowProcedure,
           [&events, &on, before, mark = c.Text(1)](WindowHandle window, std::uint32_t message, std::uint64_t wparam,
                                                    std::int64_t lparam) {
             if (message >= 0x400) events.push_back(mark);
             return on.hot_keys_and_tray.CallWindowProcA(*before, window, message, wparam, lparam);
           });
       return Yes(*before != WindowProcedure::None); }},
    {"LoadCursorA", "n", [](Player& c) {
       return Yes(c.on().hot_keys_and_tray.LoadCursorA(c.Count(0)) != CursorHandle::None); }},

    // the pump
    {"PostMessageA", "wnnn", Plain<&Pump::PostMessageA>},
    {"SetTimer", "wnnb", [](Player& c) {  // its tick tells the mark; a mark that ends in ! ends the timer, too
       Platform& on = c.on();
       const auto window = c.In<WindowHandle>(0);
       const std::uint32_t id = c.Count(1);
       c.KeepTimer(window, id);
       return Yes(on.pump.SetTimer(window, id, c.Count(2), [&events = c.events(), &on, window, id, mark = c.Text(3)] {
         events.push_back(mark);
         if (mark.ends_with('!')) StepOver(on.pump.KillTimer(window, id));
       })); }},
    {"KillTimer", "wn", Plain<&Pump::KillTimer>},
    {"PumpMessages", "n", Pumped},
};
// clang-format on

}  // namespace

const Row* FindRow(const std::string& name) {
  const auto* row = std::find_if(std::begin(kRows), std::end(kRows), [&](const Row& at) { return name == at.name; });
  return row == std::end(kRows) ? nullptr : row;
}

}  // namespace qb::conformance
