#include "platform/machine/machine_messages.h"

#include <algorithm>
#include <set>

namespace qb::machine {

namespace {

struct BoxKind {
  std::uint32_t icon;
  const char* kind;
};

constexpr std::uint32_t kIconMask = 0xF0, kButtonMask = 0xF;
constexpr BoxKind kBoxKinds[] = {{kBoxStop, "stop"}, {kBoxQuestion, "question"}, {kBoxInformation, "information"}};

CallText& AddOptional(CallText& call, std::optional<std::string_view> text) {
  return text ? call.Text(*text) : call.Null();
}

}  // namespace

MachineMessages::Window* MachineMessages::Find(std::uint64_t handle) {
  auto found = std::find_if(windows_.begin(), windows_.end(),
                            [handle](const Window& window) { return window.about.handle == handle; });
  return found == windows_.end() ? nullptr : &*found;
}

void MachineMessages::ToFront(std::uint64_t handle) {
  std::erase(z_order_, handle);
  z_order_.insert(z_order_.begin(), handle);
}

WindowHandle MachineMessages::FindWindowA(std::optional<std::string_view> class_name,
                                          std::optional<std::string_view> title) {
  CallText call("FindWindowA");
  AddOptional(call, class_name);
  AddOptional(call, title);
  std::uint64_t found = 0;
  if (Ok(state_.gate.Enter("FindWindowA"))) {
    for (std::uint64_t handle : z_order_) {
      const Window* window = Find(handle);
      if (found != 0 || window == nullptr || window->about.parent != 0) continue;
      const bool class_fits = !class_name || FoldName(window->about.class_name) == FoldName(*class_name);
      if (class_fits && (!title || window->about.title == *title)) found = handle;
    }
  }
  state_.gate.Record(call, HandleText(found));
  return static_cast<WindowHandle>(found);
}

WindowHandle MachineMessages::GetWindow(WindowHandle window, std::uint32_t relation) {
  CallText call("GetWindow");
  call.Handle(Plain(window)).Number(relation);
  std::uint64_t found = 0;
  if (Ok(state_.gate.Enter("GetWindow")) && relation == kWindowPrevious) {
    auto place = std::find(z_order_.begin(), z_order_.end(), Plain(window));
    if (place != z_order_.end() && place != z_order_.begin()) found = *(place - 1);
  }
  state_.gate.Record(call, HandleText(found));
  return static_cast<WindowHandle>(found);
}

bool MachineMessages::ShowWindow(WindowHandle window, std::uint32_t command) {
  CallText call("ShowWindow");
  call.Handle(Plain(window)).Number(command);
  bool was_shown = false;
  if (Ok(state_.gate.Enter("ShowWindow"))) {
    if (Window* found = Find(Plain(window))) {
      was_shown = found->about.shown;
      found->about.shown = command != kShowHide;
      // A copy: what it does may open another window, and the list of windows moves.
      const auto shown = found->actions.shown;
      if (found->own && shown) shown(command != kShowHide);
    }
  }
  state_.gate.Record(call, BoolText(was_shown));
  return was_shown;
}

bool MachineMessages::OpenIcon(WindowHandle window) {
  CallText call("OpenIcon");
  call.Handle(Plain(window));
  Window* found = Ok(state_.gate.Enter("OpenIcon")) ? Find(Plain(window)) : nullptr;
  const auto restored = found != nullptr && found->own ? found->actions.restored : nullptr;
  if (restored) restored();
  state_.gate.Record(call, BoolText(found != nullptr));
  return found != nullptr;
}

bool MachineMessages::SetForegroundWindow(WindowHandle window) {
  CallText call("SetForegroundWindow");
  call.Handle(Plain(window));
  Window* found = Ok(state_.gate.Enter("SetForegroundWindow")) ? Find(Plain(window)) : nullptr;
  if (found != nullptr) {
    const auto to_front = found->actions.to_front;
    if (found->own && to_front)
      to_front();
    else
      ToFront(Plain(window));
  }
  state_.gate.Record(call, BoolText(found != nullptr));
  return found != nullptr;
}

bool MachineMessages::SetWindowTextA(WindowHandle window, std::string_view text) {
  CallText call("SetWindowTextA");
  call.Handle(Plain(window)).Text(text);
  Window* found = Ok(state_.gate.Enter("SetWindowTextA")) ? Find(Plain(window)) : nullptr;
  if (found != nullptr) found->about.title = text;
  state_.gate.Record(call, BoolText(found != nullptr));
  return found != nullptr;
}

Error MachineMessages::PostMessageA(WindowHandle window, std::uint32_t message, std::uint64_t wparam,
                                    std::int64_t lparam) {
  CallText call("PostMessageA");
  call.Handle(Plain(window)).Number(message).Number(wparam).Number(static_cast<std::uint64_t>(lparam));
  Error error = state_.gate.Enter("PostMessageA");
  if (Ok(error)) {
    constexpr auto kInvalidWindow = static_cast<Error>(1400);
    if (Find(Plain(window)) == nullptr)
      error = kInvalidWindow;
    else
      posted_.push_back({Plain(window), message, wparam, lparam});
  }
  state_.gate.Record(call, BoolText(Ok(error)));
  return error;
}

BoxAnswer MachineMessages::MessageBoxA(WindowHandle owner, std::string_view text, std::string_view title,
                                       std::uint32_t type) {
  CallText call("MessageBoxA");
  call.Handle(Plain(owner)).Text(text).Text(title).Number(type);
  BoxAnswer answer = BoxAnswer::None;
  if (Ok(state_.gate.Enter("MessageBoxA"))) {
    ShownBox box{"information", std::string(title), std::string(text), "ok"};
    for (const BoxKind& row : kBoxKinds) {
      if ((type & kIconMask) == row.icon) box.kind = row.kind;
    }
    answer = BoxAnswer::Ok;
    if ((type & kButtonMask) == kBoxYesNo) {
      box.answer = state_.TakeAnswer().value_or("no") == "yes" ? "yes" : "no";
      answer = box.answer == "yes" ? BoxAnswer::Yes : BoxAnswer::No;
    }
    state_.boxes.push_back(std::move(box));
  }
  state_.gate.Record(call, std::to_string(static_cast<std::uint32_t>(answer)));
  return answer;
}

bool MachineMessages::SetTimer(WindowHandle window, std::uint32_t id, std::uint32_t interval,
                               std::function<void()> tick) {
  CallText call("SetTimer");
  call.Handle(Plain(window)).Number(id).Number(interval).Null();
  const bool set = Ok(state_.gate.Enter("SetTimer")) && interval != 0;
  if (set) {
    TimerState& timer = timers_[{Plain(window), id}];
    timer.interval = interval;
    timer.started = state_.clock_ms;
    timer.due = state_.clock_ms + interval;
    timer.order = next_timer_++;
    timer.tick = std::move(tick);
  }
  state_.gate.Record(call, std::to_string(set ? id : 0));
  return set;
}

bool MachineMessages::KillTimer(WindowHandle window, std::uint32_t id) {
  CallText call("KillTimer");
  call.Handle(Plain(window)).Number(id);
  // Who kills a timer may go at once: its tick must not come any more, whatever the gate says.
  const bool killed = timers_.erase({Plain(window), id}) != 0;
  const bool entered = Ok(state_.gate.Enter("KillTimer"));
  state_.gate.Record(call, BoolText(killed && entered));
  return killed && entered;
}

std::optional<MachineMessages::TimerKey> MachineMessages::NextDue(std::uint64_t now) const {
  std::optional<TimerKey> next;
  std::pair<std::uint64_t, std::uint64_t> earliest;
  for (const auto& [key, timer] : timers_) {
    const std::pair<std::uint64_t, std::uint64_t> place{timer.due, timer.order};
    if (timer.due > now || (next && place >= earliest)) continue;
    next = key;
    earliest = place;
  }
  return next;
}

void MachineMessages::FireTimer(const TimerKey& key) {
  TimerState& timer = timers_[key];
  // The next multiple of the interval since the timer was set.
  timer.due = timer.started + ((state_.clock_ms - timer.started) / timer.interval + 1) * timer.interval;
  if (timer.in_handler) return;  // a tick that falls due while its own handler runs is dropped
  timer.in_handler = true;
  const std::function<void()> tick = timer.tick;  // the handler may kill its timer
  tick();
  auto found = timers_.find(key);
  if (found != timers_.end()) found->second.in_handler = false;
}

bool MachineMessages::HandOutPosted() {
  if (posted_.empty()) return false;
  const Posted message = posted_.front();
  posted_.pop_front();
  Window* window = Find(message.window);
  if (window != nullptr && window->own && window->actions.message) {
    const auto action = window->actions.message;
    action(message.message, message.wparam, message.lparam);
  }
  return true;
}

void MachineMessages::PumpMessages() {
  if (!state_.gate.Powered()) return;
  // Time goes on although the call may fail, or whoever pumps until a time is reached would never end.
  state_.MoveClock(1);
  processes_.Pumped();
  if (!Ok(state_.gate.Enter("PumpMessages"))) return;
  if (on_pump_) on_pump_();
  // What is posted meanwhile waits for the next round, or a message that posts itself again would never end.
  for (std::size_t waiting = posted_.size(); waiting > 0 && state_.gate.Powered(); --waiting) HandOutPosted();
  // Those that are due now, each at most once.
  std::set<TimerKey> due;
  for (const auto& [key, timer] : timers_) {
    if (timer.due <= state_.clock_ms) due.insert(key);
  }
  std::vector<TimerKey> in_order(due.begin(), due.end());
  std::sort(in_order.begin(), in_order.end(), [this](const TimerKey& a, const TimerKey& b) {
    const TimerState& x = timers_[a];
    const TimerState& y = timers_[b];
    return std::pair(x.due, x.order) < std::pair(y.due, y.order);
  });
  for (const TimerKey& key : in_order) {
    if (state_.gate.Powered() && timers_.count(key) != 0) FireTimer(key);
  }
}

bool MachineMessages::WaitMessage() {
  if (!state_.gate.Powered()) return false;
  if (!Ok(state_.gate.Enter("WaitMessage"))) return on_wait_ && on_wait_();
  if (HandOutPosted()) return true;
  return on_wait_ && on_wait_() && state_.gate.Powered();
}

void MachineMessages::Advance(std::uint64_t ms) {
  const std::uint64_t until = state_.clock_ms + ms;
  while (state_.gate.Powered()) {
    auto next = NextDue(until);
    if (!next) break;
    // A handler that pumps may have moved the clock past the due time already.
    const std::uint64_t due = timers_[*next].due;
    if (due > state_.clock_ms) state_.MoveClock(due - state_.clock_ms);
    FireTimer(*next);
  }
  if (state_.clock_ms < until) state_.MoveClock(until - state_.clock_ms);
}

std::uint64_t MachineMessages::OpenOther(std::string_view class_name, std::string_view title, std::uint64_t parent) {
  if (parent != 0 && Find(parent) == nullptr) return 0;
  const std::uint64_t handle = next_other_++;
  windows_.push_back({{handle, std::string(class_name), std::string(title), parent, true}, false, {}});
  ToFront(handle);
  return handle;
}

bool MachineMessages::CloseOther(std::uint64_t handle) {
  const Window* window = Find(handle);
  if (window == nullptr || window->own) return false;
  // Its children go with it.
  std::vector<std::uint64_t> children;
  for (const Window& other : windows_) {
    if (other.about.parent == handle) children.push_back(other.about.handle);
  }
  for (std::uint64_t child : children) CloseOther(child);
  std::erase_if(windows_, [handle](const Window& other) { return other.about.handle == handle; });
  std::erase(z_order_, handle);
  return true;
}

bool MachineMessages::CloseOthers(std::string_view class_name) {
  std::vector<std::uint64_t> handles;
  for (const Window& window : windows_) {
    if (!window.own && FoldName(window.about.class_name) == FoldName(class_name))
      handles.push_back(window.about.handle);
  }
  for (std::uint64_t handle : handles) CloseOther(handle);
  return !handles.empty();
}

std::vector<OtherWindow> MachineMessages::Others() const {
  std::vector<OtherWindow> others;
  for (const Window& window : windows_) {
    if (!window.own) others.push_back(window.about);
  }
  return others;
}

WindowHandle MachineMessages::CreateOwn(std::string_view class_name, std::string_view title, OwnWindow actions) {
  const std::uint64_t handle = next_own_++;
  windows_.push_back({{handle, std::string(class_name), std::string(title), 0, false}, true, std::move(actions)});
  ToFront(handle);
  return static_cast<WindowHandle>(handle);
}

void MachineMessages::DestroyOwn(WindowHandle window) {
  std::erase_if(windows_, [window](const Window& other) { return other.about.handle == Plain(window); });
  std::erase(z_order_, Plain(window));
  std::erase_if(posted_, [window](const Posted& message) { return message.window == Plain(window); });
  std::erase_if(timers_, [window](const auto& timer) { return timer.first.first == Plain(window); });
}

void MachineMessages::EndAll() {
  windows_.clear();
  z_order_.clear();
  timers_.clear();
  posted_.clear();
}

void MachineMessages::SetOwnState(WindowHandle window, bool visible, std::string_view title) {
  if (Window* found = Find(Plain(window))) {
    found->about.shown = visible;
    found->about.title = title;
  }
}

void MachineMessages::OwnToFront(WindowHandle window) {
  if (Find(Plain(window)) != nullptr) ToFront(Plain(window));
}

}  // namespace qb::machine
