// What Auto-Kill, the Boss Key and the guards keep in memory.
#include "app/rehearse/console/variables.h"

#include <array>

#include "widgets/control.h"

namespace qb::rehearse {
namespace {

template <Family family>
std::string Open(Program& program) {
  return BooleanText(program.resident().auto_kill.Open(family));
}

constexpr std::array kVariables = std::to_array<Variable>({
    {"AutoKillMinutes", [](Program& p) { return std::to_string(p.main_window().interval().Minutes()); }},
    {"AutoKillHoldCount", [](Program& p) { return std::to_string(p.resident().auto_kill.HoldCount()); }},
    {"AutoKillHold", [](Program& p) { return BooleanText(p.resident().auto_kill.Hold()); }},
    {"IE_Open", Open<Family::InternetExplorer>},
    {"MSN_Open", Open<Family::MSN>},
    {"YahooBrowser_Open", Open<Family::YahooBrowser>},
    {"AOL_Open", Open<Family::AOL>},
    {"Firefox_Open", Open<Family::Firefox>},
    {"Chrome_Open", Open<Family::Chrome>},
    {"Safari_Open", Open<Family::Safari>},
    {"AOLPane_Open", Open<Family::AOLPane>},
    {"BossKeyActive", [](Program& p) { return BooleanText(p.resident().boss_key.hider.Active()); }},
    {"StrictMode", [](Program& p) { return BooleanText(p.resident().guards.StrictMode()); }},
    {"TanglegateON", [](Program& p) { return BooleanText(p.resident().guards.TanglegateOn()); }},
});

}  // namespace

namespace variables {

std::span<const Variable> Resident() {
  return kVariables;
}

}  // namespace variables

}  // namespace qb::rehearse
