#include "computer.h"
#include "remote_program.h"
#include "stories.h"

namespace native {

namespace {

class Story {
 public:
  void Play() {
    DeleteKey(kStore);
    MakeTraces("browsers", "settings");
    MakeTraces("browsers", "stays");
    ByHand();
    WithWindows();
    MakeFile("C:\\browsers-log.txt", Joined(log_));
  }

 private:
  void ByHand() {
    Prepare();
    RemoteProgram program;
    bool ticked = true;
    for (int tab : {1, 2, 3, 5}) ticked = program.Tick(tab, {"All of the above"}) && ticked;
    Check(ticked, "a click ticks all of each tab");
    Check(program.Kill(), "the run ends");
    log_ = program.LogAndCount();
    Compare("by hand");
    Check(program.End(), "the program ends");
  }

  void WithWindows() {
    MakeTraces("browsers", "unattended, when Windows starts");
    Prepare();
    RemoteProgram program("/STARTUP");
    HWND window = program.ShownWindow();
    Check(window != nullptr, "a start with Windows shows its run");
    Check(WaitShown(window, false, 60000) && program.Running(1000) && !Shown(window), "and hides the window after it");
    Compare("when Windows starts");
    {
      RemoteProgram second;
      Check(!second.Running(10000) && WaitShown(window), "a second copy brings the hidden window back");
    }
    Texts lines = program.LogAndCount();
    lines.back() = "false";  // such a run shows no count; that it was not visible, as the script asks
    log_.insert(log_.end(), lines.begin(), lines.end());
    Check(program.End(), "the program ends");
    log_.push_back(Value(kStore, "HistoryRemoved"));
  }

  void Prepare() {
    goes_ = MakeTraces("browsers", "goes");
    EmptyUrlCache();
    before_ = TakeState();
  }

  void Compare(const std::string& when) {
    const std::string left = ThoseThere(goes_, true);
    Check(left.empty(), std::to_string(goes_.size()) + " traces are gone, " + when + left);
    CheckNothingElse(before_, goes_);
  }

  Texts goes_, log_;
  State before_;
};

}  // namespace

void BrowserStory() {
  Story().Play();
}

}  // namespace native
