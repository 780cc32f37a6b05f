#include "localstore/AccessPath.h"

#include <utility>

namespace localstore {

namespace {

std::optional<AccessPath> pathOf(const FileDescription& file, const Test& test) {
  const Criterion& criterion = test.criterion;
  if (criterion.comparison() != Operator::Equal || criterion.text().empty()) return std::nullopt;
  if (test.attribute != 0 && !file.hasIndex(test.attribute)) return std::nullopt;
  AccessPath path;
  path.attribute = test.attribute;
  path.low = criterion.text();
  path.answers = &test;
  if (criterion.match() == Criterion::Match::Whole) {
    path.exact = true;
    return path;
  }
  if (criterion.match() != Criterion::Match::Begins) return std::nullopt;
  path.high = endOfPrefix(path.low);
  return path;
}

std::int64_t entries(Connection& connection, const FileDescription& file, const AccessPath& path,
                     std::int64_t limit) {
  const bool byKey = path.attribute == 0;
  const std::string table = byKey ? file.recordTable() : file.indexTable(path.attribute);
  Query query(connection, "SELECT count(*) FROM (SELECT 1 FROM " + table + " WHERE " +
                              path.condition(byKey ? "id" : "value") + " LIMIT ?3)");
  path.bind(query);
  query.bind(3, limit);
  return query.step() ? query.number(0) : 0;
}

}  // namespace

std::string AccessPath::condition(std::string_view column, int first) const {
  const std::string name(column);
  const std::string lowest = "?" + std::to_string(first);
  if (exact) return name + " = " + lowest;
  if (!high) return name + " >= " + lowest;
  return name + " >= " + lowest + " AND " + name + " < ?" + std::to_string(first + 1);
}

void AccessPath::bind(Query& query, int first) const {
  query.bind(first, low);
  if (!exact && high) query.bind(first + 1, *high);
}

std::optional<std::string> endOfPrefix(std::string prefix) {
  while (!prefix.empty() && prefix.back() == static_cast<char>(0xFF)) prefix.pop_back();
  if (prefix.empty()) return std::nullopt;
  prefix.back() = static_cast<char>(static_cast<unsigned char>(prefix.back()) + 1);
  return prefix;
}

std::optional<AccessPath> keyPath(const FileDescription& file, const std::vector<Test>& tests) {
  for (const Test& test : tests) {
    if (test.attribute != 0) continue;
    if (std::optional<AccessPath> path = pathOf(file, test)) return path;
  }
  return std::nullopt;
}

std::vector<AccessPath> accessPaths(const FileDescription& file, const std::vector<Test>& tests) {
  std::vector<AccessPath> paths;
  for (const Test& test : tests) {
    std::optional<AccessPath> path = pathOf(file, test);
    if (!path) continue;
    if (path->attribute == 0 && path->exact) return {*path};
    paths.push_back(std::move(*path));
  }
  return paths;
}

std::optional<AccessPath> pathBelow(Connection& connection, const FileDescription& file,
                                    const std::vector<AccessPath>& paths, std::int64_t limit) {
  for (const AccessPath& path : paths) {
    if (entries(connection, file, path, limit) < limit) return path;
  }
  return std::nullopt;
}

}  // namespace localstore
