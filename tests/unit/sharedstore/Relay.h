// Between clients and the server: a socket that counts what is sent to it, adds a delay each way,
// and cuts.
#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <thread>

#include "tests/support/TemporaryFolder.h"

class Relay {
 public:
  enum class Cut {
    Before,  // the server never gets the message
    After    // it has answered, but the client never hears
  };

  // To the server that the environment names (serverUnderTest), which has to be on a socket.
  Relay();
  Relay(const Relay&) = delete;
  Relay& operator=(const Relay&) = delete;
  ~Relay();

  // A connection string that goes through it, of one that goes to the server.
  std::string through(std::string connection) const;

  // How many messages have gone to the server, each with an answer; the beginning of a session is
  // one of them.
  int messages() const { return messages_; }
  void delayEachWay(std::chrono::milliseconds delay) { delay_ = delay.count(); }
  // Ends all sessions at the n-th message from now, once.
  void cutAt(int message, Cut how);
  // The same, and no session begins any more until comeBack().
  void cutForGoodAt(int message, Cut how);
  void comeBack();
  bool hasCut() const { return hasCut_; }

 private:
  class Loop;

  const std::string server_;  // the folder of its socket
  const TemporaryFolder folder_;
  std::atomic<int> messages_ = 0;
  std::atomic<long> delay_ = 0;  // milliseconds
  std::atomic<int> cutAt_ = 0;   // as messages_ counts; 0: never
  std::atomic<Cut> cut_ = Cut::Before;
  std::atomic<bool> hasCut_ = false;
  std::atomic<bool> forGood_ = false;
  std::atomic<bool> away_ = false;
  std::atomic<bool> ends_ = false;
  std::thread thread_;
};
