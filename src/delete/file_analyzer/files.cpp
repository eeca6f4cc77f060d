// Single files: size, content, copying, moving, making and deleting.
#include <algorithm>

#include "delete/file_analyzer/file_analyzer.h"
#include "runtime/text.h"

namespace qb {

namespace {

constexpr std::uint32_t kTemporaryFolder = 15;
constexpr std::uint32_t kWriteThrough = 0x80000000;  // FILE_FLAG_WRITE_THROUGH
constexpr std::uint32_t kFileOperationDelete = 3;    // FO_DELETE
// FOF_SILENT, FOF_RENAMEONCOLLISION, FOF_NOCONFIRMATION, FOF_ALLOWUNDO; the last makes it the Recycle Bin.
constexpr std::uint32_t kRecycleFlags = 0x4 | 0x8 | 0x10 | 0x40;

ChannelMode ModeOf(CreateMode mode) {
  switch (mode) {
    case CreateMode::Output:
      return ChannelMode::Output;
    case CreateMode::Append:
      return ChannelMode::Append;
    default:  // any other number, too, is binary
      return ChannelMode::Binary;
  }
}

}  // namespace

std::string clsFileAnalyzer::GetFileExtension(const std::string& path) const {
  if (IsFolder(path)) return {};
  const std::string name = GetPathName(path);
  const std::size_t dot = name.find_last_of('.');
  return dot == std::string::npos ? std::string() : UpperCase(name.substr(dot + 1));
}

Currency clsFileAnalyzer::GetFileSize(const std::string& path) const {
  auto found = Find(path);
  if (!found) return {};
  const std::uint64_t bytes = (std::uint64_t{found->size_high} << 32) + found->size_low;
  return Currency::FromInteger(bytes).value_or(Currency::Highest());
}

std::string clsFileAnalyzer::GetFileContents(const std::string& path, std::uint64_t start, std::uint64_t length) {
  const int number = channels_.FreeNumber();
  if (number == 0 || IsFolder(path)) return {};
  if (!Ok(channels_.Open(number, path, ChannelMode::BinaryInput))) return {};
  const std::uint64_t size = channels_.Length(number).value_or(0);
  std::string contents;
  if (!Ok(channels_.Get(number, start, std::min(length, size), contents))) contents.clear();
  contents = platform_.system.MultiByteToWideChar(contents).value_or({});
  StepOver(channels_.Close(number));
  return contents;
}

int clsFileAnalyzer::Rename(const std::string& from, const std::string& to, bool keep_both) {
  const std::string target = keep_both && Exists(to) ? BuildPath(GetParentFolder(to), GetPathName(to)) : to;
  return Trap(platform_.files.MoveFileExA(from, target, kMoveCopyAllowed), "Rename");
}

int clsFileAnalyzer::MoveToRecycleBin(const std::string& path) {
  FileOperation operation;
  operation.operation = kFileOperationDelete;
  operation.from = path;
  operation.flags = kRecycleFlags;
  return static_cast<int>(platform_.shell.SHFileOperationA(operation));
}

int clsFileAnalyzer::CopyFile(const std::string& from, const std::string& to, bool move, bool overwrite,
                              bool create_folder) {
  if (!overwrite && Exists(to)) return Trap(RuntimeError::FileExists, "CopyFile");
  if (create_folder) {
    if (Error error = MakeMissingParents(to); !Ok(error)) return Trap(error, "CopyFile");
  }
  if (move && SameText(GetPathDrive(from), GetPathDrive(to))) {
    // Replaces in one step, so that a failure leaves the old target; deleting it first would not.
    return Trap(platform_.files.MoveFileExA(from, to, kMoveCopyAllowed | (overwrite ? kMoveReplaceExisting : 0)),
                "CopyFile");
  }
  if (Error error = platform_.files.CopyFileA(from, to, !overwrite); !Ok(error)) return Trap(error, "CopyFile");
  return move ? DeleteFile(from) : 0;
}

RuntimeError clsFileAnalyzer::Write(const std::string& path, const std::string& text, CreateMode mode) {
  const int number = channels_.FreeNumber();
  if (number == 0) return RuntimeError::TooManyFiles;
  const ChannelMode channel_mode = ModeOf(mode);
  if (RuntimeError error = channels_.Open(number, path, channel_mode); !Ok(error)) return error;
  RuntimeError written = text.empty() ? RuntimeError::None : channels_.Print(number, text);
  RuntimeError closed = channels_.Close(number);
  return Ok(written) ? closed : written;
}

int clsFileAnalyzer::CreateFile(const std::string& path, const std::string& text, CreateMode mode, bool keep_both) {
  const std::string target = keep_both && Exists(path) ? BuildPath(GetParentFolder(path), GetPathName(path)) : path;
  return Trap(Write(target, text, mode), "CreateFile");
}

int clsFileAnalyzer::DeleteFile(const std::string& path) {
  if (Error error = ClearAttributes(path); !Ok(error)) return Trap(error, "DeleteFile");
  return Trap(platform_.files.DeleteFileA(path), "DeleteFile");
}

std::string clsFileAnalyzer::GetTempFile(const std::string& prefix) {
  auto path = platform_.files.GetTempFileNameA(GetSpecialFolder(kTemporaryFolder), prefix);
  if (!path.ok()) StepOver(Trap(path.error, "GetTempFile"));
  return path.ok() ? path.value : std::string();
}

bool clsFileAnalyzer::IsFileInUse(const std::string& path) const {
  auto file = platform_.files.CreateFileA(WithoutBackslash(path), kGenericWrite, kShareNone, kOpenExisting,
                                          kAttributeNormal | kWriteThrough);
  // Also when there is none: closing no handle only fails.
  StepOver(platform_.files.CloseHandle(file.value));
  return file.error == Error::SharingViolation;
}

}  // namespace qb
