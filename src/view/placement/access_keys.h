// The letters that work a control together with the Alt key.
#pragma once

#include <string>
#include <vector>

namespace qb {

// Gives each caption a letter or digit of its own by an ampersand before it: the first letter of one of its
// words if one is free, else any other. One that brings its ampersand keeps it. Where nothing is left, the
// caption stays as it is; the earlier ones choose first. Only ASCII letters and digits are given.
std::vector<std::string> WithAccessKeys(std::vector<std::string> captions);

}  // namespace qb
