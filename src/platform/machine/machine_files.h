// The file operations on a machine's disk.
#pragma once

#include <memory>
#include <unordered_map>

#include "platform/machine/machine_state.h"

namespace qb::machine {

class MachineFiles : public Files {
 public:
  explicit MachineFiles(MachineState& state) : state_(state) {}

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

  // Forgets the handles of programs that have ended.
  void EndAll();

 private:
  struct Open {
    Entry* entry = nullptr;
    HostFile host;
    std::uint64_t position = 0;
    Entry::Use use;
    bool changed = false;
  };
  struct Search {
    std::vector<FindData> found;
    std::size_t next = 0;
  };

  Result<FileHandle> OpenEntry(std::string_view path, std::uint32_t access, std::uint32_t share,
                               std::uint32_t disposition, std::uint32_t flags_and_attributes);
  Result<Open*> Get(FileHandle file);
  Error Remove(std::string_view path, bool folder);
  Error Move(std::string_view from, std::optional<std::string_view> to, std::uint32_t flags);
  Error Copy(std::string_view from, std::string_view to, bool fail_if_exists);
  Result<std::vector<FindData>> Matches(std::string_view pattern) const;
  Result<std::string> PathInNames(std::string_view path, bool short_names) const;
  bool DriveIsThere(std::string_view root) const;

  MachineState& state_;
  std::unordered_map<std::uint64_t, std::unique_ptr<Open>> open_;
  std::unordered_map<std::uint64_t, Search> searches_;
};

}  // namespace qb::machine
