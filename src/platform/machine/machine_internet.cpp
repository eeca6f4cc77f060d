#include "platform/machine/machine_internet.h"

namespace qb::machine {

namespace {

constexpr std::string_view kHistoryStore = "{3C374A40-BAE4-11CF-BF7D-00AA006946EE}";
constexpr auto kClassNotRegistered = static_cast<Error>(0x80040154);  // REGDB_E_CLASSNOTREG
constexpr std::uint32_t kRelease = 8;  // byte offset of Release in a table of 4-byte entries
constexpr std::size_t kRecord = 80;    // bytes of the entry before its texts

std::uint32_t NeededSize(const CacheEntry& entry) {
  return static_cast<std::uint32_t>(kRecord + entry.url.size() + 1 + entry.local_file.size() + 1);
}

CallText& AddEntry(CallText& call, const CacheEntryInfo* entry) {
  return entry == nullptr ? call.Null() : call.Structure();
}

}  // namespace

Error MachineUrlCache::Fill(std::uint64_t& place, CacheEntryInfo* entry, std::uint32_t& size) const {
  std::uint64_t next = place;
  const CacheEntry* found = state_.cache.After(next);
  if (found == nullptr) return Error::NoMoreItems;
  const std::uint32_t needed = NeededSize(*found);
  if (entry == nullptr || size < needed) {
    size = needed;
    return Error::InsufficientBuffer;
  }
  size = needed;
  *entry = {};
  entry->struct_size = kRecord;
  entry->source_url = found->url;
  entry->local_file = found->local_file;
  entry->type = found->type;
  place = next;
  return Error::Success;
}

CacheCall MachineUrlCache::FindFirstUrlCacheEntryA(std::optional<std::string_view> pattern, CacheEntryInfo* entry,
                                                   std::uint32_t& size) {
  CacheCall outcome{0, state_.gate.Enter("FindFirstUrlCacheEntryA")};
  if (Ok(outcome.last_error)) {
    std::uint64_t place = 0;
    outcome.last_error = Fill(place, entry, size);
    if (Ok(outcome.last_error)) {
      outcome.result = state_.NewHandle();
      searches_[outcome.result] = place;
    }
  }
  CallText call("FindFirstUrlCacheEntryA");
  AddEntry(pattern ? call.Text(*pattern) : call.Null(), entry).Number(size);
  state_.gate.Record(call, HandleText(outcome.result));
  return outcome;
}

CacheCall MachineUrlCache::FindNextUrlCacheEntryA(std::uint64_t search, CacheEntryInfo* entry, std::uint32_t& size) {
  CacheCall outcome{0, state_.gate.Enter("FindNextUrlCacheEntryA")};
  if (Ok(outcome.last_error)) {
    auto found = searches_.find(search);
    outcome.last_error = found == searches_.end() ? Error::InvalidHandle : Fill(found->second, entry, size);
    outcome.result = Ok(outcome.last_error) ? 1 : 0;
  }
  CallText call("FindNextUrlCacheEntryA");
  AddEntry(call.Handle(search), entry).Number(size);
  state_.gate.Record(call, std::to_string(outcome.result));
  return outcome;
}

Error MachineUrlCache::FindCloseUrlCache(std::uint64_t search) {
  CallText call("FindCloseUrlCache");
  call.Handle(search);
  Error error = state_.gate.Enter("FindCloseUrlCache");
  if (Ok(error)) {
    error = searches_.erase(search) != 0 ? Error::Success : Error::InvalidHandle;
    state_.open_handles.erase(search);
  }
  state_.gate.Record(call, BoolText(Ok(error)));
  return error;
}

Error MachineUrlCache::DeleteUrlCacheEntryA(std::string_view url) {
  CallText call("DeleteUrlCacheEntryA");
  call.Text(url);
  Error error = state_.gate.Enter("DeleteUrlCacheEntryA");
  if (Ok(error)) {
    const CacheEntry* entry = state_.cache.Find(std::string(url));
    if (entry == nullptr) {
      error = Error::FileNotFound;
    } else {
      auto file = entry->local_file.empty() ? Result<Entry*>(Error::FileNotFound) : state_.Find(entry->local_file);
      if (file.ok() && file.value->kind == Entry::Kind::File && !file.value->locked && file.value->uses.empty()) {
        StepOver(state_.disk.Remove(*file.value));
      }
      state_.cache.Remove(std::string(url));
    }
  }
  state_.gate.Record(call, BoolText(Ok(error)));
  return error;
}

Result<ComObject> MachineCom::CoCreateInstance(std::string_view class_id, std::uint32_t context,
                                               std::string_view /*interface_id*/) {
  Result<ComObject> outcome = state_.gate.Enter("CoCreateInstance");
  if (outcome.ok()) {
    if (FoldName(class_id) == kHistoryStore)
      outcome = static_cast<ComObject>(state_.NewHandle());
    else
      outcome = kClassNotRegistered;
  }
  CallText call("CoCreateInstance");
  call.Structure().Null().Number(context).Structure().Handle(outcome.ok() ? Plain(outcome.value) : 0);
  state_.gate.Record(call, ErrorText(outcome.error));
  return outcome;
}

Result<std::uint32_t> MachineCom::DispCallFunc(ComObject object, std::uint32_t offset, std::uint32_t convention,
                                               std::uint32_t result_type) {
  CallText call("DispCallFunc");
  call.Handle(Plain(object)).Number(offset).Number(convention).Number(result_type).Number(0).Null().Null().Structure();
  Result<std::uint32_t> outcome = state_.gate.Enter("DispCallFunc");
  if (outcome.ok()) {
    if (state_.open_handles.count(Plain(object)) == 0)
      outcome = Error::InvalidParameter;
    else if (offset == kRelease)
      state_.open_handles.erase(Plain(object));
  }
  state_.gate.Record(call, ErrorText(outcome.error));
  return outcome;
}

}  // namespace qb::machine
