#include "bosskey/window_classes.h"

#include <algorithm>
#include <iterator>

#include "runtime/text.h"

namespace qb {

namespace {

// In order of comparison. Deliberate: the classes that stand in no gate below are hidden whatever the
// settings say, every folder window of Explorer among them.
constexpr std::string_view kClasses[] = {
    "IEFrame",
    "CabinetWClass",
    "AOL Frame25",
    "MozillaWindowClass",
    "IMWindowClass",
    "MSNMSBLClass",
    "YahooBuddyMain",
    "IMClass",
    "AIM_IMessage",
    "MSN6 Window",
    "#32770",
    "Yahoo! BrMain class",
    "MSBLClass",
    "MSBLWindowClass",
    "PageWindowClass",
    "YSearchMenuWndClass",
    "__oxFrame.class__",
    "MozillaUIWindowClass",
    "Chrome_XPFrame",
    "Chrome_WidgetWin_0",
    "{1C03B488-D53B-4a81-97F8-754559640193}",
    "Chrome_WidgetWin_1",
    "Main View",
    "Chat View",
    "Windows.UI.Core.CoreWindow",
    "ApplicationFrameWindow",
};

constexpr std::string_view kDialogClass = "#32770";  // the system's class of dialog boxes

// In order of testing: a window of the class passes only with the setting on.
constexpr struct {
  std::string_view class_name;
  Setting setting;
} kGates[] = {
    {"IEFrame", Setting::BK_IE},
    {"ApplicationFrameWindow", Setting::BK_IE},  // deliberate: the frame of every store application
    {"AOL Frame25", Setting::BK_AOL},
    {"MSN6 Window", Setting::BK_MSN},
    {"MozillaWindowClass", Setting::BK_Netscape},
    {"MozillaUIWindowClass", Setting::BK_Netscape},
    {"Chrome_XPFrame", Setting::BK_Chrome},
    {"c", Setting::BK_Chrome},  // deliberate: no window of this class comes as far as here
    {"{1C03B488-D53B-4a81-97F8-754559640193}", Setting::BK_Safari},
    {"Chrome_WidgetWin_1", Setting::BK_Chrome},
    {"Chat View", Setting::BK_Chrome},
    {"Main View", Setting::BK_Chrome},
    {"__oxFrame.class__", Setting::BK_AOLIM},
    {"YahooBuddyfrmMain", Setting::BK_YahooIM},  // deliberate: as for "c"
    {"YSearchMenuWndClass", Setting::BK_YahooIM},
    {"MSNMSBLClass", Setting::BK_MSNIM},
    {"MSBLWindowClass", Setting::BK_MSNIM},
    {"IMWindowClass", Setting::BK_MSNIM},
    {"PageWindowClass", Setting::BK_MSNIM},
};

// Windows of these classes that have a shorter title than two characters are helpers without a face.
constexpr std::string_view kTitledClasses[] = {"MSN6 Window", "MozillaWindowClass"};
constexpr std::ptrdiff_t kShortestTitle = 2;

constexpr std::string_view kMessengerMarks[] = {"BUDDY", "MESSAGE SESSION", "-", "ICQ"};
constexpr std::string_view kPokerMarks[] = {"WELCOME TO", "PARTYPOKER.COM"};

// Of a text in UTF-8.
std::ptrdiff_t Characters(std::string_view text) {
  return std::count_if(text.begin(), text.end(), [](char byte) { return (byte & 0xC0) != 0x80; });
}

bool HasAny(std::string_view title, std::span<const std::string_view> marks) {
  return std::any_of(marks.begin(), marks.end(),
                     [&](std::string_view mark) { return title.find(mark) != std::string_view::npos; });
}

bool DialogHides(std::string_view upper_title, const Settings& settings) {
  const bool poker = HasAny(upper_title, kPokerMarks);
  if (poker && settings.Number(Setting::BK_PartyPoker) == 0) return false;
  return poker || HasAny(upper_title, kMessengerMarks);
}

}  // namespace

bool BossKeyHides(std::string_view class_name, std::string_view title, const Settings& settings) {
  auto is_class = [&](std::string_view name) { return name == class_name; };
  if (std::none_of(std::begin(kClasses), std::end(kClasses), is_class)) return false;
  for (const auto& gate : kGates) {
    if (is_class(gate.class_name) && settings.Number(gate.setting) == 0) return false;
  }
  if (Characters(title) < kShortestTitle &&
      std::any_of(std::begin(kTitledClasses), std::end(kTitledClasses), is_class)) {
    return false;
  }
  return class_name != kDialogClass || DialogHides(UpperCase(title), settings);
}

}  // namespace qb
