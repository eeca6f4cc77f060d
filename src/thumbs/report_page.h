// The lines of the audit's two pages: the wall of pictures of a whole scan, and that of one cache file.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qb {

// The public encyclopedia's article on these files.
inline constexpr std::string_view kThumbsArticle = "https://en.wikipedia.org/wiki/Windows_thumbnail_cache";

// Everything ahead of the first picture's section: the head with its style sheet, the logo and the menu.
// Sections 2 to 8 have a body class of their own, any other is that of section 1.
std::vector<std::string> HeaderLines(int section, std::string_view page_name);

// What thumbnail caches are. The page of one file has one line break more.
std::vector<std::string> IntroductionLines(bool single_file);

// The heading of a whole report.
std::string TotalsLine(std::int32_t images, int files);

// One picture, by the number of its cache file and its own number from 1.
std::string PictureLine(std::string_view data_folder, std::int32_t file, std::size_t picture);
// Where the pictures above it came from.
std::string OriginLine(std::string_view path);

std::vector<std::string> FootLines();

}  // namespace qb
