// The file that records registry faults, for support. It only grows.
#pragma once

#include <string>
#include <string_view>

#include "platform/system.h"
#include "runtime/channels.h"

namespace qb {

class ErrorLog {
 public:
  // The folder is looked up at each record: it is only known once the program has started.
  ErrorLog(Channels& channels, System& system, const std::string& data_folder)
      : channels_(channels), system_(system), data_folder_(data_folder) {}

  // Appends one record of four lines with the error as it stands: number, description, date, time and
  // routine, and a ruled line. A file that cannot be written leaves no trace.
  void Write_Error_Log(std::string_view routine, int error_number);

 private:
  Channels& channels_;
  System& system_;
  const std::string& data_folder_;
};

}  // namespace qb
