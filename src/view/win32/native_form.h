// One form as a native window.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/win32/windows_api.h"
#include "view/win32/metrics.h"
#include "view/win32/native_control.h"
#include "view/win32/native_menu.h"
#include "view/win32/page_background.h"
#include "view/win32/scroller.h"
#include "view/win32/tool_tips.h"
#include "widgets/form.h"

namespace qb::win32 {

// Owned by shared pointers: its window goes at once when the form is unloaded, also by one of the window's own
// handlers, and the object itself when the last of its routines has returned.
class NativeForm : public std::enable_shared_from_this<NativeForm>, private Measurer {
 public:
  // What a form's window has to ask the view.
  class Host {
   public:
    virtual ~Host() = default;
    // The window changed its place in the order of windows.
    virtual void OrderChanged(Form& form) = 0;
    // True for the program's first window: it is asked when the Windows session ends.
    virtual bool IsMain(const Form& form) const = 0;
    // True while a window may only answer: what makes the form act waits for the next pump.
    virtual bool OnlyAnswering() const = 0;
  };

  // `main` has a button on the task bar.
  NativeForm(Form& form, Host& host, HWND owner, bool main) : form_(form), host_(host), owner_(owner), main_(main) {}
  ~NativeForm() override;
  NativeForm(const NativeForm&) = delete;
  NativeForm& operator=(const NativeForm&) = delete;

  // Makes the window, hidden, unless it is there. One that is loaded and never shown costs none.
  void Make();
  // Destroys the window, with its menu if one is open. Nothing of the form is reached any more.
  void Close();

  HWND window() const { return window_; }  // null before it is made and once it is closed
  Form& form() const { return form_; }

  void ShowOrHide();
  void ApplyState();
  void ApplyCaption();
  void TakeFocus();
  void Center();
  void Repaint();
  void ControlChanged(Control& control);
  // Keys that mean something to the window as a whole. True if the message is done with.
  bool TakeMessage(MSG& message);
  // The mouse moves over that window of a control, at `place` in its client area: its tip is made now, before the
  // control hears of the mouse.
  void ShowTipOf(HWND control, POINT place);
  void PopupMenu(MenuItem& menu);
  // In pixels, on one line. After Make.
  int TextWidth(const std::string& text) const { return metrics_->TextExtent(text).width; }

 private:
  static constexpr int kFirstId = 100;  // above IDOK, IDCANCEL and their kin
  static constexpr UINT kLayOutAgain = WM_APP;
  // What a window that could only answer put off: a control's news, by its number and code, and the window's own.
  static constexpr UINT kActNow = WM_APP + 1;
  static constexpr UINT kTellNow = WM_APP + 2;

  // While one stands, what happens to the window is the program's doing and no news for the form.
  class OwnChange {
   public:
    explicit OwnChange(NativeForm& form) : form_(form) { ++form_.own_changes_; }
    ~OwnChange() { --form_.own_changes_; }
    OwnChange(const OwnChange&) = delete;
    OwnChange& operator=(const OwnChange&) = delete;

   private:
    NativeForm& form_;
  };

  static LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam);
  LRESULT Default(UINT message, WPARAM wparam, LPARAM lparam) const;

  // A control of the form, whose window is made when it is to be seen for the first time: a page that is never turned
  // to costs none.
  struct Slot {
    Control* control;
    bool on_page;         // of a tab strip
    bool group_start;     // for the arrow keys
    std::string caption;  // these two as they were when the controls were placed last
    bool visible;
    bool in_sight;            // on no page or the one in front, and not hidden, when the controls were placed last
    std::string key_caption;  // the caption with its access key; empty for a control that takes none
    std::unique_ptr<NativeControl> native;
  };
  void AddSlots(const Layout& part, bool on_page);
  void AddSlot(Control& control, bool on_page);
  void MakeStrips();
  NativeControl& MakeControl(std::size_t index);
  HWND WindowBefore(std::size_t index) const;
  Extent Smallest(const Control& control) const override;
  int HeightAt(const Control& control, int width) const override;
  Placement Arranged() const { return {form_.Arrangement(), *this, metrics_->spacing()}; }
  Extent ContentSize(const Placement& placement) const;
  RECT WorkArea() const;  // of the window's screen, without the task bar
  // What that area allows of the content.
  ScreenFit FitOnScreen(const RECT& work) const;
  SIZE WindowRound(Extent area) const;
  void LayOut();
  void LayOutLater();
  void GrowToFit();
  void ChangeResolution(UINT dpi, const RECT& suggested);
  void Scroll(UINT message, WPARAM wparam);
  void ScrollToFocus();
  void KeepFocusInSight();
  std::vector<std::string> BarCaptions() const;
  std::vector<std::string> TabCaptions(const Control& strip) const;
  void ShareAccessKeys();
  bool TakesAccessKey(std::size_t index) const;
  void BuildMenu();
  void TellForm();

  void OnCommand(int id, UINT code, bool from_control);
  LRESULT OnNotify(LPARAM lparam);
  void OnFocus();
  bool ShowHand(HWND control) const;
  bool PaintPage(HDC dc, HWND control) const;
  void EraseBackground(HDC dc);
  static void Press(const Slot& slot);
  void ClickMenu(MenuItem* item);
  int DefaultButton() const;
  bool TurnPage(const MSG& message);
  const Slot* SlotOf(int id) const;
  std::size_t IndexOf(const Control& control) const;
  // Null where no window is made yet, and for what is no control of the form.
  NativeControl* ControlOf(int id) const;
  NativeControl* ControlOf(const Control& control) const;
  std::vector<TabStrip*> FrontTabs() const;

  Form& form_;
  Host& host_;
  const HWND owner_;
  const bool main_;
  DWORD style_ = 0, ex_style_ = 0;
  HWND window_ = nullptr;
  std::unique_ptr<Metrics> metrics_;
  std::vector<Slot> slots_;  // the number of a window is its index, from kFirstId
  std::unique_ptr<ToolTips> tips_;
  NativeMenu menu_;
  MenuItem* open_popup_ = nullptr;
  bool in_menu_bar_ = false;  // the user is in the menu bar, which must stay as it is meanwhile
  bool menu_stale_ = false;
  Scroller scroller_;
  PageBackground page_background_;
  HWND focus_ = nullptr;  // where the keyboard was when the window was left
  bool sized_ = false;    // the window has the size of its content, or the one that the user gave it
  bool centered_ = false;
  bool layout_posted_ = false;
  int own_changes_ = 0;  // changes of the window that the program itself is making
};

}  // namespace qb::win32
