// Paths, files, folders and drives in one object, which reports failures as numbers.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/platform.h"
#include "runtime/channels.h"
#include "runtime/currency.h"
#include "runtime/errors.h"
#include "runtime/folders.h"
#include "runtime/lifetime.h"

namespace qb {

// What went wrong last: a run-time error number, the member that met it, and the number's standard text.
struct ErrorRecord {
  int Number = 0;
  std::string Source;
  std::string Description;
};

enum class EntryKind { Files = 0, Folders = 1, Both = 2 };
enum class PathTime { Created = 0, LastAccess = 1, LastWrite = 2 };
enum class CreateMode { Binary = 0, Output = 1, Append = 2 };

struct DriveInfo {
  std::string label, file_system;
  std::string serial;  // hexadecimal, in capitals, without leading zeros
};

struct DriveSpace {
  Currency total, free, used;  // bytes
  double percent_used = 0;     // rounded half to even at the second decimal
};

// A member that is [[nodiscard]] and gives an int gives 0 for success. Unless its comment says otherwise,
// anything else is a run-time error number (runtime/errors.h) and LastError holds its record. No member
// throws. Paths are absolute; where a folder is taken, a closing backslash may stand or be missing.
//
// A junction or symbolic link is never entered, for what it leads to is somebody else's: a search, a
// listing and a copy pass it by, and deleting removes the link itself.
class clsFileAnalyzer {
 public:
  // Names found in one folder, and that folder's path with its closing backslash.
  using SearchHandler = std::function<void(const std::vector<std::string>& names, const std::string& folder)>;

  // All must outlive the object. When the program ends, Execute waits no longer.
  clsFileAnalyzer(Platform& platform, Channels& channels, const Lifetime& life)
      : platform_(platform), channels_(channels), life_(life) {}

  // Raised by Search, once for each folder with a hit. May be empty.
  SearchHandler Search_Hit;
  // The window that Execute takes for an owner when it is given none. May be empty.
  std::function<WindowHandle()> active_window;

  // Stored and handed back; nothing acts on it.
  bool BreakOnErrors() const { return break_on_errors_; }
  void BreakOnErrors(bool value) { break_on_errors_ = value; }
  // A success does not clear it.
  const ErrorRecord& LastError() const { return last_error_; }

  // --- paths ---
  // True for a file, a folder, or a pattern that matches; a root without any entry counts as missing.
  bool Exists(const std::string& path) const;
  // "C" becomes "C:\", "C:\a" becomes "C:\a\".
  static std::string FixPath(const std::string& path);
  // The last component, a closing backslash set aside; a path of less than 4 characters as it is.
  static std::string GetPathName(const std::string& path);
  // All up to and with the last backslash, a closing one set aside; a path of less than 4 characters as it is.
  static std::string GetParentFolder(const std::string& path);
  // The last component up to the last dot of the whole path: nothing of it when that dot stands in a folder's name.
  static std::string GetBaseName(const std::string& path);
  // Empty if the path does not exist.
  std::string GetLongPath(const std::string& path) const;
  // Empty if the path does not exist, and for a short path of 260 characters or more.
  std::string GetShortPath(const std::string& path) const;
  // Bits of dwFileAttributes; -1 if the path does not exist.
  std::int32_t GetPathAttributes(const std::string& path) const;
  // "Read Only, Archive"; "Normal" for 0, empty for a negative number or one without a named bit.
  static std::string GetAttributeNames(std::int32_t attributes);
  // Local time, at the offset from UTC that holds now. Nothing if the path does not exist.
  std::optional<SystemTime> GetPathDate(const std::string& path, PathTime kind) const;
  // What the shell calls files of this type, else the extension in capitals and " File".
  std::string GetPathType(const std::string& path) const;
  // Each leading "..\" of `relative` takes one folder off `base`, down to its root. A path with a drive of
  // its own comes back as it is.
  static std::string GetAbsolutePath(const std::string& relative, const std::string& base);
  // The way from the folder `from` to `to` by "..\" steps; `to` itself if it lies on another drive.
  static std::string GetRelativePath(const std::string& from, const std::string& to);
  // A path in `folder` that is free: `name`, or `name` with " (2)", " (3)", ... before its extension.
  std::string BuildPath(const std::string& folder, const std::string& name) const;

  // Starts a program or opens a document; `window_style` is a command of ShowWindow. With `wait` it follows
  // the program to its end, running the message pump meanwhile: 75 if no program opens the document, or the
  // number of the failed start. Without `wait` it gives what ShellExecuteA returned, up to 32, as its error,
  // and LastError stays. An `owner` of None is replaced by the active window.
  [[nodiscard]] int Execute(const std::string& path, std::uint32_t window_style, const std::string& parameters,
                            bool wait, WindowHandle& owner);
  // "1023 Bytes", "1.5 KB": KB, MB and GB are rounded half to even to `decimals`, from 0 to 22 of them. Empty
  // for any other count.
  static std::string ParseSize(Currency size, int decimals);
  // Moves a file, or a folder on its drive. FileExists (58) for a target that is there, unless `keep_both`
  // gives it a free name beside it.
  [[nodiscard]] int Rename(const std::string& from, const std::string& to, bool keep_both);
  // Raises Search_Hit for every folder with a hit, outer folders first, and gives the number of hits. The
  // pattern holds * and ?; without `match_case` it is compared without regard to case.
  std::int32_t Search(const std::string& folder, const std::string& pattern, EntryKind kind, bool recursive,
                      bool match_case);
  // Gives a Windows error code; LastError stays.
  [[nodiscard]] int SetPathAttributes(const std::string& path, std::uint32_t attributes);
  // `date` is local time. False for a folder (which opens for writing only under backup rights), for a date
  // that is none, and where Windows refuses.
  [[nodiscard]] bool SetPathDate(const std::string& path, const SystemTime& date, PathTime kind);
  // Gives the number of SHFileOperationA; LastError stays.
  [[nodiscard]] int MoveToRecycleBin(const std::string& path);

  // --- files ---
  // In capitals, without the dot; empty for an existing folder and for a name without a dot.
  std::string GetFileExtension(const std::string& path) const;
  // The program that opens the file; empty if there is none.
  std::string GetFileExecutable(const std::string& path) const;
  // Bytes of the first file that matches; 0 if none does. Held to the highest Currency.
  Currency GetFileSize(const std::string& path) const;
  // `length` bytes from place `start`, counted from 1; fewer where the file ends. Empty for a folder, a path
  // that does not exist, and a file that cannot be read.
  std::string GetFileContents(const std::string& path, std::uint64_t start, std::uint64_t length);
  // FileExists (58) if the target is there and `overwrite` is not set.
  [[nodiscard]] int CopyFile(const std::string& from, const std::string& to, bool move, bool overwrite,
                             bool create_folder);
  // In binary mode the text is laid over what the file holds and the rest stays; Output cuts the file first,
  // Append adds at its end. `keep_both` leaves an existing file alone and makes one with a free name beside it.
  [[nodiscard]] int CreateFile(const std::string& path, const std::string& text, CreateMode mode, bool keep_both);
  // Read-only, hidden and system files too. Nothing is overwritten and nothing refused.
  [[nodiscard]] int DeleteFile(const std::string& path);
  // The path of a new, empty file in the temporary folder; empty on failure, with the record in LastError.
  [[nodiscard]] std::string GetTempFile(const std::string& prefix);
  // True if somebody else holds the file open.
  bool IsFileInUse(const std::string& path) const;

  // --- folders ---
  bool IsFolder(const std::string& path) const;
  // `move` on one drive renames the folder; else all is copied, and then the source deleted. `overwrite`
  // concerns the files. `create` makes the missing parents of the target. Links are not copied. The first
  // error ends it, with what was copied so far left in place.
  [[nodiscard]] int CopyFolder(const std::string& from, const std::string& to, bool move, bool overwrite, bool create);
  // PathFileAccess (75) for a folder that is there, PathNotFound (76) for a missing parent without `create_parents`.
  [[nodiscard]] int CreateFolder(const std::string& path, bool create_parents);
  // With all below it; the first entry that cannot be deleted ends it. Nothing is overwritten and nothing refused.
  [[nodiscard]] int DeleteFolder(const std::string& path);
  bool PathHasSubfolders(const std::string& path) const;
  // Entries whose name begins with a dot do not count. True also for a path that cannot be listed.
  bool IsEmpty(const std::string& path) const;
  // Adds full paths, a folder before what lies in it, and gives how many. An empty pattern means all names.
  std::int32_t GetFolderContents(const std::string& folder, EntryKind kind, bool recursive, const std::string& pattern,
                                 std::vector<std::string>& contents) const;
  Currency GetFolderSize(const std::string& path) const;  // bytes
  // By shell folder number (CSIDL), without a closing backslash unless it is a root; 15 is the temporary
  // folder, with one. Empty if there is none.
  std::string GetSpecialFolder(std::uint32_t number) const;

  // --- drives; a root is written "C:\" ---
  bool DriveExists(const std::string& root) const;
  std::string GetSystemDrive() const;
  static std::string GetPathDrive(const std::string& path);
  std::vector<std::string> GetDrives() const;
  DriveType GetDriveType(const std::string& root) const;
  // "Unknown", "Not Found", "Floppy", "Removable", "Fixed", "Remote", "CD-ROM" or "RAM Disk"; empty for a type
  // that has no name.
  std::string GetDriveTypeName(const std::string& root) const;
  // Gives a Windows error code; LastError stays.
  [[nodiscard]] int GetDriveInfo(const std::string& root, DriveInfo& info) const;
  // Gives a Windows error code, with LastError left as it is; or Overflow (6), with a record, for a drive of no
  // size or of one that Currency does not hold.
  [[nodiscard]] int GetDriveSpace(const std::string& root, DriveSpace& space);
  // The drive's place in GetDrives, from 1; 0 if it is not there.
  std::int32_t GetDriveNumber(const std::string& root) const;
  // Gives a Windows error code; LastError stays.
  [[nodiscard]] int SetDriveLabel(const std::string& root, const std::string& label);

 private:
  // Keeps the record of an error that `member` met, and gives its number.
  int Trap(RuntimeError error, std::string_view member);
  int Trap(Error error, std::string_view member) { return Trap(FromWindows(error), member); }

  [[nodiscard]] int ExecuteAndWait(const std::string& path, std::uint32_t window_style, const std::string& parameters);
  // The first match of a path or pattern.
  std::optional<FindData> Find(const std::string& path) const;
  // A folder's path as a name of its own, without a closing backslash unless it is a root: "C:" would be the
  // drive's current folder. Windows follows a link whose path has a backslash behind it.
  static std::string AsName(const std::string& path);
  bool IsLink(const std::string& path) const;
  // Ready for deleting: neither read-only nor hidden nor a system file.
  Error ClearAttributes(const std::string& path);
  Error MakeMissingParents(const std::string& path);
  RuntimeError Write(const std::string& path, const std::string& text, CreateMode mode);

  struct Copy {
    std::string from, to;
    bool folder = true;
  };
  // Makes the folder's copy, empty, and adds what is to be copied into it, in the order from last to first. Gives 0 or
  // the number of an error.
  int CopyOneFolder(const Copy& folder, std::vector<Copy>& pending);
  std::vector<FolderEntry> List(const std::string& folder) const;
  void AddContents(const std::string& folder, EntryKind kind, bool recursive, std::vector<std::string>& contents) const;
  static void FilterNames(std::vector<std::string>& paths, const std::string& pattern, bool match_case);
  std::string LookUpSpecialFolder(std::uint32_t number) const;
  // Local time less UTC, in ticks of a FILETIME.
  std::int64_t TimeZoneOffset() const;

  Platform& platform_;
  Channels& channels_;
  const Lifetime& life_;
  bool break_on_errors_ = false;
  ErrorRecord last_error_;
};

}  // namespace qb
