// The code page that machine.ini gives the text files of a machine.
#include "platform/machine/world/code_page.h"

#include "tests/platform/machine/machine_test.h"

namespace qb::test {
namespace {

using machine::CodePage;

TEST(CodePages, EveryByteComesBackAndWhatIsMissingIsAQuestionMark) {
  std::string bytes(256, '\0');
  for (int i = 0; i < 256; ++i) bytes[static_cast<std::size_t>(i)] = static_cast<char>(i);
  const struct {
    std::uint32_t number;
    const char *text, *encoded;
  } cases[] = {
      {1252, "é€Ωя", "\xE9\x80??"},
      {1251, "é€Ωя", "?\x88?\xFF"},
      {1253, "é€Ωя", "?\x80\xD9?"},
      {437, "é€Ωя", "\x82?\xEA?"},
  };
  for (const auto& c : cases) {
    const auto page = CodePage::Of(c.number);
    ASSERT_TRUE(page) << c.number;
    EXPECT_EQ(page->ToBytes(page->ToText(bytes)), bytes) << c.number;
    EXPECT_EQ(page->ToBytes(c.text), c.encoded) << c.number;
  }
  EXPECT_EQ(CodePage::Of(CodePage::kUtf8)->ToBytes("é€Ωя"), "é€Ωя");
  for (std::uint32_t number : {0u, 932u, 1200u, 99999u}) EXPECT_FALSE(CodePage::Of(number)) << number;
}

class CodePageOfMachine : public MachineTest {};

TEST_F(CodePageOfMachine, IsTheOneOfMachineIniAndIsKept) {
  std::string problem;
  ASSERT_TRUE(world().Save(problem)) << problem;
  std::string ini = HostRead(HostFolder() / "machine.ini");
  const std::size_t at = ini.find("codepage=1252");
  ASSERT_NE(at, std::string::npos);
  HostWrite(HostFolder() / "machine.ini", ini.replace(at, 13, "codepage=1251"));
  Reopen();
  SaveAndReopen();
  EXPECT_EQ(world().platform().system.WideCharToMultiByte("я").value_or(""), "\xFF");
  for (const char* no_page : {"codepage=932x", "codepage=12345"}) {
    std::string other = ini;
    HostWrite(HostFolder() / "machine.ini", other.replace(other.find("codepage=1251"), 13, no_page));
    EXPECT_EQ(TryOpenFolder(problem), nullptr) << no_page;
  }
}

}  // namespace
}  // namespace qb::test
