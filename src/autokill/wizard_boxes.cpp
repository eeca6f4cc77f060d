#include "autokill/wizard_boxes.h"

#include <utility>

#include "runtime/folders.h"

namespace qb {

namespace {

// The boxes that have another name here than on the main window.
constexpr struct {
  std::string_view key;
  const char* box;
  std::string_view stored_under;
} kOtherNames[] = {
    // Deliberate: these two boxes are kept under one another's key.
    {"REGAOLCache", "chkWin_AOLcache", "REGAOLCookies"},
    {"REGAOLCookies", "chkWin_AOLcookies", "REGAOLCache"},
};

// The order of writing; within a group that of the classes. The one class stands before its group.
constexpr struct {
  TraceGroup group;
  std::string_view only;
} kSaveOrder[] = {
    {TraceGroup::Firefox, ""}, {TraceGroup::Chrome, ""},           {TraceGroup::InternetExplorer, "IE_Recovery"},
    {TraceGroup::Safari, ""},  {TraceGroup::InternetExplorer, ""}, {TraceGroup::Windows, ""},
    {TraceGroup::AOL, ""},
};

constexpr struct {
  std::string_view key;
  bool ticked;
} kWindowsDefaults[] = {{"WIN_StartRun", true},  {"WIN_RecentDoc", true}, {"REGMediaPlayer", true},
                        {"REGrecyclebin", true}, {"REGFileFrag", false},  {"REGWindowsTemp", false}};

std::vector<TabStrip::Page> TabPages() {
  std::vector<TabStrip::Page> pages;
  for (TraceGroup group : WizardOrder()) {
    const TraceGroupRow& row = RowOf(group);
    std::string tip(row.wizard_browser);
    tip.append(" tab - Select which history data traces you want Quillbarrow to kill in ");
    tip.append(row.wizard_browser).append(".");
    pages.push_back({std::string(row.wizard_caption), std::move(tip)});
  }
  return pages;
}

}  // namespace

WizardBoxes::WizardBoxes(Form& form) : SftTabs2(form, "SftTabs2", TabPages()) {
  for (const TraceClass& trace : TraceClasses()) {
    if (trace.key.empty()) continue;
    std::string name(trace.box);
    const TraceClass* stored = &trace;
    for (const auto& other : kOtherNames) {
      if (other.key != trace.key) continue;
      name = other.box;
      stored = FindClass(other.stored_under);
    }
    owned_.push_back(std::make_unique<CheckBox>(form, name, std::string(trace.caption)));
    owned_.back()->SetToolTip(std::string(trace.tool_tip));
    rows_.push_back({&trace, stored, owned_.back().get()});
  }
}

Layout WizardBoxes::Arrangement() {
  std::vector<Layout> pages;
  for (TraceGroup group : WizardOrder()) {
    std::vector<Layout> boxes;
    for (const Row& row : rows_) {
      if (row.shown->group == group) boxes.emplace_back(*row.box);
    }
    pages.push_back(Page({TwoColumns(std::move(boxes))}));
  }
  return Tabs(SftTabs2, std::move(pages));
}

bool WizardBoxes::Load(SettingsStore& store) {
  Selection selection(store);
  selection.Load();
  bool any = false;
  for (const Row& row : rows_) {
    const bool ticked = selection.Of(*row.stored) == 1;
    row.box->SetValue(ticked);
    any = any || ticked;
  }
  return any;
}

void WizardBoxes::Save(SettingsStore& store) const {
  Selection selection(store);
  for (const auto& step : kSaveOrder) {
    for (const Row& row : rows_) {
      if (row.shown->group != step.group) continue;
      if (step.only.empty() ? row.shown->key == "IE_Recovery" : row.shown->key != step.only) continue;
      selection.Store(*row.stored, static_cast<std::int16_t>(row.box->Value()));
    }
  }
}

void WizardBoxes::SetGroup(TraceGroup group, bool ticked) {
  for (const Row& row : rows_) {
    if (row.shown->group == group) row.box->SetValue(ticked);
  }
}

void WizardBoxes::Set(std::string_view key, bool ticked) {
  for (const Row& row : rows_) {
    if (row.shown->key == key) row.box->SetValue(ticked);
  }
}

void WizardBoxes::SetDefaults(const Settings& settings, const BrowserProfiles& profiles) {
  SetGroup(TraceGroup::InternetExplorer, true);
  for (const auto& row : kWindowsDefaults) Set(row.key, row.ticked);
  SetGroup(TraceGroup::AOL, LongEnoughPath(settings.Text(Setting::AOLdir)));
  SetGroup(TraceGroup::Firefox, LongEnoughPath(settings.Text(Setting::NetscapeDir)));
  // Deliberate: without Chrome this one box stays as it is.
  constexpr std::string_view kFlashCookies = "Chrome_FlashCookies";
  const bool chrome = profiles.Check_Chrome_Installed();
  for (const Row& row : rows_) {
    if (row.shown->group == TraceGroup::Chrome && (chrome || row.shown->key != kFlashCookies))
      row.box->SetValue(chrome);
  }
  SetGroup(TraceGroup::Safari, profiles.Check_Safari_Installed());
}

}  // namespace qb
