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
#include "screen/StoreTrap.h"
#include "store/Amounts.h"
#include "store/Dates.h"
#include "store/Layouts.h"
#include "store/Request.h"
#include "store/Writing.h"

namespace agreements {
namespace {

namespace attribut = store::accord;

constexpr std::string_view kProcedure = "Recup_AccordTauxRemb";

struct Periode {
  long jour = 0;
  long long taux = 0;  // hundredths
};

std::int32_t Minimum(std::int32_t a, std::int32_t b) { return a < b ? a : b; }

// Rows 0 to this one as they are on screen, most recent first. A row whose date or rate cannot be
// read carries nothing.
std::vector<Periode> lignesJusque(const screen::PriseEnCharge& page, std::int32_t derniere) {
  std::vector<Periode> lignes;
  derniere = Minimum(derniere, page.Lst_DateRembOrgChg.listCount() - 1);
  for (std::int32_t k = 0; k <= derniere; ++k) {
    const auto jour = store::dayOfText(page.Lst_DateRembOrgChg.list(k));
    const auto taux = store::hundredths(page.Lst_TxRembOrgChg.list(k));
    if (jour && taux) lignes.push_back({*jour, *taux});
  }
  std::stable_sort(lignes.begin(), lignes.end(),
                   [](const Periode& a, const Periode& b) { return a.jour > b.jour; });
  return lignes;
}

// Has the record as it was read a rate of that day and amount?
bool dejaLue(const store::DynamicArray& ancien, const Periode& ligne) {
  using namespace store::orgprisecharge;
  const std::string taux = store::twoDecimals(ligne.taux);
  for (int i = 1; i <= ancien.DCount(DateRembOrgChg); ++i) {
    if (store::wholeNumber(ancien.get(DateRembOrgChg, i)) == ligne.jour &&
        store::shownHundredths(ancien.get(TxRembOrgChg, i)) == taux) {
      return true;
    }
  }
  return false;
}

// What is carried, most recent first: the oldest row that has changed and those after its date, for
// these give way in the agreements too; without a change, row 0.
std::vector<Periode> nouvellesPeriodes(const AgreementContext& context) {
  const screen::PriseEnCharge& page = context.screen.priseEnCharge;
  std::vector<Periode> lignes = lignesJusque(page, context.session.taux.W_DerTauxModif);
  while (!lignes.empty() && dejaLue(context.session.AncienOrgChg, lignes.back())) lignes.pop_back();
  return lignes.empty() ? lignesJusque(page, 0) : lignes;
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

// So many of them are read together by a store that can.
void annoncer(const AgreementContext& context, const store::DynamicArray& cles, int premier) {
  constexpr int kAnnonces = 200;
  if (premier % kAnnonces != 1) return;
  std::vector<std::string> suivantes;
  const int fin = std::min(premier + kAnnonces, cles.DCount() + 1);
  for (int i = premier; i < fin; ++i) suivantes.emplace_back(cles.get(i, 1));
  context.session.files.accord->announce(suivantes);
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
    accord.Insert(attribut::TxRembAcc, position, std::to_string(periode.taux));
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
  store::write(*context.session.files.accord, cle, *record);
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
  screen::resumeNext(
      session, kProcedure,
      {[&] { attente.emplace(context.desktop); }, [&] { context.desktop.doEvents(); }});
  session.accords.cleLettre.clear();
  session.accords.indiceLettre = 0;
  bool tous = true;
  for (int i = 1; i <= cles.DCount(); ++i) {
    annoncer(context, cles, i);
    tous = screen::quietly(session, kProcedure,
                           [&] { mettreAJour(context, cles.get(i, 1), periodes); }) &&
           tous;
  }
  if (!tous) throw store::StoreError(store::kFailed, "an agreement has not been updated");
}

}  // namespace agreements
