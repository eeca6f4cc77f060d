// The machine's own text files in its folder on the host, read and written whole.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/machine/world/disk.h"

namespace qb::machine {

// What the last call to the host failed with, for a message: "NAME: reason".
std::string HostProblem(const char* name);

// `content` stays empty if the file is not there; false and a problem if it cannot be read.
bool ReadWhole(const HostFile& folder, const char* name, std::optional<std::string>& content, std::string& problem);

struct HostText {
  std::string name, content;
};
// Writes all of them or, where one cannot be written, none: beside the old ones first, so that there are whole ones of
// one time whenever the rehearsal ends.
bool WriteTogether(const HostFile& folder, std::span<const HostText> texts, std::string& problem);

// To be called before the first reading: ends what a WriteTogether of these names began. New ones take the place of the
// old ones if all were written, else they go. False and a problem if they cannot take it.
bool FinishWriting(const HostFile& folder, std::span<const std::string> names, std::string& problem);

}  // namespace qb::machine
