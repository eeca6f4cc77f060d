#include "bosskey/hot_keys.h"

namespace qb {

namespace {

constexpr std::uint32_t kAlt = kModifierAlt, kControl = kModifierControl, kShift = kModifierShift,
                        kWindowsKey = kModifierWindows;
constexpr std::uint32_t kKeyA = 65, kKeyX = 88, kKeyZ = 90, kSpaceBar = 32;

struct Chord {
  std::int32_t id;
  std::uint32_t modifiers, key;
};

// In order of registration.
constexpr Chord kRegistered[] = {
    {95, kWindowsKey, kKeyZ},      {111, kShift | kWindowsKey, kKeyZ}, {127, kAlt, kKeyZ},
    {157, kAlt, kSpaceBar},        {156, kAlt | kControl, kKeyZ},      {143, kAlt | kControl, kSpaceBar},
    {158, kAlt | kControl, kKeyZ},  // deliberate: the chord of 156, which the system refuses
};

constexpr std::int32_t kUnregistered[] = {95, 111, 127, 143, 158, 157, 156};

struct Answer {
  Chord chord;
  enum class When { Always, SpaceBarChosen, ZChosen } when;  // by the setting of the Boss Key's chord
  void (*act)(WindowHider& hider, HotKeyHost& host);
};
using When = Answer::When;

constexpr auto kToggle = [](WindowHider& hider, HotKeyHost&) { hider.InvokeBossKey(); };

// In order of testing; each row is tested whatever those before it found.
constexpr Answer kAnswers[] = {
    {{95, kWindowsKey, kKeyZ}, When::Always, [](WindowHider& hider, HotKeyHost&) { hider.MarkAndHide(); }},
    {{111, kShift | kWindowsKey, kKeyZ}, When::Always, [](WindowHider& hider, HotKeyHost&) { hider.UnmarkAndShow(); }},
    {{127, kAlt, kKeyZ}, When::Always, [](WindowHider&, HotKeyHost& host) { host.ShowMainWindow(); }},
    {{157, kAlt, kSpaceBar}, When::SpaceBarChosen, kToggle},
    {{156, kAlt | kControl, kKeyZ}, When::ZChosen, kToggle},
    {{143, kAlt | kControl, kSpaceBar}, When::Always, [](WindowHider&, HotKeyHost& host) { host.RunAutoKillNow(); }},
    // Deliberate: no call registers these two, so they never come.
    {{155, kAlt | kControl, kKeyA}, When::Always, [](WindowHider&, HotKeyHost& host) { host.FlipStrictMode(); }},
    {{159, kAlt | kControl, kKeyX}, When::Always, [](WindowHider&, HotKeyHost& host) { host.FlipTanglegate(); }},
};

std::uint16_t LoWord(std::int64_t value) {
  return static_cast<std::uint16_t>(value);
}
std::uint16_t HiWord(std::int64_t value) {
  return static_cast<std::uint16_t>(value >> 16);
}

}  // namespace

void HotKeys::Register(WindowHandle main_window) {
  for (const Chord& chord : kRegistered) {
    StepOver(system_.RegisterHotKey(main_window, chord.id, chord.modifiers, chord.key));
  }
  old_window_proc_ =
      system_.SetWindowLongA(main_window, kIndexWindowProcedure,
                             [this](WindowHandle window, std::uint32_t message, std::uint64_t wparam,
                                    std::int64_t lparam) { return WindowProc(window, message, wparam, lparam); });
}

void HotKeys::Unregister(WindowHandle main_window) {
  for (std::int32_t id : kUnregistered) StepOver(system_.UnregisterHotKey(main_window, id));
  StepOver(system_.SetWindowLongA(main_window, kIndexWindowProcedure, old_window_proc_));
}

std::int64_t HotKeys::WindowProc(WindowHandle window, std::uint32_t message, std::uint64_t wparam,
                                 std::int64_t lparam) {
  const WindowProcedure old = old_window_proc_;  // a real end may put it back meanwhile
  if (message == kMessageHotKey) {
    Act(LoWord(lparam), HiWord(lparam), wparam);
  } else {
    host_.MainWindowMessage(message, wparam, lparam);
  }
  return system_.CallWindowProcA(old, window, message, wparam, lparam);
}

void HotKeys::Act(std::uint32_t modifiers, std::uint32_t key, std::uint64_t id) {
  for (const Answer& answer : kAnswers) {
    const Chord& chord = answer.chord;
    if (chord.modifiers != modifiers || chord.key != key || static_cast<std::uint64_t>(chord.id) != id) continue;
    const When chosen = settings_.Number(Setting::BK_HotKey) == 0 ? When::SpaceBarChosen : When::ZChosen;
    if (answer.when == When::Always || answer.when == chosen) answer.act(hider_, host_);
  }
}

}  // namespace qb
