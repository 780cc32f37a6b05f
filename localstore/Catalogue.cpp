#include "localstore/Catalogue.h"

#include <algorithm>

#include "localstore/StandardFiles.h"
#include "store/StoreError.h"

namespace localstore {

namespace {

// Marks the file as a store ("Tess"), so that no other database is taken for one.
constexpr std::int64_t kApplicationId = 0x54657373;
constexpr std::int64_t kFormat = 1;

bool isNameCharacter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_' ||
         c == '-' || c == '.';
}

}  // namespace

std::string FileDescription::recordTable() const { return "\"record_" + name + "\""; }

std::string FileDescription::indexTable(int attribute) const {
  return "\"index_" + name + "_" + std::to_string(attribute) + "\"";
}

bool FileDescription::hasIndex(int attribute) const {
  return std::find(indexed.begin(), indexed.end(), attribute) != indexed.end();
}

void Catalogue::create() {
  WriteScope scope(connection_);
  connection_.execute(
      "CREATE TABLE store_file(name TEXT PRIMARY KEY COLLATE NOCASE) WITHOUT ROWID;"
      "CREATE TABLE store_dictionary(file TEXT, name TEXT, attribute INTEGER NOT NULL,"
      " PRIMARY KEY(file, name)) WITHOUT ROWID;"
      "CREATE TABLE store_index(file TEXT, attribute INTEGER,"
      " PRIMARY KEY(file, attribute)) WITHOUT ROWID;");
  connection_.execute("PRAGMA application_id = " + std::to_string(kApplicationId));
  connection_.execute("PRAGMA user_version = " + std::to_string(kFormat));
  for (const StandardFile& file : standardFiles()) createFile(file.name);
  scope.commit();
}

void Catalogue::checkFormat() {
  Query application(connection_, "PRAGMA application_id");
  if (!application.step() || application.number(0) != kApplicationId) {
    throw store::StoreError(store::kIoFailure, "the file is no store");
  }
  Query format(connection_, "PRAGMA user_version");
  if (!format.step() || format.number(0) != kFormat) {
    throw store::StoreError(store::kIoFailure, "the store has a format that is not known here");
  }
}

std::vector<std::string> Catalogue::names() {
  std::vector<std::string> found;
  Query query(connection_, "SELECT name FROM store_file ORDER BY name");
  while (query.step()) found.emplace_back(query.text(0));
  return found;
}

std::shared_ptr<const FileDescription> Catalogue::forWriting(std::string_view name) {
  {
    Query query(connection_, "PRAGMA schema_version");
    if (query.step() && query.number(0) != schemaVersion_) {
      files_.clear();
      schemaVersion_ = query.number(0);
    }
  }
  return forReading(name);
}

std::shared_ptr<const FileDescription> Catalogue::forReading(std::string_view name) {
  const auto known = files_.find(name);
  if (known != files_.end()) return known->second;
  std::shared_ptr<const FileDescription> loaded = load(std::string(name));
  if (!loaded) throw store::StoreError(store::kUnknownFile, "unknown file " + std::string(name));
  files_.emplace(loaded->name, loaded);
  return loaded;
}

void Catalogue::createFile(std::string_view name) {
  if (name.empty() || !std::all_of(name.begin(), name.end(), isNameCharacter)) {
    throw store::StoreError(store::kBadValue, "no name for a file: \"" + std::string(name) + "\"");
  }
  WriteScope scope(connection_);
  {
    Query present(connection_, "SELECT name FROM store_file WHERE name = ?1");
    if (present.bind(1, name).step()) {
      if (present.text(0) == name) return;
      throw store::StoreError(store::kBadValue, "a file " + std::string(present.text(0)) +
                                                    " exists already; " + std::string(name) +
                                                    " differs from it by case alone");
    }
  }
  forget();
  FileDescription file;
  file.name = name;
  Query(connection_, "INSERT INTO store_file VALUES(?1)").bind(1, name).run();
  connection_.execute("CREATE TABLE " + file.recordTable() +
                      "(id TEXT PRIMARY KEY, record BLOB NOT NULL) WITHOUT ROWID");
  const StandardFile* standard = standardFile(name);
  if (standard != nullptr) {
    for (const FieldName& field : standard->fields) {
      Query(connection_, "INSERT INTO store_dictionary VALUES(?1, ?2, ?3)")
          .bind(1, name)
          .bind(2, field.name)
          .bind(3, field.attribute)
          .run();
    }
    for (const int attribute : standard->indexed) {
      Query(connection_, "INSERT INTO store_index VALUES(?1, ?2)")
          .bind(1, name)
          .bind(2, attribute)
          .run();
      connection_.execute("CREATE TABLE " + file.indexTable(attribute) +
                          "(value TEXT, id TEXT, first INTEGER NOT NULL,"
                          " PRIMARY KEY(value, id)) WITHOUT ROWID");
    }
  }
  scope.commit();
}

void Catalogue::forget() {
  schemaVersion_ = -1;
  files_.clear();
}

std::shared_ptr<const FileDescription> Catalogue::load(const std::string& name) {
  Query present(connection_, "SELECT 1 FROM store_file WHERE name = ?1 COLLATE BINARY");
  if (!present.bind(1, name).step()) return nullptr;
  auto file = std::make_shared<FileDescription>();
  file->name = name;
  Query fields(connection_, "SELECT name, attribute FROM store_dictionary WHERE file = ?1");
  fields.bind(1, name);
  while (fields.step()) file->fields.emplace(fields.text(0), static_cast<int>(fields.number(1)));
  Query indexes(connection_, "SELECT attribute FROM store_index WHERE file = ?1");
  indexes.bind(1, name);
  while (indexes.step()) file->indexed.push_back(static_cast<int>(indexes.number(0)));
  return file;
}

}  // namespace localstore
