#include "agreements/RatePropagation.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "agreements/History.h"
#include "forms/Frm_Anim.h"
#include "screen/BusyScreen.h"
#include "store/Conversions.h"
#include "store/Layouts.h"
#include "store/Request.h"
#include "toolkit/Trap.h"

namespace agreements {
namespace {

namespace attribut = store::accord;

constexpr std::string_view kProcedure = "Recup_AccordTauxRemb";

struct Periode {
  long jour = 0;
  std::string taux;  // hundredths
};

std::int32_t Minimum(std::int32_t a, std::int32_t b) { return a < b ? a : b; }

// Most recent first. A row whose date or rate cannot be read carries nothing.
std::vector<Periode> nouvellesPeriodes(const AgreementContext& context) {
  const screen::PriseEnCharge& page = context.screen.priseEnCharge;
  const screen::EtatTaux& etat = context.session.taux;
  const std::int32_t derniere = Minimum(etat.W_TauxModifie ? etat.W_DerTauxModif : 0,
                                        page.Lst_DateRembOrgChg.listCount() - 1);
  std::vector<Periode> periodes;
  for (std::int32_t k = 0; k <= derniere; ++k) {
    const auto jour = store::dayOfText(page.Lst_DateRembOrgChg.list(k));
    const auto taux = store::hundredths(page.Lst_TxRembOrgChg.list(k));
    if (jour && taux) periodes.push_back({*jour, std::to_string(*taux)});
  }
  std::stable_sort(periodes.begin(), periodes.end(),
                   [](const Periode& a, const Periode& b) { return a.jour > b.jour; });
  return periodes;
}

std::string selection(const std::string& code, long jour) {
  return "SSELECT ACCORD AVEC OrgChgAcc = " + store::quoted(code) + " AND AVEC 18 # " +
         store::quoted("O") + " AND AVEC 6 > " + store::quoted(std::to_string(jour));
}

void retirerDepuis(store::DynamicArray& accord, long jour) {
  for (int j = accord.DCount(attribut::DatePartAcc); j >= 1; --j) {
    if (store::wholeNumber(accord.get(attribut::DatePartAcc, j)) < jour) continue;
    for (int attribute = attribut::TxRembAcc; attribute <= attribut::PartBenefAcc; ++attribute) {
      accord.Delete(attribute, j);
    }
  }
}

void fusionner(store::DynamicArray& accord, const std::vector<Periode>& periodes) {
  const store::DynamicArray avant = accord;
  retirerDepuis(accord, periodes.back().jour);
  int position = 0;
  for (const Periode& periode : periodes) {
    const int coupee = positionEnVigueur(avant, periode.jour);
    const auto gardee = [&](int attribute) {
      return coupee == 0 ? std::string_view() : avant.get(attribute, coupee);
    };
    ++position;
    accord.Insert(attribut::TxRembAcc, position, periode.taux);
    accord.Insert(attribut::DatePartAcc, position, std::to_string(periode.jour));
    accord.Insert(attribut::TrancheAcc, position, gardee(attribut::TrancheAcc));
    accord.Insert(attribut::PartBenefAcc, position, gardee(attribut::PartBenefAcc));
  }
}

// One that has gone since the selection is not created anew.
void mettreAJour(const AgreementContext& context, std::string_view cle,
                 const std::vector<Periode>& periodes) {
  const std::unique_ptr<store::Record> record = context.session.files.accord->ReadRecord(cle);
  context.session.accords.accord = record->fields();
  context.desktop.doEvents();
  if (!record->found()) return;
  fusionner(record->fields(), periodes);
  record->DBWrite();
  context.session.accords.accord = record->fields();
}

}  // namespace

void Recup_AccordTauxRemb(const AgreementContext& context) {
  screen::EditSession& session = context.session;
  if (!session.RecOrgChg || session.codeEnMain.empty()) return;
  const std::vector<Periode> periodes = nouvellesPeriodes(context);
  if (periodes.empty()) return;
  const screen::BusyScreen busy(context.desktop, context.surface);
  const store::DynamicArray cles =
      store::select(*session.TheDatabase, selection(session.codeEnMain, periodes.back().jour),
                    store::accord::kFile, "0");
  if (!store::anySelected(cles)) return;
  std::optional<forms::Frm_Anim> attente;
  toolkit::resumeNext(
      kProcedure, {[&] { attente.emplace(context.desktop); }, [&] { context.desktop.doEvents(); }});
  session.accords.indiceLettre = 0;
  bool tous = true;
  for (int i = 1; i <= cles.DCount(); ++i) {
    tous = toolkit::quietly(kProcedure, [&] { mettreAJour(context, cles.get(i, 1), periodes); }) &&
           tous;
  }
  if (!tous) throw store::StoreError(store::kFailed, "an agreement has not been updated");
}

}  // namespace agreements
  session.accords.cleLettre.clear();
