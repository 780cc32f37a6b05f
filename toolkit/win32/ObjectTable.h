// Which object stands behind a window.
#pragma once

#include <mutex>
#include <unordered_map>

namespace toolkit::win32 {

// A table of our own, by window or by thread: what a window itself keeps for its owner, any program
// may overwrite. Several threads may have entries; an object is used by its own thread alone.
template <class Key, class T>
class ObjectTable {
 public:
  void add(Key key, T* object) {
    const std::lock_guard lock(mutex_);
    objects_[key] = object;
  }
  void remove(Key key) {
    const std::lock_guard lock(mutex_);
    objects_.erase(key);
  }
  T* find(Key key) const {  // null when there is none
    const std::lock_guard lock(mutex_);
    const auto found = objects_.find(key);
    return found == objects_.end() ? nullptr : found->second;
  }

 private:
  mutable std::mutex mutex_;
  std::unordered_map<Key, T*> objects_;
};

}  // namespace toolkit::win32
