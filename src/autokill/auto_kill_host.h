// What Auto-Kill asks of the program round it.
#pragma once

#include <cstdint>

namespace qb {

class AutoKillHost {
 public:
  virtual ~AutoKillHost() = default;

  // The unattended run, in one of its modes.
  virtual void Do_Start_Up(std::int16_t mode) = 0;
  virtual void Add_Tray_Icon() = 0;
  // Clears the box chk_DoNotAutoKill, without a question.
  virtual void ClearDoNotAutoKill() = 0;
  // The wizard, shown without waiting for it.
  virtual void ShowWizard() = 0;
};

}  // namespace qb
