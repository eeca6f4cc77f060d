#include "platform/machine/world/windows.h"

#include <algorithm>

#include "platform/machine/world/names.h"

namespace qb::machine {

namespace {

// What stands behind every window of the program: the view's own handling of a message.
constexpr std::uint64_t kOwnHandling = 2000000;

// Where a window of another program opens.
constexpr Rectangle kOpened{100, 100, 900, 700};

// How a window stands after a command of ShowWindow that shows it.
std::uint32_t StateAfter(std::uint32_t command, std::uint32_t before) {
  constexpr std::uint32_t kNoActivate = 4, kShow = 5, kMinimize = 6, kMinimizeNoActive = 7, kShowNA = 8,
                          kForceMinimize = 11;
  switch (command) {
    case kShow:
    case kShowNA:
      return before;
    case kShowMinimized:
    case kMinimize:
    case kMinimizeNoActive:
    case kForceMinimize:
      return kShowMinimized;
    case kShowMaximized:
      return kShowMaximized;
    case kNoActivate:
    default:
      return kShowNormal;
  }
}

}  // namespace

void Windows::Rank(Window& window) {
  window.rank = --top_rank_;
  children_[window.about.parent].insert({window.rank, window.about.handle});
  by_class_[{window.about.parent, FoldName(window.about.class_name)}].insert({window.rank, window.about.handle});
}

void Windows::Unrank(const Window& window) {
  auto take = [&window](auto& orders, const auto& key) {
    auto order = orders.find(key);
    order->second.erase({window.rank, window.about.handle});
    if (order->second.empty()) orders.erase(order);
  };
  take(children_, window.about.parent);
  take(by_class_, ClassOfParent(window.about.parent, FoldName(window.about.class_name)));
}

void Windows::Add(Window window) {
  Rank(window);
  windows_.emplace(window.about.handle, std::move(window));
}

std::uint64_t Windows::Open(std::string_view class_name, std::string_view title, std::uint64_t parent) {
  if (parent != 0 && !Has(parent)) return 0;
  const std::uint64_t handle = next_other_++;
  Window window{{handle, std::string(class_name), std::string(title), parent, true}, {}, false, {}, 0, 0};
  window.placement.show_command = kShowNormal;
  window.placement.normal = kOpened;
  Add(std::move(window));
  return handle;
}

std::uint64_t Windows::OpenOwn(std::string_view class_name, std::string_view title, OwnWindow actions) {
  const std::uint64_t handle = next_own_++;
  Window window{
      {handle, std::string(class_name), std::string(title), 0, false}, {}, true, std::move(actions), kOwnHandling, 0};
  window.placement.show_command = kShowNormal;
  Add(std::move(window));
  return handle;
}

bool Windows::Close(std::uint64_t handle) {
  auto found = windows_.find(handle);
  if (found == windows_.end()) return false;
  if (auto below = children_.find(handle); below != children_.end()) {
    const Order children = below->second;
    for (const auto& [rank, child] : children) Close(child);
  }
  Unrank(found->second);
  if (found->second.procedure != kOwnHandling) procedures_.erase(found->second.procedure);
  windows_.erase(found);
  std::erase_if(posted_, [handle](const Posted& message) { return message.window == handle; });
  return true;
}

bool Windows::CloseOthers(std::string_view class_name) {
  const std::string folded = FoldName(class_name);
  std::vector<std::uint64_t> handles;
  for (const auto& [handle, window] : windows_) {
    if (!window.own && FoldName(window.about.class_name) == folded) handles.push_back(handle);
  }
  for (std::uint64_t handle : handles) Close(handle);
  return !handles.empty();
}

void Windows::EndAll() {
  windows_.clear();
  children_.clear();
  by_class_.clear();
  procedures_.clear();
  posted_.clear();
}

const OtherWindow* Windows::Find(std::uint64_t handle) const {
  auto found = windows_.find(handle);
  return found == windows_.end() ? nullptr : &found->second.about;
}

std::vector<OtherWindow> Windows::Others() const {
  std::vector<OtherWindow> others;
  for (const auto& [handle, window] : windows_) {
    if (!window.own) others.push_back(window.about);
  }
  return others;
}

std::uint64_t Windows::FirstChild(std::uint64_t parent, std::uint64_t after, std::optional<std::string_view> class_name,
                                  std::optional<std::string_view> title) const {
  const Order* order = nullptr;
  if (class_name) {
    auto found = by_class_.find({parent, FoldName(*class_name)});
    if (found != by_class_.end()) order = &found->second;
  } else if (auto found = children_.find(parent); found != children_.end()) {
    order = &found->second;
  }
  if (order == nullptr) return 0;
  auto at = order->begin();
  if (after != 0) {
    auto behind = windows_.find(after);
    if (behind == windows_.end() || behind->second.about.parent != parent) return 0;
    at = order->upper_bound({behind->second.rank, after});
  }
  at = std::find_if(at, order->end(),
                    [&](const auto& place) { return !title || windows_.at(place.second).about.title == *title; });
  return at == order->end() ? 0 : at->second;
}

std::uint64_t Windows::Above(std::uint64_t handle) const {
  auto found = windows_.find(handle);
  if (found == windows_.end()) return 0;
  const Order& order = children_.at(found->second.about.parent);
  auto place = order.find({found->second.rank, handle});
  return place == order.begin() ? 0 : std::prev(place)->second;
}

std::vector<std::uint64_t> Windows::OfDesktop() const {
  std::vector<std::uint64_t> handles;
  if (auto order = children_.find(0); order != children_.end()) {
    for (const auto& [rank, handle] : order->second) handles.push_back(handle);
  }
  return handles;
}

void Windows::ToFront(std::uint64_t handle) {
  auto found = windows_.find(handle);
  if (found == windows_.end()) return;
  Unrank(found->second);
  Rank(found->second);
}

void Windows::SetState(std::uint64_t handle, bool shown, std::string_view title) {
  auto found = windows_.find(handle);
  if (found == windows_.end()) return;
  found->second.about.shown = shown;
  found->second.about.title = title;
}

void Windows::SetTitle(std::uint64_t handle, std::string_view title) {
  if (auto found = windows_.find(handle); found != windows_.end()) found->second.about.title = title;
}

bool Windows::Show(std::uint64_t handle, std::uint32_t command) {
  auto found = windows_.find(handle);
  if (found == windows_.end()) return false;
  Window& window = found->second;
  const bool was_shown = window.about.shown;
  window.about.shown = command != kShowHide;
  if (command != kShowHide) window.placement.show_command = StateAfter(command, window.placement.show_command);
  // A copy: what it does may close the window.
  if (const auto shown = window.actions.shown) shown(command != kShowHide);
  return was_shown;
}

void Windows::Restore(std::uint64_t handle) {
  auto found = windows_.find(handle);
  if (found == windows_.end()) return;
  found->second.placement.show_command = kShowNormal;
  if (const auto restored = found->second.actions.restored) restored();
}

void Windows::Raise(std::uint64_t handle) {
  auto found = windows_.find(handle);
  if (found == windows_.end()) return;
  if (const auto to_front = found->second.actions.to_front)
    to_front();
  else
    ToFront(handle);
}

WindowPlacement Windows::Placement(std::uint64_t handle) const {
  WindowPlacement placement = windows_.at(handle).placement;
  placement.length = kPlacementLength;
  return placement;
}

void Windows::SetPlacement(std::uint64_t handle, const WindowPlacement& placement) {
  WindowPlacement& kept = windows_.at(handle).placement;
  const std::uint32_t state = kept.show_command;
  kept = placement;
  kept.show_command = state;
  Show(handle, placement.show_command);
}

std::uint64_t Windows::SetProcedure(std::uint64_t handle, WindowFunction procedure) {
  if (!IsOwn(handle)) return 0;
  const std::uint64_t number = next_procedure_++;
  procedures_[number] = std::move(procedure);
  return std::exchange(windows_.at(handle).procedure, number);
}

std::uint64_t Windows::SetProcedure(std::uint64_t handle, std::uint64_t procedure) {
  if (!IsOwn(handle) || (procedure != kOwnHandling && procedures_.count(procedure) == 0)) return 0;
  return std::exchange(windows_.at(handle).procedure, procedure);
}

std::int64_t Windows::CallProcedure(std::uint64_t procedure, std::uint64_t handle, std::uint32_t message,
                                    std::uint64_t wparam, std::int64_t lparam) {
  if (procedure == kOwnHandling) {
    auto found = windows_.find(handle);
    const auto action = found == windows_.end() ? nullptr : found->second.actions.message;
    if (action) action(message, wparam, lparam);
    return 0;
  }
  auto found = procedures_.find(procedure);
  if (found == procedures_.end()) return 0;
  const WindowFunction function = found->second;  // it may take itself away
  return function(static_cast<WindowHandle>(handle), message, wparam, lparam);
}

std::int64_t Windows::Send(std::uint64_t handle, std::uint32_t message, std::uint64_t wparam, std::int64_t lparam) {
  auto found = windows_.find(handle);
  return found == windows_.end() ? 0 : CallProcedure(found->second.procedure, handle, message, wparam, lparam);
}

bool Windows::Post(std::uint64_t handle, std::uint32_t message, std::uint64_t wparam, std::int64_t lparam) {
  if (!Has(handle)) return false;
  posted_.push_back({handle, message, wparam, lparam});
  return true;
}

bool Windows::HandOutPosted() {
  if (posted_.empty()) return false;
  const Posted message = posted_.front();
  posted_.pop_front();
  Send(message.window, message.message, message.wparam, message.lparam);
  return true;
}

}  // namespace qb::machine
