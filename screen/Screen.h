// Every child control of the control, by name: a struct a tab, and one for the bar above the tabs.
// Within a container, the order of the members is the order of the Tab key, but for the buttons of
// the bar, which come last. No behaviour.
#pragma once

#include "toolkit/Buttons.h"
#include "toolkit/ComboBox.h"
#include "toolkit/Frame.h"
#include "toolkit/ListBox.h"
#include "toolkit/SSTab.h"
#include "toolkit/ScrollBar.h"
#include "toolkit/Surface.h"
#include "toolkit/TextBox.h"

namespace screen {

using toolkit::CheckBox;
using toolkit::ComboBox;
using toolkit::CommandButton;
using toolkit::Container;
using toolkit::Frame;
using toolkit::Label;
using toolkit::ListBox;
using toolkit::OptionButton;
using toolkit::ScrollBar;
using toolkit::TextBox;

// The control's natural size in twips.
inline constexpr int kWidth = 11400;
inline constexpr int kHeight = 8250;

// Tab indexes of Ong_OrgPriseChg.
enum Onglet { kCoordonnees, kRegles, kPriseEnCharge, kParticipation, kBordereau, kActivites };

inline constexpr auto kPlusieurs = ListBox::Selection::Extended;

struct CommandBar {
  explicit CommandBar(Container* parent) : in(parent) {}
  Container* in;

  Label Etq_CodOrgChg{in, "Etq_CodOrgChg", "Cod&e"};
  TextBox Txt_CodOrgChg{in, "Txt_CodOrgChg"};
  // Look-up and entry of the acronym stand at the same place, each with its label.
  Label Etq_RechercheSigle{in, "Etq_RechercheSigle", "S&igle"};
  ComboBox Cbo_SigleOrgChg{in, "Cbo_SigleOrgChg"};
  Label Etq_SigleOrgChg{in, "Etq_SigleOrgChg", "S&igle"};
  TextBox Txt_SigleOrgChg{in, "Txt_SigleOrgChg"};
  CommandButton Cmd_Ajouter{in, "Cmd_Ajouter", "&Ajouter"};
  CommandButton Cmd_Supprimer{in, "Cmd_Supprimer", "S&upprimer"};
  CommandButton Cmd_OK{in, "Cmd_OK", "&OK"};
  CommandButton Cmd_Annuler{in, "Cmd_Annuler", "A&nnuler"};
  CommandButton Cmd_Sortir{in, "Cmd_Sortir", "&Sortir"};
  // In the place of the buttons that who may only read does not have.
  Label Etq_Consultation{in, "Etq_Consultation", "Consultation"};
};

// The fields of the address control.
struct Adresse {
  explicit Adresse(Container* parent)
      : Ctr_Adresseorgchg(parent, "Ctr_Adresseorgchg", "Adresse ") {}

  Frame Ctr_Adresseorgchg;
  Frame* in = &Ctr_Adresseorgchg;
  Label Etq_Complement{in, "Etq_Complement", "Complé&ment"};
  TextBox Txt_Complement{in, "Txt_Complement"};
  Label Etq_Voie{in, "Etq_Voie", "N°, t&ype, nom de voie"};
  TextBox Txt_NumVoie{in, "Txt_NumVoie"};
  ComboBox Cbo_NatureVoie{in, "Cbo_NatureVoie"};
  TextBox Txt_NomVoie{in, "Txt_NomVoie"};
  Label Etq_Localite{in, "Etq_Localite", "Localité"};
  TextBox Txt_Localite{in, "Txt_Localite"};
  Label Etq_CodePostal{in, "Etq_CodePostal", "&Code postal, ville"};
  TextBox Txt_CodePostal{in, "Txt_CodePostal"};
  TextBox Txt_Ville{in, "Txt_Ville"};
  Label Etq_Telephone{in, "Etq_Telephone", "Télép&hone"};
  TextBox Txt_Telephone{in, "Txt_Telephone"};
  Label Etq_Fax{in, "Etq_Fax", "Fa&x"};
  TextBox Txt_Fax{in, "Txt_Fax"};
  Label Etq_Email{in, "Etq_Email", "Adresse électroni&que"};
  TextBox Txt_Email{in, "Txt_Email"};
};

struct Coordonnees {
  explicit Coordonnees(Container* page)
      : in(page),
        adresse(page),
        Cdr_InterlocOrgChg(page, "Cdr_InterlocOrgChg", "Interlocuteurs ") {}
  Container* in;

  Label Etq_RaisonOrgChg{in, "Etq_RaisonOrgChg", "Raison socia&le"};
  TextBox Txt_RaisonOrgChg{in, "Txt_RaisonOrgChg"};
  Adresse adresse;
  Frame Cdr_InterlocOrgChg;
  Frame* interlocuteurs = &Cdr_InterlocOrgChg;
  Label Etq_InterlocDossOrgChg{interlocuteurs, "Etq_InterlocDossOrgChg", "&Dossiers"};
  TextBox Txt_InterlocDossOrgChg{interlocuteurs, "Txt_InterlocDossOrgChg"};
  Label Etq_InterlocFactOrgChg{interlocuteurs, "Etq_InterlocFactOrgChg", "Fac&turation"};
  TextBox Txt_InterlocFactOrgChg{interlocuteurs, "Txt_InterlocFactOrgChg"};
};

struct Regles {
  explicit Regles(Container* page) : in(page) {}
  Container* in;

  Frame Cdr_TypeOrg{in, "Cdr_TypeOrg", "T&ype organisme "};
  OptionButton Opt_TypePrincipalOrgChg{&Cdr_TypeOrg, "Opt_TypePrincipalOrgChg", "Principal"};
  OptionButton Opt_TypeComplOrgChg{&Cdr_TypeOrg, "Opt_TypeComplOrgChg", "Complémentaire"};
  Frame Cdr_PlafondOrg{in, "Cdr_PlafondOrg", "Plafond des droits à consommer géré "};
  OptionButton Opt_PlafGlobalOrgChg{&Cdr_PlafondOrg, "Opt_PlafGlobalOrgChg", "Globalement"};
  OptionButton Opt_PlafMensOrgChg{&Cdr_PlafondOrg, "Opt_PlafMensOrgChg",
                                  "Mensuellement sans report des crédits"};
  OptionButton Opt_PlafMensRepOrgChg{&Cdr_PlafondOrg, "Opt_PlafMensRepOrgChg",
                                     "Mensuellement avec report des crédits"};
  Frame Cdr_DemandesAccord{in, "Cdr_DemandesAccord", "Demandes d'accord"};
  CheckBox Cac_DemAccordOrgChg{&Cdr_DemandesAccord, "Cac_DemAccordOrgChg",
                               "Gestion des demandes d'accords"};
  CheckBox Cac_FactAnticip{&Cdr_DemandesAccord, "Cac_FactAnticip",
                           "Facturation anticipée à l'aidé"};
  Frame Cdr_RenouvOrgChg{in, "Cdr_RenouvOrgChg", "Renouvellement "};
  Label Etq_RenouvOrgChg{&Cdr_RenouvOrgChg, "Etq_RenouvOrgChg", "Déclenc&hement "};
  ComboBox Cbo_RenouvOrgChg{&Cdr_RenouvOrgChg, "Cbo_RenouvOrgChg"};
  Label Etq_PiecePossibleOrgChg{&Cdr_RenouvOrgChg, "Etq_PiecePossibleOrgChg", "Pièces possib&les"};
  ListBox Lst_PiecePossibleOrgChg{&Cdr_RenouvOrgChg, "Lst_PiecePossibleOrgChg", kPlusieurs};
  CommandButton Cmd_DroiteRenouv{&Cdr_RenouvOrgChg, "Cmd_DroiteRenouv", "------>"};
  CommandButton Cmd_GaucheRenouv{&Cdr_RenouvOrgChg, "Cmd_GaucheRenouv", "<------"};
  Label Etq_PieceRenouOrgChg{&Cdr_RenouvOrgChg, "Etq_PieceRenouOrgChg", "Piè&ces à fournir"};
  ListBox Lst_PieceRenouOrgChg{&Cdr_RenouvOrgChg, "Lst_PieceRenouOrgChg", kPlusieurs};
  Label Etq_StatsOrgChg{in, "Etq_StatsOrgChg", "Catégorie statisti&que"};
  ComboBox Cbo_StatsOrgChg{in, "Cbo_StatsOrgChg"};
  Label Etq_PeriodFactOrgChg{in, "Etq_PeriodFactOrgChg", "Période de fac&turation"};
  ComboBox Cbo_PeriodFactOrgChg{in, "Cbo_PeriodFactOrgChg"};
  CheckBox Cac_LettresInfo{in, "Cac_LettresInfo", "Gestion des lettres d'information"};
  CheckBox Cac_IncidCompta{in, "Cac_IncidCompta", "Sans incidence co&mptable"};
  Label Etq_DebitOrgChg{in, "Etq_DebitOrgChg", "Compte à &débiter"};
  TextBox Txt_DebitOrgChg{in, "Txt_DebitOrgChg"};
  ComboBox Cbo_DebitOrgChg{in, "Cbo_DebitOrgChg"};
  Label Etq_CreditOrgChg{in, "Etq_CreditOrgChg", "Compte à créditer"};
  TextBox Txt_CreditOrgChg{in, "Txt_CreditOrgChg"};
  ComboBox Cbo_CreditOrgChg{in, "Cbo_CreditOrgChg"};
  Label Etq_CpteProdAide{in, "Etq_CpteProdAide", "Compte produit aide"};
  TextBox Txt_CpteProdAide{in, "Txt_CpteProdAide"};
  ComboBox Cbo_CpteProdAide{in, "Cbo_CpteProdAide"};
};

struct PriseEnCharge {
  explicit PriseEnCharge(Container* page) : in(page) {}
  Container* in;

  Frame Cdr_AttribOrgChg{in, "Cdr_AttribOrgChg", "Attribution des notifications d'accord"};
  OptionButton Opt_HeureOrgChg{&Cdr_AttribOrgChg, "Opt_HeureOrgChg", "En &heures"};
  OptionButton Opt_MontantOrgChg{&Cdr_AttribOrgChg, "Opt_MontantOrgChg", "En &montant"};
  Frame Cdr_TauxOrgChg{in, "Cdr_TauxOrgChg", "Tau&x de remboursement "};
  Label Etq_DateRembOrgChg{&Cdr_TauxOrgChg, "Etq_DateRembOrgChg", "Date d'effet"};
  ListBox Lst_DateRembOrgChg{&Cdr_TauxOrgChg, "Lst_DateRembOrgChg"};
  Label Etq_TxRembOrgChg{&Cdr_TauxOrgChg, "Etq_TxRembOrgChg", "Taux normal"};
  ListBox Lst_TxRembOrgChg{&Cdr_TauxOrgChg, "Lst_TxRembOrgChg"};
  Label Etq_TxRembMajOrgChg{&Cdr_TauxOrgChg, "Etq_TxRembMajOrgChg", "Taux majoré"};
  ListBox Lst_TxRembMajOrgChg{&Cdr_TauxOrgChg, "Lst_TxRembMajOrgChg"};
  // An editor's scroll bar stands on its last list, so it comes before it: of windows that overlap
  // the first is in front.
  ScrollBar Bdv_TauxOrgChg{&Cdr_TauxOrgChg, "Bdv_TauxOrgChg", ScrollBar::Direction::Vertical};
  Label Etq_PrestServOrgChg{&Cdr_TauxOrgChg, "Etq_PrestServOrgChg",
                            "       Dont     Prest. services"};
  ListBox Lst_PrestServOrgChg{&Cdr_TauxOrgChg, "Lst_PrestServOrgChg"};
  TextBox Txt_DateRembOrgChg{&Cdr_TauxOrgChg, "Txt_DateRembOrgChg"};
  TextBox Txt_TxRembOrgChg{&Cdr_TauxOrgChg, "Txt_TxRembOrgChg"};
  TextBox Txt_TxRembMajOrgChg{&Cdr_TauxOrgChg, "Txt_TxRembMajOrgChg"};
  TextBox Txt_PrestServOrgChg{&Cdr_TauxOrgChg, "Txt_PrestServOrgChg"};
  // The other buttons of a row have their letters while one is open (pages/RowLetters.h).
  CommandButton Cmd_AjoutTaux{&Cdr_TauxOrgChg, "Cmd_AjoutTaux", "A&jouter"};
  CommandButton Cmd_OKTaux{&Cdr_TauxOrgChg, "Cmd_OKTaux", "OK"};
  CommandButton Cmd_AnnulerTaux{&Cdr_TauxOrgChg, "Cmd_AnnulerTaux", "Annuler"};
  CommandButton Cmd_SuppTaux{&Cdr_TauxOrgChg, "Cmd_SuppTaux", "Supprimer"};
  Frame Cdr_AbatOrgChg{in, "Cdr_AbatOrgChg", "Abattement participation bénéficiaire "};
  Label Etq_TrancheAppli{&Cdr_AbatOrgChg, "Etq_TrancheAppli", "Tranche d'heures"};
  ListBox Lst_DebAbatHOrgChg{&Cdr_AbatOrgChg, "Lst_DebAbatHOrgChg"};
  ListBox Lst_FinAbatHOrgChg{&Cdr_AbatOrgChg, "Lst_FinAbatHOrgChg"};
  ScrollBar Bdv_AbatOrgChg{&Cdr_AbatOrgChg, "Bdv_AbatOrgChg", ScrollBar::Direction::Vertical};
  Label Etq_PourcentOrgChg{&Cdr_AbatOrgChg, "Etq_PourcentOrgChg", "%"};
  ListBox Lst_PourcentAbatOrgChg{&Cdr_AbatOrgChg, "Lst_PourcentAbatOrgChg"};
  TextBox Txt_DebAbatHOrgChg{&Cdr_AbatOrgChg, "Txt_DebAbatHOrgChg"};
  TextBox Txt_FinAbatHOrgChg{&Cdr_AbatOrgChg, "Txt_FinAbatHOrgChg"};
  TextBox Txt_PourcentAbatOrgChg{&Cdr_AbatOrgChg, "Txt_PourcentAbatOrgChg"};
  CommandButton Cmd_AjoutAbat{&Cdr_AbatOrgChg, "Cmd_AjoutAbat", "Ajou&ter"};
  CommandButton Cmd_OKAbat{&Cdr_AbatOrgChg, "Cmd_OKAbat", "OK"};
  CommandButton Cmd_AnnulerAbat{&Cdr_AbatOrgChg, "Cmd_AnnulerAbat", "Annuler"};
  CommandButton Cmd_SuppAbat{&Cdr_AbatOrgChg, "Cmd_SuppAbat", "Supprimer"};
  // Above the columns that they head. Here, for the lists are named by the label before them.
  Label Etq_DebAbatHOrgChg{&Cdr_AbatOrgChg, "Etq_DebAbatHOrgChg", "de"};
  Label Etq_FinAbatHOrgChg{&Cdr_AbatOrgChg, "Etq_FinAbatHOrgChg", "à"};
  Label Etq_DesFacture{in, "Etq_DesFacture", "&Désignation sur facture"};
  TextBox Txt_DesFacture{in, "Txt_DesFacture"};
  CheckBox Cac_AjusTarif{in, "Cac_AjusTarif", "Ajustement tarifaire sur facture aidé"};
  CheckBox Cac_CoutGlobal{in, "Cac_CoutGlobal",
                          "Coût g&lobal et déduction organisme sur facture aidé"};
  Label Etq_CptPrestationService{in, "Etq_CptPrestationService",
                                 "&Compte de prestation de service"};
  TextBox Txt_CodeCptPrestationService{in, "Txt_CodeCptPrestationService"};
  ComboBox Cbo_CptPrestationService{in, "Cbo_CptPrestationService"};
};

// What a new scale turns its button into, and back.
inline constexpr const char* kNouveauBareme = "Nouveau barè&me";
inline constexpr const char* kAnnulerBareme = "Annuler barè&me";

struct Participation {
  explicit Participation(Container* page) : in(page) {}
  Container* in;

  Frame Cdr_ParticipBenef{in, "Cdr_ParticipBenef", "Participation bénéficiaire "};
  Frame Cdr_Bareme{&Cdr_ParticipBenef, "Cdr_Bareme", "Barème en fonction"};
  OptionButton Opt_Quotient{&Cdr_Bareme, "Opt_Quotient", "du &quotient familial"};
  OptionButton Opt_Ressource{&Cdr_Bareme, "Opt_Ressource", "&des ressources"};
  Frame Cdr_GestionParticipBenef{&Cdr_ParticipBenef, "Cdr_GestionParticipBenef",
                                 "Gestion de la participation bénéficiaire"};
  OptionButton Opt_GestPartPourc{&Cdr_GestionParticipBenef, "Opt_GestPartPourc", "en %"};
  OptionButton Opt_GestPartMont{&Cdr_GestionParticipBenef, "Opt_GestPartMont", "en mon&tant"};
  CheckBox Cac_Abonnement{&Cdr_ParticipBenef, "Cac_Abonnement", "Abonnement"};
  Label Etq_TrancheRevenus{&Cdr_ParticipBenef, "Etq_TrancheRevenus", "Tranches de revenus"};
  Label Etq_Montant{&Cdr_ParticipBenef, "Etq_Montant", "Montant au"};
  TextBox Txt_DatBaremPrec{&Cdr_ParticipBenef, "Txt_DatBaremPrec"};
  TextBox Txt_DatBaremCours{&Cdr_ParticipBenef, "Txt_DatBaremCours"};
  Label Etq_PersSeule{&Cdr_ParticipBenef, "Etq_PersSeule", "Personne seu&le"};
  ListBox Lst_DebRevSeulOrgChg{&Cdr_ParticipBenef, "Lst_DebRevSeulOrgChg"};
  ListBox Lst_FinRevSeulOrgChg{&Cdr_ParticipBenef, "Lst_FinRevSeulOrgChg"};
  Label Etq_Menage{&Cdr_ParticipBenef, "Etq_Menage", "Ménage"};
  ListBox Lst_DebRevMenOrgChg{&Cdr_ParticipBenef, "Lst_DebRevMenOrgChg"};
  ListBox Lst_FinRevMenOrgChg{&Cdr_ParticipBenef, "Lst_FinRevMenOrgChg"};
  Label Etq_BaremPrecOrgChg{&Cdr_ParticipBenef, "Etq_BaremPrecOrgChg", "Précédent"};
  ListBox Lst_BaremPrecOrgChg{&Cdr_ParticipBenef, "Lst_BaremPrecOrgChg"};
  ScrollBar Bdv_Bareme{&Cdr_ParticipBenef, "Bdv_Bareme", ScrollBar::Direction::Vertical};
  Label Etq_BaremCoursOrgChg{&Cdr_ParticipBenef, "Etq_BaremCoursOrgChg", "En &cours"};
  ListBox Lst_BaremCoursOrgChg{&Cdr_ParticipBenef, "Lst_BaremCoursOrgChg"};
  TextBox Txt_DebRevSeulOrgChg{&Cdr_ParticipBenef, "Txt_DebRevSeulOrgChg"};
  TextBox Txt_FinRevSeulOrgChg{&Cdr_ParticipBenef, "Txt_FinRevSeulOrgChg"};
  TextBox Txt_DebRevMenOrgChg{&Cdr_ParticipBenef, "Txt_DebRevMenOrgChg"};
  TextBox Txt_FinRevMenOrgChg{&Cdr_ParticipBenef, "Txt_FinRevMenOrgChg"};
  TextBox Txt_BaremCoursOrgChg{&Cdr_ParticipBenef, "Txt_BaremCoursOrgChg"};
  CommandButton Cmd_AjoutPart{&Cdr_ParticipBenef, "Cmd_AjoutPart", "A&jouter"};
  CommandButton Cmd_OKPart{&Cdr_ParticipBenef, "Cmd_OKPart", "OK"};
  CommandButton Cmd_AnnulerPart{&Cdr_ParticipBenef, "Cmd_AnnulerPart", "Annuler"};
  CommandButton Cmd_SuppPart{&Cdr_ParticipBenef, "Cmd_SuppPart", "Supprimer"};
  CommandButton Cmd_NouveauBareme{&Cdr_ParticipBenef, "Cmd_NouveauBareme", kNouveauBareme};
  // As in the deductions.
  Label Etq_DebRevSeulOrgChg{&Cdr_ParticipBenef, "Etq_DebRevSeulOrgChg", "de"};
  Label Etq_FinRevSeulOrgChg{&Cdr_ParticipBenef, "Etq_FinRevSeulOrgChg", "à"};
  Label Etq_DebRevMenOrgChg{&Cdr_ParticipBenef, "Etq_DebRevMenOrgChg", "de"};
  Label Etq_FinRevMenOrgChg{&Cdr_ParticipBenef, "Etq_FinRevMenOrgChg", "à"};
};

struct Bordereau {
  explicit Bordereau(Container* page) : in(page) {}
  Container* in;

  Frame Cdr_MiseEnForme{in, "Cdr_MiseEnForme", "Mise en forme "};
  Label Etq_ParamPossOrgChg{&Cdr_MiseEnForme, "Etq_ParamPossOrgChg", "Paramètres possib&les"};
  ListBox Lst_ParamPossOrgChg{&Cdr_MiseEnForme, "Lst_ParamPossOrgChg", kPlusieurs};
  // Printed width of the parameter at the same position; never seen.
  ListBox Lst_LongParam{&Cdr_MiseEnForme, "Lst_LongParam"};
  CommandButton Cmd_DroiteBord{&Cdr_MiseEnForme, "Cmd_DroiteBord", "------>"};
  CommandButton Cmd_GaucheBord{&Cdr_MiseEnForme, "Cmd_GaucheBord", "<------"};
  Label Etq_ParamSelecOrgChg{&Cdr_MiseEnForme, "Etq_ParamSelecOrgChg", "Paramètres séle&ctionnés"};
  ListBox Lst_ParamSelecOrgChg{&Cdr_MiseEnForme, "Lst_ParamSelecOrgChg", kPlusieurs};
  CommandButton Cmd_HautBord{&Cdr_MiseEnForme, "Cmd_HautBord", "&Monter"};
  CommandButton Cmd_BasBord{&Cdr_MiseEnForme, "Cmd_BasBord", "&Descendre"};
  Label Etq_Largeur{&Cdr_MiseEnForme, "Etq_Largeur", "Largeur"};
  Label Etq_NbCarSelect{&Cdr_MiseEnForme, "Etq_NbCarSelect"};
  Frame Cdr_Tri{in, "Cdr_Tri", "&Tri par"};
  Label Etq_ParamTriPos{&Cdr_Tri, "Etq_ParamTriPos", "Paramètres possibles"};
  ListBox Lst_ParamTriPos{&Cdr_Tri, "Lst_ParamTriPos", kPlusieurs};
  CommandButton Cmd_DroiteTri{&Cdr_Tri, "Cmd_DroiteTri", "------>"};
  CommandButton Cmd_GaucheTri{&Cdr_Tri, "Cmd_GaucheTri", "<------"};
  Label Etq_ParamTriSelect{&Cdr_Tri, "Etq_ParamTriSelect", "Paramètres sélectionnés"};
  ListBox Lst_ParamTriSelect{&Cdr_Tri, "Lst_ParamTriSelect", kPlusieurs};
  Frame Cdr_TypeBordereau{in, "Cdr_TypeBordereau", "T&ype bordereau "};
  OptionButton Opt_IndBordOrgChg{&Cdr_TypeBordereau, "Opt_IndBordOrgChg", "Individuel"};
  OptionButton Opt_RecapBordOrgChg{&Cdr_TypeBordereau, "Opt_RecapBordOrgChg", "Récapitulatif"};
  OptionButton Opt_MFPBordOrgChg{&Cdr_TypeBordereau, "Opt_MFPBordOrgChg", "M.F.P."};
  Frame Cdr_Exemplaire{in, "Cdr_Exemplaire", "Nombre d'e&xemplaires"};
  TextBox Txt_NbExEmplOrgChg{&Cdr_Exemplaire, "Txt_NbExEmplOrgChg"};
  ScrollBar Bdh_NbExemp{&Cdr_Exemplaire, "Bdh_NbExemp", ScrollBar::Direction::Horizontal};
  Label Etq_CodeThesaurus{in, "Etq_CodeThesaurus", "Code t&hésaurus"};
  TextBox Txt_CodeThesaurus{in, "Txt_CodeThesaurus"};
  Label Etq_IdentMagnetOrgChg{in, "Etq_IdentMagnetOrgChg", "Identification service"};
  TextBox Txt_IdentMagnetOrgChg{in, "Txt_IdentMagnetOrgChg"};
};

struct Activites {
  explicit Activites(Container* page) : in(page) {}
  Container* in;

  Label Etq_Entite{in, "Etq_Entite", "Entité &juridique"};
  TextBox Txt_Entite{in, "Txt_Entite"};
  ComboBox Cbo_Entite{in, "Cbo_Entite"};
  Label Etq_Activite{in, "Etq_Activite", "Liste des activités possib&les"};
  ListBox Lst_Activite{in, "Lst_Activite", kPlusieurs};
  CommandButton Cmd_PasseDroit{in, "Cmd_PasseDroit", "--->"};
  CommandButton Cmd_PasseGauche{in, "Cmd_PasseGauche", "<---"};
  Label Etq_ActSelect{in, "Etq_ActSelect", "Liste des activités séle&ctionnées"};
  ListBox Lst_ActSelect{in, "Lst_ActSelect", kPlusieurs};
  // Codes of the covered activities, line for line with Lst_ActSelect; never seen.
  ListBox Lst_CodActSelect{in, "Lst_CodActSelect"};
  Label Etq_Type{in, "Etq_Type", "T&ype"};
  // Scrolls with Lst_ActSelect.
  ListBox Lst_TypeAct{in, "Lst_TypeAct"};
  Frame Cdr_GestionExclu{in, "Cdr_GestionExclu", "Répartition des heures "};
  OptionButton Opt_Totalite{&Cdr_GestionExclu, "Opt_Totalite", "&Totalité"};
  OptionButton Opt_DimJF{&Cdr_GestionExclu, "Opt_DimJF", "&Dimanche et férié"};
  OptionButton Opt_Semaine{&Cdr_GestionExclu, "Opt_Semaine", "Se&maine"};
};

struct Screen {
  // The surface must outlive the screen, and tell of no room any more when that has gone.
  // Everything is placed, captioned and filled with its fixed lines.
  explicit Screen(toolkit::Surface& surface);

  CommandBar bar;
  toolkit::SSTab Ong_OrgPriseChg;
  Coordonnees coordonnees;
  Regles regles;
  PriseEnCharge priseEnCharge;
  Participation participation;
  Bordereau bordereau;
  Activites activites;

 private:
  // In a surface so high.
  void place(toolkit::Surface& surface, int height);
};

}  // namespace screen
