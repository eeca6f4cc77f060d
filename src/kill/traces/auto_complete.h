// Internet Explorer's form and address data, in a tree of the registry that ordinary programs may not
// change: the tree is opened, and the keys that hold data are removed wherever they stand.
#pragma once

#include <string>
#include <string_view>

#include "platform/platform.h"
#include "runtime/lifetime.h"
#include "runtime/routine.h"
#include "runtime/trace_counter.h"
#include "settings/reg_settings.h"

namespace qb {

class AutoCompleteStore {
 public:
  AutoCompleteStore(Platform& platform, CRegSettings& reg_settings, TraceCounter& history_removed, const Lifetime& life)
      : platform_(platform),
        security_(platform.key_security),
        reg_(reg_settings),
        history_removed_(history_removed),
        life_(life) {}

  // Counts 1 for the whole store, also when there was nothing.
  void Kill_IE_AutoComplete();
  // Takes the access list off a key, so that all accounts may use it. The rights are not looked at.
  void Set_Key_Open_Access(KeyHandle root, std::string_view key, const std::string& user, std::uint32_t access);
  // The same for all keys below a key, 512 levels deep. Each key that was opened for the walk stays open until the
  // program ends.
  void Open_Key_Tree(KeyHandle root, std::string_view key, std::string_view label, const std::string& user,
                     std::uint32_t access);
  // Removes the keys that hold data, children first; the keys above and between them stay.
  void Delete_Key_Tree(KeyHandle root, const std::string& key);
  // Turns the browser's AutoComplete switches on again.
  void RenableAutoComplete();

  static std::span<const NamedRoutine<AutoCompleteStore>> Routines();

 private:
  // `levels` is how many are walked, that of `key` included.
  void OpenTree(KeyHandle root, std::string_view key, const std::string& user, std::uint32_t access, int levels);
  void DeleteTree(KeyHandle root, const std::string& key, int levels);
  // The one place to hang a report on; nothing is reported.
  void Report_Key_Error(Error code, std::string_view step);

  Platform& platform_;
  KeySecurity& security_;
  CRegSettings& reg_;
  TraceCounter& history_removed_;
  const Lifetime& life_;
};

}  // namespace qb
