#include "platform/machine/machine_registry.h"

#include "platform/key_security.h"

namespace qb::machine {

namespace {

constexpr std::uint32_t kMaximumAllowed = 0x2000000;
constexpr std::uint32_t kQueryValue = 0x1, kSetValue = 0x2, kEnumerate = 0x8;

// What a denied key still grants.
constexpr std::uint32_t kGrantedWhenDenied = kKeyRead | kWriteDac;

Error CopyName(TextBuffer& buffer, std::string_view name) {
  return buffer.Takes(name) ? Error::Success : Error::MoreData;
}

// Data into a buffer: a null one only asks.
Error CopyData(Buffer buffer, const RegKey::Value& value, RegValueInfo& info) {
  info = {value.type, static_cast<std::uint32_t>(value.data.size())};
  if (buffer.data() == nullptr) return Error::Success;
  if (buffer.size() < value.data.size()) return Error::MoreData;
  std::copy(value.data.begin(), value.data.end(), buffer.begin());
  return Error::Success;
}

CallText& AddBuffer(CallText& call, Buffer buffer) {
  return buffer.data() == nullptr ? call.Null() : call.Bytes(buffer.size());
}

}  // namespace

MachineRegistry::Opened MachineRegistry::Resolve(KeyHandle key) const {
  if (key == KeyHandle::CurrentUser) return {&state_.registry.Root("HKEY_CURRENT_USER"), kMaximumAllowed};
  if (key == KeyHandle::LocalMachine) return {&state_.registry.Root("HKEY_LOCAL_MACHINE"), kMaximumAllowed};
  auto found = handles_.find(Plain(key));
  if (found == handles_.end() || found->second.key->gone) return {};
  return found->second;
}

Error MachineRegistry::Recorded(const CallText& call, Error error) {
  state_.gate.Record(call, ErrorText(error));
  return error;
}

Result<KeyHandle> MachineRegistry::Open(KeyHandle key, std::string_view sub_key, std::uint32_t access, bool make) {
  const Opened from = Resolve(key);
  if (from.key == nullptr) return Error::InvalidHandle;
  RegKey* found = state_.registry.Find(*from.key, sub_key);
  if (found == nullptr) {
    if (!make) return Error::FileNotFound;
    if (!ValidRegistryName(sub_key, from.key->Levels())) return Error::InvalidParameter;
    // The deepest key that is there decides whether another may be made below it.
    RegKey* deepest = from.key;
    for (std::size_t end = sub_key.find('\\'); end != std::string_view::npos; end = sub_key.find('\\', end + 1)) {
      if (RegKey* next = state_.registry.Find(*from.key, sub_key.substr(0, end))) deepest = next;
    }
    if (deepest->Denied()) return Error::AccessDenied;
    found = &state_.registry.Make(*from.key, sub_key);
  }
  if (found->Denied()) {
    if (access == kMaximumAllowed)
      access = kGrantedWhenDenied;
    else if ((access & ~kGrantedWhenDenied) != 0)
      return Error::AccessDenied;
  }
  const std::uint64_t handle = state_.NewHandle();
  handles_[handle] = {found, access};
  return static_cast<KeyHandle>(handle);
}

namespace {

template <typename Body>
Result<KeyHandle> OpenCall(Gate& gate, CallText& call, std::string_view operation, Body body) {
  Result<KeyHandle> outcome = KeyHandle::None;
  if (Error error = gate.Enter(operation); !Ok(error))
    outcome = error;
  else
    outcome = body();
  if (gate.recording()) {
    call.Handle(outcome.ok() ? Plain(outcome.value) : 0);
  }
  return outcome;
}

bool Grants(std::uint32_t access, std::uint32_t right) {
  return access == kMaximumAllowed || (access & right) == right;
}

}  // namespace

Result<KeyHandle> MachineRegistry::RegOpenKeyA(KeyHandle key, std::string_view sub_key) {
  CallText call("RegOpenKeyA");
  call.Handle(Plain(key)).Text(sub_key);
  auto outcome = OpenCall(state_.gate, call, "RegOpenKeyA", [&] { return Open(key, sub_key, kMaximumAllowed, false); });
  state_.gate.Record(call, ErrorText(outcome.error));
  return outcome;
}

Result<KeyHandle> MachineRegistry::RegOpenKeyExA(KeyHandle key, std::string_view sub_key, std::uint32_t access) {
  CallText call("RegOpenKeyExA");
  call.Handle(Plain(key)).Text(sub_key).Number(0).Number(access);
  auto outcome = OpenCall(state_.gate, call, "RegOpenKeyExA", [&] { return Open(key, sub_key, access, false); });
  state_.gate.Record(call, ErrorText(outcome.error));
  return outcome;
}

Result<KeyHandle> MachineRegistry::RegCreateKeyA(KeyHandle key, std::string_view sub_key) {
  CallText call("RegCreateKeyA");
  call.Handle(Plain(key)).Text(sub_key);
  auto outcome =
      OpenCall(state_.gate, call, "RegCreateKeyA", [&] { return Open(key, sub_key, kMaximumAllowed, true); });
  state_.gate.Record(call, ErrorText(outcome.error));
  return outcome;
}

Result<KeyHandle> MachineRegistry::RegCreateKeyExA(KeyHandle key, std::string_view sub_key, std::uint32_t access) {
  CallText call("RegCreateKeyExA");
  call.Handle(Plain(key)).Text(sub_key).Number(0).Null().Number(0).Number(access).Null();
  auto outcome = OpenCall(state_.gate, call, "RegCreateKeyExA", [&] { return Open(key, sub_key, access, true); });
  call.Null();  // the disposition is not asked for
  state_.gate.Record(call, ErrorText(outcome.error));
  return outcome;
}

Error MachineRegistry::RegCloseKey(KeyHandle key) {
  CallText call("RegCloseKey");
  call.Handle(Plain(key));
  Error error = state_.gate.Enter("RegCloseKey");
  if (Ok(error)) {
    error = handles_.erase(Plain(key)) != 0 ? Error::Success : Error::InvalidHandle;
    state_.open_handles.erase(Plain(key));
  }
  return Recorded(call, error);
}

Error MachineRegistry::RegQueryValueExA(KeyHandle key, std::string_view name, Buffer data, RegValueInfo& info) {
  Error error = state_.gate.Enter("RegQueryValueExA");
  const std::size_t offered = data.size();
  if (Ok(error)) {
    const Opened opened = Resolve(key);
    RegKey::Value* value = opened.key == nullptr ? nullptr : opened.key->Find(name);
    if (opened.key == nullptr)
      error = Error::InvalidHandle;
    else if (!Grants(opened.access, kQueryValue))
      error = Error::AccessDenied;
    else if (value == nullptr)
      error = Error::FileNotFound;
    else
      error = CopyData(data, *value, info);
  }
  CallText call("RegQueryValueExA");
  call.Handle(Plain(key)).Text(name).Null().Number(info.type);
  (data.data() == nullptr ? call.Null() : call.Bytes(offered)).Number(info.size);
  return Recorded(call, error);
}

Error MachineRegistry::RegSetValueExA(KeyHandle key, std::string_view name, std::uint32_t type, std::string_view data) {
  CallText call("RegSetValueExA");
  call.Handle(Plain(key)).Text(name).Number(0).Number(type).Bytes(data.size()).Number(data.size());
  Error error = state_.gate.Enter("RegSetValueExA");
  if (Ok(error)) {
    const Opened opened = Resolve(key);
    if (opened.key == nullptr) {
      error = Error::InvalidHandle;
    } else if (!Grants(opened.access, kSetValue)) {
      error = Error::AccessDenied;
    } else if (!ValidRegistryName(name)) {
      error = Error::InvalidParameter;
    } else if (RegKey::Value* old = opened.key->Find(name)) {
      old->type = type;
      old->data = data;
    } else {
      opened.key->values.push_back({std::string(name), type, std::string(data)});
    }
  }
  return Recorded(call, error);
}

Error MachineRegistry::RegDeleteKeyA(KeyHandle key, std::string_view sub_key) {
  CallText call("RegDeleteKeyA");
  call.Handle(Plain(key)).Text(sub_key);
  Error error = state_.gate.Enter("RegDeleteKeyA");
  if (Ok(error)) {
    const Opened opened = Resolve(key);
    RegKey* found = opened.key == nullptr ? nullptr : state_.registry.Find(*opened.key, sub_key);
    if (opened.key == nullptr)
      error = Error::InvalidHandle;
    else if (found == nullptr)
      error = Error::FileNotFound;
    else if (found->parent == nullptr || found->Denied() || found->HasChildren())
      error = Error::AccessDenied;
    else
      state_.registry.Remove(*found);
  }
  return Recorded(call, error);
}

Error MachineRegistry::RegDeleteValueA(KeyHandle key, std::string_view name) {
  CallText call("RegDeleteValueA");
  call.Handle(Plain(key)).Text(name);
  Error error = state_.gate.Enter("RegDeleteValueA");
  if (Ok(error)) {
    const Opened opened = Resolve(key);
    RegKey::Value* value = opened.key == nullptr ? nullptr : opened.key->Find(name);
    if (opened.key == nullptr)
      error = Error::InvalidHandle;
    else if (!Grants(opened.access, kSetValue))
      error = Error::AccessDenied;
    else if (value == nullptr)
      error = Error::FileNotFound;
    else
      opened.key->values.erase(opened.key->values.begin() + (value - opened.key->values.data()));
  }
  return Recorded(call, error);
}

Error MachineRegistry::RegEnumKeyA(KeyHandle key, std::uint32_t index, TextBuffer& name) {
  CallText call("RegEnumKeyA");
  call.Handle(Plain(key)).Number(index).Bytes(name.size()).Number(name.size());
  Error error = state_.gate.Enter("RegEnumKeyA");
  if (Ok(error)) {
    const Opened opened = Resolve(key);
    if (opened.key == nullptr)
      error = Error::InvalidHandle;
    else if (!Grants(opened.access, kEnumerate))
      error = Error::AccessDenied;
    else if (index >= opened.key->Children().size())
      error = Error::NoMoreItems;
    else
      error = CopyName(name, opened.key->Children()[index]->name);
  }
  return Recorded(call, error);
}

Error MachineRegistry::RegEnumValueA(KeyHandle key, std::uint32_t index, TextBuffer& name, Buffer data,
                                     RegValueInfo& info) {
  Error error = state_.gate.Enter("RegEnumValueA");
  if (Ok(error)) {
    const Opened opened = Resolve(key);
    if (opened.key == nullptr) {
      error = Error::InvalidHandle;
    } else if (!Grants(opened.access, kQueryValue)) {
      error = Error::AccessDenied;
    } else if (index >= opened.key->values.size()) {
      error = Error::NoMoreItems;
    } else {
      const RegKey::Value& value = opened.key->values[index];
      error = CopyName(name, value.name);
      if (Ok(error)) error = CopyData(data, value, info);
    }
  }
  CallText call("RegEnumValueA");
  call.Handle(Plain(key)).Number(index).Bytes(name.size()).Number(name.size()).Null().Number(info.type);
  AddBuffer(call, data).Number(info.size);
  return Recorded(call, error);
}

}  // namespace qb::machine
