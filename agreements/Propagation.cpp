#include "agreements/Propagation.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "agreements/History.h"
#include "agreements/Letter.h"
#include "agreements/LetterContents.h"
#include "agreements/Listing.h"
#include "forms/Frm_Anim.h"
#include "forms/PrinterChoice.h"
#include "screen/BusyScreen.h"
#include "screen/Messages.h"
#include "screen/StoreTrap.h"
#include "store/Dates.h"
#include "store/Layouts.h"
#include "text/Utf8.h"

namespace agreements {
namespace {

namespace attribut = store::accord;

constexpr std::string_view kProcedure = "Recup_Accord";
// So many agreements are announced to the store together.
constexpr int kAnnonces = 200;
constexpr const char* kDuree = "\r\nAttention, ce traitement peut durer quelques minutes.";
// The index of letters has 16 bits.
constexpr int kDernierIndice = std::numeric_limits<std::int16_t>::max();

bool concernePropagation(const AgreementContext& context) {
  return context.session.NouveauBareme && !context.session.propagationSuspendue &&
         context.screen.regles.Opt_TypePrincipalOrgChg.value() &&
         context.screen.priseEnCharge.Opt_HeureOrgChg.value() &&
         context.screen.participation.Opt_GestPartMont.value();
}

// One run, step by step.
class MiseAJour {
 public:
  explicit MiseAJour(const AgreementContext& context);
  // A run that the host ends by closing takes its lists with it too.
  ~MiseAJour() {
    fermerFichiersLettre(session_);
    effacerListes();
  }
  MiseAJour(const MiseAJour&) = delete;
  MiseAJour& operator=(const MiseAJour&) = delete;

  void recalculer();
  void ouvrir();
  void ecarterListesPerimees();
  void lireModifies();
  void lireLimite();
  void parcourir();
  void proposerListe();
  void effacerListes();

 private:
  void choisirImprimante();
  void annoncer(int premier);
  void imprimerLettre(int i);
  void terminerPage(int suivante);
  void noterNonModifie(std::string_view cle);
  bool supprimerListes();
  void lireAccord(std::string_view cle);
  std::string cleTempo(std::string_view mot) const;

  const AgreementContext& context_;
  screen::EditSession& session_;
  screen::MiseAJourAccords& accords_;
  std::string dateBareme_;
  long jourBareme_;
  bool recalcule_ = false;  // the store's command has succeeded
  std::unique_ptr<store::File> tempo_;
  bool listesLisibles_ = false;  // and this run's
  store::DynamicArray modifies_;
  store::DynamicArray limite_;
  int nonModifies_ = 0;
};

// What a step that fails does not read must not be another run's.
MiseAJour::MiseAJour(const AgreementContext& context)
    : context_(context),
      session_(context.session),
      accords_(context.session.accords),
      dateBareme_(context.screen.participation.Txt_DatBaremCours.text()),
      jourBareme_(store::dayOfText(dateBareme_).value_or(0)) {
  const bool lettres = accords_.lettresVoulues;
  accords_ = {};
  accords_.lettresVoulues = lettres;
}

std::string MiseAJour::cleTempo(std::string_view mot) const {
  return std::string(mot) + session_.codeEnMain;
}

void MiseAJour::recalculer() {
  store::DynamicArray commandes;
  commandes.set(1, "SET-DEC ,");
  commandes.set(2, "DATE.FORMAT");
  commandes.set(3, "UDT.OPTIONS 11 ON");
  commandes.set(4, "MAJTXACCGENE |" + dateBareme_ + "|" + session_.codeEnMain);
  recalcule_ = screen::quietly(session_, kProcedure,
                               [&] { session_.TheDatabase->ExecuteSentence(commandes.text()); });
}

void MiseAJour::ouvrir() {
  store::Database& base = *session_.TheDatabase;
  std::unique_ptr<store::File> constantes;
  screen::resumeNext(
      session_, kProcedure,
      {[&] { tempo_ = base.OpenFile(store::tempo::kFile); },
       [&] {
         accords_.entite =
             session_.files.association->ReadRecord(session_.entiteCourante)->fields();
       },
       [&] { session_.files.accord = base.OpenFile(store::accord::kFile); },
       [&] { constantes = base.OpenFile(store::constantespaie::kFile); },
       [&] {
         if (constantes) accords_.constantesPaie = constantes->ReadRecord("1")->fields();
       }});
}

// When the command has failed, what TEMPO holds is another run's. What cannot be deleted is not
// read either.
void MiseAJour::ecarterListesPerimees() {
  if (!tempo_) return;
  listesLisibles_ = recalcule_ || supprimerListes();
}

void MiseAJour::lireModifies() {
  if (!accords_.lettresVoulues || !listesLisibles_) return;
  screen::quietly(session_, kProcedure, [&] {
    accords_.accordsModifies =
        tempo_->ReadRecord(cleTempo(store::tempo::kAccordsModifies))->fields();
  });
  if (accords_.accordsModifies.get(1).empty()) return;
  choisirImprimante();
  modifies_ = accords_.accordsModifies;
}

void MiseAJour::choisirImprimante() {
  const screen::UsableScreen usable(context_.desktop, context_.surface);
  std::string choix(forms::kAucuneImprimante);
  screen::quietly(session_, kProcedure,
                  [&] { choix = forms::choisirImprimanteA4(context_.desktop); });
  if (choix == forms::kAucuneImprimante) {
    accords_.lettresVoulues = false;
    accords_.accordsModifies = store::NewDynamicArray();
    return;
  }
  screen::resumeNext(session_, kProcedure,
                     {[&] { context_.desktop.printer().setFontSize(12); },
                      [&] { context_.desktop.printer().setFontName("Courier New"); }});
}

void MiseAJour::lireLimite() {
  screen::quietly(session_, kProcedure, [&] {
    if (listesLisibles_)
      limite_ = tempo_->ReadRecord(cleTempo(store::tempo::kAccordsLimite))->fields();
  });
}

void MiseAJour::parcourir() {
  for (int i = 1; !modifies_.get(i).empty() || !limite_.get(i).empty(); ++i) {
    if (i % kAnnonces == 1) annoncer(i);
    if (!modifies_.get(i).empty()) imprimerLettre(i);
    if (!limite_.get(i).empty()) noterNonModifie(limite_.get(i));
    if (!modifies_.empty()) terminerPage(i + 1);
  }
}

// What the next letters and notes read.
void MiseAJour::annoncer(int premier) {
  std::vector<std::string> cles;
  std::vector<std::string> aides;
  for (int i = premier; i < premier + kAnnonces; ++i) {
    for (const store::DynamicArray* liste : {&modifies_, &limite_}) {
      if (!liste->get(i).empty()) cles.emplace_back(liste->get(i));
    }
    if (!modifies_.get(i).empty()) {
      aides.push_back(text::left(modifies_.get(i), attribut::kNumeroAide));
    }
  }
  session_.files.accord->announce(cles);
  annoncerLettres(session_, std::move(aides));
}

void MiseAJour::imprimerLettre(int i) {
  lireAccord(modifies_.get(i));
  accords_.cleLettre = modifies_.get(i);
  accords_.indiceLettre = static_cast<std::int16_t>(std::min(i, kDernierIndice));
  screen::quietly(session_, kProcedure, [&] { Impression_ModifAccord(context_); });
}

// Letters of two persons never share a page: when there is no next page, the next job brings one.
void MiseAJour::terminerPage(int suivante) {
  const bool suite = !modifies_.get(suivante).empty() && screen::quietly(session_, kProcedure, [&] {
    context_.desktop.printer().newPage();
  });
  if (!suite) screen::quietly(session_, kProcedure, [&] { context_.desktop.printer().endDoc(); });
}

void MiseAJour::noterNonModifie(std::string_view cle) {
  lireAccord(cle);
  const store::DynamicArray& accord = accords_.accord;
  const int position = positionEnVigueur(accord, jourBareme_);
  const auto valeur = [&](int attribute) {
    return position == 0 ? std::string_view() : accord.get(attribute, position);
  };
  store::DynamicArray& liste = accords_.accordsNonModifies;
  ++nonModifies_;
  liste.set(1, nonModifies_, text::left(cle, attribut::kNumeroAide));
  liste.set(2, nonModifies_, store::textOfDay(accord.get(attribut::DateDebAcc)));
  liste.set(3, nonModifies_, store::textOfDay(accord.get(attribut::DateFinAcc)));
  liste.set(4, nonModifies_, valeur(attribut::PartBenefAcc));
  liste.set(5, nonModifies_, valeur(attribut::TrancheAcc));
}

// One that cannot be read is empty, not the one before.
void MiseAJour::lireAccord(std::string_view cle) {
  accords_.cleLettre.clear();
  accords_.indiceLettre = 0;
  accords_.accord = store::NewDynamicArray();
  screen::quietly(session_, kProcedure,
                  [&] { accords_.accord = session_.files.accord->ReadRecord(cle)->fields(); });
}

void MiseAJour::proposerListe() {
  if (accords_.accordsNonModifies.get(1).empty()) return;
  bool voulue = false;
  screen::quietly(session_, kProcedure, [&] {
    voulue = screen::demander(
        context_.desktop,
        "Attention : " + std::to_string(nonModifies_) +
            " accord(s) n'ont pas pu être modifiés. Voulez-vous en éditer la liste ?",
        toolkit::Icon::Question);
  });
  if (!voulue) return;
  const screen::BusyScreen busy(context_.desktop, context_.surface);
  screen::quietly(session_, kProcedure, [&] { Imprimer_AccordsNonModifies(context_); });
}

bool MiseAJour::supprimerListes() {
  return screen::resumeNext(
      session_, kProcedure,
      {[&] { tempo_->DeleteRecord(cleTempo(store::tempo::kAccordsLimite)); },
       [&] { tempo_->DeleteRecord(cleTempo(store::tempo::kAccordsModifies)); }});
}

void MiseAJour::effacerListes() {
  if (tempo_) supprimerListes();
  tempo_.reset();
}

}  // namespace

void proposerPropagation(const AgreementContext& context) {
  if (!concernePropagation(context)) return;
  const std::string question = "Vous venez de saisir un nouveau barème au " +
                               context.screen.participation.Txt_DatBaremCours.text() +
                               "\r\nSouhaitez-vous mettre à jour tous les accords de l'organisme ?";
  if (!screen::demander(context.desktop, question + kDuree, toolkit::Icon::Exclamation)) return;
  const bool lettres = screen::demander(
      context.desktop,
      std::string("Souhaitez-vous informer par écrit les aidés concernés ?") + kDuree,
      toolkit::Icon::Exclamation);
  // The right may have gone while the user was asked.
  if (!screen::droitsComplets(context.session)) return;
  context.session.accords.lettresVoulues = lettres;
  Recup_Accord(context);
}

void Recup_Accord(const AgreementContext& context) {
  const screen::BusyScreen busy(context.desktop, context.surface);
  MiseAJour run(context);
  run.recalculer();
  run.ouvrir();
  run.ecarterListesPerimees();
  run.lireModifies();
  run.lireLimite();
  std::optional<forms::Frm_Anim> attente;
  screen::resumeNext(
      context.session, kProcedure,
      {[&] { attente.emplace(context.desktop); }, [&] { context.desktop.doEvents(); }});
  run.parcourir();
  const screen::UsableScreen usable(context.desktop, context.surface);
  run.proposerListe();
  run.effacerListes();
  attente.reset();
}

}  // namespace agreements
