#include "cookies/cookie_lists.h"

namespace qb {

std::string CookieDisplayName(const std::string& source_name) {
  const std::size_t at = source_name.find('@');
  std::string host = at == std::string::npos ? source_name : source_name.substr(at + 1);
  if (!host.empty() && host.back() == '/') host.pop_back();
  return host;
}

CookieLists::CookieLists(Form& form, Settings& settings, std::function<void()> edited)
    : form_(form),
      settings_(settings),
      edited_(std::move(edited)),
      Label5(form, "Label5", "Cookies on your computer to DELETE:"),
      Label6(form, "Label6", "Cookies on your computer to KEEP:"),
      List1(form, "List1", true),
      List2(form, "List2", true),
      cmd_CookiesSave(form, "cmd_CookiesSave", " Keep Cookie >>"),
      cmd_CookiesRemove(form, "cmd_CookiesRemove", " << Remove Cookie") {
  List1.SetToolTip("These are the cookies on your computer right now");
  List2.SetToolTip("This is a list of cookies that will not be deleted when you use Quillbarrow");
  cmd_CookiesSave.SetToolTip("Click after selecting a cookie on the left to KEEP.", "Keep Cookie");
  cmd_CookiesRemove.SetToolTip("Click after selecting a cookie on the right to NOT KEEP.", "Remove Cookie");
  cmd_CookiesSave.SetIcon(ButtonIcon::Forward);
  cmd_CookiesRemove.SetIcon(ButtonIcon::Back);
  cmd_CookiesSave.Click = [this] { cmd_CookiesSave_Click(); };
  cmd_CookiesRemove.Click = [this] { cmd_CookiesRemove_Click(); };
}

Layout CookieLists::Arrangement() {
  return Row({Column({Label5, Layout(List1).Stretched()}).Stretched(), Column({cmd_CookiesSave, cmd_CookiesRemove}),
              Column({Label6, Layout(List2).Stretched()}).Stretched()})
      .Stretched();
}

void CookieLists::Fill_Cookie_List() {
  CacheArrays arrays;
  Enum_Url_Cache(form_.platform().url_cache, form_.platform().system, arrays);
  List1.Clear();
  settings_.SetNumber(Setting::SaveCookieCount, 0);
  // Element 0 stands for nothing.
  for (std::size_t i = 1; i < arrays.cookies.size(); ++i) {
    List1.AddItem(CookieDisplayName(arrays.cookies[i].source_url));
  }
}

void CookieLists::ShowKept(const std::vector<std::string>& rows) {
  if (List2.Entries() == rows) return;
  List2.Clear();
  for (const std::string& row : rows) List2.AddItem(row);
}

void CookieLists::cmd_CookiesSave_Click() {
  for (int i = 0; i < List1.ListCount(); ++i) {
    if (List1.Selected(i)) List2.AddItem(List1.List(i));
  }
  if (edited_) edited_();
}

void CookieLists::cmd_CookiesRemove_Click() {
  // Deliberate: the rows behind a removed one move up, so the next one is not looked at in this pass.
  const int count = List2.ListCount();
  for (int i = 0; i < count; ++i) {
    if (List2.Selected(i)) StepOver(List2.RemoveItem(i));
  }
  if (edited_) edited_();
}

}  // namespace qb
