// The port to the host's rights object.
#pragma once

#include <memory>
#include <string_view>

namespace screen {

// One right's entry. Level is read each time it matters: 2 is full rights, anything else
// consultation only. A failing read throws.
class RightsEntry {
 public:
  RightsEntry() = default;
  RightsEntry(const RightsEntry&) = delete;
  RightsEntry& operator=(const RightsEntry&) = delete;
  virtual ~RightsEntry() = default;
  virtual long Level() = 0;
};

class Rights {
 public:
  Rights() = default;
  Rights(const Rights&) = delete;
  Rights& operator=(const Rights&) = delete;
  virtual ~Rights() = default;
  // The entry of a right, never null.
  virtual std::shared_ptr<RightsEntry> entry(std::string_view right) = 0;
};

}  // namespace screen
