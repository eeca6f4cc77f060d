// Patterns of names as Windows NT matches them.
#pragma once

#include <string>
#include <string_view>

namespace qb::machine {

// A pattern of FindFirstFile in the form that the file system is asked with, in capitals. There "<" is a "*" that ends
// at the last dot, ">" a "?" that also stands for nothing before a dot or the end, and a double quote a dot that may be
// missing at the end.
std::u32string NtPattern(std::string_view pattern);
bool HasWildcards(std::u32string_view nt_pattern);
// The name must be in capitals.
bool MatchesNtPattern(std::u32string_view nt_pattern, std::string_view name);

}  // namespace qb::machine
