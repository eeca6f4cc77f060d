#include "platform/win32/win32_files.h"

#include <array>

#include "platform/win32/convert.h"

namespace qb::win32 {

namespace {

constexpr DWORD kPathSize = MAX_PATH + 1;

// What GetShortPathName and its kin return: 0 is failure.
Result<std::uint32_t> Length(DWORD length) {
  if (length == 0) return LastError();
  return length;
}

Result<std::string> Text(DWORD length, const char* buffer) {
  if (length == 0) return LastError();
  if (length >= kPathSize) return Error::InsufficientBuffer;
  return std::string(buffer, length);
}

FindData FromNative(const WIN32_FIND_DATAA& native) {
  FindData data;
  data.attributes = native.dwFileAttributes;
  data.created = win32::FromNative(native.ftCreationTime);
  data.accessed = win32::FromNative(native.ftLastAccessTime);
  data.written = win32::FromNative(native.ftLastWriteTime);
  data.size_high = native.nFileSizeHigh;
  data.size_low = native.nFileSizeLow;
  data.name = native.cFileName;
  data.short_name = native.cAlternateFileName;
  return data;
}

std::optional<FILETIME> NativeTime(std::optional<FileTime> time) {
  if (!time) return std::nullopt;
  return ToNative(*time);
}

const FILETIME* PointerTo(const std::optional<FILETIME>& time) {
  return time ? &*time : nullptr;
}

}  // namespace

Result<FileHandle> Win32Files::CreateFileA(std::string_view path, std::uint32_t access, std::uint32_t share,
                                           std::uint32_t disposition, std::uint32_t flags_and_attributes) {
  HANDLE file =
      ::CreateFileA(std::string(path).c_str(), access, share, nullptr, disposition, flags_and_attributes, nullptr);
  if (file == INVALID_HANDLE_VALUE) return LastError();
  return Wrap<FileHandle>(file);
}

Result<std::uint32_t> Win32Files::ReadFile(FileHandle file, Buffer buffer) {
  DWORD read = 0;
  if (!::ReadFile(Unwrap<HANDLE>(file), buffer.data(), SizeOf(buffer), &read, nullptr)) return LastError();
  return read;
}

Result<std::uint32_t> Win32Files::WriteFile(FileHandle file, std::string_view data) {
  DWORD written = 0;
  if (!::WriteFile(Unwrap<HANDLE>(file), data.data(), static_cast<DWORD>(data.size()), &written, nullptr)) {
    return LastError();
  }
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
  return FromBool(::FlushFileBuffers(Unwrap<HANDLE>(file)));
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
  return FromBool(::DeleteFileA(std::string(path).c_str()));
}

Error Win32Files::MoveFileExA(std::string_view from, std::optional<std::string_view> to, std::uint32_t flags) {
  return FromBool(::MoveFileExA(std::string(from).c_str(), OptionalText(to).get(), flags));
}

Error Win32Files::CopyFileA(std::string_view from, std::string_view to, bool fail_if_exists) {
  return FromBool(::CopyFileA(std::string(from).c_str(), std::string(to).c_str(), fail_if_exists));
}

Error Win32Files::CreateDirectoryA(std::string_view path) {
  return FromBool(::CreateDirectoryA(std::string(path).c_str(), nullptr));
}

Error Win32Files::RemoveDirectoryA(std::string_view path) {
  return FromBool(::RemoveDirectoryA(std::string(path).c_str()));
}

Result<std::uint32_t> Win32Files::GetFileAttributesA(std::string_view path) {
  const DWORD attributes = ::GetFileAttributesA(std::string(path).c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return LastError();
  return attributes;
}

Error Win32Files::SetFileAttributesA(std::string_view path, std::uint32_t attributes) {
  return FromBool(::SetFileAttributesA(std::string(path).c_str(), attributes));
}

Result<FirstFile> Win32Files::FindFirstFileA(std::string_view pattern) {
  WIN32_FIND_DATAA data;
  HANDLE handle = ::FindFirstFileA(std::string(pattern).c_str(), &data);
  if (handle == INVALID_HANDLE_VALUE) return LastError();
  return FirstFile{Wrap<FindHandle>(handle), FromNative(data)};
}

Result<FindData> Win32Files::FindNextFileA(FindHandle handle) {
  WIN32_FIND_DATAA data;
  if (!::FindNextFileA(Unwrap<HANDLE>(handle), &data)) return LastError();
  return FromNative(data);
}

Error Win32Files::FindClose(FindHandle handle) {
  return FromBool(::FindClose(Unwrap<HANDLE>(handle)));
}

Result<std::uint32_t> Win32Files::GetShortPathNameA(std::string_view path, Buffer buffer) {
  return Length(::GetShortPathNameA(std::string(path).c_str(), buffer.data(), SizeOf(buffer)));
}

Result<std::uint32_t> Win32Files::GetLongPathNameA(std::string_view path, Buffer buffer) {
  return Length(::GetLongPathNameA(std::string(path).c_str(), buffer.data(), SizeOf(buffer)));
}

Result<std::string> Win32Files::GetTempPathA() {
  std::array<char, kPathSize> buffer{};
  return Text(::GetTempPathA(kPathSize, buffer.data()), buffer.data());
}

Result<std::string> Win32Files::GetTempFileNameA(std::string_view folder, std::string_view prefix) {
  std::array<char, kPathSize> buffer{};
  if (!::GetTempFileNameA(std::string(folder).c_str(), std::string(prefix).c_str(), 0, buffer.data()))
    return LastError();
  return std::string(buffer.data());
}

Result<std::string> Win32Files::GetCurrentDirectoryA() {
  std::array<char, kPathSize> buffer{};
  return Text(::GetCurrentDirectoryA(kPathSize, buffer.data()), buffer.data());
}

Error Win32Files::SetCurrentDirectoryA(std::string_view path) {
  return FromBool(::SetCurrentDirectoryA(std::string(path).c_str()));
}

Result<std::uint32_t> Win32Files::GetLogicalDriveStringsA(Buffer buffer) {
  return Length(::GetLogicalDriveStringsA(SizeOf(buffer), buffer.data()));
}

DriveType Win32Files::GetDriveTypeA(std::string_view root) {
  return static_cast<DriveType>(::GetDriveTypeA(std::string(root).c_str()));
}

Result<VolumeInfo> Win32Files::GetVolumeInformationA(std::string_view root) {
  std::array<char, kPathSize> label{}, file_system{};
  DWORD serial = 0;
  if (!::GetVolumeInformationA(std::string(root).c_str(), label.data(), kPathSize, &serial, nullptr, nullptr,
                               file_system.data(), kPathSize)) {
    return LastError();
  }
  return VolumeInfo{label.data(), file_system.data(), serial};
}

Error Win32Files::SetVolumeLabelA(std::string_view root, std::string_view label) {
  return FromBool(::SetVolumeLabelA(std::string(root).c_str(), std::string(label).c_str()));
}

Result<DiskSpace> Win32Files::GetDiskFreeSpaceExA(std::string_view root) {
  ULARGE_INTEGER to_caller, total, free;
  if (!::GetDiskFreeSpaceExA(std::string(root).c_str(), &to_caller, &total, &free)) return LastError();
  return DiskSpace{to_caller.QuadPart, total.QuadPart, free.QuadPart};
}

}  // namespace qb::win32
