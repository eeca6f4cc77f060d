// The walks over the AutoComplete store end, whatever keys somebody put there.
#include "kill/traces/auto_complete.h"

#include "tests/support/rehearsal.h"

namespace qb {
namespace {

constexpr std::uint64_t kFirstHandle = 1000;

// A registry in which each key holds keys of the same names, without end.
class EndlessKeys : public Registry, public KeySecurity {
 public:
  explicit EndlessKeys(std::vector<std::string> names) : names_(std::move(names)) {}
  // How many levels below a root were opened.
  std::uint64_t deepest = 0;

  Result<KeyHandle> RegOpenKeyExA(KeyHandle key, std::string_view sub_key, std::uint32_t /*access*/) override {
    std::uint64_t level = key == KeyHandle::CurrentUser ? 0 : static_cast<std::uint64_t>(key) - kFirstHandle;
    if (!sub_key.empty()) level += 1 + static_cast<std::uint64_t>(std::count(sub_key.begin(), sub_key.end(), '\\'));
    deepest = std::max(deepest, level);
    return static_cast<KeyHandle>(kFirstHandle + level);
  }
  Error RegEnumKeyA(KeyHandle /*key*/, std::uint32_t index, TextBuffer& name) override {
    if (index >= names_.size()) return Error::NoMoreItems;
    name.Fill(names_[index]);
    return Error::Success;
  }
  Error RegEnumKeyExA(KeyHandle key, std::uint32_t index, TextBuffer& name, std::uint32_t& /*length*/) override {
    return RegEnumKeyA(key, index, name);
  }
  Error RegCloseKey(KeyHandle /*key*/) override { return Error::Success; }
  Error RegDeleteKeyA(KeyHandle /*key*/, std::string_view /*sub_key*/) override { return Error::AccessDenied; }

  Result<KeyHandle> RegOpenKeyA(KeyHandle /*key*/, std::string_view /*sub_key*/) override { return kNone; }
  Result<KeyHandle> RegCreateKeyA(KeyHandle /*key*/, std::string_view /*sub_key*/) override { return kNone; }
  Result<KeyHandle> RegCreateKeyExA(KeyHandle /*key*/, std::string_view /*sub_key*/,
                                    std::uint32_t /*access*/) override {
    return kNone;
  }
  Error RegQueryValueExA(KeyHandle /*key*/, std::string_view /*name*/, Buffer /*data*/,
                         RegValueInfo& /*info*/) override {
    return kNone;
  }
  Error RegSetValueExA(KeyHandle /*key*/, std::string_view /*name*/, std::uint32_t /*type*/,
                       std::string_view /*data*/) override {
    return kNone;
  }
  Error RegDeleteValueA(KeyHandle /*key*/, std::string_view /*name*/) override { return kNone; }
  Error RegEnumValueA(KeyHandle /*key*/, std::uint32_t /*index*/, TextBuffer& /*name*/, Buffer /*data*/,
                      RegValueInfo& /*info*/) override {
    return kNone;
  }
  Error LookupAccountNameA(std::string_view /*account*/, Buffer /*identifier*/, TextBuffer* /*domain*/,
                           std::uint32_t& /*domain_size*/) override {
    return Error::NoneMapped;
  }
  Error RegGetKeySecurity(KeyHandle /*key*/, std::uint32_t /*information*/, Buffer /*descriptor*/,
                          std::uint32_t& /*size*/) override {
    return kNone;
  }
  Error InitializeSecurityDescriptor(Buffer /*descriptor*/, std::uint32_t /*revision*/) override { return kNone; }
  Error RegSetKeySecurity(KeyHandle /*key*/, std::uint32_t /*information*/,
                          std::span<const char> /*descriptor*/) override {
    return kNone;
  }

 private:
  static constexpr Error kNone = Error::FileNotFound;
  const std::vector<std::string> names_;
};

TEST(AutoCompleteTest, KeysWithoutEndAreWalkedToABound) {
  const struct {
    std::vector<std::string> names;
    std::uint64_t deepest;
  } kCases[] = {
      {{"a"}, 514},                  // 512 levels, the first of which is the store on the third level
      {{std::string("\0a", 2)}, 3},  // nothing is left of this name when it is cut
  };
  for (const auto& c : kCases) {
    test::Rehearsal rehearsal;
    EndlessKeys keys(c.names);
    Platform& world = rehearsal.machine().platform();
    Platform platform{keys,
                      world.files,
                      world.shell,
                      world.system,
                      world.processes,
                      world.desktop,
                      world.hot_keys_and_tray,
                      world.pump,
                      world.random_source,
                      world.url_cache,
                      world.com,
                      keys};
    CRegSettings settings(keys);
    TraceCounter removed;
    Lifetime life;
    AutoCompleteStore(platform, settings, removed, life).Kill_IE_AutoComplete();
    EXPECT_EQ(keys.deepest, c.deepest);
  }
}

// " a" comes to "a" when it is trimmed: a walk that took it for a key of its own would take twice as long at each
// level.
TEST(AutoCompleteTest, NamesThatComeToTheSameAreWalkedOnce) {
  constexpr int kLevels = 40;
  test::Rehearsal rehearsal;
  std::string key = "HKCU\\Software\\Microsoft\\Protected Storage System Provider", script;
  for (int level = 0; level < kLevels; ++level) {
    script.append("reg add \"").append(key).append("\\ a\"\nreg add \"").append(key).append("\\A  \"\n");
    key += "\\a";
  }
  script += "reg add \"" + key + "\\Q\"\nstart\ndo Kill_IE_AutoComplete\nexpect reg show \"" + key + "\" is\n";
  rehearsal.Hold(script);
}

}  // namespace
}  // namespace qb
