// What a kill run needs of the window that it reports in and of the program round it.
#pragma once

#include <string>
#include <string_view>

#include "widgets/form.h"

namespace qb {

class RunWindow {
 public:
  virtual ~RunWindow() = default;

  // The state of a check box by its name.
  virtual bool BoxTicked(std::string_view box) const = 0;
  virtual void EnableKillButton(bool enabled) = 0;
  virtual void SetJustKilled(const std::string& text) = 0;
  virtual ListBox& LogList() = 0;
  virtual ProgressBar& Bar() = 0;
  virtual void SelectTab(int tab) = 0;
  virtual Form& MainForm() = 0;

  // Waits, pumping messages.
  virtual void Pause_Seconds(double seconds) = 0;
  // General Setup, shown without waiting for it.
  virtual void ShowGeneralSetup() = 0;
  // The user never selected anything for the unattended run: lets the user do it now.
  virtual void AskForSelection() = 0;
};

}  // namespace qb
