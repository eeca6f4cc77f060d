// What the readers of the registry take for a text.
#include "tests/support/rehearsal.h"

namespace qb {
namespace {

TEST(RegistryText, EndsAtItsFirstZeroForEveryReader) {
  test::Rehearsal rehearsal;
  const std::string text("C:\\Docs\0\\x", 10);
  for (const char* key : {"HKCU\\Software\\T\\A\\S", "HKLM\\Software\\T\\A\\S",
                          "HKCU\\Software\\VB and VBA Program Settings\\Temp\\SystemData"}) {
    rehearsal.machine().RegistrySetValue(key, {"AOLdir", kRegSz, text});
    rehearsal.machine().RegistrySetValue(key, {"QBBuild", kRegSz, "1"});
  }
  rehearsal.machine().RegistrySetValue("HKCU\\Software\\T\\A\\S", {"long", kRegExpandSz, text + text});
  rehearsal.Hold(
      "start\n"
      "expect get AOLdir is C:\\Docs\n"
      "expect do CRegSettings.GetSetting T A S AOLdir - is C:\\Docs\n"
      "expect do CRegSettings.GetSetting2 T A S AOLdir - is C:\\Docs\n"
      "expect do CRegSettings.GetSetting2 T A S long - is C:\\Docs\n"
      "expect do ModRegistryRelated.QueryValue HKCU Software\\T\\A\\S AOLdir is true C:\\Docs\n"
      "expect do RegistryCounter.ReadRegString HKCU Software\\T\\A\\S AOLdir is C:\\Docs\n"
      "expect do RegistryCounter.SubValueName HKCU Software\\T\\A\\S 1 is AOLdir\n");
}

}  // namespace
}  // namespace qb
