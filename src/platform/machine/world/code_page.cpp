#include "platform/machine/world/code_page.h"

#include <iconv.h>

#include <algorithm>
#include <numeric>

#include "platform/utf16.h"

namespace qb::machine {

namespace {

constexpr char32_t kFirstHigh = 0x80, kFirstOfTwoUnits = 0x10000;

// What 0x80 to 0x9F stand for in Windows-1252; all others stand for themselves.
constexpr std::array<char32_t, 32> kWesternMarks = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

class Converter {
 public:
  explicit Converter(std::uint32_t number) : handle_(iconv_open("UTF-32LE", ("CP" + std::to_string(number)).c_str())) {}
  ~Converter() {
    if (ok()) iconv_close(handle_);
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;
  // What iconv_open gives for a page that it does not know.
  bool ok() const { return handle_ != reinterpret_cast<iconv_t>(-1); }  // NOLINT(performance-no-int-to-ptr)
  // Nothing for a byte that is open, or the first of two.
  std::optional<char32_t> Character(unsigned char byte) const {
    char from = static_cast<char>(byte), to[4] = {};
    char *in = &from, *out = to;
    std::size_t in_left = 1, out_left = sizeof to;
    iconv(handle_, nullptr, nullptr, nullptr, nullptr);
    if (iconv(handle_, &in, &in_left, &out, &out_left) == static_cast<std::size_t>(-1) || out_left != 0) return {};
    auto part = [&to](int i) { return static_cast<char32_t>(static_cast<unsigned char>(to[i])) << (8 * i); };
    return part(0) | part(1) | part(2) | part(3);
  }

 private:
  iconv_t handle_;
};

}  // namespace

CodePage::CodePage() {
  std::iota(high_.begin(), high_.end(), kFirstHigh);
  std::copy(kWesternMarks.begin(), kWesternMarks.end(), high_.begin());
}

std::optional<CodePage> CodePage::Of(std::uint32_t number) {
  CodePage page;
  page.number_ = number;
  if (number == kWestern || number == kUtf8) return page;
  const Converter converter(number);
  if (!converter.ok() || converter.Character('A') != U'A') return std::nullopt;
  int open = 0;
  for (std::size_t i = 0; i < page.high_.size(); ++i) {
    const auto byte = static_cast<unsigned char>(kFirstHigh + i);
    const auto character = converter.Character(byte);
    page.high_[i] = character.value_or(byte);
    open += character ? 0 : 1;
  }
  // The first halves of characters of two bytes are open too, and many.
  constexpr int kMostOpen = 48;
  if (open > kMostOpen) return std::nullopt;
  return page;
}

std::string CodePage::ToBytes(std::string_view utf8) const {
  if (number_ == kUtf8) return std::string(utf8);
  std::string bytes;
  while (!utf8.empty()) {
    const char32_t c = TakeCharacter(utf8);
    const auto high = std::find(high_.begin(), high_.end(), c);
    if (c < kFirstHigh)
      bytes += static_cast<char>(c);
    else if (high != high_.end())
      bytes += static_cast<char>(kFirstHigh + static_cast<char32_t>(high - high_.begin()));
    else if (c >= kStrayByte)
      bytes += static_cast<char>(c - kStrayByte);
    else
      bytes += c < kFirstOfTwoUnits ? "?" : "??";  // one for each unit
  }
  return bytes;
}

std::string CodePage::ToText(std::string_view bytes) const {
  if (number_ == kUtf8) return std::string(bytes);
  std::string text;
  text.reserve(bytes.size());
  for (char byte : bytes) {
    const auto c = static_cast<unsigned char>(byte);
    PutCharacter(c < kFirstHigh ? c : high_[c - kFirstHigh], text);
  }
  return text;
}

}  // namespace qb::machine
