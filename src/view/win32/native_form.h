// One form as a native window.
#pragma once

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "platform/win32/windows_api.h"
#include "view/win32/metrics.h"
#include "view/win32/native_control.h"
#include "view/win32/native_menu.h"
#include "view/win32/page_background.h"
#include "view/win32/tool_tips.h"
#include "widgets/form.h"

namespace qb::win32 {

class NativeForm {
 public:
  // What a form's window has to ask the view.
  class Host {
   public:
    virtual ~Host() = default;
    // The window changed its place in the order of windows.
    virtual void OrderChanged(Form& form) = 0;
    // True for the program's first window: it is asked when the Windows session ends.
    virtual bool IsMain(const Form& form) const = 0;
  };

  // Makes the window, hidden. `main` has a button on the task bar.
  NativeForm(Form& form, Host& host, HWND owner, bool main);
  ~NativeForm();
  NativeForm(const NativeForm&) = delete;
  NativeForm& operator=(const NativeForm&) = delete;

  HWND window() const { return window_; }
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
  void PopupMenu(MenuItem& menu);

 private:
  class OwnChange;

  static LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  LRESULT Handle(UINT message, WPARAM wparam, LPARAM lparam);
  LRESULT Default(UINT message, WPARAM wparam, LPARAM lparam) const;

  void MakeControls(const Layout& part, bool on_page);
  void AddControl(Control& control, bool on_page);
  Placement Arranged() const { return {form_.Arrangement(), *metrics_, metrics_->spacing()}; }
  SIZE SmallestWindow() const;
  void LayOut();
  void GrowToFit();
  void ChangeResolution(UINT dpi, const RECT& suggested);
  void TellForm();

  void OnCommand(int id, UINT code, bool from_control);
  LRESULT OnNotify(LPARAM lparam);
  void OnFocus();
  bool PaintPage(HDC dc, HWND control) const;
  void EraseBackground(HDC dc) const;
  void ClickMenu(MenuItem* item);
  int DefaultButton() const;
  bool TurnPage(const MSG& message);
  NativeControl* ControlOf(int id) const;
  NativeControl* ControlOf(const Control& control) const;
  NativeControl* FrontTabs() const;

  Form& form_;
  Host& host_;
  const bool main_;
  DWORD style_ = 0, ex_style_ = 0;
  HWND window_ = nullptr;
  std::unique_ptr<Metrics> metrics_;
  std::vector<std::unique_ptr<NativeControl>> controls_;  // the number of a window is its index, from kFirstId
  std::set<HWND> on_page_;
  std::unique_ptr<ToolTips> tips_;
  NativeMenu menu_;
  PageBackground page_background_;
  std::wstring tab_tip_;
  HWND focus_ = nullptr;  // where the keyboard was when the window was left
  bool sized_ = false;    // the window has the size of its content, or the one that the user gave it
  bool layout_posted_ = false;
  int own_changes_ = 0;  // changes of the window that the program itself is making
};

}  // namespace qb::win32
