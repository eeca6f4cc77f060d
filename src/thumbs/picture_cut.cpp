#include "thumbs/picture_cut.h"

#include "runtime/text.h"

namespace qb {

namespace {

constexpr std::string_view kThumbsDb = "thumbs.db";
constexpr std::string_view kThumbCache = "thumbcache_";

// Places that one step of the search looks at together.
constexpr std::size_t kStep = 256;

// Whether a picture starts at one of the kStep places from `at`; reads three bytes behind them. Without a
// branch, so that the compiler makes vector instructions of it.
bool StartsWithin(const unsigned char* at) {
  unsigned char found = 0;
  for (std::size_t i = 0; i < kStep; ++i) {
    found |=
        static_cast<unsigned char>(static_cast<unsigned>(at[i] == 0xFF) & static_cast<unsigned>(at[i + 1] == 0xD8) &
                                   static_cast<unsigned>(at[i + 2] == 0xFF) & static_cast<unsigned>(at[i + 3] == 0xE0));
  }
  return found != 0;
}

}  // namespace

bool IsThumbsCache(std::string_view path) {
  const std::string lower = LowerCase(path);
  return lower.ends_with(kThumbsDb) || lower.find(kThumbCache) != std::string::npos;
}

bool LooksLikeThumbsCache(std::string_view name) {
  const std::string lower = LowerCase(name);
  return lower.find(kThumbsDb) != std::string::npos || lower.find(kThumbCache) != std::string::npos;
}

std::size_t FindPictureStart(std::string_view bytes, std::size_t from) {
  const auto* data = reinterpret_cast<const unsigned char*>(bytes.data());
  std::size_t at = from;
  while (at + kStep + kPictureStart.size() - 1 <= bytes.size() && !StartsWithin(data + at)) at += kStep;
  return bytes.find(kPictureStart, at);
}

std::size_t CountPictures(std::string_view bytes) {
  std::size_t count = 0;
  for (std::size_t at = FindPictureStart(bytes); at != std::string_view::npos;
       at = FindPictureStart(bytes, at + kPictureStart.size())) {
    ++count;
  }
  return count;
}

}  // namespace qb
