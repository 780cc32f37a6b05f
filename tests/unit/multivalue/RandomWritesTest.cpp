// Writes, deletions and transactions drawn at random, beside a model that keeps all in a map and
// knows neither sentences nor indexes: selections of either must agree.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>

#include "TemporaryStore.h"
#include "tests/support/Seed.h"

namespace {

using Values = std::vector<std::string>;
// Two attributes, the first with an index; a value at least.
using Model = std::map<std::string, std::vector<Values>>;

constexpr const char* kFile = "ORGPRISECHARGE";
const char* const kWords[] = {"A", "AB", "ABC", "B", "BA", "", "7", "10", "-3"};

class Draw {
 public:
  explicit Draw(std::uint32_t seed) : random_(seed) {}
  std::size_t below(std::size_t bound) { return random_() % bound; }
  std::string word() { return kWords[below(std::size(kWords))]; }
  std::string key() { return std::to_string(below(60)); }
  Values values() {
    Values drawn{word()};
    while (below(3) == 0) drawn.push_back(word());
    return drawn;
  }

 private:
  testing_support::Random random_;
};

std::string textOf(const std::vector<Values>& attributes) {
  std::string text;
  for (std::size_t a = 0; a < attributes.size(); ++a) {
    if (a > 0) text += store::kAttributeMark;
    for (std::size_t v = 0; v < attributes[a].size(); ++v) {
      if (v > 0) text += store::kValueMark;
      text += attributes[a][v];
    }
  }
  return text;
}

void writeOne(multivalue::Database& database, Model& model, Draw& draw) {
  const std::string key = draw.key();
  const auto file = database.OpenFile(kFile);
  if (draw.below(4) == 0) {
    file->DeleteRecord(key);
    model.erase(key);
    return;
  }
  const std::vector<Values> attributes{draw.values(), draw.values()};
  if (draw.below(2) == 0) {
    database.write(kFile, key, textOf(attributes));
  } else {
    const auto record = file->ReadRecord(key);
    record->fields().setText(textOf(attributes));
    record->DBWrite();
  }
  model[key] = attributes;
}

// Some writes, kept or undone together.
void writeSome(multivalue::Database& database, Model& model, Draw& draw) {
  Model after = model;
  const auto transaction = database.begin();
  for (std::size_t n = draw.below(6); n > 0; --n) writeOne(database, after, draw);
  if (draw.below(2) == 0) return;
  transaction->commit();
  model = after;
}

struct Wanted {
  std::size_t attribute = 0;  // from 0; 2 is the key
  char comparison = '=';      // ']' begins with, '[' ends with, '*' contains, '#', '<', '>'
  std::string value;

  std::string told() const {
    static const char* const kFields[] = {"1", "2", "@ID"};
    const std::string before = comparison == '[' || comparison == '*' ? "[" : "";
    const std::string behind = comparison == ']' || comparison == '*' ? "]" : "";
    const bool sign = comparison == '#' || comparison == '<' || comparison == '>';
    return std::string(kFields[attribute]) + " " + (sign ? std::string(1, comparison) : "=") +
           " \"" + before + value + behind + "\"";
  }
};

bool isNumber(const std::string& text) {
  const std::size_t digits = text.starts_with('-') ? 1 : 0;
  return text.size() > digits &&
         std::all_of(text.begin() + static_cast<std::ptrdiff_t>(digits), text.end(),
                     [](char c) { return c >= '0' && c <= '9'; });
}

int compared(const std::string& a, const std::string& b) {
  if (isNumber(a) && isNumber(b)) return std::atoi(a.c_str()) - std::atoi(b.c_str());
  return a.compare(b);
}

bool holdsForValue(const Wanted& wanted, const std::string& value) {
  switch (wanted.comparison) {
    case ']':
      return value.starts_with(wanted.value);
    case '[':
      return value.ends_with(wanted.value);
    case '*':
      return value.find(wanted.value) != std::string::npos;
    case '#':
      return value != wanted.value;
    case '<':
      return compared(value, wanted.value) < 0;
    case '>':
      return compared(value, wanted.value) > 0;
    default:
      return value == wanted.value;
  }
}

bool holds(const Wanted& wanted, const std::string& key, const std::vector<Values>& attributes) {
  const Values values = wanted.attribute == 2 ? Values{key} : attributes[wanted.attribute];
  if (wanted.value.empty() && wanted.attribute != 2) {
    if (wanted.comparison == '=') return values == Values{""};
    if (wanted.comparison == '#') return values != Values{""};
  }
  return std::any_of(values.begin(), values.end(),
                     [&](const std::string& value) { return holdsForValue(wanted, value); });
}

// Empty, numbers by size, other texts.
int inOrder(const std::string& a, const std::string& b) {
  const auto rank = [](const std::string& text) {
    return text.empty() ? 0 : isNumber(text) ? 1 : 2;
  };
  return rank(a) != rank(b) ? rank(a) - rank(b) : compared(a, b);
}

std::string answerOf(const Model& model, const std::vector<Wanted>& all, int order) {
  std::vector<Model::const_iterator> found;
  for (auto record = model.begin(); record != model.end(); ++record) {
    const bool right = std::all_of(all.begin(), all.end(), [&](const Wanted& wanted) {
      return holds(wanted, record->first, record->second);
    });
    if (right) found.push_back(record);
  }
  std::stable_sort(found.begin(), found.end(), [&](auto a, auto b) {
    if (order < 0) return false;
    const auto attribute = static_cast<std::size_t>(order);
    return inOrder(a->second[attribute][0], b->second[attribute][0]) < 0;
  });
  std::string answer;
  for (const auto record : found) {
    if (!answer.empty()) answer += '|';
    answer += record->first + "," + record->second[0][0] + "," + record->second[1][0];
  }
  return answer;
}

std::size_t compareSelections(const TemporaryStore& store, const Model& model, Draw& draw) {
  std::vector<Wanted> all;
  for (std::size_t n = draw.below(3); n > 0; --n) {
    Wanted wanted{draw.below(3), "=][*#<>"[draw.below(7)], draw.word()};
    if (wanted.attribute == 2) wanted.value = draw.key();
    all.push_back(wanted);
  }
  const int order = static_cast<int>(draw.below(3)) - 1;
  std::string sentence = std::string("SSELECT ") + kFile;
  for (std::size_t i = 0; i < all.size(); ++i) {
    sentence += (i == 0 ? " AVEC " : " AND AVEC ") + all[i].told();
  }
  if (order >= 0) sentence += " PAR " + std::to_string(order + 1);
  const std::string answer = store.select(sentence, "0 1 2");
  EXPECT_EQ(answer, answerOf(model, all, order)) << sentence;
  return answer.size();
}

TEST(RandomWrites, LeaveWhatAModelSays) {
  const TemporaryStore store;
  const auto other = store.connect();
  Model model;
  Draw draw(20260214);
  std::size_t answered = 0;
  for (int round = 0; round < 400 && !testing::Test::HasFailure(); ++round) {
    multivalue::Database& writer = draw.below(2) == 0 ? *store : *other;
    if (draw.below(4) == 0) {
      writeSome(writer, model, draw);
    } else {
      writeOne(writer, model, draw);
    }
    for (int i = 0; i < 5; ++i) answered += compareSelections(store, model, draw) > 0;
  }
  EXPECT_EQ(store->recordCount(kFile), static_cast<long long>(model.size()));
  EXPECT_GT(answered, 500U);
  EXPECT_EQ(store.underTest().fault(), "");
}

}  // namespace
