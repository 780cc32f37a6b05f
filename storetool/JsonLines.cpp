#include "storetool/JsonLines.h"

#include <nlohmann/json.hpp>
#include <set>

#include "multivalue/RecordText.h"
#include "store/DynamicArray.h"
#include "storetool/Lines.h"

namespace storetool {

namespace {

using Json = nlohmann::json;

std::string attributeText(const Json& field) {
  if (field.is_string()) return field.get<std::string>();
  if (!field.is_array()) throw FormatError("a field is a string or an array of strings");
  std::string text;
  for (std::size_t i = 0; i < field.size(); ++i) {
    if (!field[i].is_string()) throw FormatError("a value is a string");
    if (i > 0) text += store::kValueMark;
    text += field[i].get<std::string>();
  }
  return text;
}

TextRecord recordOfLine(std::string_view line) {
  std::set<std::string> members;
  const auto once = [&](int depth, Json::parse_event_t event, const Json& parsed) {
    if (event == Json::parse_event_t::key && depth == 1 &&
        !members.insert(parsed.get<std::string>()).second) {
      throw FormatError("the member \"" + parsed.get<std::string>() + "\" is given twice");
    }
    return true;
  };
  const Json json = Json::parse(line, once, false);
  if (json.is_discarded()) throw FormatError("no JSON");
  if (!json.is_object()) throw FormatError("a record is an object with \"id\" and \"fields\"");
  for (const auto& [name, value] : json.items()) {
    if (name != "id" && name != "fields") throw FormatError("unknown member \"" + name + "\"");
  }
  const auto id = json.find("id");
  if (id == json.end() || !id->is_string()) throw FormatError("\"id\" is missing or no string");
  const auto fields = json.find("fields");
  if (fields == json.end() || !fields->is_array()) {
    throw FormatError("\"fields\" is missing or no array");
  }
  TextRecord record;
  record.id = id->get<std::string>();
  if (!multivalue::isIdentifier(record.id)) throw FormatError("\"id\" is empty");
  for (std::size_t i = 0; i < fields->size(); ++i) {
    if (i > 0) record.text += store::kAttributeMark;
    record.text += attributeText((*fields)[i]);
  }
  requireNoMarkCharacter(record);
  return record;
}

}  // namespace

void readJsonLines(std::istream& text, const RecordVisitor& visitor, const TextFormat& format) {
  Lines lines(text, format.encoding);
  std::string held;
  for (;;) {
    TextRecord record;
    try {
      if (!lines.next(held)) return;
      std::string_view line = held;
      if (line.ends_with('\r')) line.remove_suffix(1);
      if (line.find_first_not_of(" \t") == std::string_view::npos) continue;
      record = recordOfLine(line);
    } catch (const FormatError& error) {
      throw FormatError("line " + std::to_string(lines.number()) + ": " + error.what());
    }
    visitor(record, lines.offset());
  }
}

std::string jsonLine(std::string_view id, std::string_view record) {
  Json fields = Json::array();
  for (const std::string_view attribute : partsOf(record, store::kAttributeMark)) {
    const std::vector<std::string_view> values = partsOf(attribute, store::kValueMark);
    if (values.size() > 1) {
      fields.push_back(values);
    } else {
      fields.push_back(attribute);
    }
  }
  nlohmann::ordered_json line;
  line["id"] = id;
  line["fields"] = fields;
  try {
    return line.dump();
  } catch (const nlohmann::ordered_json::type_error&) {
    throw FormatError("record \"" + std::string(id) +
                      "\" is no UTF-8, which JSON cannot hold; CSV can");
  }
}

}  // namespace storetool
