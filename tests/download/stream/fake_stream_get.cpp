// SPDX-License-Identifier: MIT
// Plays StreamGet on a display: shows its windows, waits for keys, reads and writes its settings in
// the folder where it is started.
//   fake_stream_get record     asks, and records once it was told yes
//   fake_stream_get stuck      does nothing, and asks when it has done so for a while
//   fake_stream_get exists     says that the file is there already
//   fake_stream_get hidden     runs without a window
//   fake_stream_get stranger TITLE   another program with a question of that title
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <string>
#include <thread>

#include <unistd.h>
#include <xcb/xcb.h>

namespace {

class Screen {
 public:
  Screen() : connection_(xcb_connect(nullptr, nullptr)) {
    screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
  }

  xcb_window_t Open(const std::string& className, const std::string& title, xcb_window_t owner) {
    const xcb_window_t window = xcb_generate_id(connection_);
    const uint32_t events = XCB_EVENT_MASK_KEY_PRESS;
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window, screen_->root, 0, 0, 200, 100, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen_->root_visual, XCB_CW_EVENT_MASK,
                      &events);
    const std::string classes = className + '\0' + className + '\0';
    Set(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, classes);
    SetTitle(window, title);
    const auto processId = static_cast<uint32_t>(::getpid());
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, Atom("_NET_WM_PID"),
                        XCB_ATOM_CARDINAL, 32, 1, &processId);
    if (owner != 0) {
      xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_TRANSIENT_FOR,
                          XCB_ATOM_WINDOW, 32, 1, &owner);
    }
    xcb_map_window(connection_, window);
    xcb_flush(connection_);
    return window;
  }

  void SetTitle(xcb_window_t window, const std::string& title) {
    Set(window, Atom("_NET_WM_NAME"), Atom("UTF8_STRING"), title);
    xcb_flush(connection_);
  }

  // Waits for the letter Y in that window, then takes it off the display.
  void WaitForYes(xcb_window_t window) {
    while (xcb_generic_event_t* event = xcb_wait_for_event(connection_)) {
      const auto* key = reinterpret_cast<const xcb_key_press_event_t*>(event);
      const bool yes = (event->response_type & 0x7F) == XCB_KEY_PRESS && key->event == window &&
                       SymbolOf(key->detail) == 'y';
      std::free(event);
      if (!yes) continue;
      xcb_destroy_window(connection_, window);
      xcb_flush(connection_);
      return;
    }
    std::exit(1);
  }

  // Until the program is ended.
  void Wait() {
    while (xcb_generic_event_t* event = xcb_wait_for_event(connection_)) std::free(event);
  }

 private:
  xcb_atom_t Atom(const std::string& name) {
    auto* reply = xcb_intern_atom_reply(
        connection_,
        xcb_intern_atom(connection_, 0, static_cast<uint16_t>(name.size()), name.c_str()), nullptr);
    const xcb_atom_t atom = reply->atom;
    std::free(reply);
    return atom;
  }

  void Set(xcb_window_t window, xcb_atom_t property, xcb_atom_t type, const std::string& text) {
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, property, type, 8,
                        static_cast<uint32_t>(text.size()), text.data());
  }

  xcb_keysym_t SymbolOf(xcb_keycode_t key) {
    auto* mapping = xcb_get_keyboard_mapping_reply(
        connection_, xcb_get_keyboard_mapping(connection_, key, 1), nullptr);
    const xcb_keysym_t symbol = xcb_get_keyboard_mapping_keysyms(mapping)[0];
    std::free(mapping);
    return symbol;
  }

  xcb_connection_t* connection_;
  xcb_screen_t* screen_;
};

// A value of the settings; those of this test are in ASCII.
std::string Setting(const std::string& key) {
  std::ifstream file("StreamGet.ini", std::ios::binary);
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with(key)) return line.substr(key.size(), line.size() - key.size() - 1);
  }
  return {};
}

void Note(const std::string& progress) {
  std::ofstream("StreamGet.ini", std::ios::binary | std::ios::app)
      << "ASFPLAY=" << progress << "\r\n";
}

void Record(Screen& screen, xcb_window_t main) {
  screen.WaitForYes(screen.Open("dialog", "確認", main));
  std::string folder = Setting("SavePath=Z:");
  for (char& c : folder) c = c == '\\' ? '/' : c;
  const std::string address = Setting("ASFURL01=");
  std::ofstream(folder + address.substr(address.rfind('/'))) << "recorded";
  Note("45%");
  std::this_thread::sleep_for(std::chrono::milliseconds(700));
}

}  // namespace

int main(int argc, char** argv) {
  const std::string mode = argc > 1 ? argv[1] : "";
  Screen screen;
  if (mode == "stranger") {
    screen.WaitForYes(screen.Open("stranger", argc > 2 ? argv[2] : "", 0));
    return 0;
  }
  if (mode == "hidden") screen.Wait();
  const xcb_window_t main = screen.Open("streamget.exe", "GetASFStream", 0);
  if (mode == "record") {
    Record(screen, main);
  } else if (mode == "stuck") {
    screen.WaitForYes(screen.Open("dialog", "注意", main));
    std::ofstream("answered") << "yes";
  } else {
    screen.SetTitle(main, "song.wmv は既に存在します");
    screen.Wait();
  }
  return 0;
}
