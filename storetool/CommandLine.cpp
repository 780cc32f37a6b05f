#include "storetool/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <ostream>
#include <stdexcept>
#include <system_error>

#include "localstore/Backup.h"
#include "localstore/Paths.h"
#include "multivalue/Sentence.h"
#include "store/Request.h"
#include "store/StoreError.h"
#include "stores/Stores.h"
#include "storetool/Copy.h"
#include "storetool/ProgressBar.h"
#include "storetool/TextRecord.h"
#include "storetool/Transfer.h"
#include "text/Version.h"

namespace storetool {

namespace {

constexpr const char* kExitCodes =
    "Exit codes: 0 done, 1 no such record (show), 2 wrong command line, 3 a line or record that\n"
    "cannot be imported or exported, 4 refused (unknown file, bad sentence), 5 the store is busy,\n"
    "6 the store or a file cannot be read or written, 7 the store is not whole (check).";

constexpr const char* kUtf8 = "utf-8";
constexpr const char* kWindows1252 = "windows-1252";

struct Arguments {
  std::string store;
  std::string other;
  std::vector<std::string> paths;
  std::string file;
  std::string id;
  std::string output;
  std::string sentence;
  std::string columns = "0";
  std::string encoding = kUtf8;
  std::string separator = ",";
  bool readOnly = false;

  TextFormat format() const {
    return {encoding == kUtf8 ? Encoding::Utf8 : Encoding::Windows1252, separator.front()};
  }
  std::shared_ptr<multivalue::Database> open() const { return stores::open(store, readOnly); }
};

// The server that keeps a store copies it too.
void requireFile(const std::string& store) {
  if (!stores::isShared(store)) return;
  throw store::StoreError(store::kBadValue,
                          "a store on a server is copied and put back by the server's own tools, "
                          "pg_dump and pg_restore");
}

// The store to copy to: a new one where there is none.
std::shared_ptr<multivalue::Database> openTarget(const std::string& store) {
  try {
    return stores::open(store);
  } catch (const store::StoreError& error) {
    if (error.code() != store::kIoFailure) throw;
  }
  return stores::create(store);
}

// The same file, by whatever name; what SQLite keeps beside the store too.
bool isOfStore(const std::string& path, const std::string& store) {
  for (const char* const tail : {"", "-wal", "-shm"}) {
    std::error_code ignored;
    if (std::filesystem::equivalent(localstore::pathOf(path), localstore::pathOf(store + tail),
                                    ignored)) {
      return true;
    }
  }
  return false;
}

class Commands {
 public:
  Commands(const Arguments& arguments, std::ostream& out, std::ostream& err, bool progress)
      : arguments_(arguments), out_(out), err_(err), progress_(progress) {}

  int create() {
    stores::create(arguments_.store);
    return whole(stores::check(arguments_.store));
  }

  int copy() {
    const auto from = arguments_.open();
    Copied copied;
    {
      const auto to = openTarget(arguments_.other);
      ProgressBar bar(err_, progress_);
      copied = copyStore(*from, *to, [&](double done) { bar.show(done); });
    }
    for (const std::string& file : copied.unlike) out_ << file << ": not alike in both stores\n";
    out_ << copied.records << " records copied\n";
    const int target = whole(stores::check(arguments_.other));
    return copied.unlike.empty() ? target : kFaulty;
  }

  int backup() {
    requireFile(arguments_.store);
    localstore::backUp(arguments_.store, arguments_.other, arguments_.readOnly);
    return kDone;
  }

  int restore() {
    requireFile(arguments_.store);
    localstore::restore(arguments_.other, arguments_.store);
    return kDone;
  }

  int check() {
    const multivalue::Checked checked = stores::check(arguments_.store, arguments_.readOnly);
    if (checked.faults.empty()) out_ << checked.records << " records, no fault\n";
    return whole(checked);
  }

  int importAll() {
    const auto database = arguments_.open();
    Imported imported;
    {
      ProgressBar bar(err_, progress_);
      imported = importFiles(
          *database, arguments_.paths, [&](double done) { bar.show(done); }, arguments_.format());
    }
    for (const std::string& file : imported.newFiles) out_ << "new file " << file << '\n';
    out_ << imported.records << " records imported\n";
    return whole(stores::check(arguments_.store));
  }

  int exportOne() {
    const auto database = arguments_.open();
    if (isOfStore(arguments_.output, arguments_.store)) {
      throw store::StoreError(store::kIoFailure, arguments_.output + ": this is the store itself");
    }
    ProgressBar bar(err_, progress_);
    const long long count = exportFile(
        *database, arguments_.file, arguments_.output, [&](double done) { bar.show(done); },
        arguments_.format());
    out_ << count << " records exported\n";
    return kDone;
  }

  // A command would be run before its columns are found to be none of its own.
  int query() {
    if (!multivalue::isSelection(arguments_.sentence)) {
      multivalue::refuseSentence(arguments_.sentence, 0,
                                 "a selection is expected: SSELECT or SELECT");
    }
    const auto database = arguments_.open();
    const store::DynamicArray answer =
        store::select(*database, arguments_.sentence, "", arguments_.columns);
    for (int i = 1; i <= answer.DCount(); ++i) {
      std::string line(answer.get(i));
      std::replace(line.begin(), line.end(), store::kValueMark, '\t');
      out_ << line << '\n';
    }
    return kDone;
  }

  int show() {
    const auto database = arguments_.open();
    const auto file = database->OpenFile(arguments_.file);
    const auto record = file->ReadRecord(arguments_.id);
    if (!record->found()) {
      err_ << "tessaline-store: no record " << arguments_.id << " in " << arguments_.file << '\n';
      return kNothingFound;
    }
    const store::DynamicArray& fields = record->fields();
    for (int i = 1; i <= fields.DCount(); ++i) showAttribute(*database, fields, i);
    return kDone;
  }

 private:
  int whole(const multivalue::Checked& checked) {
    for (const std::string& fault : checked.faults) out_ << fault << '\n';
    return checked.faults.empty() ? kDone : kFaulty;
  }

  // "  1 SigleOrgChg: CD01"; of several values one a line, "25.2 DateRembOrgChg: 20000".
  void showAttribute(multivalue::Database& database, const store::DynamicArray& fields,
                     int attribute) {
    std::string name = database.fieldName(arguments_.file, attribute);
    if (!name.empty()) name.insert(0, " ");
    const int values = fields.DCount(attribute);
    for (int value = 1; value <= values; ++value) {
      std::string place = std::to_string(attribute);
      if (values > 1) place += "." + std::to_string(value);
      out_ << place << name << ": " << fields.get(attribute, value) << '\n';
    }
  }

  const Arguments& arguments_;
  std::ostream& out_;
  std::ostream& err_;
  bool progress_;
};

int exitCodeOf(const store::StoreError& error) {
  switch (error.code()) {
    case store::kUnknownFile:
    case store::kBadSentence:
    case store::kBadValue:
      return kRefused;
    case store::kBusy:
      return kStoreBusy;
    default:
      return kCannotAccess;
  }
}

int guarded(const std::function<int()>& command, std::ostream& err) {
  try {
    return command();
  } catch (const FormatError& error) {
    err << "tessaline-store: " << error.what() << '\n';
    return kBadRecord;
  } catch (const store::StoreError& error) {
    err << "tessaline-store: " << error.what() << '\n';
    return exitCodeOf(error);
  } catch (const std::exception& error) {
    err << "tessaline-store: " << error.what() << '\n';
    return kCannotAccess;
  }
}

}  // namespace

int runCommandLine(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err,
                   bool progress) {
  Arguments given;
  Commands commands(given, out, err, progress);
  std::function<int()> chosen;
  CLI::App app("Makes, fills and questions a store: in one file, or on a server (odbc:DSN=...).",
               "tessaline-store");
  app.footer(kExitCodes);
  app.require_subcommand(1);
  app.set_version_flag("--version", std::string("tessaline-store ") + text::kVersion);
  const auto addAlone = [&](const char* name, const char* description, int (Commands::*command)()) {
    CLI::App* added = app.add_subcommand(name, description);
    added->callback([&chosen, &commands, command] {
      chosen = [&commands, command] { return (commands.*command)(); };
    });
    return added;
  };
  const auto add = [&](const char* name, const char* description, int (Commands::*command)()) {
    CLI::App* added = addAlone(name, description, command);
    added->add_option("STORE", given.store, "the store's file, or odbc: and a connection")
        ->required();
    return added;
  };

  const auto addFormat = [&](CLI::App* command) {
    command->add_option("--encoding", given.encoding, "of the text files (default: utf-8)")
        ->check(CLI::IsMember({kUtf8, kWindows1252}));
    command
        ->add_option("--separator", given.separator,
                     "between the cells of CSV, \",\" (default) or \";\"; values are then\n"
                     "separated by \"|\"")
        ->check(CLI::IsMember({",", ";"}));
  };
  const auto addReadOnly = [&](CLI::App* command) {
    command->add_flag("--read-only", given.readOnly,
                      "write nothing, not even beside the store: for read-only media, full disks");
  };

  add("create", "Make a new store with the system's files, all empty", &Commands::create);
  CLI::App* import = add("import",
                         "Import .jsonl and .csv files named after the store's files, or all such\n"
                         "files of a folder; all of it or, when a line is bad, nothing",
                         &Commands::importAll);
  import->add_option("FILE-OR-FOLDER", given.paths, "what to import")->required();
  addFormat(import);
  CLI::App* exporting =
      add("export", "Write the records of a file as .jsonl or .csv", &Commands::exportOne);
  exporting->add_option("FILE", given.file, "the store's file to export")->required();
  exporting->add_option("-o,--output", given.output, "the text file to write")->required();
  addFormat(exporting);
  addReadOnly(exporting);
  CLI::App* query =
      add("query", "Run a sentence; a line a record, columns separated by tabs", &Commands::query);
  query->add_option("SENTENCE", given.sentence, "SSELECT file AVEC field = \"value\" PAR field")
      ->required();
  query->add_option("--columns", given.columns,
                    "attributes to show, 0 for the key, separated by blanks (default: 0)");
  CLI::App* show = add("show", "Show one record, an attribute a line", &Commands::show);
  show->add_option("FILE", given.file, "the record's file")->required();
  show->add_option("ID", given.id, "the record's key")->required();
  addReadOnly(query);
  addReadOnly(show);

  CLI::App* copy =
      addAlone("copy", "Carry all records into another store, new or empty, and compare both",
               &Commands::copy);
  copy->add_option("FROM", given.store, "a file, or odbc: and a connection")->required();
  copy->add_option("TO", given.other, "a file, or odbc: and a connection")->required();
  addReadOnly(copy);
  CLI::App* backup = add("backup", "Copy a store, in use or not, to a new file that is checked",
                         &Commands::backup);
  backup->add_option("TARGET", given.other, "the copy's file")->required();
  addReadOnly(backup);
  CLI::App* restore = addAlone("restore", "Put a copy in the place of a store that nobody has open",
                               &Commands::restore);
  restore->add_option("BACKUP", given.other, "the copy's file")->required();
  restore->add_option("STORE", given.store, "the store's file")->required();
  addReadOnly(add("check", "Look at the file, its records and its indexes; a line a fault",
                  &Commands::check));

  std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
  try {
    app.parse(reversed);
  } catch (const CLI::ParseError& error) {
    return app.exit(error, out, err) == 0 ? kDone : kWrongUsage;
  }
  return guarded(
      [&] {
        const int code = chosen();
        if (!out.flush()) throw std::runtime_error("the output cannot be written");
        return code;
      },
      err);
}

}  // namespace storetool
