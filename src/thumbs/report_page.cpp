#include "thumbs/report_page.h"

namespace qb {

namespace {

constexpr std::string_view kAuditPage = "http://www.fernledger.example/";

// `selectors` are parted by "|"; a K in one stands for the numbers 1 to 8. `declarations` are parted by "|" too.
struct StyleRule {
  std::string_view selectors;
  std::string_view declarations;
};

// One selector and one declaration a line.
constexpr StyleRule kLayoutRules[] = {
    {"body", "margin: 10px|font: Verdana, Helvetica, Arial|padding: 0px|background: #fff"},
    {"#menu", "border-bottom: 1px solid #ccc|margin: 0|padding-bottom: 25px|padding-left: 10px"},
    {"#menu ul|#menu li", "display: inline|list-style-type: none|margin: 0|padding: 0"},
    {"#menu a:link|#menu a:visited",
     "background: #E8EBF0|border: 1px solid #ccc|color: #000|float: left|font-size: small|font-weight: normal|"
     "line-height: 20px|margin-right: 8px|padding: 2px 10px 2px 10px|text-decoration: none"},
    {"#menu a:link.active|#menu a:visited.active", "background: #fff|border-bottom: 1px solid #fff|color: #000"},
    {"#menu a:hover", "color: #f00"},
    {"a:link", "color: #0000FF"},
    {"a:visited", "color: #0000CC"},
    {"a:link.active", "color: #000000"},
    {"a:hover", "color: #FF0000"},
    {".link2 A:link", "color: #0000FF"},
    {".link2 A:visited", "color: #0000CC"},
    {".link2 A:active", "color: #000000"},
    {".link2 A:hover", "color: #000066"},
    {"body.section-K #menu li#nav-K a", "background: #fff|border-bottom: 1px solid #fff|color: #000"},
    {"#menu #subnav-K", "display: none|width: 90%"},
    {"body.section-K #menu ul#subnav-K", "display: inline|left: 10px|position: absolute|top: 140px"},
    {"body.section-K #menu ul#subnav-K a",
     "background: #fff|border: none|border-left: 1px solid #ccc|color: #000099|font-size: smaller|"
     "font-weight: bold|line-height: 10px|margin-right: 4px|padding: 2px 10px 2px 10px|text-decoration: underline"},
    {"#menu ul a:hover", "color: #f00 !important"},
    {"#contents",
     "background: #fff|border: 1px solid #ccc|border-top: none|font-size: smaller|clear: both|margin: 0px|"
     "padding: 15px"},
};

constexpr std::string_view kClassFamily = "font-family: Tahoma, Verdana, Arial, Helvetica, sans-serif";

// A whole rule a line; an F stands for the family.
constexpr StyleRule kClassRules[] = {
    {".text", "F|font-size: 13px|color: #000000|font-variant: small-caps"},
    {".text1", "F|font-size: 13px|color: #FF0000|font-weight: bold"},
    {".text2", "F|font-size: 11px|font-weight: bold"},
    {".text3", "F|font-size: 13px|color: #000|font-weight: bold"},
    {".textalert", "F|font-size: 13px|font-weight: bold"},
    {".textalert A:link", "color: #FF0000"},
    {".textalert A:visited", "color: #F00000"},
    {".textalert A:active", "color: #0000FF"},
    {".textalert A:hover", "color: #F00000"},
    {".textalert2", "F|font-size: 11px"},
    {".headline", "F|font-size: 20px|line-height: 1.0em|color: #416EC5"},
};

constexpr int kSections = 8;

std::vector<std::string_view> Parts(std::string_view text) {
  std::vector<std::string_view> parts;
  for (;;) {
    const std::size_t cut = text.find('|');
    parts.push_back(text.substr(0, cut));
    if (cut == std::string_view::npos) return parts;
    text.remove_prefix(cut + 1);
  }
}

std::string WithNumber(std::string_view selector, int number) {
  std::string text;
  for (char c : selector) c == 'K' ? text += std::to_string(number) : text += c;
  return text;
}

std::vector<std::string> Selectors(const StyleRule& rule) {
  std::vector<std::string> selectors;
  for (std::string_view selector : Parts(rule.selectors)) {
    const int last = selector.find('K') == std::string_view::npos ? 1 : kSections;
    for (int number = 1; number <= last; ++number) selectors.push_back(WithNumber(selector, number));
  }
  return selectors;
}

void AddStyleSheet(std::vector<std::string>& lines) {
  for (const StyleRule& rule : kLayoutRules) {
    const std::vector<std::string> selectors = Selectors(rule);
    for (std::size_t i = 0; i < selectors.size(); ++i) {
      lines.push_back(selectors[i] + (i + 1 < selectors.size() ? "," : " {"));
    }
    for (std::string_view declaration : Parts(rule.declarations)) lines.push_back(std::string(declaration) + ";");
    lines.emplace_back("}");
  }
  for (const StyleRule& rule : kClassRules) {
    std::string line = std::string(rule.selectors) + " {";
    for (std::string_view declaration : Parts(rule.declarations)) {
      line += " " + std::string(declaration == "F" ? kClassFamily : declaration) + ";";
    }
    lines.push_back(line + " }");
  }
}

}  // namespace

std::vector<std::string> HeaderLines(int section, std::string_view page_name) {
  const int body_section = section >= 2 && section <= kSections ? section : 1;
  constexpr int kVideoSection = 6;
  std::vector<std::string> lines = {
      "<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 4.01 Transitional//EN\">",
      "<html>",
      "<head>",
      "<title>Fernledger - Internet Fern Ledger: " + std::string(page_name) + "</title>",
      "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=iso-8859-1\">",
      "<style type=\"text/css\" media=\"screen\">",
  };
  AddStyleSheet(lines);
  const std::string rest[] = {
      "</style>",
      "</head>",
      "<body class=section-" + std::to_string(body_section) + ">",
      "<A NAME=TOP></A>",
      "<TABLE BORDER=0><TR><TD WIDTH=300>",
      "<A HREF=\"" + std::string(kAuditPage) +
          "\"><IMG SRC=logo.gif width=253 height=74 vspace=10 border=0 alt=\"Fern Ledger\"></A>",
      section == kVideoSection ? "</TD><TD ALIGN=MIDDLE><IMG SRC=video_tab_clickhere.gif><BR><BR>"
                               : "</TD><TD><FONT CLASS=TEXT><BR></FONT><BR><BR>",
      "</TD></TR></TABLE>",
      "<ul id=\"menu\">",
      "<li id=\"nav-1\"><a href=Fernledger_summary.html>THUMBS.DB</a></li>",
      "</li>",
      "</ul>",
      "<div id=\"contents\">",
      "<P>",
  };
  lines.insert(lines.end(), std::begin(rest), std::end(rest));
  return lines;
}

std::vector<std::string> IntroductionLines(bool single_file) {
  const std::string article(kThumbsArticle);
  return {
      "<FONT SIZE=+1><B>What are Thumbs.db files?</B></FONT><BR><BR>",
      "Thumbs.db are Windows (Windows 7/8/8.1/XP/Vista) hidden image files that contain the history of what images you "
      "have viewed on your PC over the lifetime of your Windows. This is a huge invasion to your privacy as anyone can "
      "access these files and see what pictures and images you have viewed on your computer and Windows will NOT "
      "remove these files by itself... leaving years of your tracks and web history on your computer!<BR><BR>",
      "For more information visit the Wikipedia entry at: <A HREF=\"" + article + "\" TARGET=_BLANK>" + article +
          "</A><BR><HR SIZE=1><BR>" + (single_file ? "<BR>" : ""),
  };
}

std::string TotalsLine(std::int32_t images, int files) {
  return "<FONT SIZE=+1 COLOR=#880000><B>Below are all the <FONT COLOR=#FF0000>" + std::to_string(images) +
         "</FONT> Thumbnails Images contained within your <FONT COLOR=#FF0000>" + std::to_string(files) +
         "</FONT> Thumbs.db files on your computer:</B></FONT><BR><BR>";
}

std::string PictureLine(std::string_view data_folder, std::int32_t file, std::size_t picture) {
  return "<IMG SRC=\"file://" + std::string(data_folder) + "\\thumbs\\t" + std::to_string(file) + "-" +
         std::to_string(picture) + ".jpg\">";
}

std::string OriginLine(std::string_view path) {
  return "The above thumbnails were extracted from your hidden Thumbs.db file located on YOUR hard drive at: <B>" +
         std::string(path) + "</B><BR><HR><BR>";
}

std::vector<std::string> FootLines() {
  return {"</P>", "</div><BR>", "<A HREF=#TOP><B>BACK TO TOP</B></A><BR>", "</body>", "</html>"};
}

}  // namespace qb
