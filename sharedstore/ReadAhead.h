// Records that a caller has announced: they are read together, and each is given from what was
// found then, for a short while.
#pragma once

#include <chrono>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sharedstore/Odbc.h"

namespace sharedstore {

class ReadAhead {
 public:
  using Text = std::optional<std::string>;  // nothing: there is no record

  explicit ReadAhead(std::chrono::milliseconds lifetime) : lifetime_(lifetime) {}

  // Each as often as it stands there.
  void announce(const std::string& file, const std::vector<std::string>& ids);
  // All records of a small file, time and again.
  void announceAll(const std::string& file) { files_[file].wholeExpected = true; }
  // Has it been announced, but not been read yet?
  bool expects(std::string_view file, std::string_view id) const;
  // Reads all that is expected, in one message. What was known of those files before is forgotten.
  void read(Connection& connection);
  // What is known of a record; it is forgotten by this, but for a small file's. Nothing when it is
  // not known.
  std::optional<Text> take(std::string_view file, std::string_view id);

  void forget() { files_.clear(); }
  // A record that is about to be written.
  void forget(std::string_view file, std::string_view id);

  // Of a file; with more of them it is no small one either.
  static constexpr std::size_t kMost = 1000;

 private:
  using Clock = std::chrono::steady_clock;
  struct Known {
    Text text;
    int times = 0;
  };
  struct File {
    bool wholeExpected = false;
    std::map<std::string, int, std::less<>> expected;  // how often
    bool wholeKnown = false;
    std::map<std::string, Known, std::less<>> known;
    Clock::time_point readAt;

    bool expects(std::string_view id) const {
      return wholeExpected || expected.find(id) != expected.end();
    }
  };

  Sql statement(std::vector<File*>& asked);

  const std::chrono::milliseconds lifetime_;
  std::map<std::string, File, std::less<>> files_;
};

}  // namespace sharedstore
