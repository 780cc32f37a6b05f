#include "control/Ctr_OrgPriseCharge.h"

#include <utility>

#include "agreements/ActiveAgreements.h"
#include "agreements/Letter.h"
#include "agreements/Propagation.h"
#include "agreements/RatePropagation.h"
#include "control/AcronymList.h"
#include "control/AcronymSearch.h"
#include "control/CommandBar.h"
#include "control/Context.h"
#include "control/Lookup.h"
#include "control/RecordView.h"
#include "control/Rights.h"
#include "control/Save.h"
#include "control/StartUp.h"
#include "control/States.h"
#include "pages/AddressPanel.h"
#include "pages/Ong1.h"
#include "pages/Ong2.h"
#include "pages/Ong3.h"
#include "pages/Ong4.h"
#include "pages/Ong5.h"
#include "pages/Ong6.h"
#include "screen/Handlers.h"
#include "store/Layouts.h"

namespace control {

class Ctr_OrgPriseCharge::Implementation {
 public:
  Implementation(Ctr_OrgPriseCharge& owner, toolkit::Desktop& desktop)
      : owner_(owner),
        screen(surface),
        adresse(screen.coordonnees.adresse, session),
        ong1({desktop, screen, session}, adresse),
        ong2({desktop, screen, session}),
        ong3({desktop, screen, session}),
        ong4({desktop, screen, session}),
        ong5({desktop, screen, session}),
        ong6({desktop, screen, session}),
        context{desktop, surface, screen,
                session, adresse, {&ong1, &ong2, &ong3, &ong4, &ong5, &ong6}},
        accords{desktop, surface, screen, session},
        view(context),
        list(context, view),
        search(context, list, view),
        lookup(context, view),
        save(context, view, list),
        bar(context, view, list, save, [this](bool leave) { setSortir(leave); }),
        startUp(context, view, list, ong2, ong5) {
    applyState(screen, State::Empty);
    applyReady(screen, false);
    surface.onAttempt = [this](const toolkit::Control& control) {
      avantModification(context, control);
    };
    annoncer();
    bindLookup();
    bindBar();
    ong2.lier(handlers);
    ong3.lier(handlers);
    ong4.lier(handlers);
    ong5.lier(handlers);
    ong6.lier(handlers);
    ong6.entiteChangee = [this] {
      ong2.relireComptes();
      ong3.relireCompte();
    };
  }

  void setSortir(bool leave) {
    if (leave == sortir) return;
    sortir = leave;
    if (owner_.onSortirChanged) owner_.onSortirChanged();
  }

  // Runs a call of the host.
  template <class F>
  auto host(F call) {
    const toolkit::Surface::Action action(surface, toolkit::Surface::Action::By::Host);
    if (!action.accepted()) throw Busy();
    return call();
  }
  // The same for what needs a successful Init first.
  template <class F>
  auto started(F call) {
    return host([&] {
      if (!session.pret) throw NotReady("Init has not succeeded");
      return call();
    });
  }
  // The same for what shows the record: one shown in part must not be saved.
  template <class F>
  void showing(F call) {
    started([&] {
      try {
        call();
      } catch (const std::exception&) {
        lookup.abandonner();
        throw;
      }
    });
  }
  void show(pages::Page& page) {
    showing([&] {
      if (session.RecOrgChg) {
        page.afficher();
      } else {
        page.vider();
      }
    });
  }
  template <class F>
  auto editing(F call) {
    return started([&] {
      exigerDroitsComplets(session);
      if (!session.RecOrgChg) throw NotReady("no record is in hand");
      return call();
    });
  }

  // Does the current agreement name the body in hand, among others perhaps?
  bool accordDuCode() {
    const store::DynamicArray& accord = session.accords.accord;
    for (int i = 1; i <= accord.DCount(store::accord::OrgChgAcc); ++i) {
      if (accord.get(store::accord::OrgChgAcc, i) == session.codeEnMain) return true;
    }
    return false;
  }

  // Prints the letter of the current agreement as a job of its own: a host has no printer to end
  // it.
  void imprimerLettre() {
    if (session.accords.cleLettre.empty() || session.codeEnMain.empty() || !accordDuCode()) {
      throw NotReady("no changed agreement of the body in hand has been read");
    }
    agreements::Impression_ModifAccord(accords);
    agreements::fermerFichiersLettre(session);
    context.desktop.printer().endDoc();
  }

 private:
  Ctr_OrgPriseCharge& owner_;

 public:
  toolkit::Surface surface{"Ctr_OrgPriseCharge"};
  screen::Screen screen;
  screen::EditSession session;
  screen::Handlers handlers{session};
  pages::AddressPanel adresse;
  pages::Ong1 ong1;
  pages::Ong2 ong2;
  pages::Ong3 ong3;
  pages::Ong4 ong4;
  pages::Ong5 ong5;
  pages::Ong6 ong6;
  Context context;
  agreements::AgreementContext accords;
  RecordView view;
  AcronymList list;
  AcronymSearch search;
  Lookup lookup;
  Save save;
  CommandBar bar;
  StartUp startUp;
  bool sortir = false;

 private:
  void annoncer() {
    session.annonces.enregistre = [this](const std::string& code, bool creation) {
      if (owner_.onEnregistre) owner_.onEnregistre(code, creation);
    };
    session.annonces.supprime = [this](const std::string& code) {
      if (owner_.onSupprime) owner_.onSupprime(code);
    };
    session.annonces.echec = [this](std::string_view procedure, const store::StoreError& failure) {
      if (owner_.onEchec) owner_.onEchec(procedure, failure);
    };
  }

  void bindLookup() {
    toolkit::TextBox& code = screen.bar.Txt_CodOrgChg;
    code.onChange = handlers.on(lookup, &Lookup::Txt_CodOrgChg_Change);
    code.onKeyPress = handlers.key(lookup, &Lookup::Txt_CodOrgChg_KeyPress);
    code.onGotFocus = handlers.on(lookup, &Lookup::Txt_CodOrgChg_GotFocus);
    code.onLostFocus = handlers.on(lookup, &Lookup::Txt_CodOrgChg_LostFocus);
    toolkit::ComboBox& combo = screen.bar.Cbo_SigleOrgChg;
    combo.onKeyPress = handlers.key(search, &AcronymSearch::Cbo_SigleOrgChg_KeyPress);
    combo.onClick = handlers.on(search, &AcronymSearch::Cbo_SigleOrgChg_Click);
    combo.onLostFocus = handlers.on(search, &AcronymSearch::Cbo_SigleOrgChg_LostFocus);
    toolkit::TextBox& sigle = screen.bar.Txt_SigleOrgChg;
    sigle.onKeyPress = handlers.key(search, &AcronymSearch::Txt_SigleOrgChg_KeyPress);
    sigle.onChange = handlers.on(search, &AcronymSearch::Txt_SigleOrgChg_Change);
  }

  void bindBar() {
    screen.bar.Cmd_Ajouter.onClick = handlers.on(bar, &CommandBar::Cmd_Ajouter_Click);
    screen.bar.Cmd_Supprimer.onClick = handlers.on(bar, &CommandBar::Cmd_Supprimer_Click);
    screen.bar.Cmd_OK.onClick = handlers.on(save, &Save::Cmd_OK_Click);
    screen.bar.Cmd_Annuler.onClick = handlers.on(bar, &CommandBar::Cmd_Annuler_Click);
    // Leaving is possible before start-up too, and when it has failed.
    screen.bar.Cmd_Sortir.onClick = [this] { bar.Cmd_Sortir_Click(); };
  }
};

Ctr_OrgPriseCharge::Ctr_OrgPriseCharge(toolkit::Desktop& desktop)
    : implementation_(std::make_unique<Implementation>(*this, desktop)) {}

Ctr_OrgPriseCharge::~Ctr_OrgPriseCharge() { UserControl_Terminate(); }

toolkit::Surface& Ctr_OrgPriseCharge::surface() { return implementation_->surface; }

bool Ctr_OrgPriseCharge::W_Sortir() const { return implementation_->sortir; }

void Ctr_OrgPriseCharge::setW_Sortir(bool leave) {
  implementation_->host([&] { implementation_->setSortir(leave); });
}

void Ctr_OrgPriseCharge::setDroitsUtilisateur(std::shared_ptr<screen::Rights> rights) {
  implementation_->host([&] {
    screen::EditSession& session = implementation_->session;
    session.DroitOrgChg = nullptr;
    session.DroitsUtilisateur = std::move(rights);
    if (session.DroitsUtilisateur) session.DroitOrgChg = session.DroitsUtilisateur->entry(kDroit);
  });
}

void Ctr_OrgPriseCharge::setTheClient(std::shared_ptr<void> client) {
  implementation_->host([&] { implementation_->session.TheClient = std::move(client); });
}

void Ctr_OrgPriseCharge::setTheDatabase(std::shared_ptr<store::Database> database) {
  implementation_->host([&] {
    screen::EditSession& session = implementation_->session;
    if (database == session.TheDatabase) return;
    // What was opened through another store goes before it.
    implementation_->view.Vider_Donnees();
    implementation_->startUp.releaseStore();
    session.TheDatabase = std::move(database);
  });
}

void Ctr_OrgPriseCharge::Init() {
  implementation_->host([&] { implementation_->startUp.Init(); });
}

void Ctr_OrgPriseCharge::Afficher_Donnees() {
  implementation_->showing([&] { implementation_->view.Afficher_Donnees(); });
}

void Ctr_OrgPriseCharge::Afficher_Ong1() { implementation_->show(implementation_->ong1); }

void Ctr_OrgPriseCharge::Afficher_Ong2() { implementation_->show(implementation_->ong2); }

void Ctr_OrgPriseCharge::Afficher_Ong3() { implementation_->show(implementation_->ong3); }

void Ctr_OrgPriseCharge::Afficher_Ong4() { implementation_->show(implementation_->ong4); }

void Ctr_OrgPriseCharge::Afficher_Ong5() { implementation_->show(implementation_->ong5); }

void Ctr_OrgPriseCharge::Afficher_Ong6() { implementation_->show(implementation_->ong6); }

void Ctr_OrgPriseCharge::Remplir_OrgPriseChg() {
  implementation_->started([&] { implementation_->list.Remplir_OrgPriseChg(); });
}

void Ctr_OrgPriseCharge::Remplir_ParamsPoss() {
  implementation_->started([&] { implementation_->ong5.Remplir_ParamsPoss(); });
}

void Ctr_OrgPriseCharge::Long_ListeParam() {
  implementation_->started([&] { implementation_->ong5.Long_ListeParam(); });
}

void Ctr_OrgPriseCharge::Remplir_PiecesPoss() {
  implementation_->started([&] { implementation_->ong2.Remplir_PiecesPoss(); });
}

void Ctr_OrgPriseCharge::Remplir_StatOrgChg() {
  implementation_->started([&] { implementation_->ong2.Remplir_StatOrgChg(); });
}

void Ctr_OrgPriseCharge::Remplir_Entite() {
  implementation_->started([&] { implementation_->ong6.Remplir_Entite(); });
}

void Ctr_OrgPriseCharge::Remplir_Liste_Activite() {
  implementation_->started([&] { implementation_->ong6.Remplir_Liste_Activite(); });
}

void Ctr_OrgPriseCharge::Passage_A_Droite() {
  implementation_->started([&] { implementation_->ong6.Passage_A_Droite(); });
}

void Ctr_OrgPriseCharge::Passage_A_Gauche() {
  implementation_->started([&] { implementation_->ong6.Passage_A_Gauche(); });
}

void Ctr_OrgPriseCharge::Passage_A_Droite_Tri() {
  implementation_->started([&] { implementation_->ong5.Passage_A_Droite_Tri(); });
}

void Ctr_OrgPriseCharge::Passage_A_Gauche_Tri() {
  implementation_->started([&] { implementation_->ong5.Passage_A_Gauche_Tri(); });
}

void Ctr_OrgPriseCharge::MasquerZonesTaux() {
  implementation_->editing([&] { implementation_->ong3.taux().MasquerZonesTaux(); });
}

void Ctr_OrgPriseCharge::AfficherZonesTaux() {
  implementation_->editing([&] { implementation_->ong3.taux().AfficherZonesTaux(); });
}

void Ctr_OrgPriseCharge::Tri2() {
  implementation_->editing([&] { implementation_->ong3.taux().Tri2(); });
}

void Ctr_OrgPriseCharge::DoubleClickTauxRemb() {
  implementation_->editing([&] { implementation_->ong3.taux().DoubleClickTauxRemb(); });
}

void Ctr_OrgPriseCharge::EffaceEltLists() {
  implementation_->editing([&] { implementation_->ong3.taux().EffaceEltLists(); });
}

void Ctr_OrgPriseCharge::MasquerZonesAbat() {
  implementation_->editing([&] { implementation_->ong3.abattements().MasquerZonesAbat(); });
}

void Ctr_OrgPriseCharge::AfficherZonesAbat() {
  implementation_->editing([&] { implementation_->ong3.abattements().AfficherZonesAbat(); });
}

void Ctr_OrgPriseCharge::TriAbat() {
  implementation_->editing([&] { implementation_->ong3.abattements().TriAbat(); });
}

void Ctr_OrgPriseCharge::DoubleClickAbat() {
  implementation_->editing([&] { implementation_->ong3.abattements().DoubleClickAbat(); });
}

void Ctr_OrgPriseCharge::AfficherZonesBareme() {
  implementation_->editing([&] { implementation_->ong4.AfficherZonesBareme(); });
}

void Ctr_OrgPriseCharge::Affiche_Bareme() {
  implementation_->editing([&] { implementation_->ong4.Affiche_Bareme(); });
}

void Ctr_OrgPriseCharge::TriBareme() {
  implementation_->editing([&] { implementation_->ong4.TriBareme(); });
}

void Ctr_OrgPriseCharge::AjoutLists(std::int16_t& indice) {
  implementation_->editing([&] { implementation_->ong3.taux().AjoutLists(indice); });
}

void Ctr_OrgPriseCharge::RechercheAccord() {
  implementation_->started([&] { agreements::RechercheAccord(implementation_->session); });
}

void Ctr_OrgPriseCharge::Vider_Donnees() {
  implementation_->started([&] { implementation_->view.Vider_Donnees(); });
}

void Ctr_OrgPriseCharge::Creer_Donnees() {
  implementation_->editing([&] {
    if (!implementation_->session.EnCreation) throw NotReady("no creation has been started");
    implementation_->save.Creer_Donnees();
  });
}

void Ctr_OrgPriseCharge::Ecrire_Donnees() {
  implementation_->editing([&] {
    if (implementation_->session.EnCreation) throw NotReady("the record has no code yet");
    implementation_->save.Ecrire_Donnees();
  });
}

void Ctr_OrgPriseCharge::Impression_ModifAccord() {
  implementation_->started([&] { implementation_->imprimerLettre(); });
}

void Ctr_OrgPriseCharge::Recup_Accord() {
  implementation_->editing([&] {
    if (implementation_->session.codeEnMain.empty()) throw NotReady("the record has no code yet");
    agreements::Recup_Accord(implementation_->accords);
  });
}

void Ctr_OrgPriseCharge::Recup_AccordTauxRemb() {
  implementation_->started([&] {
    exigerDroitsComplets(implementation_->session);
    agreements::Recup_AccordTauxRemb(implementation_->accords);
  });
}

void Ctr_OrgPriseCharge::Ecrire_Ong1() {
  implementation_->editing([&] { implementation_->ong1.Ecrire_Ong1(); });
}

void Ctr_OrgPriseCharge::Ecrire_Ong2() {
  implementation_->editing([&] { implementation_->ong2.Ecrire_Ong2(); });
}

void Ctr_OrgPriseCharge::Ecrire_Ong3() {
  implementation_->editing([&] { implementation_->ong3.Ecrire_Ong3(); });
}

void Ctr_OrgPriseCharge::Ecrire_Ong4() {
  implementation_->editing([&] { implementation_->ong4.Ecrire_Ong4(); });
}

void Ctr_OrgPriseCharge::Ecrire_Ong5() {
  implementation_->editing([&] { implementation_->ong5.Ecrire_Ong5(); });
}

void Ctr_OrgPriseCharge::Ecrire_Ong6() {
  implementation_->editing([&] { implementation_->ong6.Ecrire_Ong6(); });
}

bool Ctr_OrgPriseCharge::Verif_Ong1() {
  return implementation_->started([&] { return implementation_->ong1.Verif_Ong1(); });
}

bool Ctr_OrgPriseCharge::Verif_Ong2() {
  return implementation_->started([&] { return implementation_->ong2.Verif_Ong2(); });
}

bool Ctr_OrgPriseCharge::Verif_Ong3() {
  return implementation_->started([&] { return implementation_->ong3.Verif_Ong3(); });
}

bool Ctr_OrgPriseCharge::Verif_Ong4() {
  return implementation_->started([&] { return implementation_->ong4.Verif_Ong4(); });
}

bool Ctr_OrgPriseCharge::Verif_Ong5() {
  return implementation_->started([&] { return implementation_->ong5.Verif_Ong5(); });
}

bool Ctr_OrgPriseCharge::Verif_Ong6() {
  return implementation_->started([&] { return implementation_->ong6.Verif_Ong6(); });
}

void Ctr_OrgPriseCharge::UserControl_Terminate() {
  implementation_->startUp.UserControl_Terminate();
}

}  // namespace control
