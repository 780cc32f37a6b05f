// The control on bodies of the sample, as a user has it: for the fuzzers that show and change
// records.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "control/Ctr_OrgPriseCharge.h"
#include "tests/support/MemoryStore.h"
#include "toolkit/headless/HeadlessDesktop.h"
#include "toolkit/headless/User.h"

namespace fuzz {

// Some bodies of the sample and all that showing and saving them reads, the same for every input.
class SampleStore {
 public:
  SampleStore();

  testing_support::MemoryStore& store() { return store_; }
  const std::vector<std::string>& bodies() const { return bodies_; }
  std::string body(std::string_view code) const;
  // Puts back what an input may have changed, and ends all faults.
  void restore();

 private:
  testing_support::MemoryStore store_;
  std::vector<std::string> bodies_;
  std::map<std::string, store::DynamicArray> kept_;
  store::DynamicArray counter_;
};

class Desk {
 public:
  explicit Desk(testing_support::MemoryStore& store);

  control::Ctr_OrgPriseCharge& control() { return control_; }
  toolkit::headless::User& user() { return user_; }
  toolkit::headless::HeadlessDesktop& desktop() { return desktop_; }
  template <class T>
  T& child(std::string_view name) {
    return dynamic_cast<T&>(*control_.surface().find(name));
  }

  void lookUp(std::string_view code);
  bool press(std::string_view button);
  // The texts of the boxes since the last call, a line each.
  std::string takeBoxes();

  // What is answered to a question; No until something else is said.
  std::function<toolkit::Answer(toolkit::Buttons buttons)> answers;

 private:
  toolkit::headless::HeadlessDesktop desktop_;
  control::Ctr_OrgPriseCharge control_{desktop_};
  toolkit::headless::User user_{control_.surface()};
};

}  // namespace fuzz
