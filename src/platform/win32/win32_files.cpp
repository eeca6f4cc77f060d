// Files, folders and drives, answered by Windows.
#include <utility>

#include "platform/win32/convert.h"
#include "platform/win32/factories.h"
#include "platform/win32/native_path.h"

namespace qb::win32 {

namespace {

constexpr DWORD kNameSize = MAX_PATH + 1;
constexpr std::uint64_t kLongFlush = 4 << 20;     // bytes
constexpr DWORD kLinuxSymbolicLink = 0xA000001D;  // IO_REPARSE_TAG_LX_SYMLINK

// Attributes as the program acts on them: only what leads elsewhere is a reparse point. A deduplicated file or one of a
// cloud folder has that bit too and is a file like all others. A tag of 0 is one that could not be read.
std::uint32_t Attributes(DWORD attributes, DWORD reparse_tag) {
  const bool link = reparse_tag == IO_REPARSE_TAG_MOUNT_POINT || reparse_tag == IO_REPARSE_TAG_SYMLINK ||
                    reparse_tag == kLinuxSymbolicLink || reparse_tag == 0;
  return link ? attributes : attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_REPARSE_POINT);
}

// The reparse tag of what stands at a path itself; 0 if it cannot be read.
DWORD ReparseTag(const std::wstring& path) {
  HANDLE opened =
      ::CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
  if (opened == INVALID_HANDLE_VALUE) return 0;
  FILE_ATTRIBUTE_TAG_INFO info{};
  const BOOL known = ::GetFileInformationByHandleEx(opened, FileAttributeTagInfo, &info, sizeof info);
  ::CloseHandle(opened);
  return known ? info.ReparseTag : 0;
}

FindData FromNative(const WIN32_FIND_DATAW& native) {
  FindData data;
  // Windows tells the tag here, where there is one.
  data.attributes = Attributes(native.dwFileAttributes, native.dwReserved0);
  data.created = win32::FromNative(native.ftCreationTime);
  data.accessed = win32::FromNative(native.ftLastAccessTime);
  data.written = win32::FromNative(native.ftLastWriteTime);
  data.size_high = native.nFileSizeHigh;
  data.size_low = native.nFileSizeLow;
  data.name = TextOf(native.cFileName);
  data.short_name = TextOf(native.cAlternateFileName);
  return data;
}

std::optional<FILETIME> NativeTime(std::optional<FileTime> time) {
  if (!time) return std::nullopt;
  return ToNative(*time);
}

const FILETIME* PointerTo(const std::optional<FILETIME>& time) {
  return time ? &*time : nullptr;
}

// Calls with a path and gives the failure of either.
template <typename Call>
Error OnPath(std::string_view path, Call call) {
  auto native = NativePath(path);
  return native.ok() ? FromBool(call(native.value.c_str())) : native.error;
}

// Fills the buffer with another form of a path.
template <typename Call>
Result<std::uint32_t> OtherForm(std::string_view path, TextBuffer& buffer, Call call) {
  auto native = NativePath(path);
  if (!native.ok()) return native.error;
  auto text = FilledText([&](wchar_t* filled, DWORD size) { return call(native.value.c_str(), filled, size); });
  if (!text.ok()) return text.error;
  return buffer.Fill(PlainPath(text.value));
}

// A flush in a thread of its own, whose handle is signalled at its end.
struct Flush {
  static DWORD WINAPI Run(void* flush) {
    auto& self = *static_cast<Flush*>(flush);
    self.outcome = FromBool(::FlushFileBuffers(self.file));
    return 0;
  }
  HANDLE file;
  Error outcome = Error::Success;
};

class Win32Files : public Files {
 public:
  explicit Win32Files(Win32Messages& messages) : messages_(messages) {}

  Result<FileHandle> CreateFileA(std::string_view path, std::uint32_t access, std::uint32_t share,
                                 std::uint32_t disposition, std::uint32_t flags_and_attributes) override;
  Result<std::uint32_t> ReadFile(FileHandle file, Buffer buffer) override;
  Result<std::uint32_t> WriteFile(FileHandle file, std::string_view data) override;
  Result<std::uint64_t> SetFilePointer(FileHandle file, std::int64_t distance, SeekFrom from) override;
  Error SetEndOfFile(FileHandle file) override;
  Result<std::uint64_t> GetFileSize(FileHandle file) override;
  Error FlushFileBuffers(FileHandle file) override;
  Error SetFileTime(FileHandle file, std::optional<FileTime> created, std::optional<FileTime> accessed,
                    std::optional<FileTime> written) override;
  Error CloseHandle(FileHandle file) override;

  Error DeleteFileA(std::string_view path) override;
  Error MoveFileExA(std::string_view from, std::optional<std::string_view> to, std::uint32_t flags) override;
  Error CopyFileA(std::string_view from, std::string_view to, bool fail_if_exists) override;
  Error CreateDirectoryA(std::string_view path) override;
  Error RemoveDirectoryA(std::string_view path) override;
  Result<std::uint32_t> GetFileAttributesA(std::string_view path) override;
  Error SetFileAttributesA(std::string_view path, std::uint32_t attributes) override;

  Result<FirstFile> FindFirstFileA(std::string_view pattern) override;
  Result<FindData> FindNextFileA(FindHandle handle) override;
  Error FindClose(FindHandle handle) override;

  Result<std::uint32_t> GetShortPathNameA(std::string_view path, TextBuffer& buffer) override;
  Result<std::uint32_t> GetLongPathNameA(std::string_view path, TextBuffer& buffer) override;
  Result<std::string> GetTempPathA() override;
  Result<std::string> GetTempFileNameA(std::string_view folder, std::string_view prefix) override;
  Result<std::string> GetCurrentDirectoryA() override;
  Error SetCurrentDirectoryA(std::string_view path) override;

  Result<std::uint32_t> GetLogicalDriveStringsA(Buffer buffer) override;
  DriveType GetDriveTypeA(std::string_view root) override;
  Result<VolumeInfo> GetVolumeInformationA(std::string_view root) override;
  Error SetVolumeLabelA(std::string_view root, std::string_view label) override;
  Result<DiskSpace> GetDiskFreeSpaceExA(std::string_view root) override;

 private:
  Win32Messages& messages_;
  std::uint64_t unflushed_ = 0;  // bytes written to whatever file since the last flush
};

}  // namespace

Result<FileHandle> Win32Files::CreateFileA(std::string_view path, std::uint32_t access, std::uint32_t share,
                                           std::uint32_t disposition, std::uint32_t flags_and_attributes) {
  messages_.AnswerWhenDue();
  auto native = NativePath(path);
  if (!native.ok()) return native.error;
  HANDLE file = ::CreateFileW(native.value.c_str(), access, share, nullptr, disposition, flags_and_attributes, nullptr);
  if (file == INVALID_HANDLE_VALUE) return LastError();
  return Wrap<FileHandle>(file);
}

Result<std::uint32_t> Win32Files::ReadFile(FileHandle file, Buffer buffer) {
  messages_.AnswerWhenDue();
  DWORD read = 0;
  if (!::ReadFile(Unwrap<HANDLE>(file), buffer.data(), SizeOf(buffer), &read, nullptr)) return LastError();
  return read;
}

Result<std::uint32_t> Win32Files::WriteFile(FileHandle file, std::string_view data) {
  messages_.AnswerWhenDue();
  DWORD written = 0;
  if (!::WriteFile(Unwrap<HANDLE>(file), data.data(), static_cast<DWORD>(data.size()), &written, nullptr)) {
    return LastError();
  }
  unflushed_ += written;
  return written;
}

Result<std::uint64_t> Win32Files::SetFilePointer(FileHandle file, std::int64_t distance, SeekFrom from) {
  LARGE_INTEGER by, position;
  by.QuadPart = distance;
  if (!::SetFilePointerEx(Unwrap<HANDLE>(file), by, &position, static_cast<DWORD>(from))) return LastError();
  return static_cast<std::uint64_t>(position.QuadPart);
}

Error Win32Files::SetEndOfFile(FileHandle file) {
  return FromBool(::SetEndOfFile(Unwrap<HANDLE>(file)));
}

Result<std::uint64_t> Win32Files::GetFileSize(FileHandle file) {
  LARGE_INTEGER size;
  if (!::GetFileSizeEx(Unwrap<HANDLE>(file), &size)) return LastError();
  return static_cast<std::uint64_t>(size.QuadPart);
}

Error Win32Files::FlushFileBuffers(FileHandle file) {
  // A disk takes seconds for much, during which this thread must not seem hung. For little a thread is too dear.
  const bool long_work = std::exchange(unflushed_, 0) >= kLongFlush && !messages_.Answering();
  Flush flush{Unwrap<HANDLE>(file)};
  HANDLE thread = long_work ? ::CreateThread(nullptr, 0, Flush::Run, &flush, 0, nullptr) : nullptr;
  if (thread == nullptr) {
    Flush::Run(&flush);
    return flush.outcome;
  }
  while (::MsgWaitForMultipleObjectsEx(1, &thread, INFINITE, QS_SENDMESSAGE, MWMO_INPUTAVAILABLE) ==
         WAIT_OBJECT_0 + 1) {
    messages_.AnswerSentMessages();
  }
  ::WaitForSingleObject(thread, INFINITE);
  ::CloseHandle(thread);
  return flush.outcome;
}

Error Win32Files::SetFileTime(FileHandle file, std::optional<FileTime> created, std::optional<FileTime> accessed,
                              std::optional<FileTime> written) {
  const auto c = NativeTime(created), a = NativeTime(accessed), w = NativeTime(written);
  return FromBool(::SetFileTime(Unwrap<HANDLE>(file), PointerTo(c), PointerTo(a), PointerTo(w)));
}

Error Win32Files::CloseHandle(FileHandle file) {
  return FromBool(::CloseHandle(Unwrap<HANDLE>(file)));
}

Error Win32Files::DeleteFileA(std::string_view path) {
  return OnPath(path, ::DeleteFileW);
}

Error Win32Files::MoveFileExA(std::string_view from, std::optional<std::string_view> to, std::uint32_t flags) {
  auto target = NativePath(to.value_or(""));
  if (!target.ok()) return target.error;
  return OnPath(
      from, [&](const wchar_t* source) { return ::MoveFileExW(source, to ? target.value.c_str() : nullptr, flags); });
}

Error Win32Files::CopyFileA(std::string_view from, std::string_view to, bool fail_if_exists) {
  auto target = NativePath(to);
  if (!target.ok()) return target.error;
  return OnPath(from, [&](const wchar_t* source) { return ::CopyFileW(source, target.value.c_str(), fail_if_exists); });
}

Error Win32Files::CreateDirectoryA(std::string_view path) {
  return OnPath(path, [](const wchar_t* native) { return ::CreateDirectoryW(native, nullptr); });
}

Error Win32Files::RemoveDirectoryA(std::string_view path) {
  return OnPath(path, ::RemoveDirectoryW);
}

Result<std::uint32_t> Win32Files::GetFileAttributesA(std::string_view path) {
  auto native = NativePath(path);
  if (!native.ok()) return native.error;
  const DWORD attributes = ::GetFileAttributesW(native.value.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return LastError();
  if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) return attributes;
  return Attributes(attributes, ReparseTag(native.value));
}

Error Win32Files::SetFileAttributesA(std::string_view path, std::uint32_t attributes) {
  return OnPath(path, [&](const wchar_t* native) { return ::SetFileAttributesW(native, attributes); });
}

Result<FirstFile> Win32Files::FindFirstFileA(std::string_view pattern) {
  auto native = NativePath(pattern);
  if (!native.ok()) return native.error;
  WIN32_FIND_DATAW data;
  HANDLE handle = ::FindFirstFileW(native.value.c_str(), &data);
  if (handle == INVALID_HANDLE_VALUE) return LastError();
  return FirstFile{Wrap<FindHandle>(handle), FromNative(data)};
}

Result<FindData> Win32Files::FindNextFileA(FindHandle handle) {
  WIN32_FIND_DATAW data;
  if (!::FindNextFileW(Unwrap<HANDLE>(handle), &data)) return LastError();
  return FromNative(data);
}

Error Win32Files::FindClose(FindHandle handle) {
  return FromBool(::FindClose(Unwrap<HANDLE>(handle)));
}

Result<std::uint32_t> Win32Files::GetShortPathNameA(std::string_view path, TextBuffer& buffer) {
  return OtherForm(path, buffer, ::GetShortPathNameW);
}

Result<std::uint32_t> Win32Files::GetLongPathNameA(std::string_view path, TextBuffer& buffer) {
  return OtherForm(path, buffer, ::GetLongPathNameW);
}

Result<std::string> Win32Files::GetTempPathA() {
  return FilledText([](wchar_t* buffer, DWORD size) { return ::GetTempPathW(size, buffer); });
}

Result<std::string> Win32Files::GetTempFileNameA(std::string_view folder, std::string_view prefix) {
  wchar_t name[kNameSize];
  auto native = NativePath(folder);
  if (!native.ok()) return native.error;
  if (!::GetTempFileNameW(native.value.c_str(), Wide(prefix).c_str(), 0, name)) return LastError();
  return TextOf(name);
}

Result<std::string> Win32Files::GetCurrentDirectoryA() {
  return FilledText([](wchar_t* buffer, DWORD size) { return ::GetCurrentDirectoryW(size, buffer); });
}

Error Win32Files::SetCurrentDirectoryA(std::string_view path) {
  return OnPath(path, ::SetCurrentDirectoryW);
}

Result<std::uint32_t> Win32Files::GetLogicalDriveStringsA(Buffer buffer) {
  // Letters, colons and backslashes alone: the same in every code page.
  const DWORD length = ::GetLogicalDriveStringsA(SizeOf(buffer), buffer.data());
  if (length == 0) return LastError();
  return length;
}

DriveType Win32Files::GetDriveTypeA(std::string_view root) {
  const auto native = NativePath(root);
  return native.ok() ? static_cast<DriveType>(::GetDriveTypeW(native.value.c_str())) : DriveType::NoRoot;
}

Result<VolumeInfo> Win32Files::GetVolumeInformationA(std::string_view root) {
  wchar_t label[kNameSize]{}, file_system[kNameSize]{};
  DWORD serial = 0;
  const Error error = OnPath(root, [&](const wchar_t* native) {
    return ::GetVolumeInformationW(native, label, kNameSize, &serial, nullptr, nullptr, file_system, kNameSize);
  });
  if (!Ok(error)) return error;
  return VolumeInfo{TextOf(label), TextOf(file_system), serial};
}

Error Win32Files::SetVolumeLabelA(std::string_view root, std::string_view label) {
  return OnPath(root, [&](const wchar_t* native) { return ::SetVolumeLabelW(native, Wide(label).c_str()); });
}

Result<DiskSpace> Win32Files::GetDiskFreeSpaceExA(std::string_view root) {
  ULARGE_INTEGER to_caller, total, free;
  const Error error =
      OnPath(root, [&](const wchar_t* native) { return ::GetDiskFreeSpaceExW(native, &to_caller, &total, &free); });
  if (!Ok(error)) return error;
  return DiskSpace{to_caller.QuadPart, total.QuadPart, free.QuadPart};
}

std::unique_ptr<Files> MakeFiles(Win32Messages& messages) {
  return std::make_unique<Win32Files>(messages);
}

}  // namespace qb::win32
