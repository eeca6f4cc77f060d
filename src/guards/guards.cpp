#include "guards/guards.h"

#include "settings/settings.h"

namespace qb {

namespace {

constexpr std::string_view kCompany = "Microsoft";
constexpr std::string_view kAppName = "Internet Explorer";
constexpr std::string_view kSection = "Main";

// Deliberate: the two names that end in X are further values with the data of their namesakes.
constexpr struct {
  std::string_view value, data;
} kScriptDebugger[] = {
    {"Disable Script Debugger", "yes"},           {"Disable Script DebuggerX", "yes"},
    {"Error Dlg Displayed On Every Error", "no"}, {"Error Dlg Displayed On Every ErrorX", "no"},
    {"Error Dlg Details Pane Open", "no"},
};

constexpr std::string_view kSiblingApplication = "Tanglegate";
constexpr std::string_view kSiblingSection = "TGData";

}  // namespace

void Guards::Timer_DisableScriptDebug_Timer() {
  // The names stay on the shared object: whoever uses it sets its own right before.
  reg_settings_.SetCompany(kCompany);
  reg_settings_.SetAppName(kAppName);
  for (const auto& row : kScriptDebugger) StepOver(reg_settings_.SaveSetting2(kSection, row.value, row.data));
}

void Guards::Timer_HomePage_Timer() {
  // Deliberate: all that the tick does. The start page itself is left alone.
  home_page_timer_.SetTimerEnabled(false);
}

std::string Guards::HomePage() {
  ProductScope internet_explorer(reg_settings_, kCompany, kAppName);
  return reg_settings_.GetSetting2(kSection, "Start Page", "");
}

void Guards::LoadSiblingSettings() {
  strict_mode_ = false;
  tanglegate_on_ = true;
  Load(kStrictMode, strict_mode_);
  Load(kTanglegateOn, tanglegate_on_);
}

void Guards::Load(std::string_view key, bool& value) {
  const std::string text = store_.GetSetting(kSiblingApplication, kSiblingSection, key, "");
  if (!text.empty()) value = StrictNumber(text) == 1;
}

void Guards::Flip(std::string_view key, bool& value) {
  value = !value;
  StepOver(store_.SaveSetting(kSiblingApplication, kSiblingSection, key, value ? "1" : "0"));
}

}  // namespace qb
