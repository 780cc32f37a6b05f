#include "multivalue/Database.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <optional>
#include <random>
#include <thread>
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
    std::optional<std::string> before;
    whole([&] {
      const auto transaction = engine->begin();
      before = Records(*engine, catalogue.forWriting(file)).write(id, record);
      transaction->commit();
    });
    seen.changed(file, id, before, std::string(record));
  }

  bool remove(std::string_view file, std::string_view id) {
    std::optional<std::string> before;
    whole([&] {
      const auto transaction = engine->begin();
      before = Records(*engine, catalogue.forWriting(file)).remove(id);
      transaction->commit();
    });
    seen.changed(file, id, before, std::nullopt);
    return before.has_value();
  }

  // Writes a record over what has been seen of it.
  void replace(const SeenRecords::Seen& record, const std::string& text) {
    requireWritable(record.id(), text);
    whole([&] {
      const auto transaction = engine->begin();
      const auto file = catalogue.forWriting(record.file());
      requireIdentifier(*file, record.id());
      if (!engine->exchange(*file, record.id(), record.text(), text)) {
        throw store::StoreError(store::kChanged, "somebody else has changed a record of " +
                                                     file->name + " since it was read");
      }
      transaction->commit();
    });
    seen.changed(record.file(), record.id(), SeenRecords::Text(record.text()), text);
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

  int DeleteRecord(std::string_view id) override {
    return client_->remove(name_, id) ? 0 : static_cast<int>(store::kRecordNotFound);
  }

 private:
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
