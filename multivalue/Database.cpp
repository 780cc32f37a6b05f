#include "multivalue/Database.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <map>
#include <optional>
#include <random>
#include <span>
#include <thread>
#include <type_traits>
#include <utility>

#include "multivalue/Catalogue.h"
#include "multivalue/Commands.h"
#include "multivalue/RecordText.h"
#include "multivalue/Records.h"
#include "multivalue/SeenRecords.h"
#include "multivalue/Selection.h"
#include "multivalue/Sentence.h"
#include "store/StoreError.h"

namespace multivalue {

namespace {

// Shared by the database object, its files and its records: the store closes with the last.
struct Client {
  explicit Client(std::unique_ptr<Engine> opened) : engine(std::move(opened)), catalogue(*engine) {}

  const std::unique_ptr<Engine> engine;
  Catalogue catalogue;
  SeenRecords seen;
  bool inTransaction = false;  // of the client's own

  // A deed that is a transaction, until it has met no other one, within a bound. A part of the
  // client's transaction cannot be run again without the rest.
  template <typename Deed>
  void whole(const Deed& deed) {
    constexpr int kAttempts = 12;
    for (int attempt = 1;; ++attempt) {
      try {
        return deed();
      } catch (const Conflict&) {
        if (inTransaction) throw;
        catalogue.forget();
        if (attempt == kAttempts) throw;
      }
      pause(attempt);
    }
  }

  // Longer each time, and not as long as the other one does: some 2 s in all.
  static void pause(int attempt) {
    constexpr int kLongest = 8;
    std::random_device random;
    const unsigned most = 1U << static_cast<unsigned>(std::min(attempt, kLongest));
    std::this_thread::sleep_for(std::chrono::milliseconds(1 + random() % most));
  }

  // The file is looked up inside the transaction: another process may have given it an index.
  void write(std::string_view file, std::string_view id, std::string_view record) {
    requireWritable(id, record);
    const std::string after(record);
    seen.changed(file, id, settling(file, id, after, &Records::write, record), after);
  }

  bool remove(std::string_view file, std::string_view id) {
    const SeenRecords::Text before = settling(file, id, std::nullopt, &Records::remove);
    seen.changed(file, id, before, std::nullopt);
    return before.has_value();
  }

  // Kept together or not at all; a part of them at a time.
  void writeAll(std::string_view file, const std::vector<Database::Written>& records) {
    constexpr std::size_t kPart = 500;
    for (const Database::Written& each : records) requireWritable(each.id, each.record);
    const std::span all(records);
    std::vector<Replacement> done;
    whole([&] {
      done.clear();
      const auto transaction = engine->begin();
      for (std::size_t at = 0; at < all.size(); at += kPart) {
        const auto part = writeTogether(file, all.subspan(at, std::min(kPart, all.size() - at)));
        done.insert(done.end(), part.begin(), part.end());
      }
      transaction->commit();
    });
    for (const Replacement& each : done) seen.changed(file, each.id, each.before, each.after);
  }

  // Writes a record over what has been seen of it.
  void replace(const SeenRecords::Seen& record, const std::string& text) {
    requireWritable(record.id(), text);
    try {
      whole([&] { exchange(record, text); });
    } catch (const store::StoreError& failure) {
      if (failure.code() != store::kOutcomeUnknown) throw;
      exchangeAgain(record, text, failure);
    }
    seen.changed(record.file(), record.id(), SeenRecords::Text(record.text()), text);
  }

 private:
  // What a change of one record finds there, by which it has come to hold `after`. Of unknown
  // outcome, it has succeeded where that is stored, and is run again where nothing was done: it
  // reads first.
  template <typename... Arguments>
  SeenRecords::Text settling(std::string_view file, std::string_view id,
                             const SeenRecords::Text& after,
                             std::optional<std::string> (Records::*change)(std::string_view,
                                                                           Arguments...),
                             std::type_identity_t<Arguments>... arguments) {
    SeenRecords::Text before;
    const auto deed = [&] {
      const auto transaction = engine->begin();
      before = (Records(*engine, catalogue.forWriting(file)).*change)(id, arguments...);
      transaction->commit();
    };
    try {
      whole(deed);
    } catch (const store::StoreError& failure) {
      if (failure.code() != store::kOutcomeUnknown) throw;
      const bool done = isStored(file, id, after);
      if (!done && !isStored(file, id, before)) throw;
      if (!done) whole(deed);
    }
    return before;
  }

  void exchange(const SeenRecords::Seen& record, const std::string& text) {
    if (!inTransaction) {
      const auto known = catalogue.forReading(record.file());
      requireIdentifier(*known, record.id());
      if (engine->exchangeAtOnce(*known, record.id(), record.text(), text)) return;
    }
    const auto transaction = engine->begin();
    const auto file = catalogue.forWriting(record.file());
    requireIdentifier(*file, record.id());
    if (!engine->exchange(*file, record.id(), record.text(), text)) {
      throw store::StoreError(store::kChanged, "somebody else has changed a record of " +
                                                   file->name + " since it was read");
    }
    transaction->commit();
  }

  // Of one identifier, the last text counts.
  static std::vector<Replacement> replacements(const FileDescription& file,
                                               std::span<const Database::Written> records) {
    std::map<std::string_view, std::string_view> last;
    for (const Database::Written& each : records) {
      requireIdentifier(file, each.id);
      last[each.id] = each.record;
    }
    std::vector<Replacement> all;
    all.reserve(last.size());
    for (const auto& [id, record] : last) {
      all.push_back({std::string(id), std::nullopt, std::string(record)});
    }
    return all;
  }

  // Where another writer is not kept out, it may have come in between.
  std::vector<Replacement> writeTogether(std::string_view name,
                                         std::span<const Database::Written> records) {
    constexpr int kAttempts = 10;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
      const auto transaction = engine->begin();
      const auto file = catalogue.forWriting(name);
      std::vector<Replacement> all = replacements(*file, records);
      std::vector<std::string> ids;
      ids.reserve(all.size());
      for (const Replacement& each : all) ids.push_back(each.id);
      std::vector<std::optional<std::string>> stored = engine->readAllLocked(*file, ids);
      for (std::size_t i = 0; i < all.size(); ++i) all[i].before = std::move(stored[i]);
      if (!engine->exchangeAll(*file, all)) continue;
      transaction->commit();
      return all;
    }
    throw store::StoreError(
        store::kBusy, "records of " + std::string(name) + " are never found as they were read");
  }

  // Where what is stored shows that nothing was written. Should the lost write be done after all,
  // one of the two finds another text than it is for. What is stored does not show who has written
  // it: a text that is there already may be another client's.
  void exchangeAgain(const SeenRecords::Seen& record, const std::string& text,
                     const store::StoreError& unknown) {
    const auto told = [&unknown] {
      return store::StoreError(unknown.code(), unknown.what(), unknown.member());
    };
    if (!isStored(record.file(), record.id(), record.text())) throw told();
    try {
      whole([&] { exchange(record, text); });
    } catch (const store::StoreError& failure) {
      if (failure.code() == store::kChanged) throw told();
      throw;
    }
  }

  bool isStored(std::string_view file, std::string_view id, const SeenRecords::Text& text) {
    try {
      return engine->read(*catalogue.forReading(file), id) == text;
    } catch (const store::StoreError&) {
      return false;  // as long as nobody knows
    }
  }
};

class EngineRecord final : public store::Record {
 public:
  EngineRecord(std::shared_ptr<Client> client, const std::string& file, std::string_view id,
               std::optional<std::string> text)
      : Record(text ? store::DynamicArray(*text) : store::DynamicArray(), text.has_value()),
        client_(std::move(client)),
        seen_(client_->seen, file, id, std::move(text)) {}

  void DBWrite() override { client_->replace(seen_, fields().text()); }

 private:
  const std::shared_ptr<Client> client_;
  const SeenRecords::Seen seen_;
};

class EngineFile final : public store::File {
 public:
  EngineFile(std::shared_ptr<Client> client, std::string_view name)
      : client_(std::move(client)), name_(name) {}

  std::unique_ptr<store::Record> ReadRecord(std::string_view id) override {
    return std::make_unique<EngineRecord>(
        client_, name_, id, client_->engine->read(*client_->catalogue.forReading(name_), id));
  }

  void announce(const std::vector<std::string>& ids) override {
    const auto file = description();
    if (file) client_->engine->announce(*file, ids);
  }

  void announceAll() override {
    const auto file = description();
    if (file) client_->engine->announceAll(*file);
  }

  int DeleteRecord(std::string_view id) override {
    return client_->remove(name_, id) ? 0 : static_cast<int>(store::kRecordNotFound);
  }

 private:
  // Null where it fails: reading tells then.
  std::shared_ptr<const FileDescription> description() const {
    try {
      return client_->catalogue.forReading(name_);
    } catch (const store::StoreError&) {
      return nullptr;
    }
  }

  std::shared_ptr<Client> client_;
  std::string name_;
};

class ClientTransaction final : public Transaction {
 public:
  explicit ClientTransaction(std::shared_ptr<Client> client)
      : client_(std::move(client)), transaction_(client_->engine->begin()) {
    client_->seen.begin();
    client_->inTransaction = true;
  }
  ClientTransaction(const ClientTransaction&) = delete;
  ClientTransaction& operator=(const ClientTransaction&) = delete;
  ~ClientTransaction() override {
    transaction_.reset();
    client_->inTransaction = false;
    client_->seen.undo();
    client_->catalogue.forget();
  }

  void commit() override {
    transaction_->commit();
    client_->seen.end();
  }

 private:
  std::shared_ptr<Client> client_;
  std::unique_ptr<Transaction> transaction_;  // ends before what it has made is forgotten
};

class EngineDatabase final : public Database {
 public:
  explicit EngineDatabase(std::shared_ptr<Client> client) : client_(std::move(client)) {}

  std::unique_ptr<store::File> OpenFile(std::string_view name) override {
    return std::make_unique<EngineFile>(client_, client_->catalogue.forReading(name)->name);
  }

  store::DynamicArray ExecuteSentence(std::string_view request) override {
    const std::string_view sentence = attributeOf(request, 1);
    if (isSelection(sentence)) {
      return runSelection(*client_->engine, client_->catalogue, sentence, attributeOf(request, 2),
                          attributeOf(request, 3));
    }
    if (request.empty()) refuseSentence("", 0, "the request is empty");
    const store::DynamicArray parts(request);
    for (int i = 1; i <= parts.DCount(); ++i) {
      client_->whole([&] { runCommand(*client_->engine, client_->catalogue, parts.get(i)); });
    }
    return {};
  }

  std::vector<std::string> fileNames() override { return client_->engine->fileNames(); }

  void createFile(std::string_view name) override {
    client_->whole([&] { client_->catalogue.createFile(name); });
  }

  std::string fieldName(std::string_view file, int attribute) override {
    for (const auto& [name, number] : client_->catalogue.forReading(file)->fields) {
      if (number == attribute) return name;
    }
    return {};
  }

  std::unique_ptr<Transaction> begin() override {
    return std::make_unique<ClientTransaction>(client_);
  }

  void write(std::string_view file, std::string_view id, std::string_view record) override {
    client_->write(file, id, record);
  }

  void writeAll(std::string_view file, const std::vector<Written>& records) override {
    client_->writeAll(file, records);
  }

  long long recordCount(std::string_view file) override {
    return client_->engine->count(*client_->catalogue.forReading(file), nullptr,
                                  std::numeric_limits<std::int64_t>::max());
  }

  void forEachRecord(std::string_view file, const Visitor& visitor) override {
    const auto description = client_->catalogue.forReading(file);
    const auto cursor = client_->engine->scan({*description});
    Entry entry;
    while (cursor->next(entry)) visitor(entry.id, entry.record);
  }

 private:
  std::shared_ptr<Client> client_;
};

}  // namespace

std::shared_ptr<Database> databaseOver(std::unique_ptr<Engine> engine) {
  return std::make_shared<EngineDatabase>(std::make_shared<Client>(std::move(engine)));
}

}  // namespace multivalue
