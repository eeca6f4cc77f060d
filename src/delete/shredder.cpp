#include "delete/shredder.h"

#include <cmath>
#include <limits>
#include <optional>

#include "runtime/folders.h"

namespace qb {

namespace {

constexpr std::int32_t kShortest = 8;

struct BlockRow {
  std::int32_t above;  // lengths of more than this
  std::size_t block;
};

// The first row that holds decides. Deliberate: a length of exactly 1,024 falls into the gap between the last
// row and the eighth parts below it, has no block size, and is never shredded.
constexpr BlockRow kBlockSizes[] = {
    {4194304, 524288}, {524288, 65536}, {65536, 8192}, {8192, 1024}, {1024, 128},
};
constexpr std::int32_t kEighthsBelow = 1024;

constexpr std::string_view kBootTarget = "0";

// The length as a signed 32-bit number; nothing for a file that is not there or is longer than that holds.
std::optional<std::int32_t> FileLen(Files& files, const std::string& path) {
  // A pattern would find some other file.
  if (path.find_first_of("*?") != std::string::npos) return std::nullopt;
  auto found = files.FindFirstFileA(path);
  if (!found.ok()) return std::nullopt;
  StepOver(files.FindClose(found.value.handle));
  const FindData& data = found.value.data;
  if (data.size_high != 0 || data.size_low > static_cast<std::uint32_t>(std::numeric_limits<std::int32_t>::max())) {
    return std::nullopt;
  }
  return static_cast<std::int32_t>(data.size_low);
}

}  // namespace

std::size_t ShredBlockSize(std::int32_t length) {
  for (const BlockRow& row : kBlockSizes) {
    if (length > row.above) return row.block;
  }
  // nearbyint takes a tie to the even one.
  return length < kEighthsBelow ? static_cast<std::size_t>(std::nearbyint(length / 8.0)) : 0;
}

void clsShredder::File_Shred() {
  const auto length = FileLen(platform_.files, p_SourceFile);
  if (!length || *length < kShortest) return;
  if (p_Attributes) Clear_Attributes();
  Blocks blocks;
  blocks.size = ShredBlockSize(*length);
  if (blocks.size == 0) return;
  blocks.whole = static_cast<std::size_t>(*length) / blocks.size;
  for (std::string& pattern : blocks.patterns) pattern = Random_Block(blocks.size);
  const std::size_t rest = static_cast<std::size_t>(*length) % blocks.size;
  if (rest != 0) blocks.remainder = Random_Block(rest);

  if (p_Passes == 0) p_Passes = 1;
  if (Shred_Start) Shred_Start(p_Passes);
  pattern_ = 0;
  for (std::int32_t pass = 1; pass <= p_Passes; ++pass) {
    // A link has no length, so only a file that was exchanged for one since is one here: what it leads to is not
    // written.
    if (IsLink(platform_.files, p_SourceFile)) return;
    WritePass(blocks);
    if (Pass_Done) Pass_Done(pass);
    if (!PumpAndLive(platform_, life_)) return;
  }
  if (!Ok(platform_.files.DeleteFileA(p_SourceFile))) Delete_On_Reboot();
  if (Shred_End) Shred_End();
}

void clsShredder::WritePass(const Blocks& blocks) {
  Files& files = platform_.files;
  // Not tested: on a file that does not open, every step below fails unseen.
  const FileHandle file =
      files.CreateFileA(p_SourceFile, kGenericWrite, kShareRead, kOpenExisting, kAttributeNormal).value;
  std::int64_t offset = 0;
  for (std::uint64_t block = 0; block < blocks.whole; ++block) {
    StepOver(files.SetFilePointer(file, offset, SeekFrom::Begin));
    StepOver(files.WriteFile(file, blocks.patterns[NextPattern() - 1]));
    offset += static_cast<std::int64_t>(blocks.size);
  }
  if (!blocks.remainder.empty()) {
    StepOver(files.SetFilePointer(file, offset, SeekFrom::Begin));
    StepOver(files.WriteFile(file, blocks.remainder));
  }
  StepOver(files.FlushFileBuffers(file));
  StepOver(files.CloseHandle(file));
}

std::size_t clsShredder::NextPattern() {
  if (p_Scattered) {
    pattern_ = static_cast<std::size_t>(kPatterns * random_.Next()) + 1;
  } else {
    pattern_ = pattern_ % kPatterns + 1;
  }
  return pattern_;
}

std::string clsShredder::Random_Block(std::size_t count) {
  RandomSource& source = platform_.random_source;
  auto context = source.CryptAcquireContextA(std::nullopt, kEnhancedProvider, kProviderRsaFull, kCryptVerifyContext);
  if (!context.ok()) return Weak_Random_Block(count);
  std::string block(count, '\0');
  // The context of a failed call stays unreleased.
  if (!Ok(source.CryptGenRandom(context.value, block))) return Weak_Random_Block(count);
  // Deliberate: a failed release drops the good bytes.
  if (!Ok(source.CryptReleaseContext(context.value, 0))) return Weak_Random_Block(count);
  return block;
}

std::string clsShredder::Weak_Random_Block(std::size_t count) {
  constexpr double kLevels = 255;  // 0 to 254
  std::string block;
  block.reserve(count);
  while (block.size() < count) {
    random_.Stir(platform_.system.GetTickCount());
    block += static_cast<char>(static_cast<unsigned char>(kLevels * random_.Next()));
  }
  return block;
}

void clsShredder::Delete_On_Reboot() {
  p_SourceFile = Short_Path();
  // Deliberate: the target is this text and not null, so that the file is moved to that name at the next boot
  // and not removed.
  StepOver(platform_.files.MoveFileExA(p_SourceFile, kBootTarget, kMoveDelayUntilReboot));
}

std::string clsShredder::Short_Path() const {
  constexpr std::size_t kStatedLength = 255;
  TextBuffer buffer(kStatedLength);
  return platform_.files.GetShortPathNameA(p_SourceFile, buffer).ok() ? buffer.text() : std::string();
}

bool clsShredder::File_Exists(std::string_view path) const {
  constexpr std::size_t kStatedLength = 259;
  TextBuffer buffer(kStatedLength);
  return platform_.files.GetShortPathNameA(path, buffer).value_or(0) >= 1;
}

void clsShredder::Clear_Attributes() {
  StepOver(platform_.files.SetFileAttributesA(p_SourceFile, kAttributeNormal));
}

}  // namespace qb
