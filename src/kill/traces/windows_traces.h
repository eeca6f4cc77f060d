// The traces that Windows itself keeps. Each routine passes over what fails and raises the lifetime
// counter by what it went for.
#pragma once

#include <span>
#include <string_view>

#include "delete/delete_path.h"
#include "kill/kill_needs.h"
#include "runtime/routine.h"
#include "settings/registry_counter.h"

namespace qb {

// Deletes keys under HKEY_CURRENT_USER, in order, and adds to the counter the values that each had. A key
// that is missing counts 0; one whose delete is refused counts all the same. Counting pumps messages: a key
// in whose midst the program ended stays, and adds nothing.
void CountAndDeleteKeys(Platform& platform, const Lifetime& life, TraceCounter& history_removed,
                        std::span<const std::string_view> keys);

class WindowsTraces {
 public:
  WindowsTraces(const KillNeeds& needs, DeletePath& delete_path, const Progress& progress)
      : needs_(needs), delete_path_(delete_path), progress_(progress) {}

  void Kill_Run_MRU();
  // Counts 1, whatever the length of the list.
  void Kill_Recent_Docs();
  void Kill_Media_Player();
  // Empties the bins of all drives; counts nothing.
  void Kill_Recycle_Bin();
  // Deletes FILE*.CHK in the root of the drive that holds Windows.
  void Kill_File_Fragments();
  // Empties "TEMP" below the Windows folder and the temp folder of the older user layout.
  void Kill_Windows_Temp();
  void Kill_Office_Recent();

  // An empty root stands for all drives. Gives the HRESULT.
  std::uint32_t Empty_Recycle_Bin(std::string_view root);
  // The number of items in the bins of all drives; 0 if they cannot be asked.
  double Query_Recycle_Bin();

  static std::span<const NamedRoutine<WindowsTraces>> Routines();

 private:
  // Counts the values of the keys, and removes the keys.
  void DeleteLists(std::span<const std::string_view> keys);

  const KillNeeds needs_;
  DeletePath& delete_path_;
  const Progress& progress_;
};

}  // namespace qb
