// The drives of a machine: a tree of entries in memory over plain files below one folder of the host.
// Host names are opened one component at a time below a directory handle, and links of the host are
// never followed.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/files.h"
#include "platform/machine/world/host_file.h"
#include "platform/machine/world/names.h"

namespace qb::machine {

struct Entry {
  enum class Kind { File, Folder, Junction, FileLink, HostLink };

  std::string name;        // keeps its case
  std::string short_name;  // made one; empty where the name is its own
  Kind kind = Kind::File;
  std::uint32_t attributes = 0;  // hidden, system, read-only, archive alone
  std::string target;            // of a junction or a link to a file
  FileTime created, accessed, written;
  Entry* parent = nullptr;
  bool locked = false;  // another program holds it without sharing

  // What a handle of the program may do with it. One that does none of it stands beside any other.
  struct Use {
    bool reads = false, writes = false, deletes = false;
    std::uint32_t share = 0;
  };
  std::vector<const Use*> uses;
  std::shared_ptr<void> searches;  // shared with each listing of this folder that the program has not closed
  // Removed while it was open: nobody can open it any more, and it goes with its last handle.
  bool going = false;

  // Of a folder, by folded name: so they list without regard to case.
  std::map<std::string, std::unique_ptr<Entry>> children;
  std::unordered_map<std::string, Entry*> by_short_name;
  std::unordered_map<std::string, int> short_numbers;  // the last number given, by stem and extension

  // Whether such a use can stand beside those that are there.
  bool Allows(const Use& wanted) const;
  bool IsOpen() const { return locked || !uses.empty() || searches.use_count() > 1; }
  // It is held open, by this or another program, or something below it is. Listings do not count.
  bool InUse() const;
  // Something below it is open; listings count.
  bool OpenBelow() const;
  bool IsLink() const { return kind == Kind::Junction || kind == Kind::FileLink; }
  bool IsFolder() const { return kind == Kind::Folder || kind == Kind::Junction; }
  // As Windows reports them, with the directory and reparse point bits.
  std::uint32_t WindowsAttributes() const;
};

class Disk {
 public:
  // Takes over the folder "drives" below an open folder of the host.
  Result<bool> Load(const HostFile& machine_folder);
  // Called once after attributes, junctions and 8.3 names were given back: the remaining names get theirs.
  void FinishLoading();

  std::vector<char> DriveLetters() const;
  void AddDrive(char letter);
  void SetNow(FileTime now) { now_ = now; }

  // Resolves a path through junctions, but for one in the last place unless `through_last`. FileNotFound
  // if only the last part is missing, else PathNotFound; InvalidName for a file with a closing backslash; AccessDenied
  // for what is going.
  Result<Entry*> Find(const ParsedPath& path, bool through_last = false) const;
  // The folder that the path's last part stands in, and that part.
  struct Place {
    Entry* folder = nullptr;
    std::string name;
  };
  Result<Place> FindPlace(const ParsedPath& path) const;
  Entry* Child(const Entry& folder, std::string_view name) const;  // by long or 8.3 name
  Entry* Root(char drive) const;

  // New entries on the host and in the tree. The name must be free.
  Result<Entry*> MakeFile(Entry& folder, const std::string& name);
  // The same, and opens it for reading and writing.
  Result<Entry*> MakeFile(Entry& folder, const std::string& name, HostFile& opened);
  Result<Entry*> MakeFolder(Entry& folder, const std::string& name);
  // A symbolic link if the target is a file, else a junction.
  Result<Entry*> MakeLink(Entry& folder, const std::string& name, const std::string& target);
  // A file, an empty folder or a junction. One that is held goes when it is let go, unless whoever holds it does not
  // share that.
  Error Remove(Entry& entry);
  // To be called when a handle was closed.
  void Settle(Entry& entry);
  Error RemoveTree(Entry& entry);
  Error Move(Entry& entry, Entry& folder, const std::string& name);
  // Moves the entry out of the drives, to `name` below a folder of the host.
  Error MoveOut(Entry& entry, const HostFile& folder, const std::string& name);

  Result<HostFile> Open(const Entry& entry, bool write) const;
  std::uint64_t SizeOf(const Entry& entry) const;
  // What SizeOf gives for the entries of one folder, which is opened once: as a listing asks.
  class FolderSizes {
   public:
    FolderSizes(const Disk& disk, const Entry& folder) : host_(disk.OpenFolder(folder)) {}
    std::uint64_t Of(const Entry& child) const;

   private:
    HostFile host_;
  };
  // The whole content of a file.
  Result<std::string> Read(const Entry& entry) const;
  Error Truncate(const Entry& entry) const;
  // As when every program that held a file has ended.
  void LetGo();
  void SetShortName(Entry& entry, const std::string& short_name);

  std::string PathOf(const Entry& entry) const;
  FileTime Now() const { return now_; }

 private:
  Error RemoveNow(Entry& entry);
  void LetGoBelow(Entry& entry);
  void LoadFolder(Entry& folder, const HostFile& host);
  Entry* Adopt(Entry& folder, std::unique_ptr<Entry> entry);
  std::unique_ptr<Entry> Detach(Entry& entry);
  void GiveShortName(Entry& entry);
  void FinishFolder(Entry& folder);
  static std::string HostPath(const Entry& entry);
  HostFile OpenFolder(const Entry& folder) const;
  Result<Entry*> Follow(Entry* entry, int depth) const;
  Result<Entry*> Walk(const ParsedPath& path, std::size_t parts, bool through_last, int depth) const;

  HostFile drives_;
  std::map<char, std::unique_ptr<Entry>> roots_;
  FileTime now_;
  bool loading_ = true;
};

}  // namespace qb::machine
