// What a kill run asks of the program round it.
#pragma once

namespace qb {

class RunHost {
 public:
  virtual ~RunHost() = default;

  // Waits on the clock, pumping messages, until so many seconds have passed or the program has ended.
  virtual void Pause_Seconds(double seconds) = 0;
  // Lets the user tell the AOL folder, without waiting for it.
  virtual void AskForAolFolder() = 0;
  // The user never selected anything for the unattended run: lets the user do it now.
  virtual void AskForSelection() = 0;
  // The main window comes to the front for an unattended run, and goes away behind it.
  virtual void ShowForRun() = 0;
  virtual void HideAfterRun() = 0;
};

}  // namespace qb
