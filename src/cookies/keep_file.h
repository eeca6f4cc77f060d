// The keep list's file, qb.dat in the data folder: one entry a line, no quoting.
#pragma once

#include <string>
#include <vector>

#include "runtime/channels.h"

namespace qb {

std::string KeepFilePath(const std::string& data_folder);

// Reads all entries, by the field rule: so an entry that holds a comma comes back as
// two. False if the file does not open; any bytes give an orderly list.
bool LoadKeepFile(Channels& channels, const std::string& path, std::vector<std::string>& entries);

// Writes the file anew, beside the old one first; entries of fewer than 3 characters are left out. On failure the old
// one stays as it was.
RuntimeError SaveKeepFile(Files& files, Channels& channels, const std::string& path,
                          const std::vector<std::string>& entries);

}  // namespace qb
