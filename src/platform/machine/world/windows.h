// All windows of a machine: those of other programs and those of the program itself; their order, what is shown, the
// procedures that hear their messages, and the messages that wait.
#pragma once

#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/hot_keys_and_tray.h"
#include "platform/machine/machine.h"

namespace qb::machine {

class Windows {
 public:
  // --- opening, closing, finding; a handle of 0 is none, and as a parent the desktop ---
  std::uint64_t Open(std::string_view class_name, std::string_view title, std::uint64_t parent);  // shown
  std::uint64_t OpenOwn(std::string_view class_name, std::string_view title, OwnWindow actions);  // hidden
  // Takes the children with it, and the messages that wait for it.
  bool Close(std::uint64_t handle);
  bool CloseOther(std::uint64_t handle) { return !IsOwn(handle) && Close(handle); }
  bool CloseOthers(std::string_view class_name);
  void EndAll();
  bool Has(std::uint64_t handle) const { return windows_.count(handle) != 0; }
  bool IsOwn(std::uint64_t handle) const { return Has(handle) && windows_.at(handle).own; }
  const OtherWindow* Find(std::uint64_t handle) const;
  std::vector<OtherWindow> Others() const;  // in order of opening

  // --- z-order ---
  std::uint64_t FirstChild(std::uint64_t parent, std::uint64_t after, std::optional<std::string_view> class_name,
                           std::optional<std::string_view> title) const;
  std::uint64_t Above(std::uint64_t handle) const;
  std::vector<std::uint64_t> OfDesktop() const;  // top one first
  void ToFront(std::uint64_t handle);

  // --- acting on a window from outside, as another program or the system does; own windows answer for themselves ---
  void SetState(std::uint64_t handle, bool shown, std::string_view title);
  void SetTitle(std::uint64_t handle, std::string_view title);
  // A command of ShowWindow. True if the window was shown before.
  bool Show(std::uint64_t handle, std::uint32_t command);
  void Restore(std::uint64_t handle);
  void Raise(std::uint64_t handle);
  WindowPlacement Placement(std::uint64_t handle) const;
  void SetPlacement(std::uint64_t handle, const WindowPlacement& placement);

  // --- procedures and messages ---
  // Each returns the procedure that stood there; 0 for a window that is not an own one.
  std::uint64_t SetProcedure(std::uint64_t handle, WindowFunction procedure);
  std::uint64_t SetProcedure(std::uint64_t handle, std::uint64_t procedure);
  std::int64_t CallProcedure(std::uint64_t procedure, std::uint64_t handle, std::uint32_t message, std::uint64_t wparam,
                             std::int64_t lparam);
  // To the window's procedure at once.
  std::int64_t Send(std::uint64_t handle, std::uint32_t message, std::uint64_t wparam, std::int64_t lparam);
  bool Post(std::uint64_t handle, std::uint32_t message, std::uint64_t wparam, std::int64_t lparam);
  std::size_t Waiting() const { return posted_.size(); }
  bool HandOutPosted();

 private:
  // The place in z-order (lowest is on top), and the window.
  using Order = std::set<std::pair<std::int64_t, std::uint64_t>>;
  using ClassOfParent = std::pair<std::uint64_t, std::string>;
  struct Window {
    OtherWindow about;
    WindowPlacement placement;
    bool own = false;
    OwnWindow actions;
    std::uint64_t procedure = 0;
    std::int64_t rank = 0;
  };
  struct Posted {
    std::uint64_t window = 0;
    std::uint32_t message = 0;
    std::uint64_t wparam = 0;
    std::int64_t lparam = 0;
  };
  void Add(Window window);
  void Rank(Window& window);
  void Unrank(const Window& window);

  std::map<std::uint64_t, Window> windows_;  // by handle
  // Twelve classes are looked for each second, perhaps among thousands of windows.
  std::map<std::uint64_t, Order> children_;
  std::map<ClassOfParent, Order> by_class_;
  std::map<std::uint64_t, WindowFunction> procedures_;
  std::deque<Posted> posted_;
  std::int64_t top_rank_ = 0;
  std::uint64_t next_other_ = 1;
  std::uint64_t next_own_ = 1000001;
  std::uint64_t next_procedure_ = 2000001;
};

}  // namespace qb::machine
