#include "Relay.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <deque>
#include <list>
#include <stdexcept>
#include <vector>

#include "SharedStoreUnderTest.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::string_view kServer = "Servername=";

std::string socketName() { return ".s.PGSQL." + settingOfServer("Port"); }

std::string valueOf(const std::string& connection) {
  const std::size_t at = connection.find(kServer);
  if (at == std::string::npos) throw std::runtime_error("no server in " + connection);
  const std::size_t begin = at + kServer.size();
  return connection.substr(begin, connection.find(';', begin) - begin);
}

class Socket {
 public:
  explicit Socket(int number) : number_(number) {
    if (number_ < 0) throw std::runtime_error(std::strerror(errno));
  }
  Socket(const Socket&) = delete;
  Socket& operator=(const Socket&) = delete;
  ~Socket() { close(number_); }

  static sockaddr_un addressOf(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) throw std::runtime_error(path + " is too long");
    std::copy(path.begin(), path.end(), std::begin(address.sun_path));
    return address;
  }
  int number() const { return number_; }

 private:
  const int number_;
};

std::unique_ptr<Socket> listening(const std::string& path) {
  auto made = std::make_unique<Socket>(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  const sockaddr_un address = Socket::addressOf(path);
  if (bind(made->number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
      listen(made->number(), 16) != 0) {
    throw std::runtime_error(std::strerror(errno));
  }
  return made;
}

std::unique_ptr<Socket> connected(const std::string& path) {
  auto made = std::make_unique<Socket>(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  const sockaddr_un address = Socket::addressOf(path);
  if (connect(made->number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
    throw std::runtime_error(std::strerror(errno));
  }
  return made;
}

std::size_t sizeAt(const std::string& bytes, std::size_t at) {
  std::uint32_t size = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    size = size << 8U | static_cast<unsigned char>(bytes[at + i]);
  }
  return size;
}

// The client's bytes, message by message.
class Messages {
 public:
  // The next whole message, "" where there is none yet.
  std::string next() {
    const std::size_t type = begun_ ? 1 : 0;
    if (bytes_.size() < type + 4) return {};
    const std::size_t size = type + sizeAt(bytes_, type);
    if (bytes_.size() < size) return {};
    std::string message = bytes_.substr(0, size);
    bytes_.erase(0, size);
    counts_ = begun_ ? message[0] != 'X' : true;
    begun_ = true;
    return message;
  }
  // Has the last of them an answer?
  bool counts() const { return counts_; }
  void add(const char* bytes, std::size_t count) { bytes_.append(bytes, count); }

 private:
  std::string bytes_;
  bool begun_ = false;  // the first message of a session has no type
  bool counts_ = false;
};

struct Chunk {
  Clock::time_point due;
  std::string bytes;
};
using Chunks = std::deque<Chunk>;

struct Session {
  Session(std::unique_ptr<Socket> from, std::unique_ptr<Socket> to)
      : client(std::move(from)), server(std::move(to)) {}

  std::unique_ptr<Socket> client;
  std::unique_ptr<Socket> server;
  Messages messages;
  Chunks toServer;
  Chunks toClient;
  bool withheld = false;  // what the server answers
  std::string answer;     // as far as it is withheld
  bool over = false;
};

// False at the end.
bool received(int socket, std::string& bytes) {
  char block[65536];
  const ssize_t got = recv(socket, block, sizeof block, MSG_DONTWAIT);
  if (got < 0 && (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR)) return true;
  if (got <= 0) return false;
  bytes.assign(block, static_cast<std::size_t>(got));
  return true;
}

bool sendAll(int socket, const std::string& bytes) {
  for (std::size_t sent = 0; sent < bytes.size();) {
    const ssize_t now = send(socket, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
    if (now < 0) return false;
    sent += static_cast<std::size_t>(now);
  }
  return true;
}

// "ready for the next", the last of an answer.
bool isWhole(const std::string& answer) {
  constexpr std::size_t kSize = 6;
  return answer.size() >= kSize &&
         answer.compare(answer.size() - kSize, 5, std::string("Z\0\0\0\5", 5)) == 0;
}

}  // namespace

class Relay::Loop {
 public:
  explicit Loop(Relay& relay) : relay_(relay), listener_(listening(relay.folder_ / socketName())) {}

  void run() {
    while (!relay_.ends_) {
      wait();
      for (Session& session : sessions_) pass(session);
      sessions_.remove_if([](const Session& session) { return session.over; });
    }
  }

 private:
  void wait() {
    std::vector<pollfd> polled{{listener_->number(), POLLIN, 0}};
    for (const Session& session : sessions_) {
      polled.push_back({session.client->number(), POLLIN, 0});
      polled.push_back({session.server->number(), POLLIN, 0});
    }
    const bool held = std::any_of(sessions_.begin(), sessions_.end(), [](const Session& session) {
      return !session.toServer.empty() || !session.toClient.empty();
    });
    poll(polled.data(), polled.size(), held ? 1 : 20);
    if ((polled[0].revents & POLLIN) == 0) return;
    auto client =
        std::make_unique<Socket>(accept4(listener_->number(), nullptr, nullptr, SOCK_CLOEXEC));
    if (relay_.away_) return;
    sessions_.emplace_back(std::move(client), connected(relay_.server_ + "/" + socketName()));
  }

  void pass(Session& session) {
    std::string bytes;
    if (!received(session.client->number(), bytes)) session.over = true;
    session.messages.add(bytes.data(), bytes.size());
    const auto due = Clock::now() + std::chrono::milliseconds(relay_.delay_);
    for (std::string message; !(message = session.messages.next()).empty();) {
      if (session.messages.counts()) count(session);
      if (session.over) return;
      session.toServer.push_back({due, std::move(message)});
    }
    bytes.clear();
    if (!received(session.server->number(), bytes)) session.over = true;
    if (session.withheld) {
      session.answer += bytes;
      if (isWhole(session.answer)) session.over = true;
    } else if (!bytes.empty()) {
      session.toClient.push_back({due, std::move(bytes)});
    }
    if (!release(session.toServer, *session.server) ||
        !release(session.toClient, *session.client)) {
      session.over = true;
    }
  }

  void count(Session& session) {
    const int number = ++relay_.messages_;
    if (number != relay_.cutAt_) return;
    relay_.hasCut_ = true;
    if (relay_.forGood_) relay_.away_ = true;
    if (relay_.cut_ == Cut::Before) {
      session.over = true;
    } else {
      session.withheld = true;
    }
  }

  static bool release(Chunks& chunks, const Socket& to) {
    while (!chunks.empty() && chunks.front().due <= Clock::now()) {
      if (!sendAll(to.number(), chunks.front().bytes)) return false;
      chunks.pop_front();
    }
    return true;
  }

  Relay& relay_;
  const std::unique_ptr<Socket> listener_;
  std::list<Session> sessions_;
};

Relay::Relay() : server_(valueOf(serverUnderTest())) {
  auto loop = std::make_shared<Loop>(*this);
  thread_ = std::thread([loop] { loop->run(); });
}

Relay::~Relay() {
  ends_ = true;
  thread_.join();
}

std::string Relay::through(std::string connection) const {
  const std::size_t begin = connection.find(kServer) + kServer.size();
  return connection.replace(begin, valueOf(connection).size(), folder_ / "");
}

void Relay::cutAt(int message, Cut how) {
  cut_ = how;
  hasCut_ = false;
  forGood_ = false;
  cutAt_ = messages_ + message;
}

void Relay::cutForGoodAt(int message, Cut how) {
  cutAt(message, how);
  forGood_ = true;
}

void Relay::comeBack() {
  cutAt_ = 0;
  away_ = false;
}
