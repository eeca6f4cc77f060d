#include "core/main_window.h"

#include "core/sites.h"
#include "kill/log_step.h"
#include "runtime/text.h"

namespace qb {

namespace {

constexpr int kFirstTab = 0;
constexpr int kLogTab = 9;

const std::vector<TabStrip::Page>& TabPages() {
  static const std::vector<TabStrip::Page> pages = {
      {"Edge/IE",
       "Internet Explorer Tab - Select what to kill from the Internet Explorer history when Quillbarrow runs."},
      {"&Firefox", "Mozila Firefox Tab - Select what to kill from the Firefox history when Quillbarrow runs."},
      {"&Chrome", "Google Chrome Tab - Select what to kill from the Google Chrome history when Quillbarrow runs."},
      {"Safa&ri", "Apple Safari Tab - Select what to kill from the Apple Safari history when Quillbarrow runs."},
      {"&Windows", "Windows Tab - Select what to kill from the Windows history when Quillbarrow runs."},
      {"A&OL", "AOL Tab - Select what to kill from the AOL history when Quillbarrow runs."},
      {"&Auto-Kill",
       "Auto-Kill Tab - This Tab has the Auto-Kill settings.  Auto-Kill is a feature of Quillbarrow that allows you to "
       "automatically run Quillbarrow."},
      {"&Boss Key! Setup",
       "Boss Key Settings Tab -  Boss Key is a feature of Quillbarrow that allows you to hide browser/chat windows "
       "instantly."},
      {"File &Shredder",
       "File Shredder Settings Tab - The File Shredder is what Quillbarrow uses to securely delete your history."},
      {"Quillbarrow &Log", "This Tab has the Quillbarrow log.  This tells you what Quillbarrow has done."},
  };
  return pages;
}

constexpr std::string_view kCountTip = "This is the amount of history traces that Quillbarrow has deleted!";

// The groups of the tabs 0 to 5.
constexpr TraceGroup kTabGroups[] = {TraceGroup::InternetExplorer, TraceGroup::Firefox, TraceGroup::Chrome,
                                     TraceGroup::Safari,           TraceGroup::Windows, TraceGroup::AOL};

// "All of the above" of the Windows tab leaves the boxes that have no stored key as they are.
bool FollowsAllBox(const TraceClass& row) {
  return !row.key.empty();
}

}  // namespace

frmMain::frmMain(const FormHost& host, Services& services, ProgramLife& life)
    : Form(host, "frmMain", "Quillbarrow 2019 - Protecting your Privacy since 1997!"),
      services_(services),
      life_(life),
      SftTabs1(*this, "SftTabs1", TabPages()),
      cmdKILLALL(*this, "cmdKILLALL", "Kill Now!"),
      cmdThumbs(*this, "cmdThumbs", "Thumbs.db Scan/Remove"),
      lblURL(*this, "lblURL", "Quillbarrow on the web"),
      lstStatus(*this, "lstStatus"),
      pBar(*this, "pBar"),
      lblJustKilled(*this, "lblJustKilled", ""),
      lblQuillbarrowed(*this, "lblQuillbarrowed", ""),
      cmdClearLog(*this, "cmdClearLog", " Clear Log"),
      cmdSetCookies(*this, "cmdSetCookies", "Cookie Manager..."),
      lblmoreinfo(*this, "lblmoreinfo", "more info on index.dat files"),
      List3(*this, "List3"),
      Timer1(*this, "Timer1", 1000, true),
      Timer2(*this, "Timer2", 1000, true),
      Timer_HomePage(*this, "Timer_HomePage", 5000, false),
      auto_kill_interval(*this, services.settings),
      Timer_DisableScriptDebug(*this, "Timer_DisableScriptDebug", 60000, true),
      auto_kill_page_(*this, services.settings, auto_kill_interval, life),
      boss_key_page_(*this, services.settings, [&life] { life.InvokeBossKey(); }),
      shredder_page_(*this, services.settings),
      menus_(*this, SftTabs1, life) {
  cmdKILLALL.SetDefault(true);
  cmdKILLALL.SetIcon(ButtonIcon::Kill);
  cmdClearLog.SetIcon(ButtonIcon::Clear);
  cmdSetCookies.SetIcon(ButtonIcon::Cookie);
  cmdKILLALL.SetToolTip("Securely delete the selected traces now");
  lblJustKilled.SetToolTip(std::string(kCountTip));
  lblQuillbarrowed.SetToolTip(std::string(kCountTip));
  cmdKILLALL.Click = [this] { life_.KillNow(); };
  cmdThumbs.Click = [this] { life_.ShowThumbnailScan(); };
  cmdThumbs.SetToolTip("Find and remove the hidden pictures that Windows keeps of images you have viewed");
  cmdClearLog.Click = [this] { cmdClearLog_Click(); };
  lblURL.Click = [this] { services_.folders.Open_URL(kHomeSite, services_.data_folder, Window()); };
  cmdSetCookies.Click = [this] { life_.ShowCookieManager(); };
  cmdSetCookies.SetToolTip("Choose the Internet Explorer cookies to keep");
  lblmoreinfo.Click = [this] { lblmoreinfo_Click(); };
  Timer2.Click = [this] { Timer2_Timer(); };
  MakeTraceBoxes();
  ArmIndexDatBoxes();
  for (MenuItem* menu : menus_.Bar()) AddMenu(*menu);

  std::vector<Layout> pages;
  for (TraceGroup group : kTabGroups) pages.push_back(TracePage(group));
  pages.push_back(auto_kill_page_.Arrangement());
  pages.push_back(boss_key_page_.Arrangement());
  pages.push_back(shredder_page_.Arrangement());
  pages.push_back(LogPage());
  Arrange(Column({Tabs(SftTabs1, std::move(pages)).Stretched(), Row({cmdKILLALL, cmdThumbs, lblURL})}));
}

void frmMain::MakeTraceBoxes() {
  auto make = [this](std::string_view name, std::string_view caption, std::string_view tip) -> CheckBox& {
    CheckBox& box = Add<CheckBox>(std::string(name), std::string(caption));
    box.SetToolTip(std::string(tip));
    boxes_.emplace(box.name(), &box);
    return box;
  };
  for (TraceGroup group : kTabGroups) {
    const TraceGroupRow& row = RowOf(group);
    for (const TraceClass& trace : ClassesOf(group)) make(trace.box, trace.caption, trace.tool_tip);
    make(row.all_box, row.all_caption, row.all_tool_tip).Click = [this, &row] { AllBoxClicked(row); };
  }
}

void frmMain::AllBoxClicked(const TraceGroupRow& row) {
  const int value = boxes_.find(row.all_box)->second->Value();
  for (const TraceClass& trace : ClassesOf(row.group)) {
    if (FollowsAllBox(trace)) boxes_.find(trace.box)->second->SetValue(value);
  }
}

void frmMain::ArmIndexDatBoxes() {
  // Clearing one of these two acts at once, without a run.
  const struct {
    std::string_view box;
    std::int16_t kind;
  } rows[] = {{"chkWin_CacheIndexDat", 1}, {"chkWin_CookiesIndexDat", 0}};
  for (const auto& row : rows) {
    CheckBox& box = *boxes_.find(row.box)->second;
    box.Click = [this, &box, kind = row.kind] {
      if (box.Value() == 0) life_.TakeBackIndexDat(kind);
    };
  }
}

void frmMain::lblmoreinfo_Click() {
  StepOver(platform().desktop.MessageBoxA(
      Window(),
      "The index.dat files are databases in which Internet Explorer keeps its history, cache and cookies.  They are "
      "always in-use by Windows and cannot be deleted while it runs.\r\n\r\nQuillbarrow arranges for them to go at "
      "the next start of Windows.",
      "index.dat Help", kBoxOk | kBoxInformation));
}

Layout frmMain::TracePage(TraceGroup group) {
  std::vector<Layout> boxes;
  for (const TraceClass& trace : ClassesOf(group)) boxes.emplace_back(*boxes_.find(trace.box)->second);
  std::vector<Layout> page{TwoColumns(std::move(boxes)), *boxes_.find(RowOf(group).all_box)->second};
  if (group == TraceGroup::InternetExplorer) page.push_back(Row({cmdSetCookies, lblmoreinfo}));
  return Page(std::move(page));
}

Layout frmMain::LogPage() {
  return Page({Layout(lstStatus).Stretched(), pBar, lblJustKilled, Row({lblQuillbarrowed, cmdClearLog})});
}

void frmMain::LoadFromSettings() {
  boss_key_page_.LoadFromSettings();
  shredder_page_.LoadFromSettings();
  auto_kill_page_.LoadFromSettings();
  Timer2_Timer();
}

void frmMain::ShowLog() {
  SelectTab(kLogTab);
}

void frmMain::ShowBoxes() {
  SelectTab(kFirstTab);
}

void frmMain::ShowCacheUrls(const std::vector<std::string>& urls) {
  List3.Clear();
  for (const std::string& url : urls) List3.AddItem(url);
}

bool frmMain::Ticked(std::string_view box) const {
  auto found = boxes_.find(box);
  return found != boxes_.end() && found->second->Value() == 1;
}

void frmMain::cmdClearLog_Click() {
  lstStatus.Clear();
  lblJustKilled.SetCaption("");
  lstStatus.AddItem(LogTime(services_.platform.system) + " - Quillbarrow log cleared.");
}

void frmMain::Timer2_Timer() {
  lblQuillbarrowed.SetCaption("Quillbarrow has killed roughly " + NumberText(services_.history_removed.Value()) +
                              " history traces since installation.");
}

void frmMain::Form_QueryUnload(bool& cancel, UnloadMode mode) {
  life_.MainWindowCloseRequest(cancel, mode);
}

}  // namespace qb
