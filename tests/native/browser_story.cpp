#include "browser_story.h"

#include <cstdio>
#include <sstream>

#include "computer.h"
#include "remote_program.h"

namespace native {

namespace {

constexpr const char* kStore = "Software\\VB and VBA Program Settings\\Temp\\SystemData";
constexpr const char* kScript = "C:\\browsers.rehearsal";

using Words = std::vector<std::string>;

// The words of a line; one that holds blanks stands in double quotes.
Words WordsOf(const std::string& line) {
  Words words;
  for (std::size_t at = 0; (at = line.find_first_not_of(' ', at)) != std::string::npos;) {
    const bool quoted = line[at] == '"';
    if (quoted) ++at;
    const std::size_t end = std::min(line.find(quoted ? '"' : ' ', at), line.size());
    words.push_back(line.substr(at, end - at));
    at = end + (quoted ? 1 : 0);
  }
  return words;
}

// The lines of the script below the heading.
std::vector<Words> Section(const std::string& heading) {
  std::vector<Words> lines;
  std::istringstream script(ReadFile(kScript));
  bool inside = false;
  for (std::string line; std::getline(script, line);) {
    if (line.rfind("# --- ", 0) == 0)
      inside = line == "# --- " + heading + " ---";
    else if (inside && !line.empty())
      lines.push_back(WordsOf(line));
  }
  return lines;
}

std::string Bytes(const std::string& digits) {
  std::string bytes;
  for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
    bytes += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
  }
  return bytes;
}

// "file PATH TEXT", "file PATH hex DIGITS" and "reg add HKCU\KEY NAME sz DATA".
std::vector<std::string> MakeAll(const std::string& heading) {
  std::vector<std::string> files;
  for (const Words& line : Section(heading)) {
    if (line[0] == "file") {
      MakeFile(line[1], line.size() > 3 ? Bytes(line[3]) : line[2]);
      files.push_back(line[1]);
    } else {
      SetValue(line[2].substr(5), line[3], line[5]);
    }
  }
  return files;
}

class Story {
 public:
  explicit Story(const Report& check) : check_(check) {}

  void Play() {
    DeleteKey(kStore);
    MakeAll("settings");
    stays_ = MakeAll("stays");
    check_(stays_.size() > 10, "the script of the story is there");
    ByHand();
    WithWindows();
    MakeFile("C:\\browsers-log.txt", Joined(log_));
  }

 private:
  void ByHand() {
    Prepare();
    RemoteProgram program("");
    HWND window = program.MainWindow();
    bool ticked = window != nullptr && WaitFor([&] { return IsWindowVisible(window) != FALSE; });
    for (int tab : {1, 2, 3, 5}) ticked = ticked && program.PickTab(tab) && program.Click("All of the above");
    check_(ticked, "a click ticks all of each tab");
    check_(program.Kill(), "the run ends");
    for (const std::string& line : program.LogAndCount()) log_.push_back(line);
    Compare("by hand");
    check_(program.End(), "the program ends");
  }

  void WithWindows() {
    MakeAll("unattended, when Windows starts");
    Prepare();
    RemoteProgram program("/STARTUP");
    HWND window = program.MainWindow();
    check_(window != nullptr && WaitFor([&] { return IsWindowVisible(window) != FALSE; }),
           "a start with Windows shows its run");
    check_(
        WaitFor([&] { return !IsWindowVisible(window); }, 60000) && program.Running(1000) && !IsWindowVisible(window),
        "and hides the window after it");
    Compare("when Windows starts");
    {
      RemoteProgram second("");
      check_(!second.Running(10000) && WaitFor([&] { return IsWindowVisible(window) != FALSE; }),
             "a second copy brings the hidden window back");
    }
    std::vector<std::string> lines = program.LogAndCount();
    lines.pop_back();  // such a run shows no count
    log_.insert(log_.end(), lines.begin(), lines.end());
    log_.push_back("false");  // that it was not visible, as the script asks
    check_(program.End(), "the program ends");
    log_.push_back(Value(kStore, "HistoryRemoved"));
  }

  void Prepare() {
    goes_ = MakeAll("goes");
    EmptyUrlCache();
    before_ = TakeState();
  }

  void Compare(const std::string& when) {
    std::string left;
    for (const std::string& path : goes_) {
      if (Exists(path)) left += " '" + path + "'";
    }
    check_(left.empty(), std::to_string(goes_.size()) + " traces are gone, " + when + left);
    std::vector<std::string> expected = goes_;
    for (const char* place :
         {"Software\\VB and VBA Program Settings", "Software\\Microsoft\\Windows\\CurrentVersion\\Run\\",
          "Software\\Wine\\", "C:\\users\\root\\AppData\\Local\\Quillbarrow"}) {
      expected.push_back(place);
    }
    const auto differences = Differences(before_, TakeState(), expected);
    for (const std::string& line : differences) std::printf("     %s\n", line.c_str());
    check_(differences.empty(), "nothing else changed, byte for byte");
  }

  const Report& check_;
  std::vector<std::string> goes_, stays_, log_;
  State before_;
};

}  // namespace

void BrowserStory(const Report& check) {
  Story(check).Play();
}

}  // namespace native
