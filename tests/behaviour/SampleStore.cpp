#include "tests/behaviour/SampleStore.h"

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <vector>

#include "store/DynamicArray.h"

namespace behaviour {
namespace {

struct SampleRecord {
  std::string file;
  std::string id;
  store::DynamicArray fields;
};

store::DynamicArray fieldsOf(const nlohmann::json& fields) {
  store::DynamicArray record;
  int attribute = 0;
  for (const auto& field : fields) {
    ++attribute;
    if (field.is_string()) {
      record.set(attribute, field.get<std::string>());
      continue;
    }
    int value = 0;
    for (const auto& each : field) record.set(attribute, ++value, each.get<std::string>());
  }
  return record;
}

std::vector<SampleRecord> load() {
  std::vector<SampleRecord> records;
  for (const std::string file :
       {"ORGPRISECHARGE", "PARAMBORDORGCHG", "COMPTEUR", "TABLES", "ACTIVITES", "ASSOCIATION",
        "PLANCOMPTABLE", "PERIODESPAIE", "NATUREVOIE"}) {
    const auto path = std::filesystem::path(TESSALINE_SAMPLE) / (file + ".jsonl");
    std::ifstream in(path);
    if (!in) throw std::runtime_error("no sample " + path.string());
    for (std::string line; std::getline(in, line);) {
      const auto json = nlohmann::json::parse(line);
      records.push_back({file, json.at("id").get<std::string>(), fieldsOf(json.at("fields"))});
    }
  }
  return records;
}

}  // namespace

void fillFromSample(testing_support::MemoryStore& store) {
  static const std::vector<SampleRecord> kRecords = load();
  for (const SampleRecord& record : kRecords) store.put(record.file, record.id, record.fields);
}

}  // namespace behaviour
