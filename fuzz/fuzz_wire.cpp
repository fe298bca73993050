// SPDX-License-Identifier: MIT
// What anybody may send over the bus: bytes arrive on a socket as the body of a message, under the signature that the
// agent expects or another. No bytes break the reader; what it reads it writes and reads again as the same, and what is
// fit for the agent's file is read back from there as it was.
#include <array>
#include <cstring>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <sys/types.h>
#include <unistd.h>

#include "Target.h"
#include "agent/Bus.h"
#include "agent/RequestJson.h"
#include "agent/Wire.h"

namespace {

using namespace pillora;

/// The first are what the agent and the app expect, in the order of the readers below.
constexpr std::array<const char*, 16> kSignatures = {
    "a(sv)", kRequestType, "a(sa(ssbb))", kTaskType,       "as", "us",  "bs", "", "v",
    "a(ss)", "sv",         "a{sv}",       "(ssssaxa(sv)s", "x",  "aay", "ay"};
constexpr size_t kReaders = 7;

template <typename Integer>
void put(std::string& bytes, Integer value) {
  bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}
void pad(std::string& bytes, size_t to) { bytes.resize((bytes.size() + to - 1) / to * to); }

/// A method call as the D-Bus Specification lays it out, in this machine's byte order.
std::string messageOf(std::string_view signature, std::string_view body) {
  std::string fields;
  const auto text = [&](char code, char type, std::string_view value) {
    pad(fields, 8);
    fields += {code, '\1', type, '\0'};
    put(fields, static_cast<uint32_t>(value.size()));
    fields.append(value) += '\0';
  };
  text('\1', 'o', kAgentPath);
  text('\2', 's', kAgentInterface);
  text('\3', 's', "Apply");
  pad(fields, 8);
  fields += {'\10', '\1', 'g', '\0', static_cast<char>(signature.size())};
  fields.append(signature) += '\0';
  std::string message = {__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ ? 'l' : 'B', '\1', '\0', '\1'};
  put(message, static_cast<uint32_t>(body.size()));
  put(message, uint32_t{1});
  put(message, static_cast<uint32_t>(fields.size()));
  message += fields;
  pad(message, 8);
  return message.append(body);
}

/// A copy that was written and can be read.
template <typename Write>
MessageHandle written(sd_bus* bus, Write write) {
  sd_bus_message* message = nullptr;
  require(sd_bus_message_new_method_call(bus, &message, kAgentName, kAgentPath, kAgentInterface, "Apply") >= 0,
          "a message can be made");
  MessageHandle copy(message);
  WireWriter writer(message);
  write(writer);
  require(writer.status() >= 0, "what was read can be written");
  require(sd_bus_message_seal(message, 1, 0) >= 0 && sd_bus_message_rewind(message, 1) >= 0, "a copy can be read");
  return copy;
}

void checkStored(const UNNotificationRequest& request) {
  const auto text = storedText(request);
  if (!text) return;
  const auto again = storedRequest(*text);
  require(again && *again == request, "a request reads back from the file as it was");
}

void checkOperations(sd_bus* bus, const std::vector<Operation>& operations) {
  const MessageHandle copy = written(bus, [&](WireWriter& writer) { writer.operations(operations); });
  WireReader reader(copy.get());
  const auto again = reader.operations();
  require(reader.status() >= 0 && again.size() == operations.size(), "operations read back as many");
  for (size_t i = 0; i < again.size(); ++i) {
    require(again[i].index() == operations[i].index(), "an operation reads back as what it was");
    const auto* add = std::get_if<AddRequest>(&operations[i]);
    if (add == nullptr) continue;
    checkStored(add->request);
    const auto text = storedText(add->request);
    const auto textAgain = storedText(std::get<AddRequest>(again[i]).request);
    require(!text == !textAgain && (!text || *text == *textAgain), "a request reads back from the bus as it was");
  }
}

void readAs(size_t kind, sd_bus_message* message) {
  sd_bus* bus = sd_bus_message_get_bus(message);
  WireReader reader(message);
  switch (kind) {
    case 0: {
      const auto operations = reader.operations();
      if (reader.status() >= 0) checkOperations(bus, operations);
      break;
    }
    case 1: {
      const auto request = reader.request();
      if (reader.status() >= 0) checkStored(request);
      break;
    }
    case 2: {
      const auto categories = reader.categories();
      const auto text = storedText(categories);
      if (reader.status() < 0 || !text) break;
      const auto again = storedCategories(*text);
      require(again && *again == categories, "categories read back from the file as they were");
      break;
    }
    case 3:
      reader.task();
      break;
    case 4:
      reader.texts();
      break;
    case 5:
      reader.word();
      reader.text();
      break;
    default:
      reader.flag();
      reader.text();
  }
  if (reader.status() >= 0) return;
  require(reader.text().empty() && !reader.more() && reader.status() < 0, "after a failure nothing more is read");
}

/// A connection whose other end writes what it is told.
class Connection {
 public:
  Connection() {
    std::array<int, 2> ends{};
    require(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends.data()) == 0, "there are sockets");
    peer_ = ends[1];
    sd_bus* bus = nullptr;
    require(sd_bus_new(&bus) >= 0 && sd_bus_set_fd(bus, ends[0], ends[0]) >= 0, "there is a connection");
    bus_.reset(bus);
    sd_bus_negotiate_fds(bus, 0);
    sd_bus_add_filter(bus, nullptr, &Connection::came, this);
    require(sd_bus_start(bus) >= 0, "the connection starts");
    send("DATA\r\nOK 0123456789abcdef0123456789abcdef\r\n");
    while (process()) {
    }
    require(sd_bus_is_ready(bus) > 0, "the connection is there");
  }
  ~Connection() { close(peer_); }

  /// False when the bytes were no message; then the connection is over.
  bool deliver(size_t kind, const std::string& message) {
    kind_ = kind;
    hasCome_ = false;
    send(message);
    while (process()) {
    }
    drain();
    return hasCome_;
  }

 private:
  static int came(sd_bus_message* message, void* self, sd_bus_error*) {
    auto& here = *static_cast<Connection*>(self);
    here.hasCome_ = true;
    readAs(here.kind_, message);
    return 1;
  }
  bool process() { return sd_bus_process(bus_.get(), nullptr) > 0; }
  void send(const std::string& bytes) {
    require(write(peer_, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()), "the socket has room");
  }
  /// Takes what was answered.
  void drain() {
    std::array<char, 4096> buffer{};
    while (read(peer_, buffer.data(), buffer.size()) > 0) {
    }
  }

  int peer_ = -1;
  BusHandle bus_;
  size_t kind_ = 0;
  bool hasCome_ = false;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  constexpr size_t kMostBytes = 32 * 1024;
  if (size < 2 || size > kMostBytes) return 0;
  static std::unique_ptr<Connection> connection;
  if (!connection) connection = std::make_unique<Connection>();
  const size_t kind = data[0] % kReaders;
  const size_t signature = data[1] < 128 ? kind : data[1] % kSignatures.size();
  const std::string_view body(reinterpret_cast<const char*>(data) + 2, size - 2);
  if (!connection->deliver(kind, messageOf(kSignatures[signature], body))) connection.reset();
  return 0;
}
