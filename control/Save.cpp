#include "control/Save.h"

#include <utility>

#include "agreements/Propagation.h"
#include "control/Rights.h"
#include "screen/BusyScreen.h"
#include "screen/Messages.h"
#include "screen/StoreTrap.h"
#include "store/Counter.h"
#include "store/Layouts.h"
#include "store/Writing.h"

namespace control {
namespace {

namespace attribut = store::orgprisecharge;

constexpr std::string_view kPlusDeCode =
    "Tous les codes d'organisme de prise en charge (001 à 999) sont attribués. La création ne peut "
    "pas être enregistrée.";
constexpr std::string_view kCompteurIllisible =
    "Le compteur des codes d'organisme de prise en charge ne peut pas être lu. La création ne peut "
    "pas être enregistrée.";

// Puts another record in hand; the one before comes back unless keep() is called.
class RecordSwap {
 public:
  RecordSwap(screen::EditSession& session, std::unique_ptr<store::Record> next)
      : session_(session), before_(std::exchange(session.RecOrgChg, std::move(next))) {}
  ~RecordSwap() {
    if (!kept_) session_.RecOrgChg = std::move(before_);
  }
  RecordSwap(const RecordSwap&) = delete;
  RecordSwap& operator=(const RecordSwap&) = delete;
  void keep() { kept_ = true; }

 private:
  screen::EditSession& session_;
  std::unique_ptr<store::Record> before_;
  bool kept_ = false;
};

// Unless keep() is called, the record in hand is in the end as it was at first: a save that failed
// leaves nothing half done in it.
class FieldsKept {
 public:
  explicit FieldsKept(screen::EditSession& session)
      : session_(session), before_(session.RecOrgChg->fields()) {}
  ~FieldsKept() {
    if (!kept_) session_.RecOrgChg->fields() = std::move(before_);
  }
  FieldsKept(const FieldsKept&) = delete;
  FieldsKept& operator=(const FieldsKept&) = delete;
  void keep() { kept_ = true; }

 private:
  screen::EditSession& session_;
  store::DynamicArray before_;
  bool kept_ = false;
};

}  // namespace

void Save::Cmd_OK_Click() {
  screen::EditSession& session = context_.session;
  if (session.enregistrementEnCours) return;
  const screen::Held inProgress(session.enregistrementEnCours, true);
  bool accepted = false;
  {
    const screen::Held checking(session.modeVerif, true);
    const screen::BusyScreen busy(context_.desktop, context_.surface);
    accepted = enregistrer();
    if (accepted) {
      screen::quietly(session, "Remplir_OrgPriseChg", [this] { list_.Remplir_OrgPriseChg(); });
      view_.effacerBareme();
    } else {
      view_.effacerErreurs();
    }
    screen::quietly(session, "Cmd_OK_Click", [this] { context_.desktop.doEvents(); });
  }
  if (accepted) context_.screen.bar.Txt_CodOrgChg.setFocus();
}

bool Save::enregistrer() {
  screen::EditSession& session = context_.session;
  bool written = false;
  screen::quietly(session, "Cmd_OK_Click", [&] {
    if (!screen::droitsComplets(session) || !session.RecOrgChg) return;
    screen::signalerEchec(context_.desktop, [&] {
      if (session.EnCreation) {
        session.AncienOrgChg = store::NewDynamicArray();
        written = creer();
      } else {
        Ecrire_Donnees();
        written = !view_.pageRefusee();
      }
    });
  });
  return written;
}

void Save::Creer_Donnees() {
  if (creer()) list_.Remplir_OrgPriseChg();
}

bool Save::creer() {
  screen::EditSession& session = context_.session;
  // The fields kept are those of the record being created, so that record must be back in hand
  // when they are put back: what is declared last ends first.
  FieldsKept fields(session);
  if (!view_.ecrirePages()) {
    fields.keep();  // of a refusal, what the pages before it have written stays in hand
    return false;
  }
  exigerDroitsComplets(session);
  std::string code;
  std::unique_ptr<store::Record> fiche = ficheDuNouveauCode(code);
  if (!fiche) return false;
  RecordSwap swap(session, std::move(fiche));
  if (!view_.ecrirePages()) return false;
  ecrireCreation(code);
  // From here on the body exists: should anything fail, saving again must not create it twice.
  swap.keep();
  fields.keep();
  session.EnCreation = false;
  session.codeEnMain = code;
  if (session.annonces.enregistre) session.annonces.enregistre(code, true);
  {
    const screen::Quiet quiet(session);
    context_.screen.bar.Txt_CodOrgChg.setText(code);
  }
  proposerPropagation();
  session.propagationSuspendue = false;
  view_.Vider_Donnees();
  return true;
}

// A body that was lost on its way under a code must not be created under another one too.
void Save::ecrireCreation(const std::string& code) {
  screen::EditSession& session = context_.session;
  try {
    store::write(*session.files.orgPriseCharge, code, *session.RecOrgChg);
  } catch (const store::StoreError& failure) {
    if (failure.code() == store::kOutcomeUnknown) {
      session.codePerdu = code;
      session.textePerdu = session.RecOrgChg->fields().text();
    }
    throw;
  }
}

// What a save that was lost on its way has written after all is no change by somebody else.
void Save::ecrireFiche() {
  screen::EditSession& session = context_.session;
  store::File& bodies = *session.files.orgPriseCharge;
  try {
    store::write(bodies, session.codeEnMain, *session.RecOrgChg);
  } catch (const store::StoreError& failure) {
    const bool ecrite = session.issueInconnue && failure.code() == store::kChanged &&
                        store::isStored(bodies, session.codeEnMain, session.RecOrgChg->fields());
    if (ecrite) return;
    if (failure.code() == store::kOutcomeUnknown) session.issueInconnue = true;
    throw;
  }
}

// Under the code of the creation that was lost, if that is what stands there, or nothing does.
std::unique_ptr<store::Record> Save::fichePerdue(std::string& code) {
  const screen::EditSession& session = context_.session;
  if (session.codePerdu.empty()) return nullptr;
  auto record = session.files.orgPriseCharge->ReadRecord(session.codePerdu);
  if (record->found() && record->fields().text() != session.textePerdu) return nullptr;
  code = session.codePerdu;
  return record;
}

// Null without a code, which has been told.
std::unique_ptr<store::Record> Save::ficheDuNouveauCode(std::string& code) {
  if (auto perdue = fichePerdue(code)) return perdue;
  try {
    return prochaineFicheLibre(code);
  } catch (const store::NoCode& none) {
    screen::informer(context_.desktop, none.why() == store::NoCode::Why::AllGivenOut
                                           ? kPlusDeCode
                                           : kCompteurIllisible);
    return nullptr;
  }
}

// A counter that lags behind its file gives codes that are taken; those bodies must survive.
std::unique_ptr<store::Record> Save::prochaineFicheLibre(std::string& code) {
  screen::StoreFiles& files = context_.session.files;
  while (true) {
    code = store::nextCode(*files.compteur);
    std::unique_ptr<store::Record> record = files.orgPriseCharge->ReadRecord(code);
    if (record->fields().empty()) return record;
  }
}

void Save::Ecrire_Donnees() {
  screen::EditSession& session = context_.session;
  FieldsKept fields(session);
  if (!view_.ecrirePages()) {
    fields.keep();  // of a refusal, what the pages before it have written stays in hand
    return;
  }
  exigerDroitsComplets(session);
  store::DynamicArray& record = session.RecOrgChg->fields();
  const bool withoutAccounts =
      session.OptionCompteur && context_.screen.regles.Cac_IncidCompta.value();
  if (withoutAccounts && !record.get(attribut::DebitOrgChg).empty()) {
    record.set(attribut::DebitOrgChg, "");
    record.set(attribut::CreditOrgChg, "");
  }
  ecrireFiche();
  fields.keep();
  if (session.annonces.enregistre) session.annonces.enregistre(session.codeEnMain, false);
  proposerPropagation();
  view_.Vider_Donnees();
}

// The body is written, whatever becomes of its agreements.
void Save::proposerPropagation() {
  screen::quietly(context_.session, "Recup_Accord", [this] {
    agreements::proposerPropagation(
        {context_.desktop, context_.surface, context_.screen, context_.session});
  });
}

}  // namespace control
