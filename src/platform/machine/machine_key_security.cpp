#include "platform/machine/machine_key_security.h"

#include <algorithm>

namespace qb::machine {

namespace {

constexpr std::string_view kDomain = "MACHINE";
constexpr std::uint32_t kStoredDescriptor = 48;  // bytes of a key's protection, self-relative

}  // namespace

Error MachineKeySecurity::LookupAccountNameA(std::string_view account, Buffer identifier, TextBuffer* domain,
                                             std::uint32_t& domain_size) {
  CallText call("LookupAccountNameA");
  call.Null().Text(account).Bytes(identifier.size()).Number(identifier.size());
  Error error = state_.gate.Enter("LookupAccountNameA");
  if (Ok(error)) {
    if (account.empty() || FoldName(account) != FoldName(state_.config.user)) {
      error = Error::NoneMapped;
    } else {
      TextBuffer none(0);
      TextBuffer& filled = domain == nullptr ? none : *domain;
      domain_size = filled.Fill(kDomain);
      if (domain_size >= filled.size()) error = Error::InsufficientBuffer;
    }
  }
  (domain == nullptr ? call.Null() : call.Bytes(domain->size())).Number(domain_size).Number(1);
  state_.gate.Record(call, BoolText(Ok(error)));
  return error;
}

Error MachineKeySecurity::RegGetKeySecurity(KeyHandle key, std::uint32_t information, Buffer descriptor,
                                            std::uint32_t& size) {
  Error error = state_.gate.Enter("RegGetKeySecurity");
  const std::size_t offered = descriptor.size();
  if (Ok(error)) {
    if (registry_.Resolve(key).key == nullptr)
      error = Error::InvalidHandle;
    else if (offered < kStoredDescriptor)
      error = Error::InsufficientBuffer;
    size = kStoredDescriptor;
  }
  CallText call("RegGetKeySecurity");
  call.Handle(Plain(key)).Number(information).Bytes(offered).Number(size);
  state_.gate.Record(call, ErrorText(error));
  return error;
}

Error MachineKeySecurity::InitializeSecurityDescriptor(Buffer descriptor, std::uint32_t revision) {
  CallText call("InitializeSecurityDescriptor");
  call.Bytes(descriptor.size()).Number(revision);
  Error error = state_.gate.Enter("InitializeSecurityDescriptor");
  if (Ok(error)) {
    if (revision != kDescriptorRevision || descriptor.empty()) {
      error = Error::InvalidParameter;
    } else {
      std::fill(descriptor.begin(), descriptor.end(), '\0');
      descriptor[0] = static_cast<char>(revision);
    }
  }
  state_.gate.Record(call, BoolText(Ok(error)));
  return error;
}

Error MachineKeySecurity::RegSetKeySecurity(KeyHandle key, std::uint32_t information,
                                            std::span<const char> descriptor) {
  CallText call("RegSetKeySecurity");
  call.Handle(Plain(key)).Number(information).Bytes(descriptor.size());
  Error error = state_.gate.Enter("RegSetKeySecurity");
  if (Ok(error)) {
    const MachineRegistry::Opened opened = registry_.Resolve(key);
    if (opened.key == nullptr)
      error = Error::InvalidHandle;
    else if ((opened.access & kWriteDac) == 0)
      error = Error::AccessDenied;
    else if (descriptor.empty() || descriptor[0] != static_cast<char>(kDescriptorRevision)) {
      error = Error::InvalidParameter;
    } else {
      opened.key->denied = false;
    }
  }
  state_.gate.Record(call, ErrorText(error));
  return error;
}

Error MachineKeySecurity::RegEnumKeyExA(KeyHandle key, std::uint32_t index, TextBuffer& name, std::uint32_t& length) {
  Error error = state_.gate.Enter("RegEnumKeyExA");
  if (Ok(error)) {
    const MachineRegistry::Opened opened = registry_.Resolve(key);
    if (opened.key == nullptr) {
      error = Error::InvalidHandle;
    } else if (index >= opened.key->Children().size()) {
      error = Error::NoMoreItems;
    } else {
      const std::string& found = opened.key->Children()[index]->name;
      const std::uint32_t filled = name.Fill(found);
      if (filled < name.size())
        length = filled;
      else
        error = Error::MoreData;
    }
  }
  CallText call("RegEnumKeyExA");
  call.Handle(Plain(key)).Number(index).Bytes(name.size()).Number(length).Null().Null().Null().Null();
  state_.gate.Record(call, ErrorText(error));
  return error;
}

}  // namespace qb::machine
