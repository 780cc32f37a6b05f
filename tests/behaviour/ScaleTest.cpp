#include "tests/behaviour/ScaleTest.h"

#include "store/Conversions.h"
#include "store/Layouts.h"

namespace behaviour {

std::string questionBareme(std::string_view date) {
  return "Vous venez de saisir un nouveau barème au " + std::string(date) +
         "\r\nSouhaitez-vous mettre à jour tous les accords de l'organisme ?\r\nAttention, ce "
         "traitement peut durer quelques minutes.";
}

Scale::Scale() {
  fillThreeBodies(store_);
  putScale("001",
           {{"0,00", "500,00", "0,00", "800,00", "1,50", "1,60"},
            {"500,00", "900,00", "800,00", "1400,00", "2,50", "2,75"},
            {"900,00", "2000,00", "1400,00", "3000,00", "4,00", "4,25"}},
           "01/01/2025", "01/01/2026");
  putScale("003", {{"0,00", "1000,00", "0,00", "1500,00", "", "10,00"}}, "", "01/07/2025");
  store_.set("ORGPRISECHARGE", "003", attribut::GestPartBenef, "%");
  start();
  show();
}

void Scale::putScale(std::string_view code, const Rows& rows, std::string_view previous,
                     std::string_view current) {
  store::DynamicArray record = store_.record("ORGPRISECHARGE", code);
  putRows(record, kFirstScaleAttribute, kScaleColumns, rows);
  record.set(attribut::DatBaremPrec, stored(previous));
  record.set(attribut::DatBaremCours, stored(current));
  store_.put("ORGPRISECHARGE", code, record);
}

void Scale::show(std::string_view code, Caller at) {
  const auto trace = called("show", at);
  control_->Vider_Donnees();
  lookUp(code);
  EXPECT_TRUE(user_->click(tabs(), 3));
  desktop_.clearJournal();
  store_.forgetCalls();
}

Rows Scale::rows() {
  return rowsOf({&list(kScaleLists[0]), &list(kScaleLists[1]), &list(kScaleLists[2]),
                 &list(kScaleLists[3]), &list(kScaleLists[4]), &list(kScaleLists[5])});
}

std::vector<int> Scale::selected() {
  std::vector<int> lines;
  for (const char* name : kScaleLists) lines.push_back(list(name).listIndex());
  return lines;
}

Row Scale::zones() {
  Row texts;
  for (const char* name : kScaleZones) texts.push_back(box(name).text());
  return texts;
}

void Scale::fillZones(const Row& row, Caller at) {
  const auto trace = called("fillZones", at);
  for (std::size_t i = 0; i < row.size(); ++i) user_->fill(box(kScaleZones[i]), row[i]);
}

void Scale::add(const Row& row, Caller at) {
  const auto trace = called("add", at);
  ASSERT_TRUE(press("Cmd_AjoutPart"));
  fillZones(row);
  ASSERT_TRUE(press("Cmd_OKPart"));
}

bool Scale::open(int row, std::string_view name) {
  user_->dblClick(list(name), row);
  return rowOpen();
}

void Scale::beginScale(std::string_view date, Caller at) {
  const auto trace = called("beginScale", at);
  desktop_.answer(Answer::Yes);
  ASSERT_TRUE(press("Cmd_NouveauBareme"));
  desktop_.takeBoxes();
  ASSERT_TRUE(user_->type(date));
}

bool Scale::asksAboutAgreements() {
  return caption("Cmd_NouveauBareme") == screen::kAnnulerBareme &&
         option("Opt_GestPartMont").value() && option("Opt_HeureOrgChg").value() &&
         option("Opt_TypePrincipalOrgChg").value();
}

void Scale::save(Caller at) {
  const auto trace = called("save", at);
  const bool asks = asksAboutAgreements();
  const std::string date = store::completeDate(current().text(), 2026);
  if (asks) desktop_.answer(Answer::No);
  ASSERT_TRUE(press("Cmd_OK"));
  if (asks) {
    expectBox(questionBareme(date), Icon::Exclamation, toolkit::Buttons::YesNo);
  } else {
    expectNoBox();
  }
  ASSERT_EQ(store_.calls(CallKind::DBWrite).size(), 1U);
}

}  // namespace behaviour
