// What is in hand: store handles, the current record with its copies, and the flags that the pages
// and the record's lifecycle share. Plain data; the body in hand changes as a whole.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "screen/Rights.h"
#include "store/Database.h"
#include "store/StoreError.h"

namespace screen {

// The files opened once by Init; null before.
struct StoreFiles {
  std::unique_ptr<store::File> orgPriseCharge;
  std::unique_ptr<store::File> paramBordOrgChg;
  std::unique_ptr<store::File> compteur;
  std::unique_ptr<store::File> tables;
  std::unique_ptr<store::File> activites;
  std::unique_ptr<store::File> association;
  std::unique_ptr<store::File> planComptable;
  std::unique_ptr<store::File> periodesPaie;
  std::unique_ptr<store::File> accord;
};

// Of the rate editor, as long as one body is in hand.
struct EtatTaux {
  // A row is being added, none changed. Only written here: it belongs to the state of the rate
  // editor as it is told, which is looked at from outside under this name.
  bool W_AjoutTaux = false;
  std::int32_t W_DerTauxModif = 0;  // rows 0 to this one may be changed
  bool W_TauxModifSupp = false;     // the one stored row that could be changed is gone
  bool W_TauxModifie = false;       // rates that agreements rely on have been added or changed
  // Date and normal rate of a row as they were shown when its first change began.
  std::string W_TauxAvantModif;
};

// The body in hand.
struct FicheEnMain {
  // The record on screen; null while none is in hand.
  std::unique_ptr<store::Record> RecOrgChg;
  // Its code; "" while none is in hand or a new one has not been given its code. What
  // Txt_CodOrgChg holds may differ: the user can type there at any time.
  std::string codeEnMain;
  std::string ImageOrgChg;           // its full text as read
  std::string imageNormalisee;       // as read, then written by the pages without any change
  store::DynamicArray AncienOrgChg;  // a copy of it as read
  bool EnCreation = false;
  bool droitsRelus = false;  // when the user began to change it
  // A save of it has been lost on its way: whether it was written is not known.
  bool issueInconnue = false;
  // Of a creation that was lost so: the code that it was to have, and its full text.
  std::string codePerdu;
  std::string textePerdu;
  EtatTaux taux;

  // Takes the record read under that code instead of the one before; of an empty one, nothing.
  void prendre(std::string_view code, std::unique_ptr<store::Record> read) {
    lacher();
    if (read->fields().empty()) return;
    RecOrgChg = std::move(read);
    codeEnMain = code;
    RecOrgChg->fields().DCount();  // finds the attributes for the copy too
    ImageOrgChg = RecOrgChg->fields().text();
    AncienOrgChg = RecOrgChg->fields();
  }
  // Begins a new body instead, which has no code yet.
  void commencer(std::unique_ptr<store::Record> blank) {
    lacher();
    RecOrgChg = std::move(blank);
    EnCreation = true;
  }
  // Lets go: nothing is in hand.
  void lacher() { *this = {}; }
};

// What the letters read; each is opened by the first letter that needs it, null before.
struct FichiersLettre {
  std::unique_ptr<store::File> civilAide;
  std::unique_ptr<store::File> responsable;
  std::unique_ptr<store::File> eltsFactAide;
  std::unique_ptr<store::File> titres;
  std::unique_ptr<store::File> natureVoie;
};

// What one update of the agreements, its letters and its listing share. It stays after the run
// until the screen is cleared; lettresVoulues stays as the last run left it.
struct MiseAJourAccords {
  bool lettresVoulues = false;  // a letter for each agreement that was changed
  // Position in accordsModifies of the letter being printed, from 1; 0 while `accord` is none that
  // gets one. It has 16 bits and stays at 32767 for the letters after that.
  std::int16_t indiceLettre = 0;
  store::DynamicArray accordsModifies;  // attribute i: key of the i-th agreement changed
  // Those left unchanged, for the listing: value k of each attribute belongs to the k-th. 1 the
  // beneficiary's number, 2 and 3 first and last day (dd/mm/yyyy), 4 the participation in
  // hundredths, 5 the row of the scale.
  store::DynamicArray accordsNonModifies;
  store::DynamicArray accord;  // the agreement being printed or listed
  // Its key; "" while it is none that gets a letter, and when it is told by indiceLettre alone.
  std::string cleLettre;
  store::DynamicArray constantesPaie;  // record "1" of CONSTANTESPAIE
  store::DynamicArray entite;          // record of ASSOCIATION: the sender
  FichiersLettre fichiersLettre;
  // Numbers of the beneficiaries whose letters come next, each as often as it has one.
  std::vector<std::string> aidesAnnonces;
};

// What the host is told of, as it happens; each may be empty, and none may throw.
struct Annonces {
  // A body has been written to the store, under that code; `creation`: a new one.
  std::function<void(const std::string& code, bool creation)> enregistre;
  // A body has been deleted from it.
  std::function<void(const std::string& code)> supprime;
  // A failure of the store has ended (a step of) that procedure, and nobody is told of it
  // otherwise.
  std::function<void(std::string_view procedure, const store::StoreError& failure)> echec;
};

struct EditSession : FicheEnMain {
  // Given by the host.
  std::shared_ptr<void> TheClient;
  std::shared_ptr<store::Database> TheDatabase;
  std::shared_ptr<Rights> DroitsUtilisateur;
  std::shared_ptr<RightsEntry> DroitOrgChg;

  StoreFiles files;
  bool pret = false;  // Init has succeeded; before, no member and no handler works, but leaving
  bool demarrage = false;  // Init fills the lists: the look-up of an only body works already
  // The screen is shown as to who may only read: what the rights said when they were last applied.
  bool consultation = false;
  // Code tables, kept for the life of the control.
  std::unique_ptr<store::Record> piecesRenouv;
  std::unique_ptr<store::Record> statOrgChg;
  std::unique_ptr<store::Record> compteur999;
  // Are the debit, credit and aid-product accounts shown, written and required?
  bool OptionCompteur = false;
  std::optional<store::DynamicArray> tableauCompteur;  // empty array kept while OptionCompteur

  // Key in ASSOCIATION of the legal entity chosen; "" while none is.
  std::string entiteCourante;
  // The user has emptied the statistics category: what the record holds of it goes.
  bool statistiqueVidee = false;
  // Keys of the active agreements, as the last search for them answered.
  store::DynamicArray accordsActifs;
  std::int16_t longueurParams = 0;  // characters of the selected slip parameters, in one line

  // The page was refused.
  bool ErreurOng1 = false;
  bool ErreurOng2 = false;
  bool ErreurOng3 = false;
  bool ErreurOng4 = false;
  bool ErreurOng5 = false;
  bool ErreurOng6 = false;
  bool modeVerif = false;  // the write procedures run their page's check first
  bool enregistrementEnCours = false;
  bool NouveauBareme = false;
  bool propagationSuspendue = false;  // no question about a new scale; nothing sets it so far
  // Were these two buttons of the bar enabled when a row began to be edited?
  bool W_SupprimerActif = false;
  bool W_SortirActif = false;
  MiseAJourAccords accords;
  Annonces annonces;

  int silence = 0;  // see Quiet
};

// Has the user the right to change anything? Without a rights entry, no.
inline bool droitsComplets(const EditSession& session) {
  return session.DroitOrgChg && session.DroitOrgChg->Level() == 2;
}

// The six error flags, in tab order.
inline std::array<bool*, 6> erreursDesOnglets(EditSession& session) {
  return {&session.ErreurOng1, &session.ErreurOng2, &session.ErreurOng3,
          &session.ErreurOng4, &session.ErreurOng5, &session.ErreurOng6};
}

// While one lives, events keep the child controls consistent but the system's handlers do nothing.
class Quiet {
 public:
  explicit Quiet(EditSession& session) : session_(session) { ++session_.silence; }
  ~Quiet() { --session_.silence; }
  Quiet(const Quiet&) = delete;
  Quiet& operator=(const Quiet&) = delete;

 private:
  EditSession& session_;
};

// A flag that has another value while this lives.
class Held {
 public:
  Held(bool& flag, bool value) : flag_(flag), before_(flag) { flag_ = value; }
  ~Held() { flag_ = before_; }
  Held(const Held&) = delete;
  Held& operator=(const Held&) = delete;

 private:
  bool& flag_;
  bool before_;
};

}  // namespace screen
