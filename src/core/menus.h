// The menus of the main window: the bar, and the popup of the tray icon.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "widgets/form.h"

namespace qb {

class MainMenus {
 public:
  // `form` gets the entries as its controls; `strip` is its tab strip.
  MainMenus(Form& form, TabStrip& strip);

  // Those of the bar, in order, and among them the popup, which is never shown there.
  const std::vector<MenuItem*>& Menus() const { return menus_; }
  MenuItem& Popup() { return *popup_; }
  // The check mark of popHideIE.
  void MarkBossKey(bool active) { boss_key_entry_->SetChecked(active); }

  // The actions of single entries.
  void SelectTab(int tab) { StepOver(strip_.SetTab(tab)); }
  void FAQ_Click();
  void mnuHotKeys_Click();
  void mnuBossKey_Click();
  void Exit_Click() { StepOver(form_.Unload()); }

 private:
  void Inform(std::string_view title, std::string_view text);

  Form& form_;
  TabStrip& strip_;
  std::vector<std::unique_ptr<MenuItem>> entries_;
  std::vector<MenuItem*> menus_;
  MenuItem* popup_ = nullptr;
  MenuItem* boss_key_entry_ = nullptr;
};

}  // namespace qb
