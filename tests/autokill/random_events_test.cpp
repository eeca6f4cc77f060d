// Random events in random places: after each, the program agrees with a small model of its rules.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <utility>

#include "tests/support/rehearsal.h"

namespace qb {
namespace {

struct WatchedFamily {
  std::string_view class_name, flag;
  bool runs;
};
// One whose setting is on, one that has none, and one whose setting is off.
constexpr std::array<WatchedFamily, 3> kFamilies{{{"IEFrame", "IE_Open", true},
                                                  {"MSN6 Window", "MSN_Open", true},
                                                  {"{1C03B488-D53B-4a81-97F8-754559640193}", "Safari_Open", false}}};

class Model {
 public:
  explicit Model(unsigned seed) : random_(seed) {
    for (const char* value : {"QBBuild sz 1", "WIN_StartRun sz 1", "Stealth sz 1", "AK_AppleSafari sz 0"}) {
      Say("reg add \"HKCU\\Software\\VB and VBA Program Settings\\Temp\\SystemData\" " + std::string(value));
    }
    Start();
  }

  // One event, and what is to be seen of it.
  void Step() {
    switch (Pick(9)) {
      case 0:
        OpenWindow();
        break;
      case 1:
        CloseWindow();
        break;
      case 2:
        Say("do Timer_AutoKill_Timer");
        IntervalTick();
        break;
      case 3:
      case 4:
        Tick();
        break;
      case 5:  // what a user does: without it a close rarely meets a watcher that polls
        while (running_ && hold_count_ != 0) Tick();
        if (!running_) break;
        ExpectAll();
        OpenWindow();
        Tick();
        if (!running_) break;
        for (Window& window : windows_) Close(window);
        Tick();
        break;
      default:
        Say(AnyEvent());
        break;
    }
    if (!running_) {
      Expect("running", "no");
      Expect("tray", "\"no icon\"");
      Expect("hotkeys", "");
      ExpectWindows();
      Start();
    }
    ExpectAll();
  }
  const std::string& script() const { return script_; }

 private:
  struct Window {
    int handle;
    std::size_t family;
    bool open, shown;
  };

  std::size_t Pick(std::size_t count) { return random_() % count; }
  void Say(const std::string& line) { script_ += line + "\n"; }
  void Expect(const std::string& question, const std::string& answer) { Say("expect " + question + " is " + answer); }
  static std::string Truth(bool value) { return value ? "true" : "false"; }

  void Start() {
    Say("start");
    running_ = true;
    open_ = {};
    list_.clear();
    hold_count_ = 0;
    minutes_ = 15;
    hold_ = hidden_ = boss_ = false;
  }

  void OpenWindow() {
    const std::size_t family = Pick(kFamilies.size());
    Say("window open \"" + std::string(kFamilies[family].class_name) + "\" Page");
    windows_.push_back({next_handle_++, family, true, true});
  }
  void CloseWindow() {
    for (Window& window : windows_) {
      if (Pick(2) == 0) Close(window);
    }
  }
  void Close(Window& window) {
    if (!window.open) return;
    Say("window close #" + std::to_string(window.handle));
    window.open = false;
  }

  // What may happen at any moment, also in the middle of a run. The model is changed at once.
  std::string AnyEvent() {
    switch (Pick(7)) {
      case 0:
        Hide();
        return "chord 8 90";
      case 1:
        Show();
        return "hotkey 111";
      case 2:
        boss_ ? Show() : Hide();
        return "chord 1 32";
      case 3:
        ShowMain();
        return "hotkey 127";
      case 4:
        RunNow();
        return "chord 3 32";
      case 5:
        if (!in_run_) ShowMain();
        return "tray 513";
      default:
        if (hidden_) End();
        hidden_ = true;
        return "close frmMain";
    }
  }
  void Hide() {
    boss_ = true;
    list_.clear();
    for (Window& window : windows_) {
      if (!window.open) continue;
      list_.push_back(window.handle);
      window.shown = false;
    }
  }
  void Show() {
    boss_ = false;
    for (Window& window : windows_) {
      if (std::find(list_.begin(), list_.end(), window.handle) != list_.end()) window.shown = true;
    }
  }
  void ShowMain() { hidden_ = false; }
  // Nothing is pumped in it: the window stays as it is, and there is no line to write.
  void RunNow() { hidden_ = in_run_ = false; }
  void End() {
    if (boss_) Show();
    running_ = false;
  }

  void IntervalTick() {
    if (--minutes_ >= 1) return;
    RunNow();
    minutes_ = 15;
  }
  void Tick() {
    // Events come in the pause behind the first run of the tick, which is 2,000 pumps long.
    std::string during;
    if (hold_count_ != 0) {
      hold_ = ++hold_count_ < 30;
      if (!hold_) hold_count_ = 0;
    }
    bool first = true;
    for (std::size_t i = 0; i < kFamilies.size() && !hold_ && running_; ++i) {
      const bool here = std::any_of(windows_.begin(), windows_.end(),
                                    [i](const Window& window) { return window.open && window.family == i; });
      if (here) open_[i] = true;
      if (here || !open_[i]) continue;
      if (kFamilies[i].runs) {
        hidden_ = false;
        in_run_ = true;
        if (std::exchange(first, false)) {
          std::size_t pump = 0;
          for (std::size_t count = Pick(8); count > 0 && running_; --count) {
            pump += 1 + Pick(250);
            during += "during " + std::to_string(pump) + " " + AnyEvent() + "\n";
          }
        }
        in_run_ = false;
        if (!running_) break;
        hidden_ = true;
      }
      open_[i] = false;
      hold_count_ = 1;
    }
    script_ += during;
    Say("advance 1s");
  }

  void ExpectWindows() {
    std::string answer;
    for (const Window& window : windows_) {
      if (!window.open) continue;
      answer += " \"#" + std::to_string(window.handle) + " " + std::string(kFamilies[window.family].class_name) +
                " \"\"Page\"\" " + (window.shown ? "shown" : "hidden") + "\"";
    }
    Expect("windows", answer);
  }
  void ExpectAll() {
    ExpectWindows();
    Expect("get AutoKillHoldCount", std::to_string(hold_count_));
    Expect("get AutoKillHold", Truth(hold_));
    Expect("get AutoKillMinutes", std::to_string(minutes_));
    for (std::size_t i = 0; i < kFamilies.size(); ++i) {
      Expect("get " + std::string(kFamilies[i].flag), Truth(open_[i]));
    }
    Expect("get BossKeyActive", Truth(boss_));
    Expect("get popHideIE.Checked", Truth(boss_));
    Expect("get MainWindowHidden", Truth(hidden_));
    Expect("get UnattendedRun", "false");
    Expect("get cmdKILLALL.Enabled", "true");
    Expect("tray", "icon");
    Expect("hotkeys", "\"95 8 90\" \"111 12 90\" \"127 1 90\" \"157 1 32\" \"156 3 90\" \"143 3 32\"");
    Expect("timers",
           "\"Timer1 1000 on\" \"Timer2 1000 on\" \"Timer_HomePage 5000 off\" \"Timer_AutoKill 60000 off\" "
           "\"Timer_DisableScriptDebug 60000 on\"");
  }

  std::mt19937 random_;
  std::string script_;
  std::vector<Window> windows_;
  int next_handle_ = 1;
  std::vector<int> list_;  // what the Boss Key brings back
  std::array<bool, kFamilies.size()> open_{};
  int hold_count_ = 0, minutes_ = 15;
  bool running_ = true, hold_ = false, hidden_ = false, boss_ = false, in_run_ = false;
};

TEST(Resident, AgreesWithItsRulesAfterRandomEvents) {
  constexpr unsigned kSeeds = 30;
  constexpr int kSteps = 60;
  for (unsigned seed = 1; seed <= kSeeds; ++seed) {
    Model model(seed);
    for (int step = 0; step < kSteps; ++step) model.Step();
    test::Rehearsal rehearsal;
    rehearsal.Play(model.script());
    ASSERT_EQ(rehearsal.status(), rehearse::Status::Held) << "seed " << seed << "\n" << rehearsal.printed();
  }
}

}  // namespace
}  // namespace qb
