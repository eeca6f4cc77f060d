// The walk over a folder tree in search of thumbnail caches.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"

namespace qb {

// One directory entry.
struct File_Entry {
  std::string full_path;            // a folder's ends with a backslash
  std::uint32_t folder_length = 0;  // of the part of it that is the folder searched, with its backslash
  std::uint32_t attributes = 0;     // as the listing gave them

  std::string_view folder() const { return std::string_view(full_path).substr(0, folder_length); }
  std::string_view name() const { return std::string_view(full_path).substr(folder_length); }
};

// What a walk asks of, and tells, whoever started it.
class WalkObserver {
 public:
  virtual ~WalkObserver() = default;
  // At each entry: lets window messages run. False once the program has ended: the walk is over.
  virtual bool PumpMessages() = 0;
  virtual bool Scan_Cancelled() const = 0;
  // The walk met the wish to cancel.
  virtual void Do_Cancel() = 0;
  virtual void EntrySeen() = 0;
  virtual void CacheFound(const std::string& path) = 0;
};

class DiskWalk {
 public:
  DiskWalk(Files& files, WalkObserver& observer) : files_(files), observer_(observer) {}

  // Tells of every thumbnail cache below the root, depth first, in listing order inside a folder. Holds all
  // entries until it ends. A junction or symbolic link is an entry like any other and is not entered; a
  // folder that cannot be listed counts as empty. Stops when the wish to cancel is met. The messages that run
  // in a walk may begin another one.
  void Find_Thumbs(const std::string& root);

  // Clears the stop flag. Each walk holds its entries itself and drops them at its end.
  void Reset_Results() { stop_ = false; }

 private:
  struct Results {
    // Grown by this many entries at a time.
    static constexpr std::size_t kRoom = 5000;

    File_Entry& At(std::size_t index) { return entries[index / kRoom][index % kRoom]; }

    std::vector<std::unique_ptr<File_Entry[]>> entries;
    std::size_t count = 0;
    bool ended = false;  // the program ended in the middle of the walk
  };

  void Walk_Folder(const std::string& folder, Results& results, int depth);
  // Adds the entries of one folder. False if the walk is to leave this folder at once.
  bool ListFolder(const std::string& folder, Results& results);
  bool TakeEntry(const std::string& folder, const FindData& found, Results& results);

  Files& files_;
  WalkObserver& observer_;
  bool stop_ = false;  // looked at between two entries; nothing sets it
};

}  // namespace qb
