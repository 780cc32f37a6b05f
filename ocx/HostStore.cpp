#include "ocx/HostStore.h"

#include <exception>
#include <new>
#include <optional>
#include <utility>

#include "com/LateBound.h"

namespace ocx {

using Microsoft::WRL::ComPtr;

namespace {

constexpr const wchar_t* kWholeText = L"";
constexpr const wchar_t* kExecuteSentence = L"ExecuteSentence";
constexpr const wchar_t* kAnnounceRecords = L"AnnounceRecords";
constexpr const wchar_t* kAnnounceAll = L"AnnounceAll";

// Whatever a call of the host's objects fails with is a failure of the store.
template <class Call>
auto storeCall(Call call) {
  try {
    return call();
  } catch (const store::StoreError&) {
    throw;
  } catch (const com::Error& failure) {
    throw store::StoreError(static_cast<unsigned>(failure.code()), failure.what());
  } catch (const std::bad_alloc& failure) {
    throw store::StoreError(static_cast<unsigned>(E_OUTOFMEMORY), failure.what());
  } catch (const std::exception& failure) {
    throw store::StoreError(store::kFailed, failure.what());
  }
}

// U+00FD and U+00FE in UTF-8: lead byte 0xC3, then 0xBD or 0xBE.
bool holdsMarkCharacter(std::string_view text) {
  return text.find("\xC3\xBD") != std::string_view::npos ||
         text.find("\xC3\xBE") != std::string_view::npos;
}

com::Variant outgoing(std::string_view text) {
  if (holdsMarkCharacter(text)) {
    throw store::StoreError(store::kBadValue, "a text holds one of the store's mark characters");
  }
  return com::Variant::ofText(com::wide(text));
}

std::vector<com::Variant> argument(std::string_view text) {
  std::vector<com::Variant> arguments;
  arguments.push_back(outgoing(text));
  return arguments;
}

// What a request is answered with: a dynamic array, or at once its full text.
std::string fullText(const com::LateBound& database, const wchar_t* member,
                     const com::Variant& answer) {
  if (answer.get().vt != VT_DISPATCH && answer.get().vt != VT_UNKNOWN) {
    return com::recordText(database.read(member, answer, com::textOrNullOf));
  }
  const ComPtr<IDispatch> object = database.read(member, answer, com::objectOf);
  if (object == nullptr) return {};
  return com::recordText(com::LateBound(object, "dynamic array").callForText(kWholeText));
}

bool recordExists(com::LateBound& record) {
  constexpr const wchar_t* kStatus = L"Status";
  return !record.has(kStatus) ||
         com::lowBitsOf(record.call(kStatus).get()) != store::kRecordNotFound;
}

class HostRecord final : public store::Record {
 public:
  HostRecord(com::LateBound object, std::string asRead, bool found)
      : Record(store::DynamicArray(asRead), found),
        object_(std::move(object)),
        held_(std::move(asRead)) {}

  void DBWrite() override {
    storeCall([this] { write(); });
  }

 private:
  void write() {
    std::string now = fields().text();
    if (held_ != now) {
      held_.reset();
      object_.put(kWholeText, outgoing(now));
      held_ = std::move(now);
    }
    object_.call(L"DBWrite");
  }

  com::LateBound object_;
  std::optional<std::string> held_;  // by the host's object; unknown after a failed assignment
};

// Of a store that fails to read a record which does not exist, or gives Null for it: there is no
// object to write the record through.
class MissingRecord final : public store::Record {
 public:
  MissingRecord() : Record(store::DynamicArray(), false) {}
  void DBWrite() override {
    throw store::StoreError(store::kRecordNotFound, "the store gave no object for a new record");
  }
};

class HostFile final : public store::File {
 public:
  explicit HostFile(ComPtr<IDispatch> object) : object_(std::move(object), "file") {}

  std::unique_ptr<store::Record> ReadRecord(std::string_view id) override {
    return storeCall([&] { return read(id); });
  }

  void announce(const std::vector<std::string>& ids) override {
    store::DynamicArray list;
    int count = 0;
    for (const std::string& id : ids) list.set(++count, id);
    if (count > 0) tell([&] { announceNow(kAnnounceRecords, argument(list.text())); });
  }

  void announceAll() override {
    tell([this] { announceNow(kAnnounceAll, {}); });
  }

  // Whatever the host's object gives back is left alone: nobody asks for it.
  int DeleteRecord(std::string_view id) override {
    return storeCall([&] {
      object_.call(L"DeleteRecord", argument(id));
      return 0;
    });
  }

 private:
  std::unique_ptr<store::Record> read(std::string_view id) {
    constexpr const wchar_t* kReadRecord = L"ReadRecord";
    com::Variant answer;
    try {
      answer = object_.call(kReadRecord, argument(id));
    } catch (const store::StoreError& failure) {
      if (failure.code() != store::kRecordNotFound) throw;
    }
    if (com::isNothing(answer.get())) return std::make_unique<MissingRecord>();
    com::LateBound record(object_.objectIn(kReadRecord, answer), "record");
    const bool found = recordExists(record);
    std::string text = com::recordText(record.callForText(kWholeText));
    return std::make_unique<HostRecord>(std::move(record), std::move(text), found);
  }

  // Of a host's object that has no such member, or in which it fails, nobody hears.
  template <class Call>
  static void tell(const Call& call) {
    try {
      storeCall(call);
    } catch (const store::StoreError&) {
      // The records are read one by one then, and that tells.
    }
  }

  void announceNow(const wchar_t* member, const std::vector<com::Variant>& arguments) {
    if (object_.has(member)) object_.call(member, arguments);
  }

  com::LateBound object_;
};

class HostDatabase final : public store::Database {
 public:
  explicit HostDatabase(ComPtr<IDispatch> object) : object_(std::move(object), "database") {}

  bool wraps(IDispatch* object) const { return object_.is(object); }

  std::unique_ptr<store::File> OpenFile(std::string_view name) override {
    return storeCall([&]() -> std::unique_ptr<store::File> {
      return std::make_unique<HostFile>(object_.callForObject(L"OpenFile", argument(name)));
    });
  }

  store::DynamicArray ExecuteSentence(std::string_view request) override {
    return storeCall([&] {
      return store::DynamicArray(
          fullText(object_, kExecuteSentence, object_.call(kExecuteSentence, argument(request))));
    });
  }

 private:
  com::LateBound object_;
};

}  // namespace

std::shared_ptr<store::Database> databaseOf(IDispatch* object) {
  return object == nullptr ? nullptr : std::make_shared<HostDatabase>(object);
}

bool isDatabaseOf(const store::Database& database, IDispatch* object) {
  const auto* own = dynamic_cast<const HostDatabase*>(&database);
  return own != nullptr && own->wraps(object);
}

}  // namespace ocx
