#include "multivalue/Selection.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "multivalue/AccessPath.h"
#include "multivalue/Answer.h"
#include "multivalue/RecordText.h"
#include "multivalue/Sentence.h"
#include "store/StoreError.h"
#include "text/Utf8.h"

namespace multivalue {

namespace {

// Far above any layout; keeps a mistyped number from looking like an attribute.
constexpr int kHighestAttribute = 9999;

// Attribute number of a name; nothing for an unknown one.
std::optional<int> attributeNumber(const FileDescription& file, std::string_view name) {
  if (name == "@ID") return 0;
  const auto named = file.fields.find(name);
  if (named != file.fields.end()) return named->second;
  int number = 0;
  const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
  if (error != std::errc() || end != name.data() + name.size()) return std::nullopt;
  if (number < 0 || number > kHighestAttribute) return std::nullopt;
  return number;
}

struct Plan {
  std::shared_ptr<const FileDescription> file;
  std::vector<Test> tests;
  std::vector<int> order;
  std::vector<int> columns;

  int lastAttribute() const {
    int last = 0;
    for (const int attribute : order) last = std::max(last, attribute);
    for (const int attribute : columns) last = std::max(last, attribute);
    for (const Test& test : tests) last = std::max(last, test.attribute);
    return last;
  }

  // Can all be known from the key and the first value of one attribute, where that attribute's own
  // tests are `path`'s only?
  bool coveredBy(const AccessPath& path) const {
    const auto known = [&](int attribute) { return attribute == 0 || attribute == path.attribute; };
    const auto onPath = [&](const Test& test) { return test.attribute == path.attribute; };
    return std::all_of(order.begin(), order.end(), known) &&
           std::all_of(columns.begin(), columns.end(), known) &&
           std::all_of(tests.begin(), tests.end(),
                       [&](const Test& test) { return known(test.attribute); }) &&
           (path.attribute == 0 || std::count_if(tests.begin(), tests.end(), onPath) == 1);
  }
};

Plan planOf(Catalogue& catalogue, std::string_view text, const Sentence& sentence) {
  Plan plan;
  try {
    plan.file = catalogue.forReading(sentence.file.text);
  } catch (const store::StoreError& error) {
    if (error.code() != store::kUnknownFile) throw;
    const std::size_t place = text::length(text.substr(0, sentence.file.offset)) + 1;
    throw store::StoreError(error.code(),
                            "character " + std::to_string(place) + ": " + error.what());
  }
  const auto attribute = [&](const Word& field) {
    const std::optional<int> number = attributeNumber(*plan.file, field.text);
    if (!number) {
      refuseSentence(text, field.offset,
                     "unknown field " + field.text + " in file " + plan.file->name);
    }
    return *number;
  };
  for (const Condition& condition : sentence.conditions) {
    plan.tests.push_back(
        {attribute(condition.field), Criterion(condition.comparison, condition.value)});
  }
  for (const Word& field : sentence.order) plan.order.push_back(attribute(field));
  return plan;
}

std::vector<int> columnsOf(const FileDescription& file, std::string_view columns) {
  std::vector<int> numbers;
  numbers.reserve(columns.size() / 2 + 1);
  std::size_t at = 0;
  while ((at = columns.find_first_not_of(' ', at)) != std::string_view::npos) {
    const std::size_t end = std::min(columns.find(' ', at), columns.size());
    const std::string_view name = columns.substr(at, end - at);
    const std::optional<int> number = attributeNumber(file, name);
    if (!number) {
      throw store::StoreError(store::kBadSentence,
                              "columns, character " +
                                  std::to_string(text::length(columns.substr(0, at)) + 1) +
                                  ": unknown field " + std::string(name) + " in file " + file.name);
    }
    numbers.push_back(*number);
    at = end;
  }
  if (numbers.empty()) numbers.push_back(0);
  return numbers;
}

// Attributes of a record in one pass: each asked for is the one before or a later one.
class RecordScan {
 public:
  explicit RecordScan(std::string_view record)
      : at_(record.data()), end_(record.data() + record.size()) {}

  std::string_view attribute(int wanted) {
    while (number_ < wanted && at_ != end_) number_ += *at_++ == store::kAttributeMark;
    if (number_ < wanted) return {};
    const char* stop = at_;
    while (stop != end_ && *stop != store::kAttributeMark) ++stop;
    return {at_, static_cast<std::size_t>(stop - at_)};
  }

 private:
  const char* at_;  // where attribute `number_` begins
  const char* end_;
  int number_ = 1;
};

// One scan reads all that counts, so that it sees one state of the store.
class Selector {
 public:
  Selector(Engine& engine, const Plan& plan)
      : engine_(engine), plan_(plan), answer_(plan.columns, plan.order) {}

  store::DynamicArray run() {
    const std::vector<AccessPath> paths = accessPaths(*plan_.file, plan_.tests);
    if (paths.empty()) {
      throughRecords(nullptr);
    } else if (paths.size() == 1) {
      through(paths.front());
    } else {
      throughNarrowest(paths);
    }
    return answer_.take();
  }

 private:
  // Which range is the narrowest is found by counting a bounded number of entries in each. An index
  // that answers alone is gone through about as fast as it is counted: that is tried before it is.
  void throughNarrowest(const std::vector<AccessPath>& paths) {
    constexpr std::int64_t kFew = 16;
    constexpr std::int64_t kTrial = 1024;
    constexpr std::int64_t kGrowth = 16;
    const AccessPath* const alone = firstAnsweringAlone(paths);
    const AccessPath* path = pathBelow(paths, kFew, alone);
    if (path == nullptr && alone != nullptr && throughIndexAlone(*alone, kTrial)) return;
    for (std::int64_t limit = kTrial; path == nullptr; limit *= kGrowth) {
      path = pathBelow(paths, limit, nullptr);
    }
    through(*path);
  }

  const AccessPath* firstAnsweringAlone(const std::vector<AccessPath>& paths) const {
    for (const AccessPath& path : paths) {
      if (path.attribute != 0 && plan_.coveredBy(path)) return &path;
    }
    return nullptr;
  }

  // The first of the paths with fewer entries than the limit, but for one; none when all have as
  // many.
  const AccessPath* pathBelow(const std::vector<AccessPath>& paths, std::int64_t limit,
                              const AccessPath* but) {
    for (const AccessPath& path : paths) {
      if (&path != but && engine_.count(*plan_.file, &path, limit) < limit) return &path;
    }
    return nullptr;
  }

  void through(const AccessPath& path) {
    if (path.attribute != 0 && plan_.coveredBy(path)) {
      throughIndexAlone(path, 0);
    } else {
      throughRecords(&path);
    }
  }

  void throughRecords(const AccessPath* path) {
    const bool byKey = path == nullptr || path->attribute == 0;
    startOn(path, byKey || path->exact ? Answer::Coming::ByKey : Answer::Coming::AsItMay);
    const bool keyOnly = byKey && plan_.coveredBy(AccessPath{});
    Scan scan{*plan_.file, path, keyOnly ? Scan::Gives::Keys : Scan::Gives::Records, &plan_.tests};
    scan.lastAttribute = plan_.lastAttribute();
    const auto cursor = engine_.scan(scan);
    Entry entry;
    while (cursor->next(entry)) addRecord(entry.id, entry.record);
  }

  // The index answers by itself, but for a record whose first value is another one. False when it
  // was left, after about as many entries as there is patience for.
  bool throughIndexAlone(const AccessPath& path, std::int64_t patience) {
    startOn(&path, path.exact ? Answer::Coming::ByKey : Answer::Coming::ByFirstValue);
    const auto cursor =
        engine_.scan({*plan_.file, &path, Scan::Gives::IndexEntries, &plan_.tests, patience});
    Entry entry;
    while (cursor->next(entry)) {
      if (!keyHolds(entry.id)) continue;
      if (entry.first) {
        answer_.add([&](int attribute) { return attribute == 0 ? entry.id : entry.value; });
      } else {
        answer_.outOfTurn();
        addRecord(entry.id, entry.record);
      }
    }
    return !cursor->givenUp();
  }

  bool keyHolds(std::string_view id) const {
    return std::all_of(plan_.tests.begin(), plan_.tests.end(), [&](const Test& test) {
      return test.attribute != 0 || test.criterion.holdsForValue(id);
    });
  }

  // What a path does not answer is tested on each record, in the order of the attributes.
  void startOn(const AccessPath* path, Answer::Coming coming) {
    answer_.begin(coming, path == nullptr ? 0 : path->attribute);
    left_.clear();
    for (const Test& test : plan_.tests) {
      if (path != nullptr && &test == path->answers) continue;
      const auto place = std::upper_bound(
          left_.begin(), left_.end(), &test,
          [](const Test* a, const Test* b) { return a->attribute < b->attribute; });
      left_.insert(place, &test);
    }
  }

  void addRecord(std::string_view id, std::string_view record) {
    RecordScan scan(record);
    for (const Test* test : left_) {
      const bool holds = test->attribute == 0
                             ? test->criterion.holdsForValue(id)
                             : test->criterion.holdsForAttribute(scan.attribute(test->attribute));
      if (!holds) return;
    }
    answer_.add([&](int attribute) {
      return attribute == 0 ? id : firstValue(attributeOf(record, attribute));
    });
  }

  Engine& engine_;
  const Plan& plan_;
  std::vector<const Test*> left_;
  Answer answer_;
};

}  // namespace

store::DynamicArray runSelection(Engine& engine, Catalogue& catalogue, std::string_view sentence,
                                 std::string_view file, std::string_view columns) {
  const Sentence parsed = parseSentence(sentence);
  if (!file.empty() && file != parsed.file.text) {
    refuseSentence(sentence, parsed.file.offset,
                   "the sentence selects from " + parsed.file.text + ", the request from " +
                       std::string(file));
  }
  Plan plan = planOf(catalogue, sentence, parsed);
  plan.columns = columnsOf(*plan.file, columns);
  return Selector(engine, plan).run();
}

}  // namespace multivalue
