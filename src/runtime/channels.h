// Files by number, as the plain file statements use them: text for reading, text for writing or
// appending, and binary. A text file is in the system's ANSI code page, binary bytes are kept as they are; a line ends
// in CR LF, LF or CR when read and in CR LF when written.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include "platform/files.h"
#include "platform/system.h"
#include "runtime/errors.h"

namespace qb {

enum class ChannelMode {
  Input,       // the file must exist
  Output,      // cut to length 0 as it is, whatever its attributes but read-only, or made
  Append,      // written at its end, or made
  Binary,      // read and written at any place, or made
  BinaryInput  // read at any place; the file must exist, and may be read-only
};

class Channels {
 public:
  static constexpr int kHighest = 511;

  Channels(Files& files, System& system) : files_(files), system_(system) {}
  ~Channels();
  Channels(const Channels&) = delete;
  Channels& operator=(const Channels&) = delete;

  // The lowest number from 1 that is not open; 0 if all are.
  int FreeNumber() const;

  // True if the file opens for text input: it is there, is no folder, and nobody holds it without sharing.
  bool CanOpen(std::string_view path) const;

  // FileAlreadyOpen if the number is in use. Other programs may read and write the file meanwhile,
  // unless they hold it without sharing, which makes this PermissionDenied.
  RuntimeError Open(int number, std::string_view path, ChannelMode mode);
  RuntimeError Close(int number);

  // Input: true when nothing is left; also for a number that is not open for input.
  bool AtEnd(int number) const;
  // InputPastEnd when nothing is left.
  RuntimeError ReadLine(int number, std::string& line);
  // One field: up to the next comma or line end, leading blanks skipped and one pair of surrounding
  // double quotes removed.
  RuntimeError ReadField(int number, std::string& field);

  // Output and Append: the text and a line end.
  RuntimeError PrintLine(int number, std::string_view text);
  // Output, Append (at the end) and Binary (where the last Put ended): the text or the bytes alone.
  RuntimeError Print(int number, std::string_view text);
  // The same, for bytes that are no text.
  RuntimeError PrintBytes(int number, std::string_view bytes);
  // Binary: the bytes at a place counted from 1, over what is there.
  RuntimeError Put(int number, std::uint64_t position, std::string_view bytes);
  // Binary and BinaryInput: `count` bytes from a place counted from 1; fewer where the file ends.
  RuntimeError Get(int number, std::uint64_t position, std::uint64_t count, std::string& bytes);
  // The length of the file in bytes; BadFileNumber for a number that is not open.
  Result<std::uint64_t> Length(int number) const;

 private:
  struct Channel {
    FileHandle file = FileHandle::None;
    ChannelMode mode = ChannelMode::Input;
    std::string text;      // Input: the whole content
    std::size_t next = 0;  // Input: where reading goes on
  };
  Channel* Find(int number, ChannelMode mode);
  RuntimeError ReadAll(Channel& channel);
  void SkipLineEnd(Channel& channel);

  Files& files_;
  System& system_;
  std::map<int, Channel> open_;
};

// Channels::CanOpen under the name that the kill routines know it by. Nothing of the file is read.
bool File_Can_Open(const Channels& channels, std::string_view path);

}  // namespace qb
