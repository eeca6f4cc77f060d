// One standard Windows control that shows a control of a form and passes on what the user does to it.
#pragma once

#include <string>
#include <vector>

#include "platform/win32/windows_api.h"
#include "view/win32/drawn_controls.h"
#include "view/win32/metrics.h"
#include "widgets/controls.h"

namespace qb::win32 {

class NativeControl {
 public:
  // Makes the window as a hidden child of `parent`. `caption` is that of the control, with its access key underlined;
  // `group_start` begins a group for the arrow keys.
  NativeControl(Control& control, const std::string& caption, HWND parent, int id, bool group_start);
  ~NativeControl();
  NativeControl(const NativeControl&) = delete;
  NativeControl& operator=(const NativeControl&) = delete;

  Control& control() const { return control_; }
  HWND window() const { return window_; }
  // Takes font and picture at a resolution. The caller has the window drawn anew.
  void SetMetrics(const Metrics& metrics);
  // The smallest size at which all of the control is seen, where the native one knows it better than `measured`.
  Extent Smallest(const Extent& measured) const;
  bool FitsInto(const Extent& room) const { return own_size_.width <= room.width && own_size_.height <= room.height; }
  // Gives a strip its tabs, with the access keys in their captions underlined.
  void MakeTabs(const std::vector<std::string>& captions);
  // Shows the caption with its access key underlined.
  void ShowAccessKey(const std::string& caption);
  // Moves and shows the window where that is a change, and says whether it was. The first time it also takes its place
  // in the order of windows, behind `before`. The caller has the parent drawn anew afterwards, once for all.
  bool Put(const Box& box, bool shown, HWND before);
  // Makes the window show the present properties.
  void Refresh();
  // What the control reported to its parent: the code of a WM_COMMAND or WM_NOTIFY. The form may be gone
  // when this returns.
  void Act(UINT code);

 private:
  struct Kind;
  static const Kind& KindOf(const Control& control);

  void RefreshLabel();
  void RefreshPicture();
  void RefreshPushButton();
  void RefreshMark();
  void RefreshList();
  void RefreshCombo();
  void RefreshText();
  void RefreshTabs();
  void RefreshProgress();
  void RefreshNothing() {}
  void ActClick(UINT code);
  void ActList(UINT code);
  void ActCombo(UINT code);
  void ActText(UINT code);
  void ActLink(UINT code);
  void ActTabs(UINT code);
  void ActNothing(UINT /*code*/) {}

  LRESULT Send(UINT message, WPARAM wparam = 0, LPARAM lparam = 0) const;
  LRESULT SendText(UINT message, WPARAM wparam, const std::string& text) const;
  void SyncEntries(const std::vector<std::string>& entries, UINT add, UINT remove, UINT clear);
  void MeasureTabs(int room_beside);
  void MeasureLink();
  void WidenList(const std::string& entry);

  Control& control_;
  HWND window_ = nullptr;
  std::string caption_;        // of the control, as it was shown last
  std::string shown_caption_;  // with its access key
  HICON icon_ = nullptr;
  bool enabled_ = true;
  Box box_;
  Extent own_size_;  // of a strip, all of its tabs in one row; of a link, its text; of others none
  bool shown_ = false;
  bool placed_ = false;               // in the order of windows
  bool refreshing_ = false;           // the window changes because a property did, not by the user
  std::vector<std::string> entries_;  // what the native list holds
  int widest_entry_ = 0;              // pixels
  bool bold_ = false;
  GdiObject own_font_, picture_;  // of a label whose weight was changed, and of a picture box
};

}  // namespace qb::win32
