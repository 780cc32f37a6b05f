// The control: creates, shows, changes and deletes the funding bodies of a store.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "control/Errors.h"
#include "screen/Rights.h"
#include "store/Database.h"
#include "store/StoreError.h"
#include "toolkit/Desktop.h"
#include "toolkit/Surface.h"

namespace control {

// Calling order: setTheClient, setTheDatabase and setDroitsUtilisateur in any order, then Init
// once; release the control when W_Sortir becomes true.
// Every member throws what its store calls throw (store::StoreError), Busy while another action
// runs, and AccessDenied where said. W_Sortir can always be read.
class Ctr_OrgPriseCharge {
 public:
  // The desktop must outlive the control.
  explicit Ctr_OrgPriseCharge(toolkit::Desktop& desktop);
  Ctr_OrgPriseCharge(const Ctr_OrgPriseCharge&) = delete;
  Ctr_OrgPriseCharge& operator=(const Ctr_OrgPriseCharge&) = delete;
  // Runs UserControl_Terminate.
  ~Ctr_OrgPriseCharge();

  toolkit::Surface& surface();

  bool W_Sortir() const;
  void setW_Sortir(bool leave);
  // Called whenever W_Sortir has taken another value.
  std::function<void()> onSortirChanged;

  // What happens to the store through this control, told while it happens: nothing of the control
  // may be called from within. Each may be empty, and none may throw.
  // A body has been saved under that code, by the user or by a call of the host; `creation`: a new
  // one, which has got its code now.
  std::function<void(const std::string& code, bool creation)> onEnregistre;
  // The body of that code has been deleted.
  std::function<void(const std::string& code)> onSupprime;
  // A failure of the store has been trapped in that procedure, or has ended a command of the user:
  // the control shows nothing of it. A failure that a call of the host ends with is not among them.
  std::function<void(std::string_view procedure, const store::StoreError& failure)> onEchec;

  // The objects are only kept. The client's own type does not matter here: it is kept alive.
  void setDroitsUtilisateur(std::shared_ptr<screen::Rights> rights);
  void setTheClient(std::shared_ptr<void> client);
  void setTheDatabase(std::shared_ptr<store::Database> database);

  void Init();

  // The Afficher procedures clear the screen, code excepted, when they fail: what is shown in part
  // must not be saved.
  void Afficher_Donnees();
  void Afficher_Ong1();
  void Afficher_Ong2();
  void Afficher_Ong3();
  void Afficher_Ong4();
  void Afficher_Ong5();
  void Afficher_Ong6();
  void Remplir_OrgPriseChg();
  void Remplir_ParamsPoss();
  void Long_ListeParam();
  void Remplir_PiecesPoss();
  void Remplir_StatOrgChg();
  void Remplir_Entite();
  void Remplir_Liste_Activite();
  void Passage_A_Droite();
  void Passage_A_Gauche();
  void Passage_A_Droite_Tri();
  void Passage_A_Gauche_Tri();
  void RechercheAccord();
  void Vider_Donnees();

  // The three list editors. AccessDenied below level 2, NotReady without a record in hand.
  void MasquerZonesTaux();
  void AfficherZonesTaux();
  void Tri2();
  void DoubleClickTauxRemb();
  // The row in the edit zones enters the rate lists before the row `indice` (0-based).
  // std::invalid_argument past the end, and for a row without a date.
  void AjoutLists(std::int16_t& indice);
  void EffaceEltLists();
  void MasquerZonesAbat();
  void AfficherZonesAbat();
  void TriAbat();
  void DoubleClickAbat();
  void Affiche_Bareme();
  void AfficherZonesBareme();
  void TriBareme();

  // The letter of the agreement that the last Recup_Accord has read, as a print job of its own.
  // NotReady when there is none: none run for the body in hand, no letter wanted, or the last one
  // read was one left unchanged. std::runtime_error without a printer.
  void Impression_ModifAccord();
  // Carries the scale on screen into the agreements of the body in hand, with letters if the last
  // one who was asked wanted them. AccessDenied below level 2, NotReady without a record in hand
  // that has its code. Every other failure is trapped.
  void Recup_Accord();
  // The same for the changed rates on screen, agreement after agreement. AccessDenied below level
  // 2; does nothing without a record in hand. store::StoreError when the agreements cannot be
  // selected, or when one of them has failed; the others are done.
  void Recup_AccordTauxRemb();

  // AccessDenied below level 2.
  void Creer_Donnees();
  void Ecrire_Donnees();
  void Ecrire_Ong1();
  void Ecrire_Ong2();
  void Ecrire_Ong3();
  void Ecrire_Ong4();
  void Ecrire_Ong5();
  void Ecrire_Ong6();

  // True when the page may be saved.
  bool Verif_Ong1();
  bool Verif_Ong2();
  bool Verif_Ong3();
  bool Verif_Ong4();
  bool Verif_Ong5();
  bool Verif_Ong6();

  // Releases what the control holds, in the fixed order. Nothing but the destructor may be called
  // afterwards.
  void UserControl_Terminate();

 private:
  class Implementation;
  std::unique_ptr<Implementation> implementation_;
};

}  // namespace control
