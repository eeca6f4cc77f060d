// The text form of machine.ini and urlcache.ini: sections of "name=value" lines, in which %XX stands for a
// byte that could not stand there itself.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qb::machine {

struct IniSection {
  std::string name;
  std::vector<std::pair<std::string, std::string>> lines;
};

// All or nothing: on a line that cannot be read false, and which one in `problem`. Lines that begin
// with ; and empty ones count for nothing.
bool ReadIni(std::string_view text, std::vector<IniSection>& sections, std::string& problem);
std::string WriteIni(const std::vector<IniSection>& sections);

}  // namespace qb::machine
