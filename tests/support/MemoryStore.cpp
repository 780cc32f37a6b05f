#include "tests/support/MemoryStore.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <utility>

#include "store/Layouts.h"
#include "store/Request.h"

namespace testing_support {

using store::DynamicArray;

struct Fault {
  CallKind kind;
  std::string file;
  unsigned code;
};

struct MemoryStore::State {
  std::map<std::string, std::map<std::string, DynamicArray>> files;
  std::map<std::string, DynamicArray> answers;
  std::function<void(const DynamicArray&)> server;
  std::vector<Call> calls;
  std::shared_ptr<std::vector<std::string>> releases = std::make_shared<std::vector<std::string>>();
  std::vector<Fault> faults;
  bool watching = false;
  int callsUntilFailure = 0;
  unsigned failureCode = 0;

  void note(CallKind kind, std::string file, std::string id = {}, std::string text = {});
  DynamicArray select(const DynamicArray& request) const;
};

namespace {

using State = MemoryStore::State;

const char* nameOf(CallKind kind) {
  switch (kind) {
    case CallKind::OpenFile:
      return "OpenFile";
    case CallKind::ReadRecord:
      return "ReadRecord";
    case CallKind::DBWrite:
      return "DBWrite";
    case CallKind::DeleteRecord:
      return "DeleteRecord";
    case CallKind::ExecuteSentence:
      return "ExecuteSentence";
  }
  return "";
}

// --- The sentences that the system itself uses, in their plain forms.

struct Condition {
  std::string field;
  std::string comparison;
  std::string value;
};

struct Sentence {
  std::string file;
  std::vector<Condition> conditions;
  std::vector<std::string> order;
};

// Words; a quoted value is one word that keeps its opening quote.
std::vector<std::string> wordsOf(std::string_view sentence) {
  std::vector<std::string> words;
  std::size_t at = 0;
  while ((at = sentence.find_first_not_of(' ', at)) != sentence.npos) {
    const bool isQuoted = sentence[at] == '"';
    const std::size_t end = std::min(sentence.find(isQuoted ? '"' : ' ', at + 1), sentence.size());
    words.emplace_back(sentence.substr(at, end - at));
    at = std::min(isQuoted ? end + 1 : end, sentence.size());
  }
  return words;
}

std::optional<Sentence> parsed(std::string_view text) {
  const std::vector<std::string> words = wordsOf(text);
  if (words.size() < 2 || (words[0] != "SSELECT" && words[0] != "SELECT")) return std::nullopt;
  Sentence sentence{words[1], {}, {}};
  for (std::size_t i = 2; i < words.size();) {
    if (words[i] == "AND") {
      ++i;
    } else if (words[i] == "PAR" && i + 1 < words.size()) {
      sentence.order.push_back(words[i + 1]);
      i += 2;
    } else if (words[i] == "AVEC" && i + 3 < words.size() && words[i + 3][0] == '"') {
      sentence.conditions.push_back({words[i + 1], words[i + 2], words[i + 3].substr(1)});
      i += 4;
    } else {
      return std::nullopt;
    }
  }
  return sentence;
}

// 0 stands for the identifier.
int numberOfField(std::string_view field) {
  static const std::map<std::string_view, int> kNames = {
      {"@ID", 0},
      {"SigleOrgChg", store::orgprisecharge::SigleOrgChg},
      {"OrgChgAcc", store::accord::OrgChgAcc},
      {"CodAssoActivite", store::activites::CodAssoActivite}};
  if (const auto found = kNames.find(field); found != kNames.end()) return found->second;
  int number = -1;
  std::from_chars(field.data(), field.data() + field.size(), number);
  if (number < 0) {
    throw store::StoreError(store::kBadSentence, "unknown field " + std::string(field));
  }
  return number;
}

std::vector<std::string> valuesOf(std::string_view field, const std::string& id,
                                  const DynamicArray& record) {
  const int number = numberOfField(field);
  if (number == 0) return {id};
  std::vector<std::string> values;
  for (int v = 1; v <= std::max(record.DCount(number), 1); ++v) {
    values.emplace_back(record.get(number, v));
  }
  return values;
}

std::optional<long long> asNumber(std::string_view text) {
  long long number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

int compared(const std::string& left, const std::string& right) {
  const auto a = asNumber(left);
  const auto b = asNumber(right);
  if (a && b) return *a < *b ? -1 : (*a > *b ? 1 : 0);
  return left.compare(right);
}

bool holds(const Condition& condition, const std::string& value) {
  const std::string& wanted = condition.value;
  const bool equal = !wanted.empty() && wanted.back() == ']'
                         ? value.starts_with(wanted.substr(0, wanted.size() - 1))
                         : value == wanted;
  if (condition.comparison == "=") return equal;
  if (condition.comparison == "#") return !equal;
  const int order = compared(value, wanted);
  if (condition.comparison == "<") return order < 0;
  if (condition.comparison == "<=") return order <= 0;
  if (condition.comparison == ">") return order > 0;
  return condition.comparison == ">=" && order >= 0;
}

bool holdsForAll(const Sentence& sentence, const std::string& id, const DynamicArray& record) {
  return std::all_of(
      sentence.conditions.begin(), sentence.conditions.end(), [&](const Condition& condition) {
        const auto values = valuesOf(condition.field, id, record);
        return std::any_of(values.begin(), values.end(),
                           [&](const std::string& value) { return holds(condition, value); });
      });
}

// --- The objects that the system holds.

class MemoryRecord : public store::Record {
 public:
  MemoryRecord(std::shared_ptr<State> state, std::string file, std::string id, DynamicArray fields,
               bool found)
      : Record(std::move(fields), found),
        state_(std::move(state)),
        file_(std::move(file)),
        id_(std::move(id)) {
    if (found) seen_ = this->fields();
  }
  MemoryRecord(const MemoryRecord&) = delete;
  MemoryRecord& operator=(const MemoryRecord&) = delete;
  ~MemoryRecord() override { state_->releases->push_back("Record " + file_ + " " + id_); }

  void DBWrite() override {
    state_->note(CallKind::DBWrite, file_, id_, fields().text());
    auto& records = state_->files[file_];
    const auto stored = records.find(id_);
    const bool same = stored == records.end() ? !seen_ : seen_ == stored->second;
    if (state_->watching && !same) {
      throw store::StoreError(store::kChanged, "changed since it was read");
    }
    records[id_] = fields();
    seen_ = fields();
  }

 private:
  std::shared_ptr<State> state_;
  std::string file_;
  std::string id_;
  std::optional<DynamicArray> seen_;
};

class MemoryFile : public store::File {
 public:
  MemoryFile(std::shared_ptr<State> state, std::string name)
      : state_(std::move(state)), name_(std::move(name)) {}
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;
  ~MemoryFile() override { state_->releases->push_back("File " + name_); }

  std::unique_ptr<store::Record> ReadRecord(std::string_view id) override {
    state_->note(CallKind::ReadRecord, name_, std::string(id));
    const auto& records = state_->files[name_];
    const auto found = records.find(std::string(id));
    const bool exists = found != records.end();
    return std::make_unique<MemoryRecord>(state_, name_, std::string(id),
                                          exists ? found->second : DynamicArray(), exists);
  }

  int DeleteRecord(std::string_view id) override {
    state_->note(CallKind::DeleteRecord, name_, std::string(id));
    state_->files[name_].erase(std::string(id));
    return 0;
  }

 private:
  std::shared_ptr<State> state_;
  std::string name_;
};

class MemoryDatabase : public store::Database {
 public:
  explicit MemoryDatabase(std::shared_ptr<State> state) : state_(std::move(state)) {}
  MemoryDatabase(const MemoryDatabase&) = delete;
  MemoryDatabase& operator=(const MemoryDatabase&) = delete;
  ~MemoryDatabase() override { state_->releases->push_back("Database"); }

  std::unique_ptr<store::File> OpenFile(std::string_view name) override {
    state_->note(CallKind::OpenFile, std::string(name));
    return std::make_unique<MemoryFile>(state_, std::string(name));
  }

  DynamicArray ExecuteSentence(std::string_view text) override {
    const DynamicArray request(text);
    const std::string sentence(request.get(1));
    const bool selects = parsed(sentence).has_value();
    state_->note(CallKind::ExecuteSentence, selects ? std::string(request.get(2)) : "", {},
                 std::string(text));
    if (const auto scripted = state_->answers.find(sentence); scripted != state_->answers.end()) {
      return scripted->second;
    }
    if (!selects && state_->server) state_->server(request);
    return selects ? state_->select(request) : DynamicArray();
  }

 private:
  std::shared_ptr<State> state_;
};

}  // namespace

void MemoryStore::State::note(CallKind kind, std::string file, std::string id, std::string text) {
  calls.push_back({kind, std::move(file), std::move(id), std::move(text)});
  const Call& call = calls.back();
  const bool last = callsUntilFailure == 1;
  if (callsUntilFailure > 0) --callsUntilFailure;
  if (last) throw store::StoreError(failureCode, "the store was told to fail at this call");
  for (const Fault& fault : faults) {
    if (fault.kind == kind && (fault.file.empty() || fault.file == call.file)) {
      throw store::StoreError(fault.code, "the store was told to fail such calls");
    }
  }
}

DynamicArray MemoryStore::State::select(const DynamicArray& request) const {
  const Sentence sentence = *parsed(request.get(1));
  std::vector<std::pair<std::string, const DynamicArray*>> chosen;
  if (const auto file = files.find(sentence.file); file != files.end()) {
    for (const auto& [id, record] : file->second) {
      if (holdsForAll(sentence, id, record)) chosen.emplace_back(id, &record);
    }
  }
  for (auto field = sentence.order.rbegin(); field != sentence.order.rend(); ++field) {
    std::stable_sort(chosen.begin(), chosen.end(), [&](const auto& a, const auto& b) {
      return valuesOf(*field, a.first, *a.second).front() <
             valuesOf(*field, b.first, *b.second).front();
    });
  }
  DynamicArray answer;
  const std::vector<std::string> columns = wordsOf(request.get(3));
  for (std::size_t r = 0; r < chosen.size(); ++r) {
    for (std::size_t c = 0; c < columns.size(); ++c) {
      answer.set(static_cast<int>(r) + 1, static_cast<int>(c) + 1,
                 valuesOf(columns[c], chosen[r].first, *chosen[r].second).front());
    }
  }
  return answer;
}

std::string Call::told() const {
  std::string out = nameOf(kind);
  if (kind == CallKind::ExecuteSentence) return out + " " + text;
  out += " " + file;
  return id.empty() ? out : out + " " + id;
}

MemoryStore::MemoryStore() : state_(std::make_shared<State>()) {}

std::unique_ptr<store::Database> MemoryStore::connect() {
  return std::make_unique<MemoryDatabase>(state_);
}

void MemoryStore::put(std::string_view file, std::string_view id,
                      std::initializer_list<std::string_view> attributes) {
  DynamicArray record;
  int number = 0;
  for (const std::string_view text : attributes) record.set(++number, text);
  put(file, id, record);
}

void MemoryStore::put(std::string_view file, std::string_view id, const DynamicArray& record) {
  state_->files[std::string(file)][std::string(id)] = record;
}

void MemoryStore::set(std::string_view file, std::string_view id, int attribute,
                      std::string_view text) {
  state_->files[std::string(file)][std::string(id)].set(attribute, text);
}

void MemoryStore::erase(std::string_view file, std::string_view id) {
  state_->files[std::string(file)].erase(std::string(id));
}

bool MemoryStore::has(std::string_view file, std::string_view id) const {
  const auto found = state_->files.find(std::string(file));
  return found != state_->files.end() && found->second.contains(std::string(id));
}

DynamicArray MemoryStore::record(std::string_view file, std::string_view id) const {
  return has(file, id) ? state_->files.at(std::string(file)).at(std::string(id)) : DynamicArray();
}

std::vector<std::string> MemoryStore::ids(std::string_view file) const {
  std::vector<std::string> out;
  for (const auto& [id, record] : state_->files[std::string(file)]) out.push_back(id);
  return out;
}

void MemoryStore::answer(std::string_view sentence, const DynamicArray& answer) {
  state_->answers[std::string(sentence)] = answer;
}

void MemoryStore::answer(std::string_view sentence,
                         std::initializer_list<std::initializer_list<std::string_view>> records) {
  DynamicArray rows;
  int row = 0;
  for (const auto& columns : records) {
    ++row;
    int column = 0;
    for (const std::string_view text : columns) rows.set(row, ++column, text);
  }
  answer(sentence, rows);
}

void MemoryStore::onCommands(std::function<void(const DynamicArray&)> server) {
  state_->server = std::move(server);
}

const std::vector<Call>& MemoryStore::calls() const { return state_->calls; }

std::vector<std::string> MemoryStore::told() const {
  std::vector<std::string> out;
  for (const Call& call : state_->calls) out.push_back(call.told());
  return out;
}

std::vector<Call> MemoryStore::calls(CallKind kind) const {
  std::vector<Call> out;
  std::copy_if(state_->calls.begin(), state_->calls.end(), std::back_inserter(out),
               [kind](const Call& call) { return call.kind == kind; });
  return out;
}

void MemoryStore::forgetCalls() { state_->calls.clear(); }

void MemoryStore::failAt(int nthCall, unsigned code) {
  state_->callsUntilFailure = nthCall;
  state_->failureCode = code;
}

void MemoryStore::fail(CallKind kind, std::string_view file, unsigned code) {
  state_->faults.push_back({kind, std::string(file), code});
}

void MemoryStore::watchOverChanges() { state_->watching = true; }

void MemoryStore::stopFailing() {
  state_->faults.clear();
  state_->callsUntilFailure = 0;
}

std::vector<std::string>& MemoryStore::releases() { return *state_->releases; }

std::shared_ptr<std::vector<std::string>> MemoryStore::sharedReleases() { return state_->releases; }

}  // namespace testing_support
