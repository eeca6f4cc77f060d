#include "core/menus.h"

namespace qb {

namespace {

constexpr int kAutoKillTab = 6;
constexpr int kBossKeyTab = 7;

struct MenuRow {
  const char* name;
  const char* caption;
  const char* shortcut;
  bool shown;
  void (*click)(MainMenus& menus);  // null: none, or one that the program gives it
};

constexpr bool kShown = true;
// An entry that exists with its handler and is never shown.
constexpr bool kHidden = false;
constexpr MenuRow Separator(const char* name) {
  return {name, "-", "", kShown, nullptr};
}
void Nothing(MainMenus&) {}

constexpr MenuRow kFileEntries[] = {
    {"mnuThumbsdb", "Thumbs.db Scan/Remove ", "", kShown, nullptr},
    Separator("sep16"),
    {"mnuAutoKillSettings", "Auto-Kill Setup Wizard...", "", kShown, [](MainMenus& m) { m.SelectTab(kAutoKillTab); }},
    {"mnuBossKeySettings", "BossKey! Settings...", "", kShown, [](MainMenus& m) { m.SelectTab(kBossKeyTab); }},
    {"Options", "AOL / MSN &Setup...", "Ctrl+S", kShown, nullptr},
    {"mnuNetscapeSetup", "Netscape Setup...", "", kHidden, Nothing},
    {"autoKill", "Auto-Kill Setup...", "", kHidden, nullptr},
    {"mnu_SecSetup", "File Shredder Setup...", "", kHidden, Nothing},
    {"mnuCookieSetup", "Cookie Manager...", "", kShown, nullptr},
    Separator("sep99"),
    Separator("line2"),
    {"mnuShutDown", "ShutDown &Quillbarrow", "Ctrl+H", kShown, nullptr},
    Separator("line9"),
    {"Exit", "Close Window", "Ctrl+X", kShown, [](MainMenus& m) { m.Exit_Click(); }},
};

constexpr MenuRow kAutoKillEntries[] = {
    {"runAutoKillnow", "Run Auto-Kill Now! (CTRL-ALT-SPACEBAR)", "", kShown, nullptr},
    Separator("bar3"),
    {"autoKillsetup", "Auto-Kill Setup Wizard...", "Ctrl+A", kShown, nullptr},
};

constexpr MenuRow kPopupEntries[] = {
    {"PopUp_RunAutoKill", "Run Auto-Kill Now! (CTRL-ALT-SPACEBAR)", "", kShown, nullptr},
    Separator("sep88"),
    {"mnuThumbsPopup", "Thumbs.db Scan/Remove Screen", "", kShown, nullptr},
    Separator("sep56"),
    {"popHideIE", "BOSS Key toggle - Hide Browsers/IM Windows!", "", kShown, nullptr},
    Separator("PopUp_line2"),
    {"mnuAutoKillSetup", "Auto-Kill Setup Wizard...", "", kShown, nullptr},
    Separator("sep3"),
    {"PopUp_Maximize", "Show Quillbarrow Screen (ALT-Z)", "", kShown, nullptr},
    Separator("PopUp_line1"),
    {"popShutdownHK", "Shutdown Quillbarrow", "", kShown, nullptr},
    {"PopUp_Exit", "Exit Menu", "", kShown, nullptr},
};

constexpr MenuRow kHelpEntries[] = {
    {"FAQ", "FAQ / Online Support", "", kShown, [](MainMenus& m) { m.FAQ_Click(); }},
    {"mnuHotKeys", "Quillbarrow Hot Key List", "", kShown, [](MainMenus& m) { m.mnuHotKeys_Click(); }},
    {"TechSupport", "Ask Tech Support...", "", kHidden, nullptr},
    Separator("Seperator1"),
    Separator("line"),
    {"About2", "About Quillbarrow", "", kShown, nullptr},
};

// In the order of the bar.
const struct {
  MenuRow menu;
  std::span<const MenuRow> entries;
} kMenus[] = {
    {{"File", "Menu", "", kShown, nullptr}, kFileEntries},
    {{"AutoKillmenu", "Auto-Kill", "", kShown, nullptr}, kAutoKillEntries},
    {{"RCPopup", "PopUp", "", kHidden, nullptr}, kPopupEntries},
    {{"mnuBossKey", "Boss Key!", "", kHidden, [](MainMenus& m) { m.mnuBossKey_Click(); }}, {}},
    {{"Help", "Help", "", kShown, nullptr}, kHelpEntries},
};

constexpr std::string_view kPopupName = "RCPopup";
constexpr std::string_view kBossKeyEntry = "popHideIE";

}  // namespace

MainMenus::MainMenus(Form& form, TabStrip& strip) : form_(form), strip_(strip) {
  auto make = [this](const MenuRow& row) {
    entries_.push_back(std::make_unique<MenuItem>(form_, row.name, row.caption));
    MenuItem* entry = entries_.back().get();
    entry->shortcut = row.shortcut;
    entry->SetVisible(row.shown);
    if (row.click != nullptr) entry->Click = [this, click = row.click] { click(*this); };
    if (entry->name() == kBossKeyEntry) boss_key_entry_ = entry;
    return entry;
  };
  for (const auto& row : kMenus) {
    MenuItem* menu = make(row.menu);
    for (const MenuRow& below : row.entries) {
      MenuItem* entry = make(below);
      entry->parent = menu;
      menu->children.push_back(entry);
    }
    if (menu->name() == kPopupName) {
      menu->popup = true;
      popup_ = menu;
    }
    menus_.push_back(menu);
  }
}

void MainMenus::Inform(std::string_view title, std::string_view text) {
  StepOver(form_.platform().desktop.MessageBoxA(form_.Window(), text, title, kBoxOk | kBoxInformation));
}

void MainMenus::FAQ_Click() {
  Inform("Quillbarrow Help",
         "Put check marks next to the traces that you wish to delete on the tabs, then press Kill Now!.\r\n\r\n"
         "Auto-Kill does the same by itself when you close your last browser window, at an interval or when Windows "
         "starts.  It takes the traces that you select in the Auto-Kill Setup Wizard.\r\n\r\n"
         "Closing the window only hides it: click the icon next to the system clock, or press ALT+Z, to see it "
         "again.\r\n\r\n"
         "Support: http://www.quillbarrow.example/support");
}

void MainMenus::mnuHotKeys_Click() {
  Inform("Quillbarrow Help",
         "HOTKEYS (YOU CAN USE THESE HOTKEYS ANYWHERE IN WINDOWS): \r\n\r\n"
         "ALT+Z will Show Quillbarrow (useful if you hide tray icon)\r\n\r\n"
         "ALT+SPACEBAR will Hide/UnHide all web browser windows instantly! (Boss Key)\r\n\r\n"
         "CTRL+ALT+SPACEBAR will immediately perform an Auto-Kill");
}

void MainMenus::mnuBossKey_Click() {
  Inform("Quillbarrow BOSS KEY Information",
         "BOSS KEY is a Quillbarrow feature that will immediatelly hide all Web Browser AND Instant Message windows "
         "with the press of a hot key.\r\n\r\n"
         "You can then unhide all the windows by pressing the BOSS KEY again.\r\n\r\n"
         "This is especially useful if you want to surf the web at a computer where people often can walk up and see "
         "your screen.\r\n\r\n"
         "To use BOSS KEY while you're Web Browsing or Instant Messaging simply press the ALT+SPACEBAR keys (Hold ALT "
         "then tap SPACEBAR).\r\n\r\n"
         "This will hide all the Web Browser AND Instant Message windows.\r\n\r\n"
         "To unhide them, press ALT+SPACEBAR again.");
}

}  // namespace qb
