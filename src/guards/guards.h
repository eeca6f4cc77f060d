// The standing corrections of Internet Explorer's settings, and the settings of the sibling pop-up blocker.
#pragma once

#include <string>
#include <string_view>

#include "settings/reg_settings.h"
#include "settings/store.h"
#include "widgets/controls.h"

namespace qb {

class Guards {
 public:
  // `reg_settings` is the main window's one.
  Guards(CRegSettings& reg_settings, SettingsStore& store, Timer& home_page_timer)
      : reg_settings_(reg_settings), store_(store), home_page_timer_(home_page_timer) {}

  // Switches the script debugger and the script error dialogs off. Refused writes are passed over.
  void Timer_DisableScriptDebug_Timer();
  void Timer_HomePage_Timer();
  // Internet Explorer's start page; empty if there is none.
  std::string HomePage();

  // Reads the sibling's two settings. One that is absent has its default.
  void LoadSiblingSettings();
  bool StrictMode() const { return strict_mode_; }
  bool TanglegateOn() const { return tanglegate_on_; }
  // Turn one over and store it.
  void FlipStrictMode() { Flip(kStrictMode, strict_mode_); }
  void FlipTanglegate() { Flip(kTanglegateOn, tanglegate_on_); }

 private:
  static constexpr std::string_view kStrictMode = "StrictMode";
  static constexpr std::string_view kTanglegateOn = "TanglegateON";
  void Load(std::string_view key, bool& value);
  void Flip(std::string_view key, bool& value);

  CRegSettings& reg_settings_;
  SettingsStore& store_;
  Timer& home_page_timer_;
  bool strict_mode_ = false;
  bool tanglegate_on_ = false;
};

}  // namespace qb
