// SPDX-License-Identifier: MIT
// How soon a program's window is there, and what the program weighs: several programs in turns under one X server, all
// watched in the same way. bench/window starts it; see there for what it needs.
//
//   window_start ROUNDS [LABEL HOME BUS PROGRAM]...
#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <poll.h>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>
#include <xcb/damage.h>
#include <xcb/xcb.h>

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr auto kPatience = 60s;
constexpr int kWarmUps = 3;
constexpr int kSmallest = 200;  // pixels a side: what is smaller is a helper's window

[[noreturn]] void fail(const std::string& why) {
  std::fprintf(stderr, "window_start: %s\n", why.c_str());
  std::exit(1);
}

template <typename T>
std::unique_ptr<T, decltype(&std::free)> owned(T* reply) {
  return {reply, &std::free};
}

/// Watches the top-level windows of a display without a window manager.
class Display {
 public:
  Display() : connection_(xcb_connect(nullptr, nullptr)) {
    if (xcb_connection_has_error(connection_) != 0) fail("there is no display");
    root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
    const uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection_, root_, XCB_CW_EVENT_MASK, &events);
    const auto version = xcb_damage_query_version(connection_, 1, 1);
    if (!owned(xcb_damage_query_version_reply(connection_, version, nullptr))) fail("the display cannot tell of paint");
    damageEvent_ = xcb_get_extension_data(connection_, &xcb_damage_id)->first_event;
    protocols_ = atom("WM_PROTOCOLS");
    deleteWindow_ = atom("WM_DELETE_WINDOW");
  }
  ~Display() { xcb_disconnect(connection_); }

  struct Shown {
    xcb_window_t window = XCB_NONE;
    Clock::time_point viewable, painted;
    xcb_timestamp_t paintedAt = 0;  ///< the same by the display's clock
  };

  /// The next window that can be seen, once something was painted into it.
  Shown awaitWindow() {
    Shown shown;
    const auto deadline = Clock::now() + kPatience;
    while (true) {
      while (const auto event = owned(xcb_poll_for_event(connection_))) {
        const auto now = Clock::now();
        const int type = event->response_type & 0x7f;
        if (type == XCB_CREATE_NOTIFY) watchPaint(reinterpret_cast<xcb_create_notify_event_t*>(event.get())->window);
        if (type == XCB_MAP_NOTIFY && shown.window == XCB_NONE) {
          const xcb_window_t window = reinterpret_cast<xcb_map_notify_event_t*>(event.get())->window;
          if (isWindowOfAProgram(window)) shown = {window, now, {}};
        }
        if (const auto* const paint = paintOf(*event, shown.window)) {
          shown.painted = now;
          shown.paintedAt = paint->timestamp;
          return shown;
        }
      }
      if (Clock::now() > deadline) fail("no window came");
      pollfd readable{xcb_get_file_descriptor(connection_), POLLIN, 0};
      poll(&readable, 1, 1000);
    }
  }

  /// When it was last painted, of what has come since it was shown.
  Clock::time_point lastPaint(const Shown& shown) {
    auto last = shown.paintedAt;
    while (const auto event = owned(xcb_poll_for_event(connection_))) {
      if (const auto* const paint = paintOf(*event, shown.window)) last = paint->timestamp;
    }
    return shown.painted + std::chrono::milliseconds(last - shown.paintedAt);
  }

  /// What a window manager does when its cross is pressed.
  void close(xcb_window_t window) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = protocols_;
    message.data.data32[0] = deleteWindow_;
    xcb_send_event(connection_, 0, window, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&message));
    xcb_flush(connection_);
  }

  void forgetEvents() {
    while (owned(xcb_poll_for_event(connection_))) {
    }
  }

 private:
  xcb_atom_t atom(const char* name) {
    const auto length = static_cast<uint16_t>(std::strlen(name));
    const auto reply =
        owned(xcb_intern_atom_reply(connection_, xcb_intern_atom(connection_, 0, length, name), nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
  }
  const xcb_damage_notify_event_t* paintOf(const xcb_generic_event_t& event, xcb_window_t window) const {
    const auto* const paint = reinterpret_cast<const xcb_damage_notify_event_t*>(&event);
    return (event.response_type & 0x7f) == damageEvent_ + XCB_DAMAGE_NOTIFY && paint->drawable == window ? paint
                                                                                                         : nullptr;
  }
  void watchPaint(xcb_window_t window) {
    xcb_damage_create(connection_, xcb_generate_id(connection_), window, XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
    xcb_flush(connection_);
  }
  bool isWindowOfAProgram(xcb_window_t window) {
    const auto attributes = xcb_get_window_attributes(connection_, window);
    const auto geometry = xcb_get_geometry(connection_, window);
    const auto state = owned(xcb_get_window_attributes_reply(connection_, attributes, nullptr));
    const auto size = owned(xcb_get_geometry_reply(connection_, geometry, nullptr));
    return state && size && state->map_state == XCB_MAP_STATE_VIEWABLE && state->override_redirect == 0 &&
           size->width >= kSmallest && size->height >= kSmallest;
  }

  xcb_connection_t* connection_;
  xcb_window_t root_ = XCB_NONE;
  int damageEvent_ = 0;
  xcb_atom_t protocols_ = XCB_ATOM_NONE, deleteWindow_ = XCB_ATOM_NONE;
};

std::string contentsOf(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

/// Processor time of a process, user and system.
Milliseconds processorTime(pid_t process) {
  const std::string stat = contentsOf("/proc/" + std::to_string(process) + "/stat");
  const size_t name = stat.rfind(')');
  unsigned long user = 0, system = 0;
  if (name == std::string::npos ||
      std::sscanf(stat.c_str() + name, ") %*c %*d %*d %*d %*d %*d %*u %*u %*u %*u %*u %lu %lu", &user, &system) != 2)
    fail("a program ended early");
  return Milliseconds(1000.0 * static_cast<double>(user + system) / static_cast<double>(sysconf(_SC_CLK_TCK)));
}

/// Proportional set size of a process, in MB; nothing where it cannot be read.
double proportionalSetSize(const std::string& process) {
  std::ifstream in("/proc/" + process + "/smaps_rollup");
  for (std::string line; std::getline(in, line);) {
    if (line.rfind("Pss:", 0) == 0) return std::strtod(line.c_str() + 4, nullptr) / 1024;
  }
  return 0;
}

struct Subject {
  std::string label, home, bus, program;

  /// Of the program and all that runs beside it for the same person: agents, services, its bus.
  double weightOfAll() const {
    double sum = 0;
    const std::string mark = '\0' + ("HOME=" + home) + '\0';
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
      const std::string name = entry.path().filename();
      if (name.find_first_not_of("0123456789") != std::string::npos) continue;
      if (('\0' + contentsOf(entry.path() / "environ")).find(mark) != std::string::npos)
        sum += proportionalSetSize(name);
    }
    return sum;
  }

  pid_t start() const {
    const pid_t process = fork();
    if (process < 0) fail("fork");
    if (process > 0) return process;
    setenv("HOME", home.c_str(), 1);
    setenv("XDG_RUNTIME_DIR", (home + "/run").c_str(), 1);
    setenv("DBUS_SESSION_BUS_ADDRESS", bus.c_str(), 1);
    const int log = open((home + "/log").c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    dup2(log, STDOUT_FILENO);
    dup2(log, STDERR_FILENO);
    execlp(program.c_str(), program.c_str(), nullptr);
    _exit(127);
  }
};

struct Measured {
  double viewable, painted, lastPainted, processor, weight, weightOfAll;
};

/// Until it has used no processor time for a while.
Milliseconds awaitRest(pid_t process) {
  const auto deadline = Clock::now() + kPatience;
  auto last = processorTime(process);
  auto since = Clock::now();
  while (Clock::now() - since < 1500ms && Clock::now() < deadline) {
    std::this_thread::sleep_for(100ms);
    const auto now = processorTime(process);
    if (now != last) since = Clock::now();
    last = now;
  }
  return last;
}

void end(pid_t process) {
  for (const int signal : {0, SIGTERM, SIGKILL}) {
    kill(process, signal);
    const auto deadline = Clock::now() + 10s;
    while (Clock::now() < deadline) {
      if (waitpid(process, nullptr, WNOHANG) == process) return;
      std::this_thread::sleep_for(10ms);
    }
  }
}

Measured measure(Display& display, const Subject& subject) {
  display.forgetEvents();
  const auto begin = Clock::now();
  const pid_t process = subject.start();
  const auto shown = display.awaitWindow();
  Measured found{};
  found.viewable = Milliseconds(shown.viewable - begin).count();
  found.painted = Milliseconds(shown.painted - begin).count();
  found.processor = awaitRest(process).count();
  found.lastPainted = Milliseconds(display.lastPaint(shown) - begin).count();
  found.weight = proportionalSetSize(std::to_string(process));
  found.weightOfAll = subject.weightOfAll();
  display.close(shown.window);
  end(process);
  return found;
}

double median(std::vector<double> values) {
  std::ranges::sort(values);
  const size_t middle = values.size() / 2;
  return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

using Column = double Measured::*;

void printTable(const std::vector<Subject>& subjects, const std::vector<std::vector<Measured>>& found) {
  const std::pair<const char*, Column> columns[] = {{"to the first viewable window, ms", &Measured::viewable},
                                                    {"to its first paint, ms", &Measured::painted},
                                                    {"to its last paint before it rests, ms", &Measured::lastPainted},
                                                    {"processor time until at rest, ms", &Measured::processor},
                                                    {"memory (PSS) at rest, MB", &Measured::weight},
                                                    {"the same with its helpers, MB", &Measured::weightOfAll}};
  std::printf("| median (lowest – highest) |");
  for (const Subject& subject : subjects) std::printf(" %s |", subject.label.c_str());
  for (size_t i = 1; i < subjects.size(); ++i) std::printf(" ratio to %s |", subjects[i].label.c_str());
  std::printf("\n|%s\n",
              [&] {
                std::string line;
                for (size_t i = 0; i < 2 * subjects.size(); ++i) line += "---|";
                return line;
              }()
                  .c_str());
  for (const auto& [name, column] : columns) {
    std::printf("| %s |", name);
    std::vector<double> medians;
    for (const auto& rounds : found) {
      std::vector<double> values;
      for (const Measured& each : rounds) values.push_back(each.*column);
      const auto [least, most] = std::ranges::minmax(values);
      medians.push_back(median(values));
      std::printf(" %.0f (%.0f – %.0f) |", medians.back(), least, most);
    }
    for (size_t i = 1; i < medians.size(); ++i) std::printf(" %.2f |", medians[0] / medians[i]);
    std::printf("\n");
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 6 || (argc - 2) % 4 != 0) fail("usage: window_start ROUNDS [LABEL HOME BUS PROGRAM]...");
  const int rounds = std::atoi(argv[1]);
  std::vector<Subject> subjects;
  for (int i = 2; i < argc; i += 4) subjects.push_back({argv[i], argv[i + 1], argv[i + 2], argv[i + 3]});
  Display display;
  std::vector<std::vector<Measured>> found(subjects.size());
  for (int round = -kWarmUps; round < rounds; ++round) {
    for (size_t i = 0; i < subjects.size(); ++i) {
      const Measured one = measure(display, subjects[i]);
      if (round >= 0) found[i].push_back(one);
      std::fprintf(stderr, "%3d %-24s %6.0f ms %6.0f ms %6.1f MB\n", round, subjects[i].label.c_str(), one.viewable,
                   one.painted, one.weight);
    }
  }
  printTable(subjects, found);
}
