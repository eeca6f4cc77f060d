// A small program with a main window and a modal one, for tests of the console and its view.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "app/rehearse/console/program.h"

namespace qb::test {

class DemoOptions : public Form {
 public:
  explicit DemoOptions(const FormHost& host) : Form(host, "frmOptions", "Options") {
    Arrange(Column({text, ok, shared}));
    ok.Click = [this] { Unload(); };
    shared.Click = [this] { text.SetText("shared clicked"); };
  }
  TextBox text{*this, "txtFolder"};
  Button ok{*this, "cmdOK", "&OK"};
  Button shared{*this, "cmdShared", "Shared"};
};

class DemoMain : public Form {
 public:
  explicit DemoMain(const FormHost& host) : Form(host, "frmMain", "Demo"), options(host) {
    frame.SetCaption("&Kind");
    combo.AddItem("15 Minutes");
    combo.AddItem("1 Hour");
    Arrange(Column({Tabs(tabs, {Page({Row({box, off}), Group(frame, {first, second}), Row({run, modal, shared})}),
                                Page({status, combo, bar, link})})}));
    off.SetEnabled(false);
    second.SetValue(true);
    menu.children = {&quit};
    quit.parent = &menu;
    popup.popup = true;
    popup.children = {&popup_show};
    popup_show.parent = &popup;
    AddMenu(menu);
    AddMenu(popup);
    run.Click = [this] {
      for (int i = 0; i < 10; ++i) {
        this->platform().pump.PumpMessages();
        status.AddItem("12:00:00 - pump " + std::to_string(i + 1));
      }
    };
    run.MouseDown = [this] { watcher().PopupMenu(*this, popup); };
    modal.Click = [this] {
      options.ShowModal();
      status.AddItem("12:00:00 - modal left");
      StepOver(this->platform().registry.RegCreateKeyA(KeyHandle::CurrentUser, "Software\\AfterModal"));
    };
    popup_show.Click = [this] { status.AddItem("12:00:00 - popup"); };
    combo.Click = [this] { status.AddItem("12:00:00 - combo " + std::to_string(combo.ListIndex())); };
    timer.Tick = [this] { ++ticks; };
  }

  TabStrip tabs{*this, "tabs", {{"&First", ""}, {"Second", ""}}};
  CheckBox box{*this, "chkBox", "A box"};
  CheckBox off{*this, "chkOff", "Off"};
  Frame frame{*this, "fraKind", ""};
  OptionButton first{*this, "optFirst", "First", "kind"}, second{*this, "optSecond", "Second && last", "kind"};
  Button run{*this, "cmdRun", "&Run"}, modal{*this, "cmdModal", "Modal"}, shared{*this, "cmdShared", "Shared"};
  ListBox status{*this, "lstStatus", true};
  ComboBox combo{*this, "cmbEvery"};
  ProgressBar bar{*this, "pBar"};
  LinkLabel link{*this, "lblURL", "A page"};
  MenuItem menu{*this, "mnuFile", "&File"}, quit{*this, "mnuQuit", "Quit"};
  MenuItem popup{*this, "popMenu", "Menu"}, popup_show{*this, "popShow", "Show"};
  Timer timer{*this, "Timer1", 1000, true};
  DemoOptions options;
  int ticks = 0;
  std::vector<UnloadMode> asked;

 protected:
  void Form_QueryUnload(bool& cancel, UnloadMode mode) override {
    asked.push_back(mode);
    StepOver(platform().registry.RegCreateKeyA(KeyHandle::CurrentUser,
                                               "Software\\Asked" + std::to_string(static_cast<int>(mode))));
    // The first request hides, one that finds the window hidden ends.
    cancel = Visible();
    if (cancel) Hide();
  }
};

class DemoProgram : public rehearse::RunningProgram {
 public:
  DemoProgram(Platform& platform, FormWatcher& watcher, std::string command_line)
      : main_({platform, watcher, life_}), command_line_(std::move(command_line)) {}
  void Start() override { main_.Show(); }
  bool Ended() const override { return !main_.Loaded(); }
  Form& MainForm() override { return main_; }
  std::optional<std::string> Variable(std::string_view name) override {
    if (name == "Ticks") return std::to_string(main_.ticks);
    if (name == "CommandLine") return command_line_;
    return std::nullopt;
  }
  rehearse::CallOutcome Call(std::string_view routine, const std::vector<std::string>& arguments) override {
    using Kind = rehearse::CallOutcome::Kind;
    if (routine != "Echo") return {Kind::NoSuchRoutine, {}};
    if (arguments.size() > 2) return {Kind::WrongArguments, {}};
    return {Kind::Done, arguments};
  }

 private:
  Lifetime life_;
  DemoMain main_;
  std::string command_line_;
};

inline std::unique_ptr<rehearse::RunningProgram> MakeDemo(Platform& platform, FormWatcher& watcher,
                                                          std::string command_line, WindowHandle) {
  return std::make_unique<DemoProgram>(platform, watcher, std::move(command_line));
}

}  // namespace qb::test
