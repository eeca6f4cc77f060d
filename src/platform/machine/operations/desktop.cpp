// Windows of this and other programs, and message boxes, on a machine.
#include "platform/machine/operation.h"
#include "platform/machine/operations/operations.h"

namespace qb::machine {
namespace {

struct BoxKind {
  std::uint32_t icon;
  const char* kind;
};

constexpr std::uint32_t kIconMask = 0xF0, kButtonMask = 0xF;
constexpr BoxKind kBoxKinds[] = {{kBoxStop, "stop"}, {kBoxQuestion, "question"}, {kBoxInformation, "information"}};

WindowHandle AsHandle(std::uint64_t window) {
  return static_cast<WindowHandle>(window);
}

class MachineDesktop final : public Desktop {
 public:
  MachineDesktop(MachineState& state, std::function<void()>& on_box) : state_(state), on_box_(on_box) {}

  WindowHandle FindWindowA(std::optional<std::string_view> class_name, std::optional<std::string_view> title) override {
    return gate_.Call<"FindWindowA">(class_name, title).ReturnsValue([&] {
      return AsHandle(windows_.FirstChild(0, 0, class_name, title));
    });
  }

  WindowHandle FindWindowExA(WindowHandle parent, WindowHandle after, std::optional<std::string_view> class_name,
                             std::optional<std::string_view> title) override {
    return gate_.Call<"FindWindowExA">(parent, after, class_name, title).ReturnsValue([&] {
      return AsHandle(windows_.FirstChild(Plain(parent), Plain(after), class_name, title));
    });
  }

  bool EnumWindows(const std::function<bool(WindowHandle)>& visit) override {
    return gate_.Call<"EnumWindows">(kStructure, 0).ReturnsBool([&] {
      for (std::uint64_t window : windows_.OfDesktop()) {
        // What is done to one window may close another.
        if (windows_.Has(window) && !visit(AsHandle(window))) return false;
      }
      return true;
    });
  }

  WindowHandle GetWindow(WindowHandle window, std::uint32_t relation) override {
    return gate_.Call<"GetWindow">(window, relation).ReturnsValue([&] {
      return AsHandle(relation == kWindowPrevious ? windows_.Above(Plain(window)) : 0);
    });
  }

  std::uint32_t GetClassNameA(WindowHandle window, TextBuffer& name) override {
    return gate_.Call<"GetClassNameA">(window, Bytes(name), name.size()).ReturnsValue([&] {
      const OtherWindow* found = windows_.Find(Plain(window));
      return found == nullptr ? 0 : name.FillCut(found->class_name);
    });
  }

  std::uint32_t GetWindowTextA(WindowHandle window, TextBuffer& title) override {
    return gate_.Call<"GetWindowTextA">(window, Bytes(title), title.size()).ReturnsValue([&] {
      const OtherWindow* found = windows_.Find(Plain(window));
      return found == nullptr ? 0 : title.FillCut(found->title);
    });
  }

  std::uint32_t GetWindowTextLengthA(WindowHandle window) override {
    return gate_.Call<"GetWindowTextLengthA">(window).ReturnsValue([&] {
      const OtherWindow* found = windows_.Find(Plain(window));
      return static_cast<std::uint32_t>(found == nullptr ? 0 : Utf16Length(found->title));
    });
  }

  Error GetWindowPlacement(WindowHandle window, WindowPlacement& placement) override {
    return gate_.Call<"GetWindowPlacement">(window, kStructure).ReturnsBool([&] {
      const Error error = CheckPlacement(window, placement);
      if (Ok(error)) placement = windows_.Placement(Plain(window));
      return error;
    });
  }

  Error SetWindowPlacement(WindowHandle window, const WindowPlacement& placement) override {
    return gate_.Call<"SetWindowPlacement">(window, kStructure).ReturnsBool([&] {
      const Error error = CheckPlacement(window, placement);
      if (Ok(error)) windows_.SetPlacement(Plain(window), placement);
      return error;
    });
  }

  bool ShowWindow(WindowHandle window, std::uint32_t command) override {
    return gate_.Call<"ShowWindow">(window, command).ReturnsBool([&] { return windows_.Show(Plain(window), command); });
  }

  bool OpenIcon(WindowHandle window) override {
    return gate_.Call<"OpenIcon">(window).ReturnsBool([&] { return Act(window, &Windows::Restore); });
  }

  bool SetForegroundWindow(WindowHandle window) override {
    return gate_.Call<"SetForegroundWindow">(window).ReturnsBool([&] { return Act(window, &Windows::Raise); });
  }

  bool SetWindowTextA(WindowHandle window, std::string_view text) override {
    return gate_.Call<"SetWindowTextA">(window, text).ReturnsBool([&] {
      windows_.SetTitle(Plain(window), text);
      return windows_.Has(Plain(window));
    });
  }

  BoxAnswer MessageBoxA(WindowHandle owner, std::string_view text, std::string_view title,
                        std::uint32_t type) override {
    if (on_box_) on_box_();
    return gate_.Call<"MessageBoxA">(owner, text, title, type).ReturnsValue([&] {
      ShownBox box{"information", std::string(title), std::string(text), "ok"};
      for (const BoxKind& row : kBoxKinds) {
        if ((type & kIconMask) == row.icon) box.kind = row.kind;
      }
      BoxAnswer answer = BoxAnswer::Ok;
      if ((type & kButtonMask) == kBoxYesNo) {
        box.answer = state_.TakeAnswer().value_or("no") == "yes" ? "yes" : "no";
        answer = box.answer == "yes" ? BoxAnswer::Yes : BoxAnswer::No;
      }
      state_.boxes.push_back(std::move(box));
      return answer;
    });
  }

 private:
  bool Act(WindowHandle window, void (Windows::*action)(std::uint64_t)) {
    const bool there = windows_.Has(Plain(window));
    (windows_.*action)(Plain(window));
    return there;
  }
  Error CheckPlacement(WindowHandle window, const WindowPlacement& placement) const {
    if (!windows_.Has(Plain(window))) return Error::InvalidWindow;
    return placement.length == kPlacementLength ? Error::Success : Error::InvalidParameter;
  }

  MachineState& state_;
  Gate& gate_ = state_.gate;
  Windows& windows_ = state_.windows;
  std::function<void()>& on_box_;
};

}  // namespace

std::unique_ptr<Desktop> MakeDesktop(MachineState& state, std::function<void()>& on_box) {
  return std::make_unique<MachineDesktop>(state, on_box);
}

}  // namespace qb::machine
