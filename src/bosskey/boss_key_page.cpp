#include "bosskey/boss_key_page.h"

namespace qb {

namespace {

constexpr struct {
  Setting setting;
  const char* box;
  const char* caption;
} kBoxes[] = {
    {Setting::BK_IE, "chkBK_IE", "Hide Internet Explorer"},
    {Setting::BK_AOL, "chkBK_AOL", "Hide AOL"},
    {Setting::BK_MSN, "chkBK_MSN", "Hide MSN 8"},
    {Setting::BK_Netscape, "chkBK_Netscape", "Hide Mozilla Firefox / Netscape"},
    {Setting::BK_AOLIM, "chkBK_AOLIM", "Hide AIM/AOL IM"},
    {Setting::BK_YahooIM, "chkBK_YahooIM", "Hide Yahoo IM"},
    {Setting::BK_MSNIM, "chkBK_MSNIM", "Hide MSN IM"},
    {Setting::BK_Chrome, "chkBK_Chrome", "Hide Google Chrome"},
    {Setting::BK_Safari, "chkBK_Safari", "Hide Apple Safari"},
    {Setting::BK_PartyPoker, "chkBK_PartyPoker", "Hide Party Poker"},
    // Deliberate: stored and shown, and nothing reads it when windows are hidden.
    {Setting::BK_GoldenPalace, "chkBK_GoldenPalace", "Hide Golden Palace Casino"},
};

}  // namespace

BossKeyPage::BossKeyPage(Form& form, Settings& settings)
    : bindings_(form, settings),
      heading_(form, "lblBossKeyHeading", "Boss Key! Settings"),
      windows_frame_(form, "frameBK_Windows", "Windows to hide"),
      hot_key_frame_(form, "frameBK_HotKey", "BossKey! Hot Key"),
      space_bar_(form, "optBK_HotKeySpaceBar", "ALT+SPACEBAR", "BK_HotKey"),
      ctrl_alt_z_(form, "optBK_HotKeyZ", "CTRL+ALT+Z", "BK_HotKey"),
      lblTestBossKey(form, "lblTestBossKey", "Test Boss Key!") {
  for (const auto& row : kBoxes) {
    boxes_.push_back(std::make_unique<CheckBox>(form, row.box, row.caption));
    bindings_.Bind(row.setting, *boxes_.back());
  }
  bindings_.Bind(Setting::BK_HotKey, ctrl_alt_z_, space_bar_);
}

Layout BossKeyPage::Arrangement() {
  std::vector<Layout> boxes;
  for (const auto& box : boxes_) boxes.emplace_back(*box);
  return Page({heading_, Group(windows_frame_, {TwoColumns(std::move(boxes))}),
               Group(hot_key_frame_, {Row({space_bar_, ctrl_alt_z_})}), lblTestBossKey});
}

}  // namespace qb
