// Rights of registry keys, and the registry's way to the file and back.
#include "tests/platform/machine/machine_test.h"

namespace qb::test {
namespace {

using RegistryOfMachine = MachineTest;
using machine::RegistryValue;

constexpr std::uint32_t kWriteDac = 0x40000;
constexpr std::uint32_t kSetValue = 0x2;
constexpr auto kUser = KeyHandle::CurrentUser;

std::string Ends(std::string_view text) {
  return std::string(text) + '\0';
}

TEST_F(RegistryOfMachine, ADeniedKeyCanOnlyBeRead) {
  ASSERT_TRUE(world().RegistrySetValue("HKCU\\Lock\\Below", {"v", kRegSz, "text"}));
  ASSERT_TRUE(world().RegistryDeny("HKCU\\Lock"));
  for (const char* sub_key : {"Lock", "Lock\\Below"}) {
    SCOPED_TRACE(sub_key);
    EXPECT_EQ(registry().RegOpenKeyExA(kUser, sub_key, kKeyAllAccess).error, Error::AccessDenied);
    EXPECT_EQ(registry().RegOpenKeyExA(kUser, sub_key, kSetValue).error, Error::AccessDenied);
    EXPECT_EQ(registry().RegCreateKeyExA(kUser, std::string(sub_key) + "\\new", kKeyRead).error, Error::AccessDenied);
    auto reader = registry().RegOpenKeyExA(kUser, sub_key, kKeyRead | kWriteDac);
    EXPECT_TRUE(reader.ok());
    auto most = registry().RegOpenKeyA(kUser, sub_key);
    ASSERT_TRUE(most.ok());
    EXPECT_EQ(registry().RegSetValueExA(most.value, "v", kRegSz, Ends("x")), Error::AccessDenied);
    StepOver(registry().RegCloseKey(reader.value));
    StepOver(registry().RegCloseKey(most.value));
  }
  EXPECT_EQ(registry().RegDeleteKeyA(kUser, "Lock\\Below"), Error::AccessDenied);
  EXPECT_EQ(world().ReadKey("HKCU\\Lock\\Below")->values.at(0).data, "text");
  ASSERT_TRUE(world().RegistryAllow("HKCU\\Lock"));
  EXPECT_EQ(registry().RegDeleteKeyA(kUser, "Lock\\Below"), Error::Success);
}

TEST_F(RegistryOfMachine, EveryNameAndEveryDataComesBackFromTheFile) {
  const std::string all_bytes = [] {
    std::string bytes;
    for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
    return bytes;
  }();
  const std::vector<RegistryValue> values = {
      {"", kRegSz, "unnamed"},
      {"z first", kRegSz, ""},
      {"a \"quoted\" \\ name", kRegSz, "C:\\a \"b\"\\"},
      {"ends in \\", kRegSz, "\\"},
      {"@", kRegSz, "not the unnamed"},
      {"lines", kRegSz, "line\r\nbreak\ttab"},
      {"=", kRegExpandSz, "%SystemRoot%\\\xE2\x82\xAC\xF0\x9F\x98\x80"},
      {"\xC3\x9C", kRegSz, "\xC3\x9C \xFF\xFE no text"},
      {"number", kRegDword, std::string("\x78\x56\x34\xF2", 4)},
      {"short number", kRegDword, "\x01"},
      {"none", 0, ""},
      {"list", 7, std::string("a\0b\0\0", 5)},
      {"bytes", kRegBinary, all_bytes},
      {"no bytes", kRegBinary, ""},
      {"line\r\nbreak \n \x01\t", kRegSz, "x"},
  };
  // In the order in which they are listed, whatever that of their making.
  const std::vector<std::string> keys = {
      "\t", "\n\"line\n\r\n[breaks] ", " head", "a]b", "semi;colon", "tail ", "z", "[c", "\xD0\x96"};
  for (const RegistryValue& value : values) ASSERT_TRUE(world().RegistrySetValue("HKLM\\Trip", value)) << value.name;
  for (std::size_t i = keys.size(); i-- > 0;) ASSERT_TRUE(world().RegistryAddKey("HKLM\\Trip\\" + keys[i])) << keys[i];
  // It would end the name of its key in the file.
  EXPECT_EQ(registry().RegCreateKeyA(KeyHandle::LocalMachine, "Trip\\a]\nb").error, Error::InvalidParameter);
  std::string deep;
  for (int i = 0; i < 1000; ++i) deep += "\\d";
  EXPECT_FALSE(world().RegistryAddKey("HKLM\\Trip" + deep)) << "Windows ends at 512 levels";
  const auto half = registry().RegCreateKeyA(KeyHandle::LocalMachine, "Deep" + deep.substr(0, 800));
  ASSERT_TRUE(half.ok());
  EXPECT_EQ(registry().RegCreateKeyA(half.value, deep.substr(1, 800)).error, Error::InvalidParameter);
  SaveAndReopen();
  const auto read = world().ReadKey("hklm\\TRIP");
  ASSERT_TRUE(read.has_value());
  EXPECT_EQ(read->sub_keys, keys);
  ASSERT_EQ(read->values.size(), values.size());
  for (std::size_t i = 0; i < values.size(); ++i) {
    EXPECT_EQ(read->values[i].name, values[i].name);
    EXPECT_EQ(read->values[i].type, values[i].type) << values[i].name;
    EXPECT_EQ(read->values[i].data, values[i].data) << values[i].name;
  }
}

TEST_F(RegistryOfMachine, FilesThatWindowsWritesAreRead) {
  const std::string text =
      "Windows Registry Editor Version 5.00\r\n\r\n; a remark\r\n[HKEY_CURRENT_USER\\Exp]\r\n\"n\"=dword:0000002a\r\n"
      "@=\"x\\\\y\\\"\"\r\n\"t\"=\"one \r\n\r\n [2]\\\\\r\n\\\"\"\r\n\"w\"=\"1\\r\\n2\"\r\n\"e\"=hex(2):25,00,\\\r\n  "
      "41,00,25,00,00,00\r\n\"b\"=hex:\r\n\r\n[HKEY_USERS\\.DEFAULT]\r\n\r\n";
  std::string wide = "\xFF\xFE";
  for (char c : text) wide += {c, '\0'};
  for (const std::string& bytes : {text, "\xEF\xBB\xBF" + text, wide}) {
    HostWrite(HostFolder() / "registry.reg", bytes);
    Reopen();
    const auto key = world().ReadKey("HKCU\\Exp");
    ASSERT_TRUE(key.has_value());
    ASSERT_EQ(key->values.size(), 6u);
    EXPECT_EQ(key->values[0].data, std::string("\x2a\0\0\0", 4));
    EXPECT_EQ(key->values[1].data, "x\\y\"");
    EXPECT_EQ(key->values[2].data, "one \r\n\r\n [2]\\\r\n\"") << "a text of several lines";
    EXPECT_EQ(key->values[3].data, "1\r\n2");
    EXPECT_EQ(key->values[4].type, kRegExpandSz);
    EXPECT_EQ(key->values[4].data, "%A%");
    EXPECT_EQ(key->values[5].data, "");
    SaveAndReopen();
    EXPECT_NE(HostRead(HostFolder() / "registry.reg").find("HKEY_USERS\\.DEFAULT"), std::string::npos)
        << "other roots are kept";
  }
}

TEST_F(RegistryOfMachine, ADamagedFileIsRefusedInOneLineAndLeftAlone) {
  const std::string head = "Windows Registry Editor Version 5.00\r\n\r\n[HKEY_CURRENT_USER\\K]\r\n";
  const std::string damaged[] = {
      "",
      "REGEDIT4\r\n",
      head + "\"a\"=dword:zz\r\n",
      head + "\"a\"=dword:123456789\r\n",
      head + "\"a\"=hex:1,2,xyz\r\n",
      head + "\"a\"=hex(:00\r\n",
      head + "\"a\"=hex(xy):00\r\n",
      head + "\"a\"=\"no end\r\n",
      head + "\"a\r\n",
      head + "rubbish\r\n",
      head + "[HKEY_CURRENT_USER\\open\r\n",
      "Windows Registry Editor Version 5.00\r\n\"a\"=\"outside a key\"\r\n",
  };
  std::string problem;
  ASSERT_TRUE(world().Save(problem)) << problem;
  std::vector<std::pair<const char*, std::string>> cases;
  for (const char* name : {"machine.ini", "urlcache.ini"}) {
    cases.emplace_back(name, HostRead(HostFolder() / name) + "no section, no value\n");
  }
  for (const std::string& bytes : damaged) cases.emplace_back("registry.reg", bytes);
  for (const auto& [name, bytes] : cases) {
    const std::string whole = HostRead(HostFolder() / name);
    const std::string ini = HostRead(HostFolder() / "machine.ini");
    HostWrite(HostFolder() / name, bytes);
    EXPECT_EQ(TryOpenFolder(problem), nullptr) << bytes;
    EXPECT_NE(problem, "") << bytes;
    EXPECT_EQ(problem.find('\n'), std::string::npos) << problem;
    EXPECT_EQ(HostRead(HostFolder() / name), bytes);
    HostWrite(HostFolder() / name, whole);
    EXPECT_EQ(HostRead(HostFolder() / "machine.ini"), ini);
  }
}

TEST_F(RegistryOfMachine, AFileThatWasCutOffNeverGivesOtherData) {
  ASSERT_TRUE(world().RegistrySetValue("HKCU\\Cut", {"text", kRegSz, "some text"}));
  ASSERT_TRUE(world().RegistrySetValue("HKCU\\Cut", {"number", kRegDword, std::string("\x12\x34\x56\x78", 4)}));
  ASSERT_TRUE(world().RegistrySetValue("HKCU\\Cut", {"bytes", kRegBinary, std::string(40, '\x11')}));
  std::string problem;
  ASSERT_TRUE(world().Save(problem)) << problem;
  const std::string whole = HostRead(HostFolder() / "registry.reg");
  const auto full = world().ReadKey("HKCU\\Cut");
  for (std::size_t length = whole.find("\\Cut]"); length < whole.size(); ++length) {
    HostWrite(HostFolder() / "registry.reg", whole.substr(0, length));
    const auto opened = TryOpenFolder(problem);
    const auto key = opened == nullptr ? std::nullopt : opened->ReadKey("HKCU\\Cut");
    if (!key.has_value()) continue;
    ASSERT_LE(key->values.size(), full->values.size());
    for (std::size_t i = 0; i < key->values.size(); ++i) {
      EXPECT_EQ(key->values[i].data, full->values[i].data) << "cut at byte " << length;
    }
  }
}

}  // namespace
}  // namespace qb::test
