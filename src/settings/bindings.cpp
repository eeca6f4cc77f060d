#include "settings/bindings.h"

namespace qb {

void SettingBindings::Bind(Setting setting, CheckBox& box, BoxRule rule) {
  Show(setting, box);
  box.Click = [this, setting, &box, rule = std::move(rule)] { BoxClicked(setting, box, rule); };
}

void SettingBindings::Show(Setting setting, CheckBox& box) {
  loads_.emplace_back([this, setting, &box] { box.SetValue(settings_.On(setting)); });
}

void SettingBindings::Bind(Setting setting, OptionButton& one, OptionButton& other) {
  loads_.emplace_back([this, setting, &one, &other] { (settings_.On(setting) ? one : other).SetValue(true); });
  one.Click = [this, setting] { Keep(setting, 1); };
  other.Click = [this, setting] { Keep(setting, 0); };
}

void SettingBindings::Bind(Setting setting, ComboBox& combo, std::function<void()> picked) {
  loads_.emplace_back([this, setting, &combo] {
    if (!combo.SetListIndex(settings_.Number(setting))) StepOver(combo.SetListIndex(-1));
  });
  combo.Click = [this, setting, &combo, picked = std::move(picked)] {
    Keep(setting, combo.ListIndex());
    if (picked) picked();
  };
}

void SettingBindings::Load() {
  loading_ = true;
  for (const auto& load : loads_) load();
  loading_ = false;
}

std::optional<bool> SettingBindings::Ask(const Question& question) {
  const BoxAnswer answer =
      form_.platform().desktop.MessageBoxA(form_.Window(), question.text, question.title, kBoxYesNo | kBoxQuestion);
  if (!form_.Loaded()) return std::nullopt;
  return answer == BoxAnswer::Yes;
}

void SettingBindings::Keep(Setting setting, int number) {
  if (loading_) return;
  settings_.SaveNumber(setting, number);
}

void SettingBindings::BoxClicked(Setting setting, CheckBox& box, const BoxRule& rule) {
  std::optional<bool> answer;
  int value = box.Value();
  if (rule.question && value == rule.asked_at && !loading_) {
    answer = Ask(*rule.question);
    if (!answer) return;
    if (!*answer) value = 1 - value;
  }
  Keep(setting, value);
  box.SetValue(value);
  if (answer && rule.answered) rule.answered(*answer);
  if (rule.set) rule.set();
}

}  // namespace qb
