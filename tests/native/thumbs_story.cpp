#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <set>
#include <thread>

#include "computer.h"
#include "program_windows.h"
#include "stories.h"

namespace native {

namespace {

constexpr const char* kVersions = "Software\\Wine\\AppDefaults\\Quillbarrow.exe";
constexpr const char* kCaches = "C:\\caches";
constexpr const char* kPictures = "C:\\pictures";
constexpr const char* kRootCopies = "C:\\thumbs";
// Where such a Windows has a link to the user's local data.
const std::string kLocal = "C:\\users\\root\\Local Settings\\Application Data";
const std::string kData = kLocal + "\\Quillbarrow";
const std::string kUnpacked = kData + "\\thumbs";

// Asks a window again and again, from a thread of its own, and keeps the longest time that it took to answer. A window
// of ours that does nothing is asked in turn with it: what all of the computer waits for, the disk above all, shows
// there too.
class Answers {
 public:
  explicit Answers(HWND window) : idle_([this] { BeIdle(); }), asking_([this, window] { Ask(window); }) {}
  ~Answers() {
    over_ = true;
    asking_.join();
    PostMessageW(idle_window_, WM_QUIT, 0, 0);
    idle_.join();
  }
  Answers(const Answers&) = delete;
  Answers& operator=(const Answers&) = delete;

  // Where no window manager runs, Wine waits for one whenever a window comes or goes.
  void Forget() { longest_ = longest_idle_ = asked_ = 0; }
  // Prints the longest since the last time it was told.
  void Tell(const char* what) {
    std::printf("     the window answered within %.1f ms, an idle one within %.1f ms, %s (asked %d times)\n",
                static_cast<double>(longest_.exchange(0)) / 1000, static_cast<double>(longest_idle_.exchange(0)) / 1000,
                what, asked_.exchange(0));
  }

 private:
  void BeIdle() {
    idle_window_ = CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
  }

  // Microseconds.
  static long long TimeOfAnswer(HWND window) {
    using Clock = std::chrono::steady_clock;
    constexpr UINT kPatience = 20000;
    const auto start = Clock::now();
    SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, kPatience, nullptr);
    return std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - start).count();
  }

  void Ask(HWND window) {
    while (idle_window_ == nullptr) Sleep(1);
    while (!over_) {
      longest_ = std::max<long long>(longest_, TimeOfAnswer(window));
      longest_idle_ = std::max<long long>(longest_idle_, TimeOfAnswer(idle_window_));
      ++asked_;
      Sleep(1);
    }
  }

  std::atomic<bool> over_ = false;
  std::atomic<long long> longest_ = 0, longest_idle_ = 0;
  std::atomic<int> asked_ = 0;
  std::atomic<HWND> idle_window_ = nullptr;
  std::thread idle_, asking_;  // the last, as they use the others
};

// Waits for a line of the log, which is written when the window is closed and its pictures are gone.
bool Logged(RemoteProgram& program, const std::string& part) {
  return WaitFor(
      [&] {
        const auto lines = RemoteProgram::ListEntries(RemoteProgram::Child(program.MainWindow(), "ListBox"));
        return !lines.empty() && lines.back().find(part) != std::string::npos;
      },
      kScanTime);
}

// How many different counts the window shows until the first cache is read.
std::size_t LiveCounts(HWND window) {
  std::set<std::string> counts;
  WaitFor(
      [&] {
        const std::string status = RemoteProgram::LabelWith(window, "Searching "),
                          now = RemoteProgram::LabelWith(window, " files searched");
        if (status.rfind("Searching ", 0) == 0) counts.insert(now);
        return now.rfind("DONE", 0) == 0 || !RemoteProgram::LabelWith(window, "Counting Thumbnail images").empty() ||
               !RemoteProgram::LabelWith(window, "images from").empty();
      },
      kScanTime);
  counts.erase("");
  return counts.size();
}

// Those of the original pictures that no unpacked one begins with, byte for byte.
std::string MissingPictures() {
  Texts unpacked;
  for (const std::string& name : FilesIn(kUnpacked))
    unpacked.push_back(ReadBytes(std::string(kUnpacked).append("\\").append(name)));
  std::string missing;
  for (const std::string& name : FilesIn(kPictures)) {
    const std::string picture = ReadBytes(std::string(kPictures) + "\\" + name);
    if (picture.empty() || std::none_of(unpacked.begin(), unpacked.end(),
                                        [&](const std::string& bytes) { return bytes.starts_with(picture); })) {
      missing += " " + name;
    }
  }
  return missing;
}

void LookPart(RemoteProgram& program) {
  HWND window = OpenAudit(program);
  Check(window != nullptr, "the button opens the audit, which scans by itself");
  Answers answers(window);
  const std::size_t counts = LiveCounts(window);
  Check(counts >= 2, "the counter goes on while the scan runs: " + std::to_string(counts) + " counts seen");
  answers.Tell("during the scan");
  Check(WaitLabel(window, "Extracting images"), "the pictures are unpacked");
  answers.Tell("while pictures are counted");
  PostMessageA(window, WM_CLOSE, 0, 0);
  Check(Answer(program, "Quillbarrow - Cancel Thumbs.db Scan", IDNO), "closing meanwhile asks");
  answers.Forget();
  Check(WaitLabel(window, "LAUNCHING RESULTS"), "and goes on after No");
  answers.Tell("while pictures are unpacked");

  Texts expected;
  for (const std::string& name : FilesIn(kCaches)) expected.push_back(std::string(kCaches) + "\\" + name);
  Texts listed = RemoteProgram::ListEntries(RemoteProgram::Child(window, "ListBox"));
  std::sort(listed.begin(), listed.end());
  Check(listed == expected, "the list has each cache of the drive");
  const std::string page = kData + "\\Fernledger_thumbnails.html";
  Check(WaitFor([&] { return ReadFile(kHelperCalls).find(page) != std::string::npos; }),
        "the page is handed to whoever opens such pages, " + ReadFile(kHelperCalls));
  const std::string text = ReadFile(page);
  Check(
      text.find("file://" + kUnpacked + "\\t0-1.jpg") != std::string::npos && text.find("</html>") != std::string::npos,
      "the page is whole");
  const std::string missing = MissingPictures();
  Check(missing.empty(), "each picture is unpacked, byte for byte" + missing);
  Check(ReadBytes(std::string(kRootCopies) + "\\1.jpg").substr(0, 4) == "\xFF\xD8\xFF\xC0",
        "the second copies lie at the root of the drive");
  std::printf("     %s\n", RemoteProgram::LabelWith(window, " thumbnails found in ").c_str());

  PostMessageA(window, WM_CLOSE, 0, 0);
  Check(Answer(program, kDoneViewing, IDNO) && IsWindow(window), "No keeps the window");
  PostMessageA(window, WM_CLOSE, 0, 0);
  Check(Answer(program, kDoneViewing, IDYES), "and Yes");
  // Who looks at the pictures meanwhile holds one open.
  Check(Logged(program, "NONE REMOVED!") && !IsWindow(window) && FilesIn(kUnpacked).empty(),
        "takes it, and the pictures");
}

void DeletePart(RemoteProgram& program) {
  HWND window = OpenAudit(program);
  Check(window != nullptr && WaitLabel(window, "LAUNCHING RESULTS"), "a second audit comes to its end");
  const std::size_t caches = FilesIn(kCaches).size();
  Answers answers(window);
  Check(program.PostClick(window, " DELETE ALL THUMBS.DB") && WaitLabel(window, "DONE!  Quillbarrow securely deleted"),
        "the caches are deleted");
  answers.Tell("while caches are shredded");
  const std::string kills = RemoteProgram::LabelWith(window, "Quillbarrow has killed a total of ");
  Check(Value(kStore, "ThumbsKilled") == std::to_string(caches) &&
            kills.find(Value(kStore, "ThumbPicsCountTotal") + " images in " + std::to_string(caches)) !=
                std::string::npos,
        "the counts are shown and stored");
  Check(FilesIn(kCaches).empty() && !FilesIn(kPictures).empty(), "nothing of them is left, and all else is");
  Check(RemoteProgram::ListEntries(RemoteProgram::Child(window, "ListBox")).empty(), "the list is empty");
  PostMessageA(window, WM_CLOSE, 0, 0);
  Check(Answer(program, kDoneViewing, IDYES) && Logged(program, "Killed and Shredded"), "the window closes");
}

}  // namespace

void ThumbsStory() {
  DeleteKey(kStore);
  SetValue(kStore, "QBBuild", "1");
  // A Windows whose caches may lie anywhere: the whole drive is walked.
  SetValue(kVersions, "Version", "win10");
  std::filesystem::create_directories(kLocal);
  TakePages();
  {
    RemoteProgram program;
    Check(program.ShownWindow() != nullptr, "the program is there");
    LookPart(program);
    DeletePart(program);
    Texts lines = program.LogAndCount();
    lines.back() = Value(kStore, "HistoryRemoved");  // such work shows no count
    MakeFile("C:\\thumbs-log.txt", Joined(lines));
    Check(program.End(), "the program ends");
  }
  DeleteKey(kVersions);
}

}  // namespace native
