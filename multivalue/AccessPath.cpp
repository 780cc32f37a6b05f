#include "multivalue/AccessPath.h"

#include <utility>

namespace multivalue {

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

}  // namespace

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

}  // namespace multivalue
