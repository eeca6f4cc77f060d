// Where the pictures lie in a thumbnail cache: the file is one run of bytes, and each JPEG of the JFIF
// kind begins with the same four of them, whatever the container.
#pragma once

#include <cstddef>
#include <string_view>

namespace qb {

// True for a path that ends with "thumbs.db" or holds "thumbcache_" anywhere, in any case.
bool IsThumbsCache(std::string_view path);
// True for a name that the scan puts into its list: "thumbs.db" or "thumbcache_" anywhere in it.
bool LooksLikeThumbsCache(std::string_view name);

// The four bytes FF D8 FF E0.
inline constexpr std::string_view kPictureStart{"\xFF\xD8\xFF\xE0", 4};

// The place of the first picture start at or behind `from`; std::string_view::npos if there is none.
std::size_t FindPictureStart(std::string_view bytes, std::size_t from = 0);

// The number of pictures. Each runs up to the start of the next or to the end of the bytes, so it takes
// along whatever the container has behind it.
std::size_t CountPictures(std::string_view bytes);

}  // namespace qb
