#include "view/text/drawing.h"

#include <algorithm>
#include <vector>

#include "widgets/picture_box.h"

namespace qb {
namespace {

using Block = std::vector<std::string>;

constexpr std::size_t kListRows = 20;
constexpr std::size_t kFieldWidth = 24;
constexpr std::size_t kBarWidth = 40;
constexpr std::size_t kGap = 2;

std::size_t Width(std::string_view text) {
  return Columns(text);
}

std::size_t Width(const Block& block) {
  std::size_t width = 0;
  for (const std::string& line : block) width = std::max(width, Width(line));
  return width;
}

std::string Padded(std::string text, std::size_t width) {
  std::size_t used = Width(text);
  if (used < width) text.append(width - used, ' ');
  return text;
}

Block Lines(std::string_view text) {
  Block lines{""};
  for (char c : text) {
    if (c == '\n') {
      lines.emplace_back();
    } else if (c != '\r') {
      lines.back() += c;
    }
  }
  return lines;
}

void Append(Block& block, Block more) {
  block.insert(block.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

Block Framed(const std::string& caption, const Block& content) {
  std::string title = caption.empty() ? "" : " " + caption + " ";
  std::size_t width = std::max(Width(content), Width(title) + 1);
  Block framed{"+-" + title + std::string(width + 1 - Width(title), '-') + "+"};
  for (const std::string& line : content) framed.push_back("| " + Padded(line, width) + " |");
  framed.push_back("+" + std::string(width + 2, '-') + "+");
  return framed;
}

Block DrawList(const ListBox& list) {
  const auto& entries = list.Entries();
  std::size_t end = entries.size();
  if (end > kListRows) {
    // A list scrolls so far that its selected entry is in view.
    std::size_t selected = list.ListIndex() < 0 ? 0 : static_cast<std::size_t>(list.ListIndex());
    end = std::max(kListRows, selected + 1);
  }
  std::size_t begin = end > kListRows ? end - kListRows : 0;
  Block rows;
  for (std::size_t i = begin; i < end; ++i) {
    int index = static_cast<int>(i);
    bool marked = list.Selected(index) || list.ListIndex() == index;
    rows.push_back((marked ? "> " : "  ") + entries[i]);
  }
  if (end - begin < entries.size()) rows.push_back("  ... " + std::to_string(entries.size()) + " entries");
  if (rows.empty()) rows.emplace_back(kFieldWidth, ' ');
  return Framed("", rows);
}

std::string DrawBar(const ProgressBar& bar) {
  std::size_t filled = kBarWidth * static_cast<std::size_t>(bar.Value()) / static_cast<std::size_t>(bar.Max());
  return "[" + std::string(filled, '#') + std::string(kBarWidth - filled, '.') + "] " + std::to_string(bar.Value()) +
         "/" + std::to_string(bar.Max());
}

// The row in the middle, a character for so many pixels: blank where nothing but the background is.
std::string DrawPicture(const PictureBox& picture) {
  constexpr int kPixels = 4;
  std::string row = "[";
  for (int column = kPixels / 2; picture.Rows() > 0 && column < picture.Columns(); column += kPixels) {
    row += picture.PixelAt(column, picture.Rows() / 2) == picture.BackColor() ? ' ' : '#';
  }
  return row + "]";
}

std::string DrawCombo(const ComboBox& combo) {
  int index = combo.ListIndex();
  std::string chosen = index < 0 ? "" : combo.Entries()[static_cast<std::size_t>(index)];
  return "[" + Padded(chosen, kFieldWidth) + " v]";
}

Block DrawControl(const Control& control) {
  std::string caption = PlainCaption(control.Caption());
  Block block;
  switch (control.kind()) {
    case ControlKind::Frame:
      block = Framed(caption, {});
      break;
    case ControlKind::Label:
      block = Lines(caption);
      break;
    case ControlKind::Link:
      block = {"<" + caption + ">"};
      break;
    case ControlKind::Button:
      block = {"[ " + caption + " ]"};
      break;
    case ControlKind::CheckBox:
      block = {(static_cast<const CheckBox&>(control).Value() != 0 ? "[x] " : "[ ] ") + caption};
      break;
    case ControlKind::Option:
      block = {(static_cast<const OptionButton&>(control).Value() ? "(*) " : "( ) ") + caption};
      break;
    case ControlKind::ListBox:
      block = DrawList(static_cast<const ListBox&>(control));
      break;
    case ControlKind::ComboBox:
      block = {DrawCombo(static_cast<const ComboBox&>(control))};
      break;
    case ControlKind::TextBox:
      block = {"|" + Padded(static_cast<const TextBox&>(control).Text(), kFieldWidth) + "|"};
      break;
    case ControlKind::ProgressBar:
      block = {DrawBar(static_cast<const ProgressBar&>(control))};
      break;
    case ControlKind::PictureBox:
      block = {DrawPicture(static_cast<const PictureBox&>(control))};
      break;
    case ControlKind::TabStrip:
    case ControlKind::Timer:
    case ControlKind::MenuItem:
      return {};
  }
  if (!control.Enabled()) block.front() += " (disabled)";
  return block;
}

Block DrawLayout(const Layout& layout);

Block DrawColumn(const std::vector<Layout>& parts) {
  Block block;
  for (const Layout& part : parts) Append(block, DrawLayout(part));
  return block;
}

Block DrawRow(const std::vector<Layout>& parts) {
  Block row;
  for (const Layout& part : parts) {
    Block block = DrawLayout(part);
    if (block.empty()) continue;
    std::size_t left = row.empty() ? 0 : Width(row) + kGap;
    row.resize(std::max(row.size(), block.size()));
    for (std::size_t i = 0; i < block.size(); ++i) row[i] = Padded(row[i], left) + block[i];
  }
  return row;
}

Block DrawTabs(const TabStrip& strip, const std::vector<Layout>& pages) {
  std::string tabs;
  for (std::size_t i = 0; i < strip.Pages().size(); ++i) {
    std::string caption = PlainCaption(strip.Pages()[i].caption);
    tabs += static_cast<int>(i) == strip.Tab() ? "[" + caption + "] " : " " + caption + "  ";
  }
  Block block{tabs};
  auto front = static_cast<std::size_t>(strip.Tab());
  Append(block, Framed("", front < pages.size() ? DrawLayout(pages[front]) : Block{}));
  return block;
}

Block DrawLayout(const Layout& layout) {
  if (layout.control != nullptr && !layout.control->Visible()) return {};
  switch (layout.kind) {
    case Layout::Kind::Single:
      return layout.control == nullptr ? Block{} : DrawControl(*layout.control);
    case Layout::Kind::Row:
      return DrawRow(layout.parts);
    case Layout::Kind::Column:
    case Layout::Kind::Page:
      return DrawColumn(layout.parts);
    case Layout::Kind::Group:
      return Framed(layout.control == nullptr ? "" : PlainCaption(layout.control->Caption()), DrawColumn(layout.parts));
    case Layout::Kind::Tabs:
      return layout.control == nullptr ? DrawColumn(layout.parts)
                                       : DrawTabs(static_cast<const TabStrip&>(*layout.control), layout.parts);
  }
  return {};
}

Block DrawPopup(const MenuItem& menu) {
  Block items;
  for (const MenuItem* item : menu.children) {
    if (!item->Visible()) continue;
    std::string line = item->Separator() ? "---" : (item->Checked() ? "* " : "  ") + PlainCaption(item->Caption());
    if (!item->children.empty()) line += " >";
    if (!item->shortcut.empty()) line += "  " + item->shortcut;
    if (!item->Enabled()) line += " (disabled)";
    items.push_back(line);
  }
  return Framed(PlainCaption(menu.Caption()), items);
}

Block DrawMenus(const Form& form) {
  std::string bar;
  Block popups;
  for (const MenuItem* menu : form.Menus()) {
    if (menu->popup) {
      if (menu->open) Append(popups, DrawPopup(*menu));
    } else if (menu->Visible()) {
      bar += (bar.empty() ? "" : "   ") + PlainCaption(menu->Caption()) + (menu->Enabled() ? "" : " (disabled)");
    }
  }
  Block block;
  if (!bar.empty()) block.push_back(bar);
  Append(block, popups);
  return block;
}

}  // namespace

std::size_t Columns(std::string_view text) {
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

std::string PlainCaption(std::string_view caption) {
  std::string plain;
  for (std::size_t i = 0; i < caption.size(); ++i) {
    if (caption[i] == '&' && ++i == caption.size()) break;
    plain += caption[i];
  }
  return plain;
}

std::string Draw(const Form& form) {
  Block content = DrawMenus(form);
  const Layout& layout = form.Arrangement();
  if (layout.parts.empty() && layout.control == nullptr) {
    for (const Control* control : form.Controls()) {
      if (control->Visible()) Append(content, DrawControl(*control));
    }
  } else {
    Append(content, DrawLayout(layout));
  }
  std::string text;
  for (std::string& line : Framed(form.Caption(), content)) text += line + "\n";
  return text;
}

}  // namespace qb
