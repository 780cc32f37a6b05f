#include "agreements/ActiveAgreements.h"

#include "store/Dates.h"
#include "store/Layouts.h"
#include "store/Request.h"
#include "text/Utf8.h"

namespace agreements {
namespace {

// Day number of the first day of the current pay period; 0 when it cannot be told.
long debutDePeriode(store::File& periodes) {
  const std::unique_ptr<store::Record> record = periodes.ReadRecord("1");
  const std::string_view periode = record->fields().get(store::periodespaie::PeriodeCourante);
  const std::string premierJour = "01/" + text::mid(periode, 5, 2) + "/" + text::mid(periode, 1, 4);
  return store::dayOfText(premierJour).value_or(0);
}

}  // namespace

void RechercheAccord(screen::EditSession& session) {
  const std::string debut = std::to_string(debutDePeriode(*session.files.periodesPaie));
  const std::string sentence =
      "SSELECT ACCORD AVEC OrgChgAcc = " + store::quoted(session.codeEnMain) +
      " AND AVEC 18 = " + store::quoted("") + " AND AVEC 6 >= " + store::quoted(debut);
  session.accordsActifs = store::select(*session.TheDatabase, sentence, store::accord::kFile, "0");
}

}  // namespace agreements
