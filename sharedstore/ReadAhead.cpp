#include "sharedstore/ReadAhead.h"

#include <utility>

#include "sharedstore/ScanStatement.h"

namespace sharedstore {

void ReadAhead::announce(const std::string& file, const std::vector<std::string>& ids) {
  File& wanted = files_[file];
  if (wanted.expected.size() + ids.size() > kMost) wanted.expected.clear();
  for (const std::string& id : ids) {
    if (wanted.expected.size() < kMost) ++wanted.expected[id];
  }
}

bool ReadAhead::expects(std::string_view file, std::string_view id) const {
  const auto wanted = files_.find(file);
  return wanted != files_.end() && wanted->second.expects(id);
}

Sql ReadAhead::statement(std::vector<File*>& asked) {
  Sql sql;
  for (auto& [name, file] : files_) {
    if (!file.wholeExpected && file.expected.empty()) continue;
    sql.add(asked.empty() ? "(SELECT " : " UNION ALL (SELECT ").number(std::ssize(asked));
    sql.add(", id, record FROM " + recordTable(name));
    if (file.wholeExpected) {
      sql.add(" LIMIT ").number(kMost + 1);
    } else {
      const char* before = " WHERE id IN (";
      for (const auto& [id, times] : file.expected) {
        sql.add(before).bytes(id);
        before = ", ";
      }
      sql.add(")");
    }
    sql.add(")");
    asked.push_back(&file);
  }
  return sql;
}

void ReadAhead::read(Connection& connection) {
  std::vector<File*> asked;
  Statement found(connection, statement(asked));
  const Clock::time_point now = Clock::now();
  for (File* const file : asked) {
    file->known.clear();
    file->wholeKnown = std::exchange(file->wholeExpected, false);
    file->readAt = now;
    for (const auto& [id, times] : std::exchange(file->expected, {})) {
      file->known[id].times = times;
    }
  }
  while (found.next()) {
    File& file = *asked.at(static_cast<std::size_t>(found.number(0)));
    file.known[found.bytes(1)].text = found.bytes(2);
  }
  for (File* const file : asked) {
    if (!file->wholeKnown || file->known.size() <= kMost) continue;
    file->known.clear();
    file->wholeKnown = false;
  }
}

std::optional<ReadAhead::Text> ReadAhead::take(std::string_view file, std::string_view id) {
  const auto of = files_.find(file);
  if (of == files_.end()) return std::nullopt;
  File& kept = of->second;
  if (Clock::now() - kept.readAt >= lifetime_) {
    kept.known.clear();
    kept.wholeKnown = false;
  }
  const auto place = kept.known.find(id);
  if (kept.wholeKnown) return place == kept.known.end() ? Text() : place->second.text;
  if (place == kept.known.end()) return std::nullopt;
  if (--place->second.times > 0) return place->second.text;
  Text text = std::move(place->second.text);
  kept.known.erase(place);
  return text;
}

void ReadAhead::forget(std::string_view file, std::string_view id) {
  const auto of = files_.find(file);
  if (of == files_.end()) return;
  File& kept = of->second;
  if (kept.wholeKnown) kept.known.clear();
  kept.wholeKnown = false;
  const auto known = kept.known.find(id);
  if (known != kept.known.end()) kept.known.erase(known);
}

}  // namespace sharedstore
