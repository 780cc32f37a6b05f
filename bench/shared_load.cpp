// Many clients at once on one store: each a process of its own with a control, which looks a body
// up, changes it, saves it and begins again, as fast as it can or at a pace.
//   shared_load run ADDRESS CLIENTS SECONDS FOLDER [PACE]   a file of times a client, see Times
//                                                            below; PACE: an action a client every
//                                                            so many milliseconds, as users do
//   shared_load once ADDRESS                         each body looked up, and saved twice more,
//   between marks
// A look-up is of any body; a save is of one that the client has for itself, so that none is
// refused.
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <functional>
#include <iostream>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "bench/Hosted.h"
#include "store/Layouts.h"
#include "stores/Stores.h"
#include "toolkit/Buttons.h"
#include "toolkit/TextBox.h"

namespace {

using Clock = std::chrono::steady_clock;
constexpr int kLookUpsASave = 4;

// Bodies of the sample data that the checks do not let through.
constexpr std::array<std::string_view, 3> kRefused = {"117", "128", "129"};

// A client's file has a line an action: "lookup" or "save", when it began since all did and how
// long it took, both in microseconds.
class Times {
 public:
  Times(const std::string& path, Clock::time_point begun) : out_(path), begun_(begun) {}
  void take(const char* action, const std::function<void()>& work) {
    const auto from = Clock::now();
    work();
    const auto to = Clock::now();
    out_ << action << ' ' << microseconds(from - begun_) << ' ' << microseconds(to - from) << '\n';
  }

 private:
  static long long microseconds(Clock::duration time) {
    return std::chrono::duration_cast<std::chrono::microseconds>(time).count();
  }
  std::ofstream out_;
  Clock::time_point begun_;
};

class Client {
 public:
  Client(const std::string& address, int number, int clients)
      : database_(stores::open(address)), hosted_(database_) {
    hosted_.control.Init();
    int position = 0;
    database_->forEachRecord(store::orgprisecharge::kFile, [&](std::string_view id, auto) {
      bodies_.emplace_back(id);
      if (std::find(kRefused.begin(), kRefused.end(), id) != kRefused.end()) return;
      if (position++ % clients == number) own_.emplace_back(id);
    });
    if (own_.empty()) throw std::runtime_error("more clients than bodies");
  }

  const std::vector<std::string>& bodies() const { return bodies_; }
  const std::vector<std::string>& own() const { return own_; }

  void lookUp(const std::string& code) {
    hosted_.child<toolkit::TextBox>("Txt_CodOrgChg").userEdit(code);
    if (name().text().empty()) throw std::runtime_error("body " + code + " was not shown");
  }

  // Of a body that is shown.
  void change() { contact().userEdit(contact().text() == "Mme Paire" ? "M. Impair" : "Mme Paire"); }

  void save() {
    hosted_.child<toolkit::CommandButton>("Cmd_OK").userClick();
    if (name().text().empty()) return;
    const auto boxes = hosted_.desktop.boxes();
    throw std::runtime_error("body " + hosted_.child<toolkit::TextBox>("Txt_CodOrgChg").text() +
                             " was not saved: " + (boxes.empty() ? "" : boxes.back().text));
  }

  // What is asked for by this key stands in the server's log, and nothing has it.
  void mark(const std::string& text) {
    database_->OpenFile(store::compteur::kFile)->ReadRecord("marque " + text);
  }

 private:
  toolkit::TextBox& name() { return hosted_.child<toolkit::TextBox>("Txt_RaisonOrgChg"); }
  toolkit::TextBox& contact() { return hosted_.child<toolkit::TextBox>("Txt_InterlocDossOrgChg"); }

  std::shared_ptr<multivalue::Database> database_;
  bench::Hosted hosted_;
  std::vector<std::string> bodies_;
  std::vector<std::string> own_;
};

struct Load {
  int clients = 0;
  std::chrono::seconds time{};
  std::chrono::milliseconds pace{};
};

// Turns come in regular distances, each client's at another moment.
class Turns {
 public:
  Turns(const Load& load, int number, Clock::time_point begun)
      : pace_(load.pace), next_(begun + load.pace * number / load.clients) {}
  void wait() {
    if (pace_.count() == 0) return;
    std::this_thread::sleep_until(next_);
    next_ += pace_;
  }

 private:
  std::chrono::milliseconds pace_;
  Clock::time_point next_;
};

void work(const std::string& address, int number, const Load& load, Clock::time_point begun,
          const std::string& path) {
  Client client(address, number, load.clients);
  Times times(path, begun);
  Turns turns(load, number, Clock::now());
  std::mt19937 random(static_cast<unsigned>(number));
  const auto anyOf = [&](const std::vector<std::string>& codes) {
    return codes[random() % codes.size()];
  };
  while (Clock::now() - begun < load.time) {
    for (int i = 0; i < kLookUpsASave; ++i) {
      const std::string code = i + 1 < kLookUpsASave ? anyOf(client.bodies()) : anyOf(client.own());
      turns.wait();
      times.take("lookup", [&] { client.lookUp(code); });
    }
    client.change();
    turns.wait();
    times.take("save", [&] { client.save(); });
  }
}

int run(const std::string& address, const Load& load, const std::string& folder) {
  const auto begun = Clock::now();
  for (int number = 0; number < load.clients; ++number) {
    if (fork() != 0) continue;
    try {
      work(address, number, load, begun, folder + "/client-" + std::to_string(number));
    } catch (const std::exception& failure) {
      std::cerr << "client " << number << ": " << failure.what() << '\n';
      _exit(1);
    }
    _exit(0);
  }
  int failed = 0;
  for (int status = 0; wait(&status) > 0;) failed += status != 0;
  if (failed != 0) std::cerr << failed << " clients failed\n";
  return failed == 0 ? 0 : 1;
}

int once(const std::string& address) {
  Client client(address, 0, 1);
  for (const std::string& code : client.bodies()) {
    client.mark("lookup " + code);
    client.lookUp(code);
    client.mark("end");
  }
  for (const std::string& code : client.own()) {
    client.lookUp(code);
    client.change();
    client.save();
    for (int i = 0; i < 2; ++i) {  // there and back
      client.lookUp(code);
      client.change();
      client.mark("save " + code);
      client.save();
      client.mark("end");
    }
  }
  return 0;
}

}  // namespace

int main(int count, char** words) {
  const std::vector<std::string> arguments(words + 1, words + count);
  try {
    if ((arguments.size() == 5 || arguments.size() == 6) && arguments[0] == "run") {
      const int pace = arguments.size() == 6 ? std::stoi(arguments[5]) : 0;
      const Load load{std::stoi(arguments[2]), std::chrono::seconds(std::stoi(arguments[3])),
                      std::chrono::milliseconds(pace)};
      return run(arguments[1], load, arguments[4]);
    }
    if (arguments.size() == 2 && arguments[0] == "once") return once(arguments[1]);
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return 1;
  }
  std::cerr << "usage: shared_load run ADDRESS CLIENTS SECONDS FOLDER [PACE]\n"
               "       shared_load once ADDRESS\n";
  return 2;
}
