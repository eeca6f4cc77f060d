// The registry of a machine.
#include "platform/key_security.h"
#include "platform/machine/operation.h"
#include "platform/machine/operations/operations.h"

namespace qb::machine {
namespace {

constexpr std::uint32_t kKeyWrite = 0x20006;
constexpr std::uint32_t kQueryValue = 0x1, kSetValue = 0x2, kEnumerate = 0x8;

// What a denied key still grants.
constexpr std::uint32_t kGrantedWhenDenied = kKeyRead | kWriteDac;

Error CopyName(TextBuffer& buffer, std::string_view name) {
  return buffer.Takes(name) ? Error::Success : Error::MoreData;
}

bool IsText(std::uint32_t type) {
  constexpr std::uint32_t kMultiSz = 7;
  return type == kRegSz || type == kRegExpandSz || type == kMultiSz;
}

// Windows would act on what stands before a zero character.
bool HasZero(std::string_view text) {
  return text.find('\0') != std::string_view::npos;
}

// Generic rights stand for those of keys.
std::uint32_t KeyRights(std::uint32_t access) {
  constexpr std::pair<std::uint32_t, std::uint32_t> kGeneric[] = {
      {0x80000000, kKeyRead}, {0x40000000, kKeyWrite}, {0x20000000, kKeyRead}, {0x10000000, kKeyAllAccess}};
  for (const auto& [generic, rights] : kGeneric) {
    if ((access & generic) != 0) access = (access & ~generic) | rights;
  }
  return access;
}

// Data into a buffer: a null one only asks.
Error CopyData(Buffer buffer, const RegKey::Value& value, RegValueInfo& info) {
  info = {value.type, static_cast<std::uint32_t>(value.data.size())};
  if (buffer.data() == nullptr) return Error::Success;
  if (buffer.size() < value.data.size()) return Error::MoreData;
  std::copy(value.data.begin(), value.data.end(), buffer.begin());
  return Error::Success;
}

class MachineRegistry final : public Registry {
 public:
  explicit MachineRegistry(MachineState& state) : state_(state) {}

  Result<KeyHandle> RegOpenKeyA(KeyHandle key, std::string_view sub_key) override {
    return OpenCall<"RegOpenKeyA">(key, sub_key, kMaximumAllowed, false);
  }

  Result<KeyHandle> RegOpenKeyExA(KeyHandle key, std::string_view sub_key, std::uint32_t access) override {
    return OpenCall<"RegOpenKeyExA">(key, sub_key, access, false, 0, access);
  }

  Result<KeyHandle> RegCreateKeyA(KeyHandle key, std::string_view sub_key) override {
    return OpenCall<"RegCreateKeyA">(key, sub_key, kMaximumAllowed, true);
  }

  Result<KeyHandle> RegCreateKeyExA(KeyHandle key, std::string_view sub_key, std::uint32_t access) override {
    KeyHandle opened = KeyHandle::None;
    // The disposition, at the end, is not asked for.
    return gate_.Call<"RegCreateKeyExA">(key, sub_key, 0, kNull, 0, access, kNull, opened, kNull).ReturnsStatus([&] {
      return Open(key, sub_key, access, true, opened);
    });
  }

  Error RegCloseKey(KeyHandle key) override {
    return gate_.Call<"RegCloseKey">(key).ReturnsStatus([&] {
      state_.open_handles.erase(Plain(key));
      return state_.open_keys.Close(Plain(key)) ? Error::Success : Error::InvalidHandle;
    });
  }

  Error RegQueryValueExA(KeyHandle key, std::string_view name, Buffer data, RegValueInfo& info) override {
    return gate_.Call<"RegQueryValueExA">(key, name, kNull, info.type, Bytes(data), info.size).ReturnsStatus([&] {
      if (HasZero(name)) return Error::InvalidName;
      const Result<RegKey*> opened = state_.open_keys.Granting(key, kQueryValue);
      if (!opened.ok()) return opened.error;
      const RegKey::Value* value = opened.value->Find(name);
      return value == nullptr ? Error::FileNotFound : CopyData(data, *value, info);
    });
  }

  Error RegSetValueExA(KeyHandle key, std::string_view name, std::uint32_t type, std::string_view data) override {
    return gate_.Call<"RegSetValueExA">(key, name, 0, type, Bytes(data.size()), data.size()).ReturnsStatus([&] {
      if (HasZero(name)) return Error::InvalidName;
      if (key != KeyHandle::None && !ValidValueName(name)) return Error::InvalidParameter;
      const Result<RegKey*> opened = state_.open_keys.Granting(key, kSetValue);
      if (!opened.ok()) return opened.error;
      std::string stored(data);
      if (IsText(type) && !stored.empty() && stored.back() != '\0') stored += '\0';  // Windows adds what is missing
      if (RegKey::Value* old = opened.value->Find(name)) {
        old->type = type;
        old->data = std::move(stored);
      } else {
        opened.value->values.push_back({std::string(name), type, std::move(stored)});
      }
      return Error::Success;
    });
  }

  Error RegDeleteKeyA(KeyHandle key, std::string_view sub_key) override {
    return gate_.Call<"RegDeleteKeyA">(key, sub_key).ReturnsStatus([&] {
      const Result<RegKey*> opened = Below(key, sub_key);
      if (!opened.ok()) return opened.error;
      RegKey* found = state_.registry.Find(*opened.value, sub_key);
      if (found == nullptr) return Error::FileNotFound;
      if (found->parent == nullptr || found->Denied() || found->HasChildren()) return Error::AccessDenied;
      state_.registry.Remove(*found);
      return Error::Success;
    });
  }

  Error RegDeleteValueA(KeyHandle key, std::string_view name) override {
    return gate_.Call<"RegDeleteValueA">(key, name).ReturnsStatus([&] {
      if (HasZero(name)) return Error::InvalidName;
      const Result<RegKey*> opened = state_.open_keys.Granting(key, kSetValue);
      if (!opened.ok()) return opened.error;
      auto& values = opened.value->values;
      const RegKey::Value* value = opened.value->Find(name);
      if (value == nullptr) return Error::FileNotFound;
      values.erase(values.begin() + (value - values.data()));
      return Error::Success;
    });
  }

  Error RegEnumKeyA(KeyHandle key, std::uint32_t index, TextBuffer& name) override {
    return gate_.Call<"RegEnumKeyA">(key, index, Bytes(name), name.size()).ReturnsStatus([&] {
      const Result<RegKey*> opened = state_.open_keys.Granting(key, kEnumerate);
      if (!opened.ok()) return opened.error;
      const auto& children = opened.value->Children();
      return index < children.size() ? CopyName(name, children[index]->name) : Error::NoMoreItems;
    });
  }

  Error RegEnumValueA(KeyHandle key, std::uint32_t index, TextBuffer& name, Buffer data, RegValueInfo& info) override {
    return gate_.Call<"RegEnumValueA">(key, index, Bytes(name), name.size(), kNull, info.type, Bytes(data), info.size)
        .ReturnsStatus([&] {
          const Result<RegKey*> opened = state_.open_keys.Granting(key, kQueryValue);
          if (!opened.ok()) return opened.error;
          if (index >= opened.value->values.size()) return Error::NoMoreItems;
          const RegKey::Value& value = opened.value->values[index];
          const Error error = CopyName(name, value.name);
          return Ok(error) ? CopyData(data, value, info) : error;
        });
  }

 private:
  // An open key, for a path below it that can be one.
  Result<RegKey*> Below(KeyHandle key, std::string_view sub_key) const {
    if (HasZero(sub_key)) return Error::InvalidName;
    const Result<RegKey*> opened = state_.open_keys.Granting(key, 0);
    if (!opened.ok()) return opened.error;
    if (sub_key.starts_with('\\')) return Error::BadPathName;
    if (!ValidKeyPath(sub_key, opened.value->Levels())) return Error::InvalidParameter;
    return opened.value;
  }

  // A call that shows, between the sub-key and the handle, `shown`.
  template <OperationName kName, typename... Shown>
  Result<KeyHandle> OpenCall(KeyHandle key, std::string_view sub_key, std::uint32_t access, bool make,
                             const Shown&... shown) {
    KeyHandle opened = KeyHandle::None;
    return gate_.Call<kName>(key, sub_key, shown..., opened).ReturnsStatus([&]() -> Result<KeyHandle> {
      // Without a name RegOpenKeyA gives back what it was given.
      if (sub_key.empty() && std::string_view(kName.text) == "RegOpenKeyA") return opened = key;
      return Open(key, sub_key, access, make, opened);
    });
  }

  Result<KeyHandle> Open(KeyHandle key, std::string_view sub_key, std::uint32_t access, bool make, KeyHandle& opened) {
    const Result<RegKey*> below = Below(key, sub_key);
    if (!below.ok()) return below.error;
    RegKey* const from = below.value;
    access = KeyRights(access);
    RegKey* found = state_.registry.Find(*from, sub_key);
    if (found == nullptr) {
      if (!make) return Error::FileNotFound;
      // The deepest key that is there decides whether another may be made below it.
      RegKey* deepest = from;
      for (std::size_t end = sub_key.find('\\'); end != std::string_view::npos; end = sub_key.find('\\', end + 1)) {
        if (RegKey* next = state_.registry.Find(*from, sub_key.substr(0, end))) deepest = next;
      }
      if (deepest->Denied()) return Error::AccessDenied;
      found = &state_.registry.Make(*from, sub_key);
    }
    if (found->Denied()) {
      if (access == kMaximumAllowed)
        access = kGrantedWhenDenied;
      else if ((access & ~kGrantedWhenDenied) != 0)
        return Error::AccessDenied;
    }
    const std::uint64_t handle = state_.NewHandle();
    state_.open_keys.Add(handle, {found, access});
    return opened = static_cast<KeyHandle>(handle);
  }

  MachineState& state_;
  Gate& gate_ = state_.gate;
};

}  // namespace

std::unique_ptr<Registry> MakeRegistry(MachineState& state) {
  return std::make_unique<MachineRegistry>(state);
}

}  // namespace qb::machine
