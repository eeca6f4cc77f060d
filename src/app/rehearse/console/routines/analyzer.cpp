// The members of clsFileAnalyzer that take and give texts, numbers and booleans.
#include <cstdio>

#include "app/rehearse/console/routines.h"
#include "runtime/text.h"

namespace qb::rehearse {

namespace {

// Binds a member with its own parameters and result.
template <auto member>
struct BoundMember;

template <typename Result, typename... Parameters, Result (clsFileAnalyzer::*member)(Parameters...)>
struct BoundMember<member> {
  static auto Make() {
    return Bind([](Program& p, std::decay_t<Parameters>... values) { return (p.file_analyzer().*member)(values...); });
  }
};

template <typename Result, typename... Parameters, Result (clsFileAnalyzer::*member)(Parameters...) const>
struct BoundMember<member> {
  static auto Make() {
    return Bind([](Program& p, std::decay_t<Parameters>... values) { return (p.file_analyzer().*member)(values...); });
  }
};

template <typename Result, typename... Parameters, Result (*member)(Parameters...)>
struct BoundMember<member> {
  static auto Make() {
    return Bind([](Program&, std::decay_t<Parameters>... values) { return member(values...); });
  }
};

template <auto member>
auto Member() {
  return BoundMember<member>::Make();
}

std::string DateAndTime(const SystemTime& time) {
  return DateText(time) + " " + TimeText(time);
}

// "2019-06-01" or "2019-06-01 12:00:00".
std::optional<SystemTime> ReadDate(const std::string& text) {
  unsigned year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
  const int read = std::sscanf(text.c_str(), "%4u-%2u-%2u %2u:%2u:%2u", &year, &month, &day, &hour, &minute, &second);
  if (read != 3 && read != 6) return std::nullopt;
  SystemTime time;
  time.year = static_cast<std::uint16_t>(year);
  time.month = static_cast<std::uint16_t>(month);
  time.day = static_cast<std::uint16_t>(day);
  time.hour = static_cast<std::uint16_t>(hour);
  time.minute = static_cast<std::uint16_t>(minute);
  time.second = static_cast<std::uint16_t>(second);
  return time;
}

}  // namespace

namespace routines {

std::span<const ProgramRoutine> Analyzer() {
  using A = clsFileAnalyzer;
  static const std::vector<ProgramRoutine> table = {
      {"clsFileAnalyzer.BreakOnErrors", Bind([](Program& p, std::optional<bool> value) {
         if (value) p.file_analyzer().BreakOnErrors(*value);
         return p.file_analyzer().BreakOnErrors();
       })},
      {"clsFileAnalyzer.LastError", Bind([](Program& p) {
         const ErrorRecord& error = p.file_analyzer().LastError();
         return std::tuple(error.Number, error.Source, error.Description);
       })},
      {"clsFileAnalyzer.Exists", Member<&A::Exists>()},
      {"clsFileAnalyzer.FixPath", Member<&A::FixPath>()},
      {"clsFileAnalyzer.GetPathName", Member<&A::GetPathName>()},
      {"clsFileAnalyzer.GetParentFolder", Member<&A::GetParentFolder>()},
      {"clsFileAnalyzer.GetBaseName", Member<&A::GetBaseName>()},
      {"clsFileAnalyzer.GetLongPath", Member<&A::GetLongPath>()},
      {"clsFileAnalyzer.GetShortPath", Member<&A::GetShortPath>()},
      {"clsFileAnalyzer.GetPathAttributes", Member<&A::GetPathAttributes>()},
      {"clsFileAnalyzer.GetAttributeNames", Member<&A::GetAttributeNames>()},
      {"clsFileAnalyzer.GetPathDate", Bind([](Program& p, const std::string& path, int kind) {
         auto date = p.file_analyzer().GetPathDate(path, static_cast<PathTime>(kind));
         return date ? DateAndTime(*date) : std::string();
       })},
      {"clsFileAnalyzer.GetPathType", Member<&A::GetPathType>()},
      {"clsFileAnalyzer.GetAbsolutePath", Member<&A::GetAbsolutePath>()},
      {"clsFileAnalyzer.GetRelativePath", Member<&A::GetRelativePath>()},
      {"clsFileAnalyzer.BuildPath", Member<&A::BuildPath>()},
      {"clsFileAnalyzer.Execute",
       Bind([](Program& p, const std::string& path, std::uint32_t style, const std::optional<std::string>& parameters,
               std::optional<bool> wait, std::optional<std::uint64_t> window) {
         auto owner = static_cast<WindowHandle>(window.value_or(0));
         return p.file_analyzer().Execute(path, style, parameters.value_or(""), wait.value_or(false), owner);
       })},
      {"clsFileAnalyzer.ParseSize", Bind([](Program&, double size, int decimals) {
         return A::ParseSize(Currency::FromDouble(size).value_or(Currency::Highest()), decimals);
       })},
      {"clsFileAnalyzer.Rename",
       Bind([](Program& p, const std::string& from, const std::string& to, std::optional<bool> keep_both) {
         return p.file_analyzer().Rename(from, to, keep_both.value_or(false));
       })},
      {"clsFileAnalyzer.Search", Bind([](Program& p, const std::string& folder, const std::string& pattern, int kind,
                                         std::optional<bool> recursive, std::optional<bool> match_case) {
         return p.file_analyzer().Search(folder, pattern, static_cast<EntryKind>(kind), recursive.value_or(false),
                                         match_case.value_or(false));
       })},
      {"clsFileAnalyzer.SetPathAttributes", Member<&A::SetPathAttributes>()},
      {"clsFileAnalyzer.SetPathDate", Bind([](Program& p, const std::string& path, const std::string& date, int kind) {
         auto time = ReadDate(date);
         return time && p.file_analyzer().SetPathDate(path, *time, static_cast<PathTime>(kind));
       })},
      {"clsFileAnalyzer.MoveToRecycleBin", Member<&A::MoveToRecycleBin>()},
      {"clsFileAnalyzer.GetFileExtension", Member<&A::GetFileExtension>()},
      {"clsFileAnalyzer.GetFileExecutable", Member<&A::GetFileExecutable>()},
      {"clsFileAnalyzer.GetFileSize",
       Bind([](Program& p, const std::string& path) { return p.file_analyzer().GetFileSize(path).Text(); })},
      {"clsFileAnalyzer.GetFileContents", Member<&A::GetFileContents>()},
      {"clsFileAnalyzer.CopyFile",
       Bind([](Program& p, const std::string& from, const std::string& to, std::optional<bool> move,
               std::optional<bool> overwrite, std::optional<bool> create_folder) {
         return p.file_analyzer().CopyFile(from, to, move.value_or(false), overwrite.value_or(false),
                                           create_folder.value_or(false));
       })},
      {"clsFileAnalyzer.CreateFile",
       Bind([](Program& p, const std::string& path, const std::optional<std::string>& text, std::optional<int> mode,
               std::optional<bool> keep_both) {
         return p.file_analyzer().CreateFile(path, text.value_or(""), static_cast<CreateMode>(mode.value_or(0)),
                                             keep_both.value_or(false));
       })},
      {"clsFileAnalyzer.DeleteFile", Member<&A::DeleteFile>()},
      {"clsFileAnalyzer.GetTempFile", Member<&A::GetTempFile>()},
      {"clsFileAnalyzer.IsFileInUse", Member<&A::IsFileInUse>()},
      {"clsFileAnalyzer.IsFolder", Member<&A::IsFolder>()},
      {"clsFileAnalyzer.CopyFolder",
       Bind([](Program& p, const std::string& from, const std::string& to, std::optional<bool> move,
               std::optional<bool> overwrite, std::optional<bool> create) {
         return p.file_analyzer().CopyFolder(from, to, move.value_or(false), overwrite.value_or(false),
                                             create.value_or(false));
       })},
      {"clsFileAnalyzer.CreateFolder", Bind([](Program& p, const std::string& path, std::optional<bool> parents) {
         return p.file_analyzer().CreateFolder(path, parents.value_or(false));
       })},
      {"clsFileAnalyzer.DeleteFolder", Member<&A::DeleteFolder>()},
      {"clsFileAnalyzer.PathHasSubfolders", Member<&A::PathHasSubfolders>()},
      {"clsFileAnalyzer.IsEmpty", Member<&A::IsEmpty>()},
      {"clsFileAnalyzer.GetFolderContents",
       Bind([](Program& p, const std::string& folder, int kind, std::optional<bool> recursive,
               const std::optional<std::string>& pattern) {
         std::vector<std::string> contents;
         const std::int32_t count = p.file_analyzer().GetFolderContents(
             folder, static_cast<EntryKind>(kind), recursive.value_or(false), pattern.value_or(""), contents);
         contents.insert(contents.begin(), std::to_string(count));
         return contents;
       })},
      {"clsFileAnalyzer.GetFolderSize",
       Bind([](Program& p, const std::string& path) { return p.file_analyzer().GetFolderSize(path).Text(); })},
      {"clsFileAnalyzer.GetSpecialFolder", Member<&A::GetSpecialFolder>()},
      {"clsFileAnalyzer.DriveExists", Member<&A::DriveExists>()},
      {"clsFileAnalyzer.GetSystemDrive", Member<&A::GetSystemDrive>()},
      {"clsFileAnalyzer.GetPathDrive", Member<&A::GetPathDrive>()},
      {"clsFileAnalyzer.GetDrives", Member<&A::GetDrives>()},
      {"clsFileAnalyzer.GetDriveType", Bind([](Program& p, const std::string& root) {
         return static_cast<std::uint32_t>(p.file_analyzer().GetDriveType(root));
       })},
      {"clsFileAnalyzer.GetDriveTypeName", Member<&A::GetDriveTypeName>()},
      {"clsFileAnalyzer.GetDriveInfo", Bind([](Program& p, const std::string& root) {
         DriveInfo info;
         const int error = p.file_analyzer().GetDriveInfo(root, info);
         return std::tuple(error, info.label, info.file_system, info.serial);
       })},
      {"clsFileAnalyzer.GetDriveSpace", Bind([](Program& p, const std::string& root) {
         DriveSpace space;
         const int error = p.file_analyzer().GetDriveSpace(root, space);
         return std::tuple(error, space.total.Text(), space.free.Text(), space.used.Text(), space.percent_used);
       })},
      {"clsFileAnalyzer.GetDriveNumber", Member<&A::GetDriveNumber>()},
      {"clsFileAnalyzer.SetDriveLabel", Member<&A::SetDriveLabel>()},
  };
  return table;
}

}  // namespace routines

}  // namespace qb::rehearse
