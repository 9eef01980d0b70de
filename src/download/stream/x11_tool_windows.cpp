// SPDX-License-Identifier: MIT
#include "download/stream/x11_tool_windows.h"

#include <QByteArray>
#include <QHash>
#include <array>
#include <cstdlib>
#include <cstring>
#include <optional>

#include <xcb/xcb.h>
#include <xcb/xtest.h>

namespace zentorin {
namespace {

constexpr int kMaxDepth = 4;                // frames of window managers lie around the windows
constexpr std::size_t kMaxWindows = 4'000;  // of one level
constexpr uint32_t kMaxPropertyWords = 256;
constexpr uint32_t kIconic = 3;  // of the convention between clients and window managers
constexpr uint32_t kIconicHint = 1U << 1U;

// What the library hands over is the caller's to free.
struct Freed {
  void operator()(void* reply) const { std::free(reply); }
};
template <typename Reply>
using Owned = std::unique_ptr<Reply, Freed>;

}  // namespace

// One connection with the names and extensions that are asked for on it.
class X11ToolWindows::Display {
 public:
  Display() : connection_(xcb_connect(nullptr, &screenNumber_)) {
    if (Broken()) return;
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection_));
    for (int i = 0; i < screenNumber_ && screens.rem > 0; ++i) xcb_screen_next(&screens);
    if (screens.rem > 0) root_ = screens.data->root;
  }
  Display(const Display&) = delete;
  Display& operator=(const Display&) = delete;
  ~Display() { xcb_disconnect(connection_); }

  bool Broken() const { return xcb_connection_has_error(connection_) != 0; }
  xcb_connection_t* Connection() const { return connection_; }
  xcb_window_t Root() const { return root_; }

  xcb_atom_t Atom(const QByteArray& name) {
    const auto known = atoms_.constFind(name);
    if (known != atoms_.constEnd()) return *known;
    const auto cookie =
        xcb_intern_atom(connection_, 0, static_cast<uint16_t>(name.size()), name.constData());
    const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection_, cookie, nullptr));
    const xcb_atom_t atom = reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    atoms_.insert(name, atom);
    return atom;
  }

  std::vector<xcb_window_t> ChildrenOf(xcb_window_t window) const {
    const Owned<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection_, xcb_query_tree(connection_, window), nullptr));
    if (!tree) return {};
    const xcb_window_t* first = xcb_query_tree_children(tree.get());
    return {first, first + xcb_query_tree_children_length(tree.get())};
  }

  // Asks for a window's description; the answers are taken by Describe(), after all windows of a
  // level were asked for: each answer on its own would be a way to the display and back.
  struct Questions {
    xcb_window_t window = 0;
    std::array<xcb_get_property_cookie_t, 5> properties{};
    xcb_get_window_attributes_cookie_t attributes{};
  };

  Questions AskFor(xcb_window_t window) {
    static const std::array<QByteArray, 5> kNames = {"WM_CLASS", "_NET_WM_NAME", "WM_NAME",
                                                     "_NET_WM_PID", "WM_TRANSIENT_FOR"};
    Questions questions;
    questions.window = window;
    for (std::size_t i = 0; i < kNames.size(); ++i) {
      questions.properties[i] = xcb_get_property(connection_, 0, window, Atom(kNames[i]),
                                                 XCB_ATOM_ANY, 0, kMaxPropertyWords);
    }
    questions.attributes = xcb_get_window_attributes(connection_, window);
    return questions;
  }

  // Nothing for a window without a class or one that is gone.
  std::optional<ToolWindow> Describe(const Questions& questions) const {
    std::array<QByteArray, 5> values;
    for (std::size_t i = 0; i < values.size(); ++i) values[i] = Property(questions.properties[i]);
    const Owned<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(connection_, questions.attributes, nullptr));
    const auto& [windowClass, fullTitle, plainTitle, processId, owner] = values;
    const QList<QByteArray> classes = windowClass.split('\0');
    if (classes.size() < 2 || !attributes) return std::nullopt;
    return ToolWindow{.id = questions.window,
                      .instance = QString::fromLatin1(classes[0]),
                      .className = QString::fromLatin1(classes[1]),
                      .title = QString::fromUtf8(fullTitle.isEmpty() ? plainTitle : fullTitle),
                      .processId = Number(processId),
                      .owner = Number(owner),
                      .visible = attributes->map_state == XCB_MAP_STATE_VIEWABLE};
  }

  // The key that a letter stands on; 0 when there is none.
  xcb_keycode_t KeyOf(char16_t letter) const {
    const xcb_setup_t* setup = xcb_get_setup(connection_);
    const auto count = static_cast<uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const Owned<xcb_get_keyboard_mapping_reply_t> mapping(xcb_get_keyboard_mapping_reply(
        connection_, xcb_get_keyboard_mapping(connection_, setup->min_keycode, count), nullptr));
    if (!mapping || mapping->keysyms_per_keycode == 0) return 0;
    const xcb_keysym_t wanted = QChar(letter).toLower().unicode();
    const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(mapping.get());
    for (int key = 0; key < count; ++key, symbols += mapping->keysyms_per_keycode) {
      if (*symbols == wanted) return static_cast<xcb_keycode_t>(setup->min_keycode + key);
    }
    return 0;
  }

  bool HasKeyTest() const {
    const auto* extension = xcb_get_extension_data(connection_, &xcb_test_id);
    return extension != nullptr && extension->present != 0;
  }

  bool HasFocus(xcb_window_t window) const {
    const Owned<xcb_get_input_focus_reply_t> focus(
        xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
    return focus && focus->focus == window;
  }

  void SendMessage(xcb_window_t to, uint32_t mask, xcb_window_t window, const QByteArray& type,
                   uint32_t first) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = Atom(type);
    event.data.data32[0] = first;
    xcb_send_event(connection_, 0, to, mask, reinterpret_cast<const char*>(&event));
  }

  void SendKey(xcb_window_t window, uint8_t type, xcb_keycode_t key) const {
    xcb_key_press_event_t event{};
    event.response_type = type;
    event.detail = key;
    event.root = root_;
    event.event = window;
    event.same_screen = 1;
    xcb_send_event(connection_, 1, window, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&event));
  }

  // Sends all, and forgets what comes back unasked: errors of windows that are gone.
  void Finish() const {
    xcb_flush(connection_);
    while (Owned<xcb_generic_event_t>(xcb_poll_for_event(connection_))) {
    }
  }

 private:
  // Empty when the window has no such property.
  QByteArray Property(xcb_get_property_cookie_t cookie) const {
    const Owned<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection_, cookie, nullptr));
    if (!reply) return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            xcb_get_property_value_length(reply.get())};
  }

  static quint32 Number(const QByteArray& value) {
    quint32 number = 0;
    if (value.size() >= static_cast<qsizetype>(sizeof number)) {
      std::memcpy(&number, value.constData(), sizeof number);
    }
    return number;
  }

  int screenNumber_ = 0;
  xcb_connection_t* connection_;
  xcb_window_t root_ = 0;
  QHash<QByteArray, xcb_atom_t> atoms_;
};

X11ToolWindows::X11ToolWindows() = default;
X11ToolWindows::~X11ToolWindows() = default;

X11ToolWindows::Display* X11ToolWindows::Connected() {
  if (display_ && display_->Broken()) display_.reset();
  if (!display_ && !qEnvironmentVariableIsEmpty("DISPLAY")) display_ = std::make_unique<Display>();
  return display_ && !display_->Broken() ? display_.get() : nullptr;
}

bool X11ToolWindows::Available() {
  return Connected() != nullptr;
}

// Every window that has a class, whatever lies around it. What lies in such a window is its own.
std::vector<ToolWindow> X11ToolWindows::List() {
  Display* display = Connected();
  if (display == nullptr) return {};
  std::vector<ToolWindow> found;
  std::vector<xcb_window_t> level = display->ChildrenOf(display->Root());
  for (int depth = 0; depth < kMaxDepth && !level.empty(); ++depth) {
    if (level.size() > kMaxWindows) level.resize(kMaxWindows);
    std::vector<Display::Questions> questions;
    questions.reserve(level.size());
    for (const xcb_window_t id : level) questions.push_back(display->AskFor(id));
    std::vector<xcb_window_t> next;
    for (const Display::Questions& asked : questions) {
      if (auto window = display->Describe(asked)) {
        found.push_back(*std::move(window));
      } else if (next.size() < kMaxWindows) {
        const auto children = display->ChildrenOf(asked.window);
        next.insert(next.end(), children.begin(), children.end());
      }
    }
    level = std::move(next);
  }
  display->Finish();
  return found;
}

std::optional<ToolWindow> X11ToolWindows::Find(const ToolWindow& window) {
  Display* display = Connected();
  if (display == nullptr) return std::nullopt;
  auto now = display->Describe(display->AskFor(window.id));
  display->Finish();
  return now && now->IsSameAs(window) ? now : std::nullopt;
}

// A key that is really pressed goes to the window that has the focus: only when that is the right
// one. Else the window is told of a key press, which most programs take as well.
void X11ToolWindows::PressKey(quint32 window, char16_t letter) {
  Display* display = Connected();
  if (display == nullptr) return;
  const xcb_keycode_t key = display->KeyOf(letter);
  if (key == 0) return;
  xcb_connection_t* connection = display->Connection();
  const uint32_t above = XCB_STACK_MODE_ABOVE;
  xcb_configure_window(connection, window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
  xcb_set_input_focus(connection, XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
  const bool real = display->HasKeyTest() && display->HasFocus(window);
  for (const uint8_t type : std::array<uint8_t, 2>{XCB_KEY_PRESS, XCB_KEY_RELEASE}) {
    if (real) {
      xcb_test_fake_input(connection, type, key, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    } else {
      display->SendKey(window, type, key);
    }
  }
  display->Finish();
}

void X11ToolWindows::Show(quint32 window, bool shown) {
  Display* display = Connected();
  if (display == nullptr) return;
  xcb_connection_t* connection = display->Connection();
  constexpr uint32_t kToManager =
      XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
  if (shown) {
    // A hidden window comes back minimised at once, a visible one is minimised by the manager.
    const std::array<uint32_t, 9> hints = {kIconicHint, 0, kIconic};
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_HINTS,
                        XCB_ATOM_WM_HINTS, 32, hints.size(), hints.data());
    xcb_map_window(connection, window);
    display->SendMessage(display->Root(), kToManager, window, "WM_CHANGE_STATE", kIconic);
  } else {
    xcb_unmap_window(connection, window);
    // By this event a window manager learns that the window is withdrawn for good.
    xcb_unmap_notify_event_t event{};
    event.response_type = XCB_UNMAP_NOTIFY;
    event.event = display->Root();
    event.window = window;
    xcb_send_event(connection, 0, display->Root(), kToManager,
                   reinterpret_cast<const char*>(&event));
  }
  display->Finish();
}

void X11ToolWindows::Close(quint32 window) {
  Display* display = Connected();
  if (display == nullptr) return;
  display->SendMessage(window, XCB_EVENT_MASK_NO_EVENT, window, "WM_PROTOCOLS",
                       display->Atom("WM_DELETE_WINDOW"));
  display->Finish();
}

// By the window and not by its process id, which may be one of another name space.
void X11ToolWindows::EndProgram(quint32 window) {
  Display* display = Connected();
  if (display == nullptr) return;
  xcb_kill_client(display->Connection(), window);
  display->Finish();
}

}  // namespace zentorin
