// Files, folders and drives, by their Windows names. Paths are UTF-8; a relative one hangs on the
// current folder of the current drive. Failures are GetLastError codes.
#pragma once

#include <optional>

#include "platform/text_buffer.h"
#include "platform/types.h"

namespace qb {

// Bits of dwDesiredAccess, dwShareMode and dwCreationDisposition of CreateFileA.
inline constexpr std::uint32_t kGenericRead = 0x80000000;
inline constexpr std::uint32_t kGenericWrite = 0x40000000;
inline constexpr std::uint32_t kFileWriteAttributes = 0x100;
inline constexpr std::uint32_t kShareNone = 0;
inline constexpr std::uint32_t kShareRead = 1;
inline constexpr std::uint32_t kShareWrite = 2;
inline constexpr std::uint32_t kShareDelete = 4;
inline constexpr std::uint32_t kCreateNew = 1;
inline constexpr std::uint32_t kCreateAlways = 2;
inline constexpr std::uint32_t kOpenExisting = 3;
inline constexpr std::uint32_t kOpenAlways = 4;
inline constexpr std::uint32_t kTruncateExisting = 5;

// File attributes.
inline constexpr std::uint32_t kAttributeReadOnly = 0x1;
inline constexpr std::uint32_t kAttributeHidden = 0x2;
inline constexpr std::uint32_t kAttributeSystem = 0x4;
inline constexpr std::uint32_t kAttributeDirectory = 0x10;
inline constexpr std::uint32_t kAttributeArchive = 0x20;
inline constexpr std::uint32_t kAttributeNormal = 0x80;
inline constexpr std::uint32_t kAttributeReparsePoint = 0x400;  // a junction or symbolic link

// Bits of MoveFileExA.
inline constexpr std::uint32_t kMoveReplaceExisting = 1;
inline constexpr std::uint32_t kMoveCopyAllowed = 2;
inline constexpr std::uint32_t kMoveDelayUntilReboot = 4;

// Values of GetDriveTypeA.
enum class DriveType : std::uint32_t { Unknown, NoRoot, Removable, Fixed, Remote, CdRom, RamDisk };

// Where SetFilePointer counts from.
enum class SeekFrom : std::uint32_t { Begin, Current, End };

// WIN32_FIND_DATA, what of it is read.
struct FindData {
  std::uint32_t attributes = 0;
  FileTime created, accessed, written;
  std::uint32_t size_high = 0, size_low = 0;
  std::string name;        // without a path
  std::string short_name;  // the 8.3 name; empty where it equals the name
};

struct FirstFile {
  FindHandle handle = FindHandle::None;
  FindData data;
};

struct VolumeInfo {
  std::string label, file_system;
  std::uint32_t serial = 0;
};

struct DiskSpace {
  std::uint64_t free_to_caller = 0, total = 0, free = 0;  // bytes
};

class Files {
 public:
  virtual ~Files() = default;

  virtual Result<FileHandle> CreateFileA(std::string_view path, std::uint32_t access, std::uint32_t share,
                                         std::uint32_t disposition, std::uint32_t flags_and_attributes) = 0;
  // Gives the number of bytes read; 0 at the end of the file.
  virtual Result<std::uint32_t> ReadFile(FileHandle file, Buffer buffer) = 0;
  virtual Result<std::uint32_t> WriteFile(FileHandle file, std::string_view data) = 0;
  // Gives the new position from the start of the file. Distances of more than 32 bits are taken too.
  virtual Result<std::uint64_t> SetFilePointer(FileHandle file, std::int64_t distance, SeekFrom from) = 0;
  virtual Error SetEndOfFile(FileHandle file) = 0;
  virtual Result<std::uint64_t> GetFileSize(FileHandle file) = 0;
  virtual Error FlushFileBuffers(FileHandle file) = 0;
  // A time that is nullopt or 0 is left as it is. One that is set stays through later writes by this handle. The handle
  // must have been opened for writing or with kFileWriteAttributes.
  virtual Error SetFileTime(FileHandle file, std::optional<FileTime> created, std::optional<FileTime> accessed,
                            std::optional<FileTime> written) = 0;
  // CloseHandle on a file.
  virtual Error CloseHandle(FileHandle file) = 0;

  // Refused with AccessDenied for a read-only file or a folder, SharingViolation for one that is held open by someone
  // who does not share that. What is open all the same goes when it is closed.
  virtual Error DeleteFileA(std::string_view path) = 0;
  virtual Error MoveFileExA(std::string_view from, std::optional<std::string_view> to, std::uint32_t flags) = 0;
  virtual Error CopyFileA(std::string_view from, std::string_view to, bool fail_if_exists) = 0;
  virtual Error CreateDirectoryA(std::string_view path) = 0;
  // Removes an empty folder; of a junction, only the junction itself.
  virtual Error RemoveDirectoryA(std::string_view path) = 0;
  virtual Result<std::uint32_t> GetFileAttributesA(std::string_view path) = 0;
  virtual Error SetFileAttributesA(std::string_view path, std::uint32_t attributes) = 0;

  // The pattern may hold * and ? in its last component, which Windows matches against long and 8.3
  // names; "*.*" matches all names. "." and ".." are listed, except in a root.
  virtual Result<FirstFile> FindFirstFileA(std::string_view pattern) = 0;
  // NoMoreFiles at the end.
  virtual Result<FindData> FindNextFileA(FindHandle handle) = 0;
  virtual Error FindClose(FindHandle handle) = 0;

  // Both want a buffer; the result is the length without the closing zero, or the size that is needed
  // (with the zero) where the buffer is too small.
  virtual Result<std::uint32_t> GetShortPathNameA(std::string_view path, TextBuffer& buffer) = 0;
  virtual Result<std::uint32_t> GetLongPathNameA(std::string_view path, TextBuffer& buffer) = 0;
  // With a closing backslash.
  virtual Result<std::string> GetTempPathA() = 0;
  // Makes an empty file with a new name in the folder and gives its path.
  virtual Result<std::string> GetTempFileNameA(std::string_view folder, std::string_view prefix) = 0;
  // The folder with its drive letter; without a closing backslash unless it is a root.
  virtual Result<std::string> GetCurrentDirectoryA() = 0;
  virtual Error SetCurrentDirectoryA(std::string_view path) = 0;

  // Fills the buffer with roots as "C:\", each closed by a zero, and one more zero; gives the length without the last.
  virtual Result<std::uint32_t> GetLogicalDriveStringsA(Buffer buffer) = 0;
  virtual DriveType GetDriveTypeA(std::string_view root) = 0;
  virtual Result<VolumeInfo> GetVolumeInformationA(std::string_view root) = 0;
  virtual Error SetVolumeLabelA(std::string_view root, std::string_view label) = 0;
  virtual Result<DiskSpace> GetDiskFreeSpaceExA(std::string_view root) = 0;
};

}  // namespace qb
