// Version, account, folders, ini files and the clock of a machine.
#include "platform/machine/operation.h"
#include "platform/machine/operations/operations.h"
#include "runtime/filetime.h"
#include "runtime/text.h"

namespace qb::machine {
namespace {

constexpr std::uint32_t kTextRoom = 260;  // characters that a text is fetched into
constexpr std::uint32_t kControlsRecord = 8;

// The value of a key in the text of an ini file, without the blanks and tabs and the pair of quotes that may stand
// round it. Of two sections with one name the first alone is read.
std::optional<std::string> IniValue(std::string_view text, std::string_view section, std::string_view key) {
  bool inside = false;
  while (!text.empty()) {
    const std::size_t cut = std::min(text.find_first_of("\r\n"), text.size());
    const std::string_view line = Trimmed(text.substr(0, cut));
    text.remove_prefix(std::min(cut + 1, text.size()));
    if (!line.empty() && line.front() == '[') {
      if (inside) return std::nullopt;
      const std::size_t close = std::min(line.find(']'), line.size());
      inside = SameText(Trimmed(line.substr(1, close - 1)), Trimmed(section));
      continue;
    }
    const std::size_t equals = line.find('=');
    if (!inside || equals == std::string::npos || !SameText(Trimmed(line.substr(0, equals)), Trimmed(key))) continue;
    std::string_view value = Trimmed(line.substr(equals + 1));
    if (value.size() >= 2 && value.front() == value.back() && (value.front() == '"' || value.front() == '\'')) {
      value = value.substr(1, value.size() - 2);
    }
    return std::string(value);
  }
  return std::nullopt;
}

class MachineSystem final : public System {
 public:
  explicit MachineSystem(MachineState& state) : state_(state) {}

  Result<VersionInfo> GetVersionExA() override {
    return gate_.Call<"GetVersionExA">(kStructure).ReturnsBool([&]() -> Result<VersionInfo> {
      return VersionInfo{config_.major, config_.minor, 0, config_.platform_id};
    });
  }

  Result<std::uint32_t> GetUserNameA(TextBuffer& buffer) override {
    std::size_t size = buffer.size();
    return gate_.Call<"GetUserNameA">(Bytes(buffer), size).ReturnsBool([&]() -> Result<std::uint32_t> {
      const std::uint32_t length = buffer.Fill(config_.user);
      if (length >= buffer.size()) return Error::InsufficientBuffer;
      size = length + 1;
      return length + 1;
    });
  }

  Result<std::uint32_t> GetWindowsDirectoryA(TextBuffer& buffer) override {
    return gate_.Call<"GetWindowsDirectoryA">(Bytes(buffer), buffer.size())
        .ReturnsValue([&]() -> Result<std::uint32_t> { return buffer.Fill(config_.windows_folder); });
  }

  std::uint32_t GetPrivateProfileStringA(std::string_view section, std::string_view key, std::string_view fallback,
                                         TextBuffer& buffer, std::string_view file) override {
    return gate_.Call<"GetPrivateProfileStringA">(section, key, fallback, Bytes(buffer), buffer.size(), file)
        .ReturnsNumberOr(0u, [&] {
          auto found = state_.Find(file, true);
          constexpr Entry::Use kReads{true, false, false, kShareRead | kShareWrite | kShareDelete};
          const bool readable = found.ok() && found.value->Allows(kReads);
          const std::string text = readable ? state_.disk.Read(*found.value).value_or({}) : std::string();
          const auto value = IniValue(config_.code_page.ToText(text), section, key);
          return buffer.FillCut(value ? *value : fallback.substr(0, fallback.find_last_not_of(' ') + 1));
        });
  }

  std::optional<std::string> GetEnvironmentVariableA(std::string_view name) override {
    return gate_.Call<"GetEnvironmentVariableA">(name, Bytes(kTextRoom), kTextRoom)
        .ReturnsAs(
            [&] {
              auto found = config_.environment.find(FoldName(name));
              return found == config_.environment.end() ? std::nullopt : std::optional(found->second);
            },
            [](const auto& value) { return value ? value->size() : 0; });
  }

  Result<std::string> GetModuleFileNameA() override {
    return gate_.Call<"GetModuleFileNameA">(kNull, Bytes(kTextRoom), kTextRoom)
        .ReturnsAs([&]() -> Result<std::string> { return config_.program_folder + "\\Quillbarrow.exe"; },
                   [](const auto& path) { return path.value.size(); });
  }

  bool InitCommonControlsEx(std::uint32_t size, std::uint32_t /*classes*/) override {
    return gate_.Call<"InitCommonControlsEx">(kStructure).ReturnsBool([&] { return size == kControlsRecord; });
  }

  // Both pass the gate and are not recorded: every line of a text file would be.
  Result<std::string> WideCharToMultiByte(std::string_view text) override {
    if (Error error = gate_.Enter(kOperationNumber<"WideCharToMultiByte">); !Ok(error)) return error;
    return config_.code_page.ToBytes(text);
  }
  Result<std::string> MultiByteToWideChar(std::string_view bytes) override {
    if (Error error = gate_.Enter(kOperationNumber<"MultiByteToWideChar">); !Ok(error)) return error;
    return config_.code_page.ToText(bytes);
  }

  SystemTime GetLocalTime() override {
    SystemTime time;
    gate_.Call<"GetLocalTime">(kStructure).ReturnsNothing([&] { time = Time(); });
    return time;
  }

  SystemTime GetSystemTime() override {
    SystemTime time;
    gate_.Call<"GetSystemTime">(kStructure).ReturnsNothing([&] { time = Time(); });
    return time;
  }

  std::uint64_t GetTickCount() override {
    // Without power the clock leaps ahead, so that whoever waits on it comes to an end.
    constexpr std::uint64_t kLeap = 3600000;
    StepOver(gate_.Enter(kOperationNumber<"GetTickCount">));
    if (!gate_.Powered()) without_power_ms_ += kLeap;
    return state_.clock_ms + without_power_ms_;
  }

  Result<FileTime> FileTimeToLocalFileTime(FileTime utc) override {
    return gate_.Call<"FileTimeToLocalFileTime">(kStructure, kStructure).ReturnsBool([&] { return Result(utc); });
  }

  Result<FileTime> LocalFileTimeToFileTime(FileTime local) override {
    return gate_.Call<"LocalFileTimeToFileTime">(kStructure, kStructure).ReturnsBool([&] { return Result(local); });
  }

 private:
  SystemTime Time() const { return FileTimeToSystemTime(state_.Now()).value_or(SystemTime()); }

  MachineState& state_;
  Gate& gate_ = state_.gate;
  const MachineConfig& config_ = state_.config;
  std::uint64_t without_power_ms_ = 0;  // what GetTickCount leapt ahead; no part of the machine's clock
};

}  // namespace

std::unique_ptr<System> MakeSystem(MachineState& state) {
  return std::make_unique<MachineSystem>(state);
}

}  // namespace qb::machine
