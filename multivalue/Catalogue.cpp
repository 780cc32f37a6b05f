#include "multivalue/Catalogue.h"

#include <algorithm>
#include <utility>

#include "multivalue/StandardFiles.h"
#include "store/StoreError.h"

namespace multivalue {

namespace {

bool isNameCharacter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_' ||
         c == '-' || c == '.';
}

FileDescription newFile(std::string_view name) {
  FileDescription file;
  file.name = name;
  const StandardFile* standard = standardFile(name);
  if (standard == nullptr) return file;
  for (const FieldName& field : standard->fields) file.fields.emplace(field.name, field.attribute);
  file.indexed = standard->indexed;
  return file;
}

}  // namespace

bool FileDescription::hasIndex(int attribute) const {
  return std::find(indexed.begin(), indexed.end(), attribute) != indexed.end();
}

std::shared_ptr<const FileDescription> Catalogue::forWriting(std::string_view name) {
  const std::int64_t version = engine_.filesVersion();
  if (version != version_) files_.clear();
  version_ = version;
  return forReading(name);
}

std::shared_ptr<const FileDescription> Catalogue::forReading(std::string_view name) {
  auto known = files_.find(name);
  if (known != files_.end()) return known->second;
  for (std::shared_ptr<const FileDescription>& each : engine_.describeAll()) {
    version_ = each->version;
    files_.insert_or_assign(each->name, std::move(each));
  }
  known = files_.find(name);
  if (known != files_.end()) return known->second;
  std::shared_ptr<const FileDescription> described = engine_.describe(name);
  if (!described) throw store::StoreError(store::kUnknownFile, "unknown file " + std::string(name));
  files_.emplace(described->name, described);
  return described;
}

void Catalogue::createFile(std::string_view name) {
  if (!isFileName(name)) {
    throw store::StoreError(store::kBadValue, "no name for a file: \"" + std::string(name) + "\"");
  }
  const auto transaction = engine_.begin();
  const std::string same = engine_.sameName(name);
  if (same == name) return;
  if (!same.empty()) {
    throw store::StoreError(store::kBadValue, "a file " + same + " exists already; " +
                                                  std::string(name) +
                                                  " differs from it by case alone");
  }
  forget();
  engine_.addFile(newFile(name));
  transaction->commit();
}

void Catalogue::forget() {
  version_ = -1;
  files_.clear();
}

bool isFileName(std::string_view name) {
  return !name.empty() && std::all_of(name.begin(), name.end(), isNameCharacter);
}

void createStandardFiles(Engine& engine) {
  const auto transaction = engine.begin();
  Catalogue catalogue(engine);
  for (const StandardFile& file : standardFiles()) catalogue.createFile(file.name);
  transaction->commit();
}

}  // namespace multivalue
