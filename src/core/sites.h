// The maker's pages on the web.
#pragma once

#include <string_view>

namespace qb {

inline constexpr std::string_view kHomeSite = "http://www.quillbarrow.example/";
inline constexpr std::string_view kSupportSite = "http://www.quillbarrow.example/support";

}  // namespace qb
