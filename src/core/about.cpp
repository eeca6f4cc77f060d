#include "core/about.h"

#include "core/sites.h"

namespace qb {

frmAbout::frmAbout(const FormHost& host, Services& services, std::string_view version)
    : Form(host, "frmAbout", "About Quillbarrow"),
      services_(services),
      title_(*this, "lblAboutTitle", "Quillbarrow 2019"),
      version_(*this, "lblAboutVersion", "Version " + std::string(version)),
      purpose_(*this, "lblAboutPurpose", "Protecting your Privacy since 1997!"),
      lblAboutSite(*this, "lblAboutSite", "Quillbarrow on the web"),
      lblAboutSupport(*this, "lblAboutSupport", "Ask Tech Support..."),
      cmdOK(*this, "cmdAboutOK", "OK") {
  cmdOK.SetDefault(true);
  cmdOK.SetCancelButton(true);
  cmdOK.Click = [this] { StepOver(Unload()); };
  auto open = [this](LinkLabel& link, std::string_view site) {
    link.SetToolTip(std::string(site));
    link.Click = [this, site] { services_.folders.Open_URL(site, services_.data_folder, Window()); };
  };
  open(lblAboutSite, kHomeSite);
  open(lblAboutSupport, kSupportSite);
  Arrange(Column({title_, version_, purpose_, Row({lblAboutSite, lblAboutSupport}), Row({cmdOK})}));
}

}  // namespace qb
