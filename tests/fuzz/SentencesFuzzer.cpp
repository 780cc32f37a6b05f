// Requests to the local store, with their execution: a selection gives what reading every record
// gives, or is refused with a place; it changes nothing; the agreements' update does all or
// nothing, and nothing more the second time. An input is a request, with a line end for each
// attribute mark.
#include <algorithm>
#include <charconv>
#include <map>
#include <optional>
#include <vector>

#include "localstore/LocalDatabase.h"
#include "multivalue/Comparison.h"
#include "multivalue/Sentence.h"
#include "store/StoreError.h"
#include "tests/fuzz/Fuzz.h"
#include "tests/support/TemporaryFolder.h"

namespace fuzz {
namespace {

using store::DynamicArray;
using store::kAttributeMark;
using store::kValueMark;

using Records = std::map<std::string, std::string>;  // by key
using Files = std::map<std::string, Records>;

// Attributes between ";", values between "|".
std::string recordOf(std::string text) {
  std::replace(text.begin(), text.end(), ';', kAttributeMark);
  std::replace(text.begin(), text.end(), '|', kValueMark);
  return text;
}

// Bodies with all kinds of first attribute, which has an index; three with a scale for the update.
void fillBodies(Records& bodies) {
  const std::vector<std::string> acronyms{
      "CD01",  "CD1",       "cd01", "",         "41",    "041",   "-5",    "1,50",
      "1.5",   "\xC3\x89",  "CD]",  "[CD",      "CD|CD", "|CD01", "CD01|", "CD02|CD01",
      "1|2|3", "A \"B\" C", "\xFF", "\xFF\xFF", "9",     "10"};
  for (std::size_t i = 0; i < acronyms.size(); ++i) {
    bodies[std::to_string(100 + i)] =
        recordOf(acronyms[i] + ";" + std::to_string(i % 4) + ";" + std::to_string(i) + "|x");
  }
  const std::string scale = recordOf(std::string(23, ';') +
                                     ";21186|20821;2000|1900;;;;;;0|83600;83600|105100;0|129700;"
                                     "129700|163100;;150|300");
  for (const char* code : {"001", "002", "003"}) bodies[code] = "SCALE" + scale;
}

// So many that a search through the index is given up; a few are agreements of the bodies.
void fillAgreements(Files& files) {
  for (int i = 0; i < 1100; ++i) {
    const std::string person = std::to_string(10000 + i);
    files["ACCORD"][person + "*01"] = recordOf(i % 2 == 0 ? "A1|B" : "A2;7");
  }
  const std::vector<std::string> agreements{"001;;;;;21915;;;;1900;20821;1;200",
                                            "001;;;;;21915;;;;1900|1800;21186|20821;1|1;200|100",
                                            "001;;;;;21915;;;;;99999;1;1",
                                            "001;;;;;;;;;;20821",
                                            "002;;;;;21915",
                                            "001|002;;;;;21915"};
  for (std::size_t i = 0; i < agreements.size(); ++i) {
    const std::string person = std::to_string(20000 + i);
    files["ACCORD"][person + "*01"] = recordOf(agreements[i]);
    files["ELTSFACTAIDE"][person] = recordOf(i % 2 == 0 ? ";;;;50000;S" : ";;;;140000;M");
  }
}

// A record as a selection looks at it.
struct Candidate {
  std::string id;
  DynamicArray record;

  std::string whole(int attribute) const {
    return attribute == 0 ? id : std::string(record.get(attribute));
  }
  std::string first(int attribute) const {
    return attribute == 0 ? id : std::string(record.get(attribute, 1));
  }
};

class Store {
 public:
  Store() : database_(localstore::createLocalDatabase(folder_ / "fuzz.store")) {
    fillBodies(files_["ORGPRISECHARGE"]);
    fillAgreements(files_);
    for (const std::string& file : database_->fileNames()) addFile(file);
    const auto transaction = database_->begin();
    for (const auto& [file, records] : files_) {
      for (const auto& [id, text] : records) database_->write(file, id, text);
    }
    transaction->commit();
  }

  localstore::LocalDatabase& database() { return *database_; }
  const Files& files() const { return files_; }
  // The file's records in the order of their keys, as they were filled.
  const std::vector<Candidate>& candidates(const std::string& file) const {
    return candidates_.at(file);
  }
  bool unchanged(const std::string& file) {
    const Records& kept = files_.at(file);
    auto next = kept.begin();
    bool same = true;
    database_->forEachRecord(file, [&](std::string_view id, std::string_view text) {
      same = same && next != kept.end() && id == next->first && text == next->second;
      if (same) ++next;
    });
    return same && next == kept.end();
  }
  Files readAll() {
    Files files;
    for (const auto& [file, records] : files_) {
      Records& read = files[file];
      database_->forEachRecord(
          file, [&](std::string_view id, std::string_view text) { read.emplace(id, text); });
    }
    return files;
  }

  // A number, or a name of the dictionary; nothing for what is neither.
  std::optional<int> attribute(const std::string& file, const std::string& name) const {
    if (name == "@ID") return 0;
    const auto named = names_.at(file).find(name);
    if (named != names_.at(file).end()) return named->second;
    int number = -1;
    const char* const end = name.data() + name.size();
    const auto [stop, error] = std::from_chars(name.data(), end, number);
    if (name.starts_with('-') || error != std::errc() || stop != end) return std::nullopt;
    return number > 9999 ? std::nullopt : std::optional(number);
  }

 private:
  void addFile(const std::string& file) {
    for (const auto& [id, text] : files_[file]) {
      candidates_[file].push_back({id, DynamicArray(text)});
    }
    candidates_[file];
    std::map<std::string, int>& names = names_[file];
    for (int i = 1; i <= kMostNamed; ++i) {
      const std::string name = database_->fieldName(file, i);
      if (!name.empty()) names[name] = i;
    }
  }

  static constexpr int kMostNamed = 99;

  TemporaryFolder folder_;
  std::shared_ptr<localstore::LocalDatabase> database_;
  Files files_;  // as they were filled
  std::map<std::string, std::vector<Candidate>> candidates_;
  std::map<std::string, std::map<std::string, int>> names_;
};

// --- A selection without any index.

struct Looked {
  int attribute = 0;
  multivalue::Criterion criterion;
};

struct Plan {
  std::string file;
  std::vector<Looked> tests;
  std::vector<int> order;
  std::vector<int> columns;
};

std::optional<Plan> planOf(Store& store, const DynamicArray& request) {
  multivalue::Sentence sentence;
  try {
    sentence = multivalue::parseSentence(request.get(1));
  } catch (const store::StoreError&) {
    return std::nullopt;
  }
  Plan plan;
  plan.file = sentence.file.text;
  const std::string_view named = request.get(2);
  if (!store.files().contains(plan.file) || (!named.empty() && named != plan.file)) {
    return std::nullopt;
  }
  bool known = true;
  const auto look = [&](const std::string& name) {
    const std::optional<int> attribute = store.attribute(plan.file, name);
    known = known && attribute.has_value();
    return attribute.value_or(0);
  };
  for (const auto& [field, comparison, value] : sentence.conditions) {
    plan.tests.push_back({look(field.text), multivalue::Criterion(comparison, value)});
  }
  for (const multivalue::Word& field : sentence.order) plan.order.push_back(look(field.text));
  std::string_view columns = request.get(3);
  while (!columns.empty()) {
    const std::string_view name = upTo(' ', columns);
    if (!name.empty()) plan.columns.push_back(look(std::string(name)));
  }
  if (plan.columns.empty()) plan.columns.push_back(0);
  return known ? std::optional(plan) : std::nullopt;
}

std::string fullScan(const Plan& plan, const std::vector<Candidate>& all) {
  std::vector<const Candidate*> found;
  for (const Candidate& candidate : all) {
    const bool holds = std::all_of(plan.tests.begin(), plan.tests.end(), [&](const Looked& test) {
      return test.criterion.holdsForAttribute(candidate.whole(test.attribute));
    });
    if (holds) found.push_back(&candidate);
  }
  std::stable_sort(found.begin(), found.end(), [&](const Candidate* a, const Candidate* b) {
    for (const int attribute : plan.order) {
      const int compared = multivalue::compareForOrder(a->first(attribute), b->first(attribute));
      if (compared != 0) return compared < 0;
    }
    return false;
  });
  std::string answer;
  for (const Candidate* candidate : found) {
    if (candidate != found.front()) answer += kAttributeMark;
    for (std::size_t i = 0; i < plan.columns.size(); ++i) {
      if (i > 0) answer += kValueMark;
      answer += candidate->first(plan.columns[i]);
    }
  }
  return answer;
}

// --- What becomes of a request.

struct Outcome {
  std::string answer;
  std::optional<unsigned> refused;
  std::string message;
};

Outcome run(Store& store, const std::string& request) {
  Outcome outcome;
  try {
    outcome.answer = store.database().ExecuteSentence(request).text();
  } catch (const store::StoreError& error) {
    outcome.refused = error.code();
    outcome.message = error.what();
  }
  return outcome;
}

// "character 8: ..." or "columns, character 8: ...", of that request.
void checkRefusal(const Outcome& outcome, const std::string& request) {
  expect(outcome.refused == store::kBadSentence || outcome.refused == store::kUnknownFile,
         "a request is refused by one of the documented errors", outcome.message);
  std::string_view message = outcome.message;
  constexpr std::string_view kColumns = "columns, ";
  if (message.starts_with(kColumns)) message.remove_prefix(kColumns.size());
  constexpr std::string_view kCharacter = "character ";
  expect(message.starts_with(kCharacter), "a refusal begins with its place", outcome.message);
  std::size_t place = 0;
  std::from_chars(message.data() + kCharacter.size(), message.data() + message.size(), place);
  expect(place >= 1 && place <= request.size() + 1, "a refusal's place is in the request",
         outcome.message);
}

void checkSelection(Store& store, const std::string& request) {
  const Outcome outcome = run(store, request);
  const std::optional<Plan> plan = planOf(store, DynamicArray(request));
  if (outcome.refused) {
    checkRefusal(outcome, request);
    expect(!plan, "a well-formed selection is answered", outcome.message);
    return;
  }
  expect(plan.has_value(), "a selection that is not well formed is refused", readable(request));
  expectSame("an answer is that of a full scan", outcome.answer,
             fullScan(*plan, store.candidates(plan->file)));
  const Outcome again = run(store, request);
  expect(!again.refused, "a selection is answered again", again.message);
  expectSame("a selection is answered alike again", again.answer, outcome.answer);
  expect(store.unchanged(plan->file), "a selection changes nothing");
}

void checkCommands(Store& store, const std::string& request) {
  const auto undone = store.database().begin();
  const Outcome outcome = run(store, request);
  if (outcome.refused) {
    checkRefusal(outcome, request);
    const bool alone = request.find(kAttributeMark) == std::string::npos;
    expect(!alone || store.readAll() == store.files(), "a refused command changes nothing");
    return;
  }
  expectSame("commands answer nothing", outcome.answer, "");
  const Files after = store.readAll();
  const Outcome again = run(store, request);
  expect(!again.refused, "accepted commands are accepted again", again.message);
  expect(store.readAll() == after, "the same commands change nothing more");
}

}  // namespace

void check(std::string_view input) {
  static Store store;
  std::string request(input);
  std::replace(request.begin(), request.end(), '\n', kAttributeMark);
  if (multivalue::isSelection(DynamicArray(request).get(1))) {
    checkSelection(store, request);
  } else {
    checkCommands(store, request);
  }
}

}  // namespace fuzz
