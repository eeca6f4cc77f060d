#include "runtime/channels.h"

#include <algorithm>
#include <array>

namespace qb {

namespace {

struct ModeRights {
  std::uint32_t access;
  std::uint32_t disposition;
};

ModeRights RightsOf(ChannelMode mode) {
  switch (mode) {
    case ChannelMode::Input:
    case ChannelMode::BinaryInput:
      return {kGenericRead, kOpenExisting};
    case ChannelMode::Output:
      // Cut once it is open: a file that is made anew would have to have the attributes that it has now.
      return {kGenericWrite, kOpenAlways};
    case ChannelMode::Append:
    case ChannelMode::Binary:
      return {kGenericRead | kGenericWrite, kOpenAlways};
  }
  return {};
}

}  // namespace

Channels::~Channels() {
  for (auto& [number, channel] : open_) StepOver(files_.CloseHandle(channel.file));
}

int Channels::FreeNumber() const {
  for (int number = 1; number <= kHighest; ++number) {
    if (open_.count(number) == 0) return number;
  }
  return 0;
}

bool Channels::CanOpen(std::string_view path) const {
  if (FreeNumber() == 0) return false;
  auto file = files_.CreateFileA(path, kGenericRead, kShareRead | kShareWrite, kOpenExisting, kAttributeNormal);
  if (!file.ok()) return false;
  StepOver(files_.CloseHandle(file.value));
  return true;
}

RuntimeError Channels::Open(int number, std::string_view path, ChannelMode mode) {
  if (number < 1 || number > kHighest) return RuntimeError::BadFileNumber;
  if (open_.count(number) != 0) return RuntimeError::FileAlreadyOpen;
  ModeRights rights = RightsOf(mode);
  auto file = files_.CreateFileA(path, rights.access, kShareRead | kShareWrite, rights.disposition, kAttributeNormal);
  if (!file.ok()) return FromWindows(file.error);

  Channel channel;
  channel.file = file.value;
  channel.mode = mode;
  RuntimeError outcome = RuntimeError::None;
  if (mode == ChannelMode::Input) outcome = ReadAll(channel);
  if (mode == ChannelMode::Output) outcome = FromWindows(files_.SetEndOfFile(channel.file));
  if (mode == ChannelMode::Append) outcome = FromWindows(files_.SetFilePointer(channel.file, 0, SeekFrom::End).error);
  if (!Ok(outcome)) {
    StepOver(files_.CloseHandle(channel.file));
    return outcome;
  }
  open_.emplace(number, std::move(channel));
  return RuntimeError::None;
}

RuntimeError Channels::ReadAll(Channel& channel) {
  std::array<char, 16384> block;
  std::string bytes;
  for (;;) {
    auto count = files_.ReadFile(channel.file, block);
    if (!count.ok()) return FromWindows(count.error);
    if (count.value == 0) break;
    bytes.append(block.data(), count.value);
  }
  auto text = system_.MultiByteToWideChar(bytes);
  if (!text.ok()) return FromWindows(text.error);
  channel.text = std::move(text.value);
  return RuntimeError::None;
}

RuntimeError Channels::Close(int number) {
  auto found = open_.find(number);
  if (found == open_.end()) return RuntimeError::None;  // closing a number that is not open is no error
  FileHandle file = found->second.file;
  open_.erase(found);
  return FromWindows(files_.CloseHandle(file));
}

Channels::Channel* Channels::Find(int number, ChannelMode mode) {
  auto found = open_.find(number);
  return found != open_.end() && found->second.mode == mode ? &found->second : nullptr;
}

bool Channels::AtEnd(int number) const {
  auto found = open_.find(number);
  if (found == open_.end() || found->second.mode != ChannelMode::Input) return true;
  return found->second.next >= found->second.text.size();
}

void Channels::SkipLineEnd(Channel& channel) {
  if (channel.next < channel.text.size() && channel.text[channel.next] == '\r')
    ++channel.next;
  else if (channel.next < channel.text.size() && channel.text[channel.next] == '\n') {
    ++channel.next;
    return;
  }
  if (channel.next < channel.text.size() && channel.text[channel.next] == '\n') ++channel.next;
}

RuntimeError Channels::ReadLine(int number, std::string& line) {
  Channel* channel = Find(number, ChannelMode::Input);
  if (channel == nullptr) return RuntimeError::BadFileNumber;
  if (channel->next >= channel->text.size()) return RuntimeError::InputPastEnd;
  std::size_t end = std::min(channel->text.find_first_of("\r\n", channel->next), channel->text.size());
  line = channel->text.substr(channel->next, end - channel->next);
  channel->next = end;
  SkipLineEnd(*channel);
  return RuntimeError::None;
}

RuntimeError Channels::ReadField(int number, std::string& field) {
  Channel* channel = Find(number, ChannelMode::Input);
  if (channel == nullptr) return RuntimeError::BadFileNumber;
  if (channel->next >= channel->text.size()) return RuntimeError::InputPastEnd;
  std::size_t end = std::min(channel->text.find_first_of(",\r\n", channel->next), channel->text.size());
  std::string_view text = std::string_view(channel->text).substr(channel->next, end - channel->next);
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  if (text.size() >= 2 && text.front() == '"' && text.back() == '"') text = text.substr(1, text.size() - 2);
  field = text;
  channel->next = end;
  if (end < channel->text.size() && channel->text[end] == ',')
    ++channel->next;
  else
    SkipLineEnd(*channel);
  return RuntimeError::None;
}

RuntimeError Channels::PrintLine(int number, std::string_view text) {
  return Print(number, std::string(text) + "\r\n");
}

RuntimeError Channels::Print(int number, std::string_view text) {
  auto bytes = system_.WideCharToMultiByte(text);
  return bytes.ok() ? PrintBytes(number, bytes.value) : FromWindows(bytes.error);
}

RuntimeError Channels::PrintBytes(int number, std::string_view bytes) {
  auto found = open_.find(number);
  if (found == open_.end() || found->second.mode == ChannelMode::Input) return RuntimeError::BadFileNumber;
  auto written = files_.WriteFile(found->second.file, bytes);
  if (!written.ok()) return FromWindows(written.error);
  return written.value == bytes.size() ? RuntimeError::None : RuntimeError::DiskFull;
}

RuntimeError Channels::Put(int number, std::uint64_t position, std::string_view bytes) {
  Channel* channel = Find(number, ChannelMode::Binary);
  if (channel == nullptr || position == 0) return RuntimeError::BadFileNumber;
  auto place = files_.SetFilePointer(channel->file, static_cast<std::int64_t>(position - 1), SeekFrom::Begin);
  if (!place.ok()) return FromWindows(place.error);
  return PrintBytes(number, bytes);
}

RuntimeError Channels::Get(int number, std::uint64_t position, std::uint64_t count, std::string& bytes) {
  Channel* channel = Find(number, ChannelMode::Binary);
  if (channel == nullptr) channel = Find(number, ChannelMode::BinaryInput);
  if (channel == nullptr || position == 0) return RuntimeError::BadFileNumber;
  auto place = files_.SetFilePointer(channel->file, static_cast<std::int64_t>(position - 1), SeekFrom::Begin);
  if (!place.ok()) return FromWindows(place.error);
  bytes.clear();
  std::array<char, 16384> block;
  while (count > 0) {
    auto got = files_.ReadFile(channel->file, Buffer(block.data(), std::min<std::uint64_t>(count, block.size())));
    if (!got.ok()) return FromWindows(got.error);
    if (got.value == 0) break;
    bytes.append(block.data(), got.value);
    count -= got.value;
  }
  return RuntimeError::None;
}

Result<std::uint64_t> Channels::Length(int number) const {
  auto found = open_.find(number);
  if (found == open_.end()) return Error::InvalidHandle;
  return files_.GetFileSize(found->second.file);
}

bool File_Can_Open(const Channels& channels, std::string_view path) {
  return channels.CanOpen(path);
}

}  // namespace qb
