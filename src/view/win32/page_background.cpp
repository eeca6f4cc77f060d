#include "view/win32/page_background.h"

#include <optional>

namespace qb::win32 {

namespace {

constexpr int kTabBody = 10;  // TABP_BODY of the visual style's class "Tab"
constexpr int kSample = 32;   // pixels; the body is of one colour but for its edge

// uxtheme.dll is no known DLL, so it is taken from the system folder by hand and not by the import table.
class VisualStyle {
 public:
  explicit VisualStyle(HWND window)
      : library_(::LoadLibraryExW(L"uxtheme.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32)) {
    if (const auto open = Get<HANDLE(WINAPI*)(HWND, LPCWSTR)>("OpenThemeData")) theme_ = open(window, L"Tab");
  }
  ~VisualStyle() {
    if (const auto close = Get<HRESULT(WINAPI*)(HANDLE)>("CloseThemeData"); close && theme_ != nullptr) close(theme_);
    if (library_ != nullptr) ::FreeLibrary(library_);
  }
  VisualStyle(const VisualStyle&) = delete;
  VisualStyle& operator=(const VisualStyle&) = delete;

  std::optional<COLORREF> PageColor() const {
    const auto draw = Get<HRESULT(WINAPI*)(HANDLE, HDC, int, int, const RECT*, const RECT*)>("DrawThemeBackground");
    if (theme_ == nullptr || draw == nullptr) return std::nullopt;
    HDC screen = ::GetDC(nullptr);
    HDC dc = ::CreateCompatibleDC(screen);
    HBITMAP bitmap = ::CreateCompatibleBitmap(screen, kSample, kSample);
    HGDIOBJ old = ::SelectObject(dc, bitmap);
    const RECT all{0, 0, kSample, kSample};
    ::FillRect(dc, &all, ::GetSysColorBrush(COLOR_BTNFACE));
    const HRESULT drawn = draw(theme_, dc, kTabBody, 0, &all, nullptr);
    const COLORREF color = ::GetPixel(dc, kSample / 2, kSample / 2);
    ::SelectObject(dc, old);
    ::DeleteObject(bitmap);
    ::DeleteDC(dc);
    ::ReleaseDC(nullptr, screen);
    if (FAILED(drawn) || color == CLR_INVALID) return std::nullopt;
    return color;
  }

 private:
  template <typename Function>
  Function Get(const char* name) const {
    if (library_ == nullptr) return nullptr;
    return reinterpret_cast<Function>(reinterpret_cast<void*>(::GetProcAddress(library_, name)));
  }

  HMODULE library_;
  HANDLE theme_ = nullptr;
};

}  // namespace

PageBackground::~PageBackground() {
  Forget();
}

void PageBackground::Forget() {
  if (brush_ != nullptr) ::DeleteObject(brush_);
  brush_ = nullptr;
}

HBRUSH PageBackground::Brush(HWND window) {
  if (brush_ == nullptr) {
    brush_ = ::CreateSolidBrush(VisualStyle(window).PageColor().value_or(::GetSysColor(COLOR_BTNFACE)));
  }
  return brush_;
}

}  // namespace qb::win32
