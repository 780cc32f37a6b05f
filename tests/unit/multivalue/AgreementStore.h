// A store with a funding body, its scale and its agreements, and the update run on it.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include "TemporaryStore.h"
#include "store/DynamicArray.h"
#include "store/Layouts.h"

namespace attribut = store::orgprisecharge;
namespace accord = store::accord;

// Attributes by number; ";" stands between values.
using Attributes = std::map<int, std::string>;

inline std::string recordOf(const Attributes& attributes) {
  store::DynamicArray record;
  for (const auto& [attribute, text] : attributes) record.set(attribute, recordText({text}));
  return record.text();
}

inline std::string withMarksShown(std::string text) {
  for (char& c : text) {
    if (c == store::kAttributeMark) c = '|';
    if (c == store::kValueMark) c = ';';
  }
  return text;
}

inline constexpr const char* kScaleDate = "01/02/2026";  // day 21217

// As the control sends it.
inline std::string updateRequest(std::string_view date, std::string_view code) {
  store::DynamicArray commands;
  commands.set(1, "SET-DEC ,");
  commands.set(2, "DATE.FORMAT");
  commands.set(3, "UDT.OPTIONS 11 ON");
  commands.set(4, "MAJTXACCGENE |" + std::string(date) + "|" + std::string(code));
  return commands.text();
}

// Record by key.
using Content = std::map<std::string, std::string>;

inline Content contentOf(multivalue::Database& database, std::string_view file) {
  Content found;
  database.forEachRecord(file, [&](std::string_view id, std::string_view record) {
    found.emplace(id, withMarksShown(std::string(record)));
  });
  return found;
}

class AgreementStore : public TemporaryStore {
 public:
  using TemporaryStore::TemporaryStore;

  // Three rows: 0 to 836, to 1 051 and to 1 266 for single persons, 0 to 1 297, to 1 631 and to
  // 1 965 for households.
  void putBody(const Attributes& changed = {}, std::string_view code = "125") const {
    Attributes body = {{attribut::DateRembOrgChg, "21186;20821"},
                       {attribut::TxRembOrgChg, "2305;2240"},
                       {attribut::DebRevSeulOrgChg, "0;83600;105100"},
                       {attribut::FinRevSeulOrgChg, "83600;105100;126600"},
                       {attribut::DebRevMenOrgChg, "0;129700;163100"},
                       {attribut::FinRevMenOrgChg, "129700;163100;196500"},
                       {attribut::BaremCoursOrgChg, "135;285;435"}};
    put(store::orgprisecharge::kFile, code, std::move(body), changed);
  }
  // Live, of 2025 to 2027, with one period.
  void putAgreement(std::string_view key, const Attributes& changed = {}) const {
    Attributes agreement = {{accord::OrgChgAcc, "125"},     {accord::NumAideAcc, "beneficiary"},
                            {accord::DateDebAcc, "20821"},  {accord::DateFinAcc, "21915"},
                            {accord::CodActAcc, "010P01"},  {accord::TxRembAcc, "2240"},
                            {accord::DatePartAcc, "20821"}, {accord::TrancheAcc, "1"},
                            {accord::PartBenefAcc, "120"}};
    put(accord::kFile, key, std::move(agreement), changed);
  }
  void putElements(std::string_view number, const std::string& income,
                   const std::string& kind = "") const {
    put(store::eltsfactaide::kFile, number,
        {{store::eltsfactaide::PartBenefElt, "120"},
         {store::eltsfactaide::RevenuElt, income},
         {store::eltsfactaide::FoyerElt, kind}},
        {});
  }

  void update(std::string_view date = kScaleDate, std::string_view code = "125") const {
    (**this).ExecuteSentence(updateRequest(date, code));
  }

  // "|" between attributes; "no record" when there is none.
  std::string modified(std::string_view code = "125") const {
    return shown(store::tempo::kFile,
                 std::string(store::tempo::kAccordsModifies) + std::string(code));
  }
  std::string limit(std::string_view code = "125") const {
    return shown(store::tempo::kFile,
                 std::string(store::tempo::kAccordsLimite) + std::string(code));
  }
  std::string shown(std::string_view file, std::string_view id) const {
    const auto opened = (**this).OpenFile(file);
    const auto record = opened->ReadRecord(id);
    return record->found() ? withMarksShown(record->fields().text()) : "no record";
  }
  // Attributes 10 to 13: "2305;2240|21217;20821|2;1|285;120".
  std::string history(std::string_view key) const {
    const auto file = (**this).OpenFile(accord::kFile);
    const auto record = file->ReadRecord(key);
    std::string text(record->fields().get(accord::TxRembAcc));
    for (int attribute = 11; attribute <= 13; ++attribute) {
      text += store::kAttributeMark;
      text += record->fields().get(attribute);
    }
    return withMarksShown(text);
  }

 private:
  void put(std::string_view file, std::string_view id, Attributes attributes,
           const Attributes& changed) const {
    for (const auto& [attribute, text] : changed) attributes[attribute] = text;
    (**this).write(file, id, recordOf(attributes));
  }
};
