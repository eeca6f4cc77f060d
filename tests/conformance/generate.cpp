#include "tests/conformance/generate.h"

#include <algorithm>
#include <random>
#include <sstream>
#include <vector>

namespace qb::conformance {

namespace {

// What stands for an argument of a kind, as words parted by blanks: usual ones, and odd or hostile ones.
struct Kind {
  char letter;
  const char* usual;
  const char* odd;
};

constexpr Kind kKinds[] = {
    {'p', "a b a.txt d d\\a d\\e d\\e\\b B.TXT Long{20}name.text d\\Long{20}name.text g g\\a",
     "A A. d{20}\\a d.\\a a\\ d\\ . .. ... d\\.. d\\.\\a ..\\ ...\\a nul d\\nul.txt x:s a?b d\\* a<b a|b {} {20} "
     "@\\a @\\d @/d/a @ \\ C: C:a c:\\none\\a\\ @\\{70*300} {70*256} {70*255} {70*200}\\a \\\\?\\C:\\none\\a "
     "\\\\server\\share\\a "
     "Q:\\a a\\b a\\b\\c none\\a none\\a\\b .\\a d\\\\a $t a{0}b a{09}b {c3}{bc}.txt {c3}{9c}.TXT {ff} *"},
    {'E', "a b a.txt d d\\a d\\e B.TXT Long{20}name.text g g\\a",
     "d{20}\\a a\\ d\\ . .. d\\.. ...\\a nul x:s a?b {} {20} @\\a @\\d \\ C:a @\\{70*300} {70*255} none\\a a\\b $t -"},
    {'V', "d d\\e @", ". d\\.. a none {} d\\ D d. nul * @\\d C:d"},
    {'P', "* *.* *.txt d\\* a* ?",
     "*. a.* a?? ??? a?.* d\\*. b.t* <.txt d\\e\\* a\\* a d d\\ d. none\\* *\\a {} *~1.* "
     "*x* .* ?.* **.* *.t?t {70*300}* @ @\\*.t* a.*.* *.*. . .. d\\. *{20} x:*"},
    {'f', "f1 f1 f2 f3", "f9"},
    {'F', "f1 f1 f2 f3", "f4"},
    {'s', "s1 s1 s2", "s9"},
    {'S', "s1 s1 s2", "s3"},
    {'a', "read write both", "0 0x100 0x80 0x10000000"},
    {'h', "3 3 1 0", "2 4 7"},
    {'d', "existing new always either", "5 0 6"},
    {'g', "0 0x80 folders", "0x1 0x20 0x02000001"},
    {'b', "abc x {} hello{20}world", "{41*5000} {0} {c3}{bc}"},
    {'n', "4 100 0 1", "40000"},
    {'D', "0 2 10", "-1 -5 100000 -100000"},
    {'o', "begin current end", "3"},
    {'T', "- 120000000000000000", "0 130000000000000000 0xFFFFFFFFFFFFFFFF"},
    {'A', "0x80 0x1 0x20 0", "0x2 0x4 0x6 0x10 0x400 0x100"},
    {'m', "0 1 2 3", "8"},
    {'B', "0 1", "1"},
    {'z', "260 260 0 1", "5 16 300 40000"},
    {'t', "t u", "t"},
    {'k', "k0 k0 k1 k2", "k9"},
    {'K', "k1 k2", "k3"},
    {'y', "a b Beta a\\b b\\c a\\b\\c A",
     "{} \\a a\\ a\\\\b \\ {61*255} {61*256} {61*300} a\\{61*256} {20}a a{20} a{09}b "
     "a{0a}b a{0}b a/b . .. a. {c3}{bc} {c3}{9c} * none none\\a {01}"},
    {'v', "v w V long{20}name",
     "{} @ \\ a\\b {61*255} {61*300} {61*16383} {61*16384} {01} a{0a}b a{0}b {c3}{9c} {c3}{bc}"},
    {'Y', "1 3 4 2", "0 7 11 5 99"},
    {'x', "text{0} text {} {01}{02}{03}{04} a{0}b{0}{0}", "{41*3000} {c3}{bc}{0} {0} {01} {00}{00}{00}"},
    {'N', "100 -", "0 1 4 3"},
    {'I', "0 0 1", "2 3 99"},
    {'R', "all 0x20019 0x20006", "0 1 2 4 8 0x10 0x20 0x10000 0x2000000 0x40000 0x20000"},
    {'j', "sec key Other", "{} {20}sec sec{20} [sec] ;c k=y {61*300} KEY"},
};

// Calls that sequences of one kind are made of; a name that stands twice comes more often.
constexpr const char* kFamilies[] = {
    "CreateFileA CreateFileA CreateFileA CreateFileA ReadFile WriteFile WriteFile SetFilePointer SetEndOfFile "
    "GetFileSize "
    "FlushFileBuffers SetFileTime CloseHandle CloseHandle DeleteFileA DeleteFileA MoveFileExA MoveFileExA CopyFileA "
    "CreateDirectoryA CreateDirectoryA CreateDirectoryA RemoveDirectoryA RemoveDirectoryA GetFileAttributesA "
    "SetFileAttributesA List List FindFirstFileA FindNextFileA FindClose GetShortPathNameA GetLongPathNameA "
    "GetTempFileNameA GetCurrentDirectoryA SetCurrentDirectoryA SetCurrentDirectoryA GetDriveTypeA",
    "RegOpenKeyA RegOpenKeyExA RegCreateKeyA RegCreateKeyA RegCreateKeyExA RegCloseKey RegQueryValueExA "
    "RegQueryValueExA "
    "RegSetValueExA RegSetValueExA RegDeleteKeyA RegDeleteKeyA RegDeleteValueA RegEnumKeyA RegEnumKeyExA RegEnumValueA "
    "RegGetKeySecurity"};
// Of ten sequences so many are of files.
constexpr std::uint32_t kOfFiles = 6;

std::vector<std::string> Words(const char* text) {
  std::istringstream in(text);
  std::vector<std::string> words;
  for (std::string word; in >> word;) words.push_back(word);
  return words;
}

class Chooser {
 public:
  explicit Chooser(std::uint64_t seed) : random_(seed) {}
  std::uint32_t Below(std::uint32_t bound) { return static_cast<std::uint32_t>(random_() % bound); }
  std::string OneOf(const char* words) {
    const auto all = Words(words);
    return all[Below(static_cast<std::uint32_t>(all.size()))];
  }

 private:
  std::mt19937_64 random_;
};

// Of so many arguments one is odd.
constexpr std::uint32_t kOddOneIn = 10;

}  // namespace

Sequence RandomSequence(std::uint32_t seed, std::uint32_t number) {
  Chooser choose((static_cast<std::uint64_t>(seed) << 32) + number);
  const char* family = kFamilies[number % 10 < kOfFiles ? 0 : 1];
  Sequence sequence;
  while (sequence.lines.size() < kRandomCalls) {
    std::string line = choose.OneOf(family);
    for (const char* letter = FindRow(line)->kinds; *letter != '\0'; ++letter) {
      const auto* kind =
          std::find_if(std::begin(kKinds), std::end(kKinds), [&](const Kind& row) { return row.letter == *letter; });
      line += ' ' + choose.OneOf(choose.Below(kOddOneIn) == 0 ? kind->odd : kind->usual);
    }
    sequence.lines.push_back(line);
  }
  return sequence;
}

}  // namespace qb::conformance
