// A Windows computer in a folder. `Open` gives the operations of the platform on it; the other members
// are what the user, Windows or another program does to it, and what can be asked of it. Those never
// pass the gate: they are no calls of the program.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/machine/gate.h"
#include "platform/platform.h"

namespace qb::machine {

// What a program's own window does when another program or Windows acts on it.
struct OwnWindow {
  std::function<void(bool visible)> shown;                                                        // ShowWindow
  std::function<void()> restored;                                                                 // OpenIcon
  std::function<void()> to_front;                                                                 // SetForegroundWindow
  std::function<void(std::uint32_t message, std::uint64_t wparam, std::int64_t lparam)> message;  // a posted message
};

struct ShownBox {
  std::string kind;  // "information", "question", "stop"
  std::string title, text;
  std::string answer;  // "ok", "yes", "no"
};

struct OtherWindow {
  std::uint64_t handle = 0;
  std::string class_name, title;
  std::uint64_t parent = 0;  // 0: the desktop
  bool shown = true;
};

struct GrantedHotKey {
  std::int32_t id = 0;
  std::uint32_t modifiers = 0, key = 0;
};

struct RegistryValue {
  std::string name;  // "" is the unnamed one
  std::uint32_t type = 0;
  std::string data;  // bytes; texts without their closing zero
};

struct RegistryKey {
  std::vector<RegistryValue> values;  // in the order of their making
  std::vector<std::string> sub_keys;
};

// As it was passed; an empty `to` asks for a deletion. `folder` was the current one.
struct PendingRename {
  std::string from, to, folder;
};

struct CacheEntry {
  std::string url;
  std::uint32_t type = 0;
  std::string local_file;
};

class Machine {
 public:
  // Opens the machine in a folder of the host; makes a plain one in a folder that is absent or empty.
  // On failure null, and one clear line in `problem`.
  static std::unique_ptr<Machine> Open(const std::string& host_folder, std::string& problem);
  virtual ~Machine() = default;

  virtual Platform& platform() = 0;
  virtual Gate& gate() = 0;
  // Writes all that is held in memory back into the folder. False and a line in `problem` if it cannot.
  virtual bool Save(std::string& problem) = 0;

  // --- the hooks of whoever plays the machine ---
  // Called in each round of the program's message pump after the clock moved by 1 ms, before timers.
  std::function<void()> on_pump;
  // Called by WaitMessage: something must happen now, or false is given and all loops end.
  std::function<bool()> on_wait;
  // Called while a message box of the program stands, before it is answered.
  std::function<void()> on_box;

  // --- the world; each gives false if what it names does not exist or cannot be done ---
  virtual void SetWindowsVersion(std::uint32_t major, std::uint32_t minor, std::uint32_t platform_id) = 0;
  virtual void SetUser(std::string_view name) = 0;
  virtual void SetWindowsFolder(std::string_view path) = 0;
  virtual void SetProgramFolder(std::string_view path) = 0;  // made if absent, with the program's two files
  // Makes the program's folder the current one, as it is when the program starts.
  virtual void EnterProgramFolder() = 0;
  virtual std::string ProgramFolder() const = 0;
  // Result 0 and a path, or 1 (missing), or 0x80070057 (invalid).
  virtual void SetSpecialFolder(std::uint32_t number, std::uint32_t result, std::string_view path) = 0;
  // "fixed", "removable", "remote", "cdrom", "ramdisk", "unknown" or "gone".
  virtual bool SetDrive(char letter, std::string_view type) = 0;
  // An empty program: nothing opens the extension.
  virtual void Associate(std::string_view extension, std::string_view program) = 0;

  virtual bool MakeFolder(std::string_view path) = 0;
  virtual bool MakeFile(std::string_view path, std::string_view content) = 0;  // with its parents; replaces
  // The same with a content of so many letters A.
  virtual bool MakeFileOfSize(std::string_view path, std::uint64_t size) = 0;
  // Changes by words as "+r", "-h"; false for a bad word or no such path.
  virtual bool ChangeAttributes(std::string_view path, const std::vector<std::string>& changes) = 0;
  virtual bool Delete(std::string_view path) = 0;   // a file or a whole folder
  virtual bool Discard(std::string_view path) = 0;  // to the Recycle Bin
  virtual bool Lock(std::string_view path) = 0;
  virtual bool Unlock(std::string_view path) = 0;
  // A junction to a folder, also to one that is not there; a symbolic link to a file that is there.
  virtual bool MakeLink(std::string_view path, std::string_view target) = 0;

  // Keys begin with "HKCU" or "HKLM".
  virtual bool RegistryAddKey(std::string_view key) = 0;
  virtual bool RegistrySetValue(std::string_view key, const RegistryValue& value) = 0;
  virtual bool RegistryDeleteKey(std::string_view key) = 0;  // with all below it
  virtual bool RegistryDeleteValue(std::string_view key, std::string_view name) = 0;
  virtual bool RegistryDeny(std::string_view key) = 0;
  virtual bool RegistryAllow(std::string_view key) = 0;

  virtual void CacheAdd(const CacheEntry& entry) = 0;
  virtual void CacheClear() = 0;

  virtual std::uint64_t WindowOpen(std::string_view class_name, std::string_view title, std::uint64_t parent) = 0;
  virtual bool WindowClose(std::uint64_t handle) = 0;
  virtual bool WindowCloseClass(std::string_view class_name) = 0;
  // Puts a program into the program folder that ends with exit_code after so many rounds of the pump.
  virtual bool OutsideProgram(std::string_view name, std::uint32_t exit_code, std::uint32_t pumps) = 0;

  // The mouse on the program's tray icon: a message such as 513. False if there is none.
  virtual bool TrayMouse(std::uint32_t mouse_message) = 0;
  // The hot key of a registered id, or of whichever id has that chord. False if none has.
  virtual bool HotKey(std::int32_t id) = 0;
  virtual bool Chord(std::uint32_t modifiers, std::uint32_t key) = 0;
  // The shell ends and starts anew: its tray is empty, and it tells all windows of its new taskbar.
  virtual void RestartShell() = 0;

  // Lets the clock run to now + ms; timers that fall due fire in order.
  virtual void Advance(std::uint64_t ms) = 0;
  // What Windows does at its next start: pending renames, WININIT.INI. The program must have ended.
  virtual void Boot() = 0;

  // Answers to the message boxes ("yes", "no") and folder choosers (a path, "cancel") to come.
  virtual void AddAnswers(const std::vector<std::string>& words) = 0;

  // --- questions ---
  virtual std::vector<ShownBox> TakeBoxes() = 0;
  virtual std::vector<std::string> TakeOpened() = 0;
  virtual std::string Exists(std::string_view path) const = 0;      // "file", "folder", "link" or "no"
  virtual std::string Attributes(std::string_view path) const = 0;  // letters of "rhsad" that hold
  virtual std::optional<std::vector<std::string>> ListBelow(std::string_view folder) const = 0;  // sorted
  virtual std::optional<std::string> Content(std::string_view path) const = 0;
  virtual std::optional<std::uint64_t> Size(std::string_view path) const = 0;
  virtual std::optional<RegistryKey> ReadKey(std::string_view key) const = 0;
  virtual std::vector<CacheEntry> Cache() const = 0;
  virtual std::vector<OtherWindow> Windows() const = 0;
  virtual bool TrayIcon() const = 0;
  virtual std::vector<GrantedHotKey> HotKeys() const = 0;  // in the order of their granting
  virtual std::vector<PendingRename> Pending() const = 0;
  virtual std::size_t RecycleCount() const = 0;
  // Handles of files, searches, keys and processes that are open in the program now.
  virtual std::size_t OpenHandles() const = 0;
  virtual std::uint64_t ClockMs() const = 0;  // since the machine's clock started

  // --- for views: the windows of the program itself ---
  virtual WindowHandle OwnWindowCreate(std::string_view class_name, std::string_view title, OwnWindow actions) = 0;
  virtual void OwnWindowDestroy(WindowHandle window) = 0;
  virtual void OwnWindowState(WindowHandle window, bool visible, std::string_view title) = 0;
  virtual void OwnWindowToFront(WindowHandle window) = 0;
};

}  // namespace qb::machine
