#include "core/main_window.h"

namespace qb {

namespace {

constexpr int kFirstTab = 0;
constexpr int kLogTab = 9;

// One for each group of traces stands before these.
constexpr struct {
  const char *caption, *tip;
} kOtherTabs[] = {
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

std::vector<TabStrip::Page> TabPages() {
  std::vector<TabStrip::Page> pages;
  for (TraceGroup group : TabOrder()) {
    const TraceGroupRow& row = RowOf(group);
    pages.push_back({std::string(row.tab_caption), std::string(row.tab_tip)});
  }
  for (const auto& tab : kOtherTabs) pages.push_back({tab.caption, tab.tip});
  return pages;
}

}  // namespace

frmMain::frmMain(const FormHost& host, Services& services, ProgramLife& life)
    : Form(host, "frmMain", "Quillbarrow 2019 - Protecting your Privacy since 1997!"),
      life_(life),
      SftTabs1(*this, "SftTabs1", TabPages()),
      cmdKILLALL(*this, "cmdKILLALL", "Kill Now!"),
      cmdThumbs(*this, "cmdThumbs", "Thumbs.db Scan/Remove"),
      lblURL(*this, "lblURL", "Quillbarrow on the web"),
      log_page_(*this, services.history_removed),
      cmdSetCookies(*this, "cmdSetCookies", "Cookie Manager..."),
      lblmoreinfo(*this, "lblmoreinfo", "more info on index.dat files"),
      List3(*this, "List3"),
      Timer1(*this, "Timer1", 1000, true),
      Timer2(*this, "Timer2", 1000, true),
      Timer_HomePage(*this, "Timer_HomePage", 5000, false),
      interval_(*this, services.settings),
      Timer_DisableScriptDebug(*this, "Timer_DisableScriptDebug", 60000, true),
      boxes_(*this),
      auto_kill_page_(*this, services.settings, interval_),
      boss_key_page_(*this, services.settings),
      shredder_page_(*this, services.settings),
      menus_(*this, SftTabs1) {
  List3.SetVisible(false);
  cmdKILLALL.SetDefault(true);
  cmdKILLALL.SetIcon(ButtonIcon::Kill);
  cmdSetCookies.SetIcon(ButtonIcon::Cookie);
  cmdKILLALL.SetToolTip("Securely delete the selected traces now");
  cmdThumbs.SetToolTip("Find and remove the hidden pictures that Windows keeps of images you have viewed");
  cmdSetCookies.SetToolTip("Choose the Internet Explorer cookies to keep");
  lblmoreinfo.Click = [this] { lblmoreinfo_Click(); };
  for (MenuItem* menu : menus_.Menus()) AddMenu(*menu);

  std::vector<Layout> pages;
  for (TraceGroup group : TabOrder()) {
    std::vector<Layout> page = boxes_.Arrangement(group);
    if (group == TraceGroup::InternetExplorer) page.push_back(Row({cmdSetCookies, lblmoreinfo}));
    pages.push_back(Page(std::move(page)));
  }
  pages.push_back(auto_kill_page_.Arrangement());
  pages.push_back(boss_key_page_.Arrangement());
  pages.push_back(shredder_page_.Arrangement());
  pages.push_back(log_page_.Arrangement());
  Arrange(Column({Tabs(SftTabs1, std::move(pages)).Stretched(), Row({cmdKILLALL, cmdThumbs, lblURL})}));
}

void frmMain::lblmoreinfo_Click() {
  StepOver(platform().desktop.MessageBoxA(
      Window(),
      "The index.dat files are databases in which Internet Explorer keeps its history, cache and cookies.  They are "
      "always in-use by Windows and cannot be deleted while it runs.\r\n\r\nQuillbarrow arranges for them to go at "
      "the next start of Windows.",
      "index.dat Help", kBoxOk | kBoxInformation));
}

void frmMain::LoadFromSettings() {
  boss_key_page_.LoadFromSettings();
  shredder_page_.LoadFromSettings();
  auto_kill_page_.LoadFromSettings();
  log_page_.ShowTotal();
}

void frmMain::ShowLog() {
  StepOver(SftTabs1.SetTab(kLogTab));
}

void frmMain::ShowBoxes() {
  StepOver(SftTabs1.SetTab(kFirstTab));
}

void frmMain::ShowCacheUrls(const std::vector<std::string>& urls) {
  List3.Clear();
  for (const std::string& url : urls) List3.AddItem(url);
}

}  // namespace qb
