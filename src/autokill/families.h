// The families of browser windows that the watcher polls.
#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <vector>

#include "settings/catalogue.h"

namespace qb {

enum class Family {
  InternetExplorer,
  MSN,
  YahooBrowser,
  AOL,
  Firefox,
  Chrome,
  Safari,
  AOLPane,
};

struct FamilyRow {
  Family family;
  std::optional<Setting> setting;  // must be 1 for a run; none: always runs
};

// In the order in which a tick evaluates them, which is the order of Family.
inline constexpr std::array kFamilies = std::to_array<FamilyRow>({
    {Family::InternetExplorer, Setting::AK_InternetExplorer},
    {Family::MSN, std::nullopt},
    {Family::YahooBrowser, std::nullopt},
    {Family::AOL, Setting::AK_AOL},
    {Family::Firefox, Setting::AK_MozillaFirefox},
    {Family::Chrome, Setting::AK_GoogleChrome},
    {Family::Safari, Setting::AK_AppleSafari},
    {Family::AOLPane, std::nullopt},
});

struct WatchedClass {
  std::string_view class_name;
  Family family;
};

// In the order of the look-ups.
inline constexpr std::array kWatchedClasses = std::to_array<WatchedClass>({
    {"IEFrame", Family::InternetExplorer},
    {"ApplicationFrameWindow", Family::InternetExplorer},  // deliberate: the frame of every store application
    {"AOL Frame25", Family::AOL},
    {"MozillaUIWindowClass", Family::Firefox},
    {"MozillaWindowClass", Family::Firefox},
    {"Chrome_XPFrame", Family::Chrome},
    {"Chrome_WidgetWin_0", Family::Chrome},
    {"Chrome_WidgetWin_1", Family::Chrome},
    {"{1C03B488-D53B-4a81-97F8-754559640193}", Family::Safari},
    {"MSN6 Window", Family::MSN},
    {"Yahoo! BrfrmMain class", Family::YahooBrowser},  // deliberate: the Boss Key has another spelling
    {"_AOL_CBROWSER", Family::AOLPane},                // a child of the Yahoo browser if that is open
});

}  // namespace qb
