// The machine's own text files in its folder on the host, read and written whole.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/machine/world/disk.h"

namespace qb::machine {

// What the last call to the host failed with, for a message: "NAME: reason".
std::string HostProblem(const char* name);

// `content` stays empty if the file is not there; false and a problem if it cannot be read.
bool ReadWhole(const HostFile& folder, const char* name, std::optional<std::string>& content, std::string& problem);

// Writes beside the old file first, so that there is a whole one at any time.
bool WriteWhole(const HostFile& folder, const std::string& name, std::string_view content, std::string& problem);

}  // namespace qb::machine
