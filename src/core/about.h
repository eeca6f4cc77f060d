// The About window.
#pragma once

#include "core/services.h"
#include "widgets/form.h"

namespace qb {

class frmAbout : public Form {
 public:
  frmAbout(const FormHost& host, Services& services, std::string_view version);

 protected:
  void Form_Load() override { Center(); }

 private:
  Services& services_;
  HeadingLabel title_;
  Label version_, purpose_;
  LinkLabel lblAboutSite, lblAboutSupport;
  Button cmdOK;
};

}  // namespace qb
