// Overwrites one file in place with random blocks, several passes over its whole length, and deletes it.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/platform.h"
#include "runtime/lifetime.h"
#include "runtime/random.h"

namespace qb {

class clsShredder {
 public:
  // Once the program has ended nothing more is written or deleted.
  clsShredder(Platform& platform, const Lifetime& life) : platform_(platform), life_(life) {}

  std::string p_SourceFile;   // its 8.3 form once the delete has to wait for a reboot
  std::int32_t p_Passes = 0;  // 0 counts as 1, and becomes 1
  bool p_Scattered = false;   // each block takes a pattern at random; else they go round
  bool p_Attributes = false;  // the file's attributes become normal first

  // Any may be empty. What is done to the number has no effect on the passes that are left.
  std::function<void(std::int32_t passes)> Shred_Start;  // once the patterns are made
  std::function<void(std::int32_t pass)> Pass_Done;      // from 1, when the file is closed again
  std::function<void()> Shred_End;                       // after the attempt to delete

  // Reports nothing: whether the file is still there tells. One of less than 8 bytes, of exactly 1,024 or of
  // 2 GiB and more, and a link, is left as it is, without an event; one that becomes a link between two passes is left
  // from then on. For one that cannot be opened or deleted all events come, and a move at the next boot is arranged.
  // Messages run after each pass.
  void File_Shred();

  // True for anything that has a short path: files, and folders too.
  bool File_Exists(std::string_view path) const;

 private:
  static constexpr std::size_t kPatterns = 8;

  // What one call writes again in every pass.
  struct Blocks {
    std::size_t size = 0;     // bytes of a whole block
    std::uint64_t whole = 0;  // whole blocks in the file
    std::string patterns[kPatterns];
    std::string remainder;  // behind the whole blocks; may be empty
  };

  void WritePass(const Blocks& blocks);
  std::size_t NextPattern();
  std::string Random_Block(std::size_t count);
  std::string Weak_Random_Block(std::size_t count);
  void Delete_On_Reboot();
  std::string Short_Path() const;
  void Clear_Attributes();

  Platform& platform_;
  const Lifetime& life_;
  Random random_{0};         // never seeded for the scattered patterns
  std::size_t pattern_ = 0;  // of the last block, from 1; 0 before the first
};

// The bytes of a block for a file of that length; 0 for a length that has none.
std::size_t ShredBlockSize(std::int32_t length);

}  // namespace qb
