#include "kill/traces/auto_complete.h"

#include <algorithm>
#include <array>
#include <set>
#include <vector>

#include "runtime/text.h"
#include "settings/registry_text.h"

namespace qb {

namespace {

constexpr std::string_view kStore = "Software\\Microsoft\\Protected Storage System Provider";
constexpr std::string_view kStoreLabel = "HKEY_CURRENT_USER\\Software\\Microsoft\\Protected Storage System Provider";
constexpr std::uint32_t kGenericAll = 0x10000000;

constexpr std::string_view kDataKeys[] = {"Q:STRINGDATA",
                                          "SEARCHTEXT",
                                          "SEARCHTEXT:STRINGDATA",
                                          "SEARCHTEXT:STRINGINDEX",
                                          "P:STRINGDATA",
                                          "P:STRINGINDEX",
                                          "Q",
                                          "QUERY",
                                          "Q:STRINGINDEX"};

constexpr int kNameBuffer = 255;
constexpr int kKeyNameBuffer = 256;

constexpr int kMostLevels = 512;  // of keys inside each other, as Windows allows

// The names in one key that the walk goes by. What is left of a name that was cut and trimmed may be nothing, which
// opens the same key again, or the name of another key, which would be walked once more at each level.
class NamesOnce {
 public:
  bool Take(const std::string& name) { return !name.empty() && taken_.insert(UpperCase(name)).second; }

 private:
  std::set<std::string> taken_;
};

bool HoldsData(std::string_view key_name) {
  return std::find(std::begin(kDataKeys), std::end(kDataKeys), UpperCase(key_name)) != std::end(kDataKeys);
}

}  // namespace

void AutoCompleteStore::Report_Key_Error(Error code, std::string_view /*step*/) {
  StepOver(code);
}

void AutoCompleteStore::Kill_IE_AutoComplete() {
  TextBuffer buffer(kNameBuffer);
  auto length = platform_.system.GetUserNameA(buffer);
  const std::string user = length.ok() ? buffer.text() : std::string();
  Set_Key_Open_Access(KeyHandle::CurrentUser, kStore, user, kGenericAll);
  Open_Key_Tree(KeyHandle::CurrentUser, kStore, kStoreLabel, user, kGenericAll);
  if (life_.Over()) return;
  Delete_Key_Tree(KeyHandle::CurrentUser, std::string(kStore));
  history_removed_.Add(1);
}

void AutoCompleteStore::Set_Key_Open_Access(KeyHandle root, std::string_view key, const std::string& user,
                                            std::uint32_t /*access*/) {
  std::array<char, kNameBuffer> identifier{};
  std::uint32_t domain_size = 0;
  StepOver(security_.LookupAccountNameA(user, identifier, nullptr, domain_size));
  TextBuffer domain(domain_size);
  // The account must be there; its identifier is not built into the new protection.
  if (Error error = security_.LookupAccountNameA(user, identifier, &domain, domain_size); !Ok(error)) {
    return Report_Key_Error(error, "LookUpAccountName");
  }
  auto open = platform_.registry.RegOpenKeyExA(root, key, kWriteDac);
  if (!open.ok()) return Report_Key_Error(open.error, "RegOpenKeyEx");
  KeyCloser closer(platform_.registry, open.value);

  std::uint32_t size = 0;
  std::string old_descriptor;
  if (security_.RegGetKeySecurity(open.value, kDaclInformation, old_descriptor, size) == Error::InsufficientBuffer) {
    old_descriptor.resize(size);
    StepOver(security_.RegGetKeySecurity(open.value, kDaclInformation, old_descriptor, size));
  }
  std::array<char, kDescriptorLength> descriptor{};
  if (Error error = security_.InitializeSecurityDescriptor(descriptor, kDescriptorRevision); !Ok(error)) {
    return Report_Key_Error(error, "InitializeSecurityDescriptor");
  }
  if (Error error = security_.RegSetKeySecurity(open.value, kDaclInformation, descriptor); !Ok(error)) {
    Report_Key_Error(error, "RegSetKeySecurity");
  }
}

void AutoCompleteStore::Open_Key_Tree(KeyHandle root, std::string_view key, std::string_view /*label*/,
                                      const std::string& user, std::uint32_t access) {
  OpenTree(root, key, user, access, kMostLevels);
}

void AutoCompleteStore::OpenTree(KeyHandle root, std::string_view key, const std::string& user, std::uint32_t access,
                                 int levels) {
  if (levels == 0) return;
  // Deliberate: this handle is not closed.
  auto open = platform_.registry.RegOpenKeyExA(root, key, kKeyRead);
  if (!open.ok()) return;
  NamesOnce names;
  for (std::uint32_t index = 0;; ++index) {
    TextBuffer buffer(kNameBuffer);
    if (!PumpAndLive(platform_, life_)) return;
    std::uint32_t length = 0;
    if (!Ok(security_.RegEnumKeyExA(open.value, index, buffer, length))) return;
    const std::string name = Trim(buffer.text());
    if (!names.Take(name)) continue;
    Set_Key_Open_Access(open.value, name, user, access);
    OpenTree(open.value, name, user, access, levels - 1);
  }
}

void AutoCompleteStore::Delete_Key_Tree(KeyHandle root, const std::string& key) {
  DeleteTree(root, key, kMostLevels);
}

void AutoCompleteStore::DeleteTree(KeyHandle root, const std::string& key, int levels) {
  if (levels == 0) return;
  auto open = platform_.registry.RegOpenKeyExA(root, key, kKeyAllAccess);
  if (!open.ok()) return;
  KeyCloser closer(platform_.registry, open.value);
  // All names first, so that removing does not disturb the places.
  NamesOnce taken;
  std::vector<std::string> names;
  for (std::uint32_t index = 0;; ++index) {
    TextBuffer buffer(kKeyNameBuffer);
    if (!Ok(platform_.registry.RegEnumKeyA(open.value, index, buffer))) break;
    if (taken.Take(buffer.text())) names.push_back(buffer.text());
  }
  for (const std::string& name : names) {
    DeleteTree(root, std::string(key).append("\\").append(name), levels - 1);
    if (HoldsData(name)) StepOver(platform_.registry.RegDeleteKeyA(open.value, name));
  }
}

void AutoCompleteStore::RenableAutoComplete() {
  constexpr std::string_view kSection = "CurrentVersion\\Explorer\\AutoComplete";
  ProductScope scope(reg_, "Microsoft", "Windows");
  StepOver(reg_.SaveSetting2(kSection, "Append Completion", "yes"));
  StepOver(reg_.SaveSetting2(kSection, "Auto Suggest", "yes"));
  // Deliberate: this one section ends in a backslash.
  StepOver(reg_.SaveSetting2(std::string(kSection) + "\\", "AutoSuggest", "yes"));
  StepOver(reg_.SaveSetting2(kSection, "Use AutoComplete", "yes"));
}

std::span<const NamedRoutine<AutoCompleteStore>> AutoCompleteStore::Routines() {
  static constexpr NamedRoutine<AutoCompleteStore> kRoutines[] = {
      {"Kill_IE_AutoComplete", &AutoCompleteStore::Kill_IE_AutoComplete},
      {"RenableAutoComplete", &AutoCompleteStore::RenableAutoComplete},
  };
  return kRoutines;
}

}  // namespace qb
