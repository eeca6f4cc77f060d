// The files, folders and drives of a machine.
#include <sys/stat.h>
#include <unistd.h>

#include "platform/machine/operation.h"
#include "platform/machine/operations/operations.h"
#include "platform/machine/world/files.h"

namespace qb::machine {
namespace {

constexpr std::uint32_t kNoNumber = 0xFFFFFFFF;  // what stands for a number that could not be had
constexpr std::uint32_t kPathRoom = 260, kNameRoom = 255;

struct DriveTypeRow {
  std::string_view word;
  DriveType type;
};

constexpr DriveTypeRow kDriveTypes[] = {
    {"unknown", DriveType::Unknown}, {"gone", DriveType::NoRoot},   {"removable", DriveType::Removable},
    {"fixed", DriveType::Fixed},     {"remote", DriveType::Remote}, {"cdrom", DriveType::CdRom},
    {"ramdisk", DriveType::RamDisk},
};

// The length of a text that is given as the outcome; 0 if there is none.
std::size_t LengthOf(const Result<std::string>& text) {
  return text.value.size();
}

class MachineFiles final : public Files {
 public:
  explicit MachineFiles(MachineState& state) : state_(state) {}

  Result<FileHandle> CreateFileA(std::string_view path, std::uint32_t access, std::uint32_t share,
                                 std::uint32_t disposition, std::uint32_t flags_and_attributes) override {
    return gate_.Call<"CreateFileA">(path, access, share, kNull, disposition, flags_and_attributes, kNull)
        .ReturnsValue([&] { return OpenFileEntry(state_, path, access, share, disposition, flags_and_attributes); },
                      static_cast<FileHandle>(kInvalidHandle));
  }

  Result<std::uint32_t> ReadFile(FileHandle file, Buffer buffer) override {
    std::uint32_t count = 0;
    return gate_.Call<"ReadFile">(file, Bytes(buffer.size()), buffer.size(), count, kNull)
        .ReturnsBool([&]() -> Result<std::uint32_t> {
          const auto open = Get(file);
          if (!open.ok()) return open.error;
          if (!open.value->use.reads) return Error::AccessDenied;
          if (open.value->entry == nullptr) return count = 0u;
          const ssize_t got =
              pread(open.value->host.fd(), buffer.data(), buffer.size(), static_cast<off_t>(open.value->position));
          if (got < 0) return Error::InvalidFunction;
          open.value->position += static_cast<std::uint64_t>(got);
          return count = static_cast<std::uint32_t>(got);
        });
  }

  Result<std::uint32_t> WriteFile(FileHandle file, std::string_view data) override {
    std::uint32_t count = 0;
    return gate_.Call<"WriteFile">(file, Bytes(data.size()), data.size(), count, kNull)
        .ReturnsBool([&]() -> Result<std::uint32_t> {
          const auto open = Get(file);
          if (!open.ok()) return open.error;
          if (!open.value->use.writes) return Error::AccessDenied;
          if (open.value->entry == nullptr) return count = static_cast<std::uint32_t>(data.size());
          if (open.value->entry->IsFolder()) return Error::InvalidFunction;
          Changed(*open.value);
          const ssize_t put =
              pwrite(open.value->host.fd(), data.data(), data.size(), static_cast<off_t>(open.value->position));
          if (put < 0) return Error::DiskFull;
          open.value->position += static_cast<std::uint64_t>(put);
          return count = static_cast<std::uint32_t>(put);
        });
  }

  Result<std::uint64_t> SetFilePointer(FileHandle file, std::int64_t distance, SeekFrom from) override {
    return gate_.Call<"SetFilePointer">(file, static_cast<std::uint32_t>(distance), kNull, from)
        .ReturnsValue(
            [&]() -> Result<std::uint64_t> {
              if (from > SeekFrom::End) return Error::InvalidParameter;
              if (from == SeekFrom::Begin && distance < 0) return Error::NegativeSeek;
              const auto open = Get(file);
              if (!open.ok()) return open.error;
              std::uint64_t start = 0;
              if (from == SeekFrom::Current) start = open.value->position;
              if (from == SeekFrom::End) start = SizeOf(*open.value);
              const auto base = static_cast<std::int64_t>(start);
              if (base + distance < 0) return Error::NegativeSeek;
              return open.value->position = static_cast<std::uint64_t>(base + distance);
            },
            kNoNumber);
  }

  Error SetEndOfFile(FileHandle file) override {
    return gate_.Call<"SetEndOfFile">(file).ReturnsBool([&] {
      const auto open = Get(file);
      if (!open.ok()) return open.error;
      if (!open.value->use.writes || open.value->entry == nullptr) return Error::AccessDenied;
      if (open.value->entry->IsFolder()) return Error::InvalidParameter;
      // By a handle of its own: ext4 writes a file out that was cut to nothing, and lets who deletes it wait for that,
      // when the handle that cut it is closed.
      const bool cut = open.value->position == 0
                           ? SizeOf(*open.value) == 0 || Ok(state_.disk.Truncate(*open.value->entry))
                           : ftruncate(open.value->host.fd(), static_cast<off_t>(open.value->position)) == 0;
      if (!cut) return Error::AccessDenied;
      Changed(*open.value);
      return Error::Success;
    });
  }

  Result<std::uint64_t> GetFileSize(FileHandle file) override {
    return gate_.Call<"GetFileSize">(file, kNull)
        .ReturnsValue(
            [&]() -> Result<std::uint64_t> {
              const auto open = Get(file);
              if (!open.ok()) return open.error;
              return SizeOf(*open.value);
            },
            kNoNumber);
  }

  Error FlushFileBuffers(FileHandle file) override {
    return gate_.Call<"FlushFileBuffers">(file).ReturnsBool([&] {
      const auto open = Get(file);
      if (!open.ok()) return open.error;
      if (!open.value->use.writes || open.value->entry == nullptr) return Error::AccessDenied;
      if (open.value->entry->IsFolder()) return Error::Success;
      // Onto the disk of the host: what the program overwrites next must have been there.
      return fdatasync(open.value->host.fd()) == 0 ? Error::Success : Error::WriteProtect;
    });
  }

  Error SetFileTime(FileHandle file, std::optional<FileTime> created, std::optional<FileTime> accessed,
                    std::optional<FileTime> written) override {
    return gate_
        .Call<"SetFileTime">(file, StructureIf(created.has_value()), StructureIf(accessed.has_value()),
                             StructureIf(written.has_value()))
        .ReturnsBool([&] {
          const auto open = Get(file);
          if (!open.ok()) return open.error;
          if (!open.value->sets_times || open.value->entry == nullptr) return Error::AccessDenied;
          // All bits set only ask that later writes leave the time alone.
          constexpr std::uint64_t kKeep = ~std::uint64_t{0};
          auto set = [](FileTime& time, std::optional<FileTime> to) {
            if (to && to->ticks != 0 && to->ticks != kKeep) time = *to;
          };
          set(open.value->entry->created, created);
          set(open.value->entry->accessed, accessed);
          set(open.value->entry->written, written);
          if (written && written->ticks != 0) open.value->keeps_written = true;
          return Error::Success;
        });
  }

  // A handle that could not be closed stays open until the program ends; the record shows it.
  Error CloseHandle(FileHandle file) override {
    return gate_.Call<"CloseHandle">(file).ReturnsBool([&] {
      const auto open = Get(file);
      if (!open.ok()) return open.error;
      CloseFileEntry(state_, file);
      return Error::Success;
    });
  }

  Error DeleteFileA(std::string_view path) override {
    return gate_.Call<"DeleteFileA">(path).ReturnsBool([&] { return RemoveEntry(state_, path, false); });
  }

  Error MoveFileExA(std::string_view from, std::optional<std::string_view> to, std::uint32_t flags) override {
    return gate_.Call<"MoveFileExA">(from, to, flags).ReturnsBool([&] { return MoveEntry(state_, from, to, flags); });
  }

  Error CopyFileA(std::string_view from, std::string_view to, bool fail_if_exists) override {
    return gate_.Call<"CopyFileA">(from, to, fail_if_exists).ReturnsBool([&] {
      return CopyEntry(state_, from, to, fail_if_exists);
    });
  }

  Error CreateDirectoryA(std::string_view path) override {
    return gate_.Call<"CreateDirectoryA">(path, kNull).ReturnsBool([&] { return MakeFolderEntry(state_, path); });
  }

  Error RemoveDirectoryA(std::string_view path) override {
    return gate_.Call<"RemoveDirectoryA">(path).ReturnsBool([&] { return RemoveEntry(state_, path, true); });
  }

  Result<std::uint32_t> GetFileAttributesA(std::string_view path) override {
    return gate_.Call<"GetFileAttributesA">(path).ReturnsValue(
        [&]() -> Result<std::uint32_t> {
          if (const auto parsed = state_.Parse(path); parsed.ok() && parsed.value.device) return kAttributeArchive;
          const auto found = state_.Find(path);
          if (!found.ok()) return found.error;
          return found.value->WindowsAttributes();
        },
        kNoNumber);
  }

  Error SetFileAttributesA(std::string_view path, std::uint32_t attributes) override {
    return gate_.Call<"SetFileAttributesA">(path, attributes).ReturnsBool([&] {
      const auto found = state_.Find(path);
      if (!found.ok()) return found.error;
      if (found.value->kind == Entry::Kind::HostLink) return Error::AccessDenied;
      found.value->attributes = attributes & kKeptAttributes;
      return Error::Success;
    });
  }

  Result<FirstFile> FindFirstFileA(std::string_view pattern) override {
    return gate_.Call<"FindFirstFileA">(pattern, kStructure)
        .ReturnsAs(
            [&]() -> Result<FirstFile> {
              auto matches = MatchingEntries(state_, pattern);
              if (!matches.ok()) return matches.error;
              const std::uint64_t handle = state_.NewHandle();
              FirstFile first{static_cast<FindHandle>(handle), matches.value.found.front()};
              matches.value.next = 1;
              state_.searches[handle] = std::move(matches.value);
              return first;
            },
            [](const auto& first) {
              return first.ok() ? first.value.handle : static_cast<FindHandle>(kInvalidHandle);
            });
  }

  Result<FindData> FindNextFileA(FindHandle handle) override {
    return gate_.Call<"FindNextFileA">(handle, kStructure).ReturnsBool([&]() -> Result<FindData> {
      const auto search = state_.searches.find(Plain(handle));
      if (search == state_.searches.end()) return Error::InvalidHandle;
      if (search->second.next >= search->second.found.size()) return Error::NoMoreFiles;
      return std::move(search->second.found[search->second.next++]);
    });
  }

  Error FindClose(FindHandle handle) override {
    return gate_.Call<"FindClose">(handle).ReturnsBool([&] {
      auto search = state_.searches.extract(Plain(handle));
      if (search.empty()) return Error::InvalidHandle;
      state_.open_handles.erase(Plain(handle));
      Entry* folder = search.mapped().hold.use_count() > 1 ? search.mapped().folder : nullptr;
      search.mapped().hold.reset();
      if (folder != nullptr) state_.disk.Settle(*folder);
      return Error::Success;
    });
  }

  Result<std::uint32_t> GetShortPathNameA(std::string_view path, TextBuffer& buffer) override {
    return gate_.Call<"GetShortPathNameA">(path, Bytes(buffer), buffer.size()).ReturnsValue([&] {
      return FillPath(path, true, buffer);
    });
  }

  Result<std::uint32_t> GetLongPathNameA(std::string_view path, TextBuffer& buffer) override {
    return gate_.Call<"GetLongPathNameA">(path, Bytes(buffer), buffer.size()).ReturnsValue([&] {
      return FillPath(path, false, buffer);
    });
  }

  Result<std::string> GetTempPathA() override {
    return gate_.Call<"GetTempPathA">(kPathRoom, Bytes(kPathRoom))
        .ReturnsAs([&] { return Result(state_.config.temp_folder + "\\"); }, LengthOf);
  }

  Result<std::string> GetTempFileNameA(std::string_view folder, std::string_view prefix) override {
    return gate_.Call<"GetTempFileNameA">(folder, prefix, 0, Bytes(kPathRoom)).ReturnsBool([&] {
      return MakeTempFile(folder, prefix);
    });
  }

  Result<std::string> GetCurrentDirectoryA() override {
    return gate_.Call<"GetCurrentDirectoryA">(kPathRoom, Bytes(kPathRoom))
        .ReturnsAs([&] { return Result(PathText(state_.current)); }, LengthOf);
  }

  Error SetCurrentDirectoryA(std::string_view path) override {
    return gate_.Call<"SetCurrentDirectoryA">(path).ReturnsBool([&] {
      if (path.find_first_not_of(' ') == std::string_view::npos) return Error::InvalidName;
      if (const Error error = FolderError(path); !Ok(error)) return error;
      // It is held open from now on, for going through.
      const auto folder = state_.Find(path, true);
      if (folder.ok() && !folder.value->Allows({true, false, false, kShareRead | kShareWrite})) {
        return Error::SharingViolation;
      }
      state_.current = state_.Parse(path).value;
      state_.current.closing_backslash = false;
      return Error::Success;
    });
  }

  Result<std::uint32_t> GetLogicalDriveStringsA(Buffer buffer) override {
    return gate_.Call<"GetLogicalDriveStringsA">(buffer.size(), Bytes(buffer.size()))
        .ReturnsValue([&]() -> Result<std::uint32_t> {
          std::string roots;
          for (const auto& [letter, type] : state_.config.drive_types) {
            if (type != "gone") roots += std::string{letter, ':', '\\', '\0'};
          }
          if (buffer.size() <= roots.size()) return static_cast<std::uint32_t>(roots.size() + 1);
          std::copy(roots.begin(), roots.end(), buffer.begin());
          buffer[roots.size()] = '\0';
          return static_cast<std::uint32_t>(roots.size());
        });
  }

  DriveType GetDriveTypeA(std::string_view root) override {
    return gate_.Call<"GetDriveTypeA">(root).ReturnsNumberOr(DriveType::Unknown, [&] {
      if (!Ok(FolderError(root))) return DriveType::NoRoot;
      const std::string& word = state_.config.drive_types.at(state_.Parse(root).value.drive);
      const auto* row = std::find_if(std::begin(kDriveTypes), std::end(kDriveTypes),
                                     [&](const DriveTypeRow& candidate) { return candidate.word == word; });
      return row == std::end(kDriveTypes) ? DriveType::NoRoot : row->type;
    });
  }

  Result<VolumeInfo> GetVolumeInformationA(std::string_view root) override {
    return gate_.Call<"GetVolumeInformationA">(root, Bytes(kNameRoom), kNameRoom, 0, 0, 0, Bytes(kNameRoom), kNameRoom)
        .ReturnsBool([&]() -> Result<VolumeInfo> {
          const auto parsed = state_.Parse(root);
          if (!parsed.ok()) return parsed.error;
          if (root.find_first_of("\\/") == std::string_view::npos) return Error::InvalidName;
          if (!parsed.value.parts.empty()) return Error::DirNotRoot;
          const char letter = parsed.value.drive;
          const auto label = state_.config.volume_labels.find(letter);
          return VolumeInfo{label == state_.config.volume_labels.end() ? "" : label->second, "NTFS",
                            0x51420000u + static_cast<unsigned char>(letter)};
        });
  }

  Error SetVolumeLabelA(std::string_view root, std::string_view label) override {
    return gate_.Call<"SetVolumeLabelA">(root, label).ReturnsBool([&] {
      const auto parsed = state_.Parse(root);
      if (parsed.ok()) state_.config.volume_labels[parsed.value.drive] = label;
      return parsed.error;
    });
  }

  Result<DiskSpace> GetDiskFreeSpaceExA(std::string_view root) override {
    return gate_.Call<"GetDiskFreeSpaceExA">(root, kStructure, kStructure, kStructure)
        .ReturnsBool([&]() -> Result<DiskSpace> {
          constexpr std::uint64_t kTotal = std::uint64_t{64} << 30, kFree = std::uint64_t{48} << 30;
          if (const Error error = FolderError(root); !Ok(error)) return error;
          return DiskSpace{kFree, kTotal, kFree};
        });
  }

 private:
  Result<OpenFile*> Get(FileHandle file) const {
    const auto found = state_.open_files.find(Plain(file));
    if (found == state_.open_files.end()) return Error::InvalidHandle;
    return found->second.get();
  }

  std::uint64_t SizeOf(const OpenFile& file) const {
    struct stat info {};
    if (file.host.ok() && fstat(file.host.fd(), &info) == 0) return static_cast<std::uint64_t>(info.st_size);
    return file.entry == nullptr ? 0 : state_.disk.SizeOf(*file.entry);
  }
  void Changed(const OpenFile& file) {
    if (!file.keeps_written) file.entry->written = state_.Now();
    file.entry->attributes |= kAttributeArchive;
  }
  // Why a path does not lead to a folder.
  Error FolderError(std::string_view path) const {
    if (const auto parsed = state_.Parse(path); parsed.ok() && parsed.value.device) return Error::DirectoryName;
    const auto found = state_.Find(path, true);
    return found.ok() && !found.value->IsFolder() ? Error::DirectoryName : found.error;
  }

  Result<std::uint32_t> FillPath(std::string_view path, bool short_names, TextBuffer& buffer) const {
    const auto text = PathInNames(state_, path, short_names);
    if (!text.ok()) return text.error;
    return buffer.Fill(text.value);
  }

  Result<std::string> MakeTempFile(std::string_view folder, std::string_view prefix) {
    if (folder.find('\0') != std::string_view::npos) return Error::InvalidName;
    if (!Ok(FolderError(folder))) return Error::DirectoryName;
    for (unsigned number = 1; number <= 0xFFFF; ++number) {
      constexpr std::string_view kDigits = "0123456789ABCDEF";
      std::string digits;
      for (unsigned rest = number; rest != 0; rest >>= 4) digits.insert(digits.begin(), kDigits[rest & 15]);
      std::string path(folder);
      if (!path.ends_with('\\')) path += '\\';
      path += std::string(prefix.substr(0, std::min<std::size_t>(3, prefix.find('\0')))) + digits + ".tmp";
      const auto made = OpenFileEntry(state_, path, 0, kShareNone, kCreateNew, kAttributeNormal);
      if (made.ok()) {
        CloseFileEntry(state_, made.value);
        return path;
      }
      if (made.error != Error::FileExists) return made.error;
    }
    return Error::FileExists;
  }

  MachineState& state_;
  Gate& gate_ = state_.gate;
};

}  // namespace

std::unique_ptr<Files> MakeFiles(MachineState& state) {
  return std::make_unique<MachineFiles>(state);
}

}  // namespace qb::machine
