// A store held in memory: it answers from maps and scripts, keeps a journal of all calls made
// through its objects, fails on demand, and tells when its objects go.
#pragma once

#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "store/Database.h"

namespace testing_support {

enum class CallKind { OpenFile, ReadRecord, DBWrite, DeleteRecord, ExecuteSentence };

struct Call {
  CallKind kind = CallKind::OpenFile;
  std::string file;  // of a selection, its attribute 2; of commands, ""
  std::string id;    // of a record's call
  std::string text;  // what was written, or the full text of the request

  // "OpenFile ACCORD", "ReadRecord TABLES STATORGCHG", "ExecuteSentence SSELECT ...".
  std::string told() const;
};

class MemoryStore {
 public:
  MemoryStore();

  // The database as the system sees it; its calls come back to this store, which may go first.
  // Each connection given is one object more.
  std::unique_ptr<store::Database> connect();

  // --- What it holds. Every file exists; an attribute's values are separated by the value mark.
  void put(std::string_view file, std::string_view id,
           std::initializer_list<std::string_view> attributes);
  void put(std::string_view file, std::string_view id, const store::DynamicArray& record);
  // Sets one attribute of a record, which is created when missing.
  void set(std::string_view file, std::string_view id, int attribute, std::string_view text);
  void erase(std::string_view file, std::string_view id);
  bool has(std::string_view file, std::string_view id) const;
  // An empty array when there is no such record.
  store::DynamicArray record(std::string_view file, std::string_view id) const;
  std::vector<std::string> ids(std::string_view file) const;

  // --- How it answers a sentence: first what was scripted for exactly this sentence; else the
  // plain forms "SSELECT file", "... AVEC field op "value"", "AND AVEC ...", "PAR field" with a
  // field's number, @ID or one of the names SigleOrgChg, OrgChgAcc and CodAssoActivite, the
  // operators = # < <= > >= and "]" for a prefix; else (commands) an empty array.
  void answer(std::string_view sentence, const store::DynamicArray& answer);
  // One attribute a record, its values the columns.
  void answer(std::string_view sentence,
              std::initializer_list<std::initializer_list<std::string_view>> records);
  // Plays the server: runs at each request that is no selection and does not fail.
  void onCommands(std::function<void(const store::DynamicArray& request)> server);

  // --- Journal.
  const std::vector<Call>& calls() const;
  std::vector<std::string> told() const;
  std::vector<Call> calls(CallKind kind) const;
  void forgetCalls();

  // --- Faults. The call that fails is in the journal and has no effect.
  // The n-th call from now, counted from 1, fails once.
  void failAt(int nthCall, unsigned code = store::kFailed);
  // Every call of that kind (on that file, if one is named) fails until stopFailing().
  void fail(CallKind kind, std::string_view file = {}, unsigned code = store::kFailed);
  void stopFailing();

  // --- Other users. From here on DBWrite refuses, with kChanged, a record that put(), set() or
  // erase() has changed since it was read: it plays the store that watches over that.
  void watchOverChanges();

  // --- Release log: "Record TABLES STATORGCHG", "File TABLES", "Database", in the order in which
  // the objects went. Others may append to it.
  std::vector<std::string>& releases();
  std::shared_ptr<std::vector<std::string>> sharedReleases();

  struct State;

 private:
  std::shared_ptr<State> state_;
};

}  // namespace testing_support
