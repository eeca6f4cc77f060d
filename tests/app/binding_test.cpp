#include "app/rehearse/console/binding.h"

#include <gtest/gtest.h>

#include <map>

namespace qb::rehearse {
namespace {

using Kind = CallOutcome::Kind;
using Words = std::vector<std::string>;

struct Subject {};

TEST(Binding, WordsBecomeArgumentsAndResultsLines) {
  const std::map<std::string, Routine<Subject>::call_type> routines = {
      {"texts", Bind([](Subject&, const std::string& a, const std::optional<std::string>& b) {
         return std::make_tuple(a, b.value_or("none"), b.has_value());
       })},
      {"numbers", Bind([](Subject&, std::int16_t n, double d, bool flag) { return n * d + (flag ? 1 : 0); })},
      {"root", Bind([](Subject&, KeyHandle root) { return root == KeyHandle::LocalMachine; })},
      {"word", Bind([](Subject&, std::uint32_t n) { return n; })},
      {"error", Bind([](Subject&) { return std::optional<std::string>(); })},
      {"nothing", Bind([](Subject&) {})},
  };
  struct Case {
    const char* routine;
    Words words;
    Kind kind;
    Words lines;
  };
  const Case cases[] = {
      {"texts", {"a b", ""}, Kind::Done, {"a b", "", "true"}},
      {"texts", {"a"}, Kind::Done, {"a", "none", "false"}},
      {"texts", {}, Kind::WrongArguments, {}},
      {"texts", {"a", "b", "c"}, Kind::WrongArguments, {}},
      {"numbers", {"-32768", "0.5", "0"}, Kind::Done, {"-16384"}},
      {"numbers", {"32768", "1", "0"}, Kind::WrongArguments, {}},
      {"numbers", {"-32769", "1", "0"}, Kind::WrongArguments, {}},
      {"numbers", {"1", "x", "0"}, Kind::WrongArguments, {}},
      {"numbers", {"1", "1", "2"}, Kind::WrongArguments, {}},
      {"root", {"hklm"}, Kind::Done, {"true"}},
      {"root", {"HKCR"}, Kind::WrongArguments, {}},
      {"word", {"4294967295"}, Kind::Done, {"4294967295"}},
      {"word", {"-1"}, Kind::WrongArguments, {}},
      {"error", {}, Kind::Done, {}},
      {"nothing", {}, Kind::Done, {}},
  };
  for (const Case& c : cases) {
    Subject subject;
    CallOutcome outcome = routines.at(c.routine)(subject, c.words);
    EXPECT_EQ(outcome.kind, c.kind) << c.routine << " " << ::testing::PrintToString(c.words);
    EXPECT_EQ(outcome.lines, c.lines) << c.routine;
  }
}

}  // namespace
}  // namespace qb::rehearse
