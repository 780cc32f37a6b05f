// What the records in a client's hands are known to be: as they were read, or as the client itself
// has left them since.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace multivalue {

class SeenRecords {
 public:
  using Text = std::optional<std::string>;  // nothing: there was no record

  // One record in hand, known until it goes. The list must outlive it.
  class Seen {
   public:
    Seen(SeenRecords& list, std::string file, std::string_view id, Text text);
    Seen(const Seen&) = delete;
    Seen& operator=(const Seen&) = delete;
    ~Seen();

    const std::string& file() const { return file_; }
    const std::string& id() const { return id_; }
    const Text& text() const { return text_; }

   private:
    friend class SeenRecords;
    SeenRecords& list_;
    const std::string file_;
    const std::string id_;
    Text text_;
    std::unordered_multimap<std::size_t, Seen*>::iterator place_;
  };

  // The client has made `before` into `after`: whoever had seen the one has seen the other.
  void changed(std::string_view file, std::string_view id, const Text& before, const Text& after);

  // What is changed from begin() on is as before after undo(); end() lets it be.
  void begin() { noted_.emplace(); }
  void end() { noted_.reset(); }
  void undo();

 private:
  struct Change {
    std::string file;
    std::string id;
    Text before;
    Text after;
  };

  bool take(std::string_view file, std::string_view id, const Text& before, const Text& after);

  std::unordered_multimap<std::size_t, Seen*> seen_;  // by file and key
  std::optional<std::vector<Change>> noted_;
};

}  // namespace multivalue
