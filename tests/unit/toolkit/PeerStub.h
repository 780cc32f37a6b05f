// A peer that writes down what it is told.
#pragma once

#include <vector>

#include "toolkit/Control.h"

namespace toolkit::test {

class PeerStub : public Peer {
 public:
  explicit PeerStub(Control& control) : control_(control) { control_.setPeer(this); }
  ~PeerStub() override { control_.setPeer(nullptr); }
  void update(Aspect what) override { told.push_back(what); }

  std::vector<Aspect> told;

 private:
  Control& control_;
};

}  // namespace toolkit::test
