// The one binding of settings to the controls of a window that show and change them at once.
#pragma once

#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "settings/settings.h"
#include "widgets/form.h"

namespace qb {

struct Question {
  std::string_view title, text;
};

// What more a box does than storing 1 when ticked and 0 when cleared.
struct BoxRule {
  // Asked before the box takes `asked_at`; No sets it back, and what is stored is where it then stands.
  std::optional<Question> question = std::nullopt;
  int asked_at = 0;
  // The question was answered, and the box and its setting follow the answer already.
  std::function<void(bool yes)> answered = nullptr;
  // The box stands anew and its setting with it. Runs under loading too.
  std::function<void()> set = nullptr;
};

// Loading sets the controls from memory; their handlers run, but ask nothing, store nothing and leave memory as it is.
// What a box has for a rule of its own (`set`) is up to that.
class SettingBindings {
 public:
  // The controls stand on `form`, which the questions belong to; all must outlive this.
  SettingBindings(Form& form, Settings& settings) : form_(form), settings_(settings) {}
  SettingBindings(const SettingBindings&) = delete;
  SettingBindings& operator=(const SettingBindings&) = delete;

  // Ticked by 1 alone.
  void Bind(Setting setting, CheckBox& box, BoxRule rule = {});
  // A box that a load sets like the others; what a click does is up to its owner.
  void Show(Setting setting, CheckBox& box);
  // `one` is set by 1, `other` by every other number; a choice is 1 or 0.
  void Bind(Setting setting, OptionButton& one, OptionButton& other);
  // The number is the entry's index. A number outside the list picks none. `picked` runs for picks of the user.
  void Bind(Setting setting, ComboBox& combo, std::function<void()> picked);

  // In the order of the bindings.
  void Load();
  // True for Yes. Nothing if the window is gone when the answer comes: nothing is to be changed any more.
  std::optional<bool> Ask(const Question& question);
  // Sets in memory and stores; nothing under loading.
  void Keep(Setting setting, int number);
  // Stores what memory holds, under loading too.
  void Save(Setting setting) { settings_.Save(setting); }

 private:
  void BoxClicked(Setting setting, CheckBox& box, const BoxRule& rule);

  Form& form_;
  Settings& settings_;
  bool loading_ = false;
  std::vector<std::function<void()>> loads_;
};

}  // namespace qb
