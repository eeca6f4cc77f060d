#include "settings/error_log.h"

#include "runtime/text.h"
#include "settings/reg_settings.h"

namespace qb {

namespace {

// A print list puts each item at the start of the next zone of 14 columns.
std::string Zone(std::string text) {
  constexpr std::size_t kZone = 14;
  text.append(kZone - text.size() % kZone, ' ');
  return text;
}

}  // namespace

void ErrorLog::Write_Error_Log(std::string_view routine, int error_number) {
  const int number = channels_.FreeNumber();
  const std::string path = data_folder_ + "\\" + std::string(kProductName) + "_ErrLogFile.txt";
  if (!Ok(channels_.Open(number, path, ChannelMode::Append))) return;
  const SystemTime now = system_.GetLocalTime();
  const std::string lines[] = {
      "Error Number :  " + std::to_string(error_number),
      "Error Description :  " + std::string(Describe(error_number)),
      Zone(DateText(now)) + Zone(TimeText(now)) + std::string(routine),
      std::string(33, '-'),
  };
  for (const std::string& line : lines) StepOver(channels_.PrintLine(number, line));
  StepOver(channels_.Close(number));
}

}  // namespace qb
