// The record's lifecycle over all pages: entering, checking in page order, saving, leaving,
// deleting.
#include <algorithm>
#include <functional>
#include <map>

#include "store/Layouts.h"
#include "tests/behaviour/ControlTest.h"
#include "tests/behaviour/Snapshot.h"

namespace behaviour {
namespace {

constexpr const char* kTypeRefuse =
    "La modification du type d'organisme n'est pas possible car il existe des accords actifs pour "
    "cet organisme.\r\nMerci de contacter VALDRIS si votre volonté est de changer le mode de "
    "gestion de cet organisme.";
constexpr const char* kPlafondRefuse =
    "La modification de la gestion du plafond des droits à consommer n'est pas possible car il "
    "existe des accords actifs pour cet organisme.\r\nMerci de contacter VALDRIS si votre volonté "
    "est de changer le mode de gestion de cet organisme.";

// Lines of the activities' lists.
constexpr const char* kAide = "Aide ménagère        Prestataire";
constexpr const char* kGarde = "Garde de nuit        Prestataire";

const std::string kValue(1, store::kValueMark);

// With accounts, charts of accounts, two entities, activities of all kinds, columns for more than
// one slip.
class AllPages : public ControlTest {
 protected:
  AllPages() {
    fillThreeBodies(store_);
    store_.set("COMPTEUR", "999", store::compteur::InterfaceComptable, "O");
    store_.put("PARAMBORDORGCHG", "3", {"Adresse", "100"});
    store_.put("ASSOCIATION", "020", {"AUTRE VAL"});
    addActivity("010P02", "Garde de nuit", "P", "SAAD");
    addActivity("010P03", "Portage de repas", "P", "REPAS");
    addActivity("010M04", "Emploi direct", "M", "MANDAT");
    addActivity("010M05", "Emploi partagé", "M", "PARTAGE");
    for (const char* account : {"4110000000", "4120000000", "7060000000", "7580000000"}) {
      store_.put("PLANCOMPTABLE", std::string("010") + account,
                 {"COMPTE " + std::string(account).substr(0, 3)});
    }
    for (const char* body : {"001", "002", "003"}) {
      store_.set("ORGPRISECHARGE", body, attribut::DebitOrgChg, "4110000000");
      store_.set("ORGPRISECHARGE", body, attribut::CreditOrgChg, "7060000000");
      store_.set("ORGPRISECHARGE", body, attribut::DateRembOrgChg, "21186");
      store_.set("ORGPRISECHARGE", body, attribut::TxRembOrgChg, "2305");
    }
    start();
  }
  void addActivity(std::string_view id, std::string_view label, std::string_view type,
                   std::string_view service) {
    store_.put("ACTIVITES", id, {label, "010", "", "", "", "", "", "", "", "", "", type, service});
  }
  // An agreement of that body that has not ended.
  void addAgreement(std::string_view body) {
    store_.put("PERIODESPAIE", "1", {"202601"});
    store_.put("ACCORD", "00001001", {body, "00001", "", "", "20000", "21500"});
  }

  Snapshot screen() { return snapshotOf(control_->surface()); }
  store::DynamicArray body(std::string_view id) { return store_.record("ORGPRISECHARGE", id); }

  // The user goes to the page by its letter.
  void page(char32_t letter, Caller at = Caller::here()) {
    const auto trace = called("page", at);
    ASSERT_TRUE(user_->alt(letter));
  }
  void coordonnees(Caller at = Caller::here()) { page('R', at); }
  void regles(Caller at = Caller::here()) { page('G', at); }
  void priseEnCharge(Caller at = Caller::here()) { page('P', at); }
  void bordereau(Caller at = Caller::here()) { page('B', at); }
  void activites(Caller at = Caller::here()) { page('V', at); }

  void fill(std::string_view name, std::string_view text, Caller at = Caller::here()) {
    const auto trace = called("fill", at);
    ASSERT_TRUE(user_->fill(box(name), text)) << name;
  }
  void click(std::string_view name, Caller at = Caller::here()) {
    const auto trace = called("click", at);
    if (auto* check = dynamic_cast<CheckBox*>(control_->surface().find(name))) {
      ASSERT_TRUE(user_->click(*check)) << name;
    } else if (auto* button = dynamic_cast<CommandButton*>(control_->surface().find(name))) {
      ASSERT_TRUE(user_->click(*button)) << name;
    } else {
      ASSERT_TRUE(user_->click(option(name))) << name;
    }
  }
  void choose(std::string_view name, int line, Caller at = Caller::here()) {
    const auto trace = called("choose", at);
    ASSERT_TRUE(user_->choose(combo(name), line)) << name;
  }
  void dblClick(std::string_view name, int line, Caller at = Caller::here()) {
    const auto trace = called("dblClick", at);
    ASSERT_TRUE(user_->dblClick(list(name), line)) << name;
  }
  void cover(std::initializer_list<const char*> lines, Caller at = Caller::here()) {
    const auto trace = called("cover", at);
    for (const char* line : lines) {
      dblClick("Lst_Activite", list("Lst_Activite").items().find(line));
    }
  }
  void expectFocus(std::string_view name, Caller at = Caller::here()) {
    const auto trace = called("expectFocus", at);
    const toolkit::Control* focus = control_->surface().focus();
    EXPECT_EQ(focus ? focus->name() : "", name);
  }
};

// --- Checks, page after page ---------------------------------------------------------------------

// The acronym's field comes forward for its own refusal.
const std::set<std::string> kAcronymField{"Etq_RechercheSigle", "Cbo_SigleOrgChg",
                                          "Etq_SigleOrgChg", "Txt_SigleOrgChg"};

class WrongPages : public AllPages {
 protected:
  // The user presses OK and is refused: nothing is written, everything on screen stays.
  void expectRefused(std::string_view message, int tab, std::string_view focus,
                     Caller at = Caller::here()) {
    const auto trace = called("expectRefused", at);
    SCOPED_TRACE(message);
    const Snapshot before = screen();
    store_.forgetCalls();
    press("Cmd_OK");
    expectBox(message, Icon::Exclamation);
    EXPECT_EQ(tabs().tab(), tab);
    expectFocus(focus);
    expectNothingWritten();
    EXPECT_EQ(difference(before, screen(), kAcronymField), "");
  }
  void wrongBody(std::string_view id) {
    store_.put("ORGPRISECHARGE", id, store::DynamicArray());
    const std::vector<std::pair<int, const char*>> wrong{
        {attribut::AdrNumero, "12"},      {attribut::TypeOrgChg, "C"},
        {attribut::PlafondOrg, "3"},      {attribut::RenouvOrgChg, "9"},
        {attribut::AttribOrgChg, "M"},    {attribut::DateRembOrgChg, "21186"},
        {attribut::TxRembOrgChg, "2305"}, {attribut::TypeBordOrgChg, "M"},
        {attribut::IncidCompta, "1"},     {attribut::DesFacture, "Aide"}};
    for (const auto& [attribute, text] : wrong) store_.set("ORGPRISECHARGE", id, attribute, text);
  }
  void mendFirstPage(Caller at = Caller::here()) {
    const auto trace = called("mendFirstPage", at);
    expectRefused("Le sigle de l'organisme de prise en charge est obligatoire.", 0,
                  "Txt_SigleOrgChg");
    user_->type("FAUX");
    expectRefused("La raison sociale de l'organisme de prise en charge est obligatoire.", 0,
                  "Txt_RaisonOrgChg");
    user_->type("Organisme faux");
  }
  void mendRules(Caller at = Caller::here()) {
    const auto trace = called("mendRules", at);
    expectRefused("La période de facturation est obligatoire.", 1, "Cbo_PeriodFactOrgChg");
    choose("Cbo_PeriodFactOrgChg", 1);
    expectRefused("Le déclenchement du renouvellement est obligatoire.", 1, "Cbo_RenouvOrgChg");
    choose("Cbo_RenouvOrgChg", 2);
  }
  void mendSlip(Caller at = Caller::here()) {
    const auto trace = called("mendSlip", at);
    expectRefused("Au moins un paramètre pour l'édition du bordereau doit être sélectionné.", 4,
                  "Lst_ParamPossOrgChg");
    for (int line = 0; line < 3; ++line) dblClick("Lst_ParamPossOrgChg", line);
    expectRefused("Le type d'organisme doit être obligatoirement principal.", 1,
                  "Opt_TypePrincipalOrgChg");
    bordereau();
    click("Opt_IndBordOrgChg");
    regles();
    expectRefused(
        "La taille cumulée des paramètres sélectionnés est de 138 caractères alors que la largeur "
        "de la page ne peut être supérieure à 130",
        4, "Lst_ParamSelecOrgChg");
    dblClick("Lst_ParamSelecOrgChg", 1);
  }
  void mendActivities(Caller at = Caller::here()) {
    const auto trace = called("mendActivities", at);
    expectRefused("L'organisme de prise en charge doit couvrir au moins une activité.", 5,
                  "Txt_Entite");
    user_->type("010");
    expectRefused("Vous devez sélectionner au moins une activité.", 5, "Lst_Activite");
    cover({"Emploi direct        Mandataire", "Emploi partagé       Mandataire"});
    coordonnees();
    expectRefused("La caisse doit être de type principal.", 0, "Cmd_OK");
    regles();
    click("Opt_TypePrincipalOrgChg");
    expectRefused(
        "Toutes les activités couvertes par l'organisme doivent être rattachées au même service.",
        1, "Cmd_OK");
    activites();
    while (list("Lst_ActSelect").listCount() > 0) dblClick("Lst_ActSelect", 0);
    cover({kAide});
  }
  void mendAccounts(Caller at = Caller::here()) {
    const auto trace = called("mendAccounts", at);
    expectRefused(
        "Le choix 'Sans incidence comptable' ne peut être utilisé que par les organismes de type "
        "'Mandataire'\r\nou de type 'Prestataire' et 'Complémentaire'.",
        1, "Cac_IncidCompta");
    click("Cac_IncidCompta");
    expectRefused("Le compte comptable DEBIT est obligatoire.", 1, "Txt_DebitOrgChg");
    user_->type("4110000000");
    expectRefused("Le compte comptable CREDIT est obligatoire.", 1, "Txt_CreditOrgChg");
    user_->type("7060000000");
  }
  void mendAttribution(Caller at = Caller::here()) {
    const auto trace = called("mendAttribution", at);
    expectRefused(
        "L'attribution des notifications d'accords doit être en heures pour des activités de type "
        "prestataire et pour un organisme principal.",
        2, "Opt_HeureOrgChg");
    click("Opt_HeureOrgChg");
    if (!list("Lst_DateRembOrgChg").list(0).empty()) return;
    expectRefused("Au moins un taux de remboursement est obligatoire.", 2, "Cmd_AjoutTaux");
    addRate();
  }
  // What the user has entered while mending, whatever the body had before.
  void expectMended(std::string_view id, Caller at = Caller::here()) {
    const auto trace = called("expectMended", at);
    const std::map<int, std::string> mended{{attribut::SigleOrgChg, "FAUX"},
                                            {attribut::RaisonOrgChg, "Organisme faux"},
                                            {attribut::PeriodFactOrgChg, "T"},
                                            {attribut::TypeOrgChg, "P"},
                                            {attribut::RenouvOrgChg, "2"},
                                            {attribut::DebitOrgChg, "4110000000"},
                                            {attribut::CreditOrgChg, "7060000000"},
                                            {attribut::AttribOrgChg, "H"},
                                            {attribut::TypeBordOrgChg, "I"},
                                            {attribut::Entite, "010"},
                                            {attribut::CodActSelect, "010P01"},
                                            {attribut::IncidCompta, "0"},
                                            {attribut::ParamSelecOrgChg, "3" + kValue + "1"}};
    for (const auto& [attribute, text] : mended) {
      EXPECT_EQ(body(id).get(attribute), text) << bodyAttribute(attribute);
    }
  }
};

TEST_F(WrongPages, ABodyIsRefusedPageAfterPageAndSavedOnceAllAreMended) {
  wrongBody("004");
  const std::string before = body("004").text();
  lookUp("004");
  mendFirstPage();
  mendRules();
  mendSlip();
  mendActivities();
  mendAccounts();
  mendAttribution();
  EXPECT_PRED_FORMAT2(sameBody, body("004").text(), before);
  store_.forgetCalls();
  press("Cmd_OK");
  expectNoBox();
  EXPECT_EQ(state(), kEmpty);
  EXPECT_EQ(store_.calls(CallKind::DBWrite).size(), 1U);
  expectMended("004");
  EXPECT_EQ(attribute("004", attribut::AdrNumero), "12");
  EXPECT_EQ(attribute("004", attribut::PlafondOrg), "3");
  EXPECT_EQ(attribute("004", attribut::TxRembOrgChg), "2305");
  EXPECT_EQ(attribute("004", attribut::DesFacture), "Aide");
}

TEST_F(WrongPages, ACreationIsRefusedPageAfterPageAndDrawsItsCodeOnce) {
  press("Cmd_Ajouter");
  regles();
  click("Opt_TypeComplOrgChg");
  click("Cac_IncidCompta");
  user_->fill(combo("Cbo_PeriodFactOrgChg"), "");
  user_->fill(combo("Cbo_RenouvOrgChg"), "");
  bordereau();
  click("Opt_MFPBordOrgChg");
  priseEnCharge();
  click("Opt_MontantOrgChg");
  mendFirstPage();
  mendRules();
  mendSlip();
  mendActivities();
  mendAccounts();
  mendAttribution();
  EXPECT_EQ(store_.record("COMPTEUR", "999").get(store::compteur::DernierOrgChg), "003");
  store_.forgetCalls();
  press("Cmd_OK");
  expectNoBox();
  EXPECT_EQ(state(), kEmpty);
  const auto writes = store_.calls(CallKind::DBWrite);
  ASSERT_EQ(writes.size(), 2U);
  EXPECT_EQ(writes[0].told(), "DBWrite COMPTEUR 999");
  EXPECT_EQ(writes[1].told(), "DBWrite ORGPRISECHARGE 004");
  EXPECT_EQ(store_.record("COMPTEUR", "999").get(store::compteur::DernierOrgChg), "004");
  EXPECT_EQ(store_.ids("ORGPRISECHARGE").size(), 4U);
  expectMended("004");
}

TEST_F(WrongPages, AFailingCheckKeepsTheLaterPagesFromBeingChecked) {
  lookUp("001");
  regles();
  user_->fill(combo("Cbo_PeriodFactOrgChg"), "");
  store_.forgetCalls();
  press("Cmd_OK");
  expectBox("La période de facturation est obligatoire.", Icon::Exclamation);
  // The last page's check would read the activities.
  EXPECT_TRUE(store_.calls().empty());
}

TEST_F(WrongPages, AFailingCheckOfTheLastPageWritesNothing) {
  store_.set("ORGPRISECHARGE", "001", attribut::CodActSelect, "010P01" + kValue + "010P03");
  const std::string before = body("001").text();
  lookUp("001");
  fill("Txt_Ville", "Lyon");
  regles();
  choose("Cbo_RenouvOrgChg", 5);
  expectRefused(
      "Toutes les activités couvertes par l'organisme doivent être rattachées au même service.", 1,
      "Cmd_OK");
  EXPECT_PRED_FORMAT2(sameBody, body("001").text(), before);
  EXPECT_EQ(state(), kExisting);
}

TEST_F(WrongPages, AfterARefusalTheNextBodyIsCheckedAnew) {
  lookUp("001");
  regles();
  user_->fill(combo("Cbo_PeriodFactOrgChg"), "");
  press("Cmd_OK");
  desktop_.takeBoxes();
  lookUp("002");
  press("Cmd_OK");
  expectNoBox();
  EXPECT_EQ(state(), kEmpty);
}

// --- Guards of the rules page --------------------------------------------------------------------

class GuardedBody : public AllPages {
 protected:
  GuardedBody() {
    addAgreement("001");
    lookUp("001");
    regles();
  }
  // Refused with that box only: the page in front and the focus stay.
  void expectGuarded(std::string_view button, std::string_view message,
                     Caller at = Caller::here()) {
    const auto trace = called("expectGuarded", at);
    fill("Txt_DebitOrgChg", "4120000000");
    const std::string stored = body("001").text();
    const Snapshot before = screen();
    store_.forgetCalls();
    press(button);
    expectBox(message, Icon::Information);
    EXPECT_EQ(tabs().tab(), 1);
    expectFocus(button);
    expectNothingWritten();
    EXPECT_PRED_FORMAT2(sameBody, body("001").text(), stored);
    EXPECT_EQ(difference(before, screen()), "");
    EXPECT_FALSE(control_->W_Sortir());
    EXPECT_EQ(state(), kExisting);
  }
};

TEST_F(GuardedBody, StaysWhenItIsLeftWithAnotherType) {
  click("Opt_TypeComplOrgChg");
  expectGuarded("Cmd_Sortir", kTypeRefuse);
}

TEST_F(GuardedBody, StaysWhenItIsLeftWithAnotherCeiling) {
  click("Opt_PlafMensOrgChg");
  expectGuarded("Cmd_Sortir", kPlafondRefuse);
}

TEST_F(GuardedBody, IsNotSavedWithAnotherTypeOrCeiling) {
  click("Opt_PlafMensOrgChg");
  expectGuarded("Cmd_OK", kPlafondRefuse);
  click("Opt_TypeComplOrgChg");
  expectGuarded("Cmd_OK", kTypeRefuse);
}

TEST_F(GuardedBody, IsLeftWithoutAQuestionOnceItsTypeAndCeilingAreBack) {
  click("Opt_TypeComplOrgChg");
  click("Opt_PlafMensOrgChg");
  press("Cmd_Sortir");
  press("Cmd_OK");
  desktop_.takeBoxes();
  click("Opt_TypePrincipalOrgChg");
  click("Opt_PlafGlobalOrgChg");
  press("Cmd_Sortir");
  expectNoBox();
  EXPECT_TRUE(control_->W_Sortir());
  expectNothingWritten();
}

TEST_F(GuardedBody, IsSavedWithAllElseOnceItsTypeIsBack) {
  click("Opt_TypeComplOrgChg");
  fill("Txt_DebitOrgChg", "4120000000");
  press("Cmd_OK");
  desktop_.takeBoxes();
  click("Opt_TypePrincipalOrgChg");
  press("Cmd_OK");
  expectNoBox();
  EXPECT_EQ(attribute("001", attribut::TypeOrgChg), "P");
  EXPECT_EQ(attribute("001", attribut::DebitOrgChg), "4120000000");
}

TEST_F(GuardedBody, TheNextBodyIsNotGuarded) {
  click("Opt_TypeComplOrgChg");
  press("Cmd_Sortir");
  desktop_.takeBoxes();
  lookUp("002");
  regles();
  click("Opt_PlafMensOrgChg");
  press("Cmd_OK");
  expectNoBox();
  EXPECT_EQ(attribute("002", attribut::PlafondOrg), "2");
  EXPECT_EQ(attribute("001", attribut::TypeOrgChg), "P");
}

// --- A whole body --------------------------------------------------------------------------------

class WholeBody : public AllPages {
 protected:
  void enterAll(Caller at = Caller::here()) {
    const auto trace = called("enterAll", at);
    press("Cmd_Ajouter");
    user_->type("entier");
    user_->alt('L');
    user_->type("Organisme entier\tBât. A\t12\tRue\tdes Lilas\tLe Bourg\t63000\tClermont\t");
    user_->type("0400000001\t0400000002\ta@b.example\tMme Dossier\tM. Facture");
    enterActivities();
    enterRules();
    enterCoverage();
    enterSlip();
  }
  void enterActivities(Caller at = Caller::here()) {
    const auto trace = called("enterActivities", at);
    activites();
    user_->type("\t010");
    ListBox& possible = list("Lst_Activite");
    user_->click(possible, possible.items().find(kAide));
    user_->click(possible, possible.items().find(kGarde), true);
    click("Cmd_PasseDroit");
    regles();
    click("Opt_TypePrincipalOrgChg");
    activites();
    click("Opt_DimJF");
  }
  void enterRules(Caller at = Caller::here()) {
    const auto trace = called("enterRules", at);
    regles();
    click("Opt_PlafMensRepOrgChg");
    click("Cac_DemAccordOrgChg");
    click("Cac_FactAnticip");
    click("Cac_LettresInfo");
    choose("Cbo_RenouvOrgChg", 3);
    user_->fill(combo("Cbo_StatsOrgChg"), "Mutuelle");
    choose("Cbo_PeriodFactOrgChg", 2);
    dblClick("Lst_PiecePossibleOrgChg", 1);
    dblClick("Lst_PiecePossibleOrgChg", 0);
    fill("Txt_DebitOrgChg", "41\r");
    choose("Cbo_DebitOrgChg", 1);
    user_->fill(combo("Cbo_CreditOrgChg"), "COMPTE 70\r");
    choose("Cbo_CreditOrgChg", 0);
    fill("Txt_CpteProdAide", "7580000000");
  }
  void enterCoverage(Caller at = Caller::here()) {
    const auto trace = called("enterCoverage", at);
    priseEnCharge();
    click("Opt_HeureOrgChg");
    addRate();
    fill("Txt_CodeCptPrestationService", "706\t");
  }
  void enterSlip(Caller at = Caller::here()) {
    const auto trace = called("enterSlip", at);
    bordereau();
    dblClick("Lst_ParamPossOrgChg", 1);
    dblClick("Lst_ParamPossOrgChg", 2);
    user_->click(list("Lst_ParamSelecOrgChg"), 1);
    click("Cmd_HautBord");
    user_->click(list("Lst_ParamSelecOrgChg"), 0, true);
    click("Opt_RecapBordOrgChg");
    user_->scroll(child<toolkit::ScrollBar>("Bdh_NbExemp"), 4);
    fill("Txt_CodeThesaurus", "TH1");
    fill("Txt_IdentMagnetOrgChg", "123456");
    dblClick("Lst_ParamTriPos", 5);
    dblClick("Lst_ParamTriPos", 2);
  }
};

// The bar, the lists of what was searched, the arrow of a line that was picked, and what the other
// pages set on the scale's page.
const std::set<std::string> kOfTheEntryAlone{
    "Txt_CodOrgChg",    "Txt_SigleOrgChg",          "Etq_SigleOrgChg",
    "Cbo_SigleOrgChg",  "Etq_RechercheSigle",       "Cmd_Supprimer",
    "Cmd_Sortir",       "Cbo_NatureVoie",           "Cbo_DebitOrgChg",
    "Cbo_CreditOrgChg", "Cbo_CptPrestationService", "Cmd_DroiteTri",
    "Cmd_AjoutPart"};

TEST_F(WholeBody, IsSavedAndShownAgainAsItWasEntered) {
  enterAll();
  expectNoBox();
  const Snapshot entered = screen();
  press("Cmd_OK");
  expectNoBox();
  const std::map<int, std::string> expected{{attribut::SigleOrgChg, "ENTIER"},
                                            {attribut::RaisonOrgChg, "Organisme entier"},
                                            {attribut::AdrComplement, "Bât. A"},
                                            {attribut::AdrNumero, "12"},
                                            {attribut::AdrNatureVoie, "R"},
                                            {attribut::AdrVoie, "des Lilas"},
                                            {attribut::AdrLocalite, "Le Bourg"},
                                            {attribut::AdrCodePostal, "63000"},
                                            {attribut::AdrVille, "Clermont"},
                                            {attribut::AdrTelephone, "0400000001"},
                                            {attribut::AdrFax, "0400000002"},
                                            {attribut::AdrMail, "a@b.example"},
                                            {attribut::InterlocDossOrgChg, "Mme Dossier"},
                                            {attribut::InterlocFactOrgChg, "M. Facture"},
                                            {attribut::PeriodFactOrgChg, "F"},
                                            {attribut::TypeOrgChg, "P"},
                                            {attribut::PlafondOrg, "1"},
                                            {attribut::RenouvOrgChg, "3"},
                                            {attribut::PieceRenouOrgChg, "RI" + kValue + "AI"},
                                            {attribut::DebitOrgChg, "4120000000"},
                                            {attribut::CreditOrgChg, "7060000000"},
                                            {attribut::AttribOrgChg, "H"},
                                            {attribut::DateRembOrgChg, "21186"},
                                            {attribut::TxRembOrgChg, "2000"},
                                            {attribut::TxRembMajOrgChg, "2500"},
                                            {attribut::PrestServOrgChg, "1500"},
                                            {attribut::GestPartBenef, "M"},
                                            {attribut::Abonnement, "0"},
                                            {attribut::StatsOrgChg, "MU"},
                                            {attribut::DemAccordOrgChg, "1"},
                                            {attribut::TypeBordOrgChg, "R"},
                                            {attribut::Entite, "010"},
                                            {attribut::CodActSelect, "010P01" + kValue + "010P02"},
                                            {attribut::NbExemplOrgChg, "4"},
                                            {attribut::IdentMagnetOrgChg, "123456"},
                                            {attribut::IncidCompta, "0"},
                                            {attribut::GestionExclu, "1"},
                                            {attribut::LettresInfo, "1"},
                                            {attribut::AjusTarif, "0"},
                                            {attribut::CptPrestationService, "7060000000"},
                                            {attribut::CoutGlobal, "0"},
                                            {attribut::CpteProdAide, "7580000000"},
                                            {attribut::FactAnticip, "1"},
                                            {attribut::CodeThesaurus, "TH1"},
                                            {attribut::ParamSelecOrgChg, "1" + kValue + "2"},
                                            {attribut::ParamTriSelect, "6" + kValue + "3"}};
  store::DynamicArray whole;
  for (const auto& [attribute, text] : expected) whole.set(attribute, text);
  EXPECT_PRED_FORMAT2(sameBody, body("004").text(), whole.text());

  lookUp("004");
  EXPECT_EQ(difference(entered, screen(), kOfTheEntryAlone), "");
  press("Cmd_OK");
  EXPECT_PRED_FORMAT2(sameBody, body("004").text(), whole.text());
}

TEST_F(WholeBody, KeepsEverythingThroughARefusal) {
  enterAll();
  dblClick("Lst_ParamPossOrgChg", 0);
  const Snapshot entered = screen();
  press("Cmd_OK");
  expectBox(
      "La taille cumulée des paramètres sélectionnés est de 138 caractères alors que la largeur de "
      "la page ne peut être supérieure à 130",
      Icon::Exclamation);
  EXPECT_EQ(difference(entered, screen()), "");
  EXPECT_EQ(state(), kCreating);
  expectNothingWritten();
  dblClick("Lst_ParamSelecOrgChg", 0);
  press("Cmd_OK");
  expectNoBox();
  EXPECT_TRUE(store_.has("ORGPRISECHARGE", "004"));
}

TEST_F(WholeBody, IsGoneWhenItsCreationIsCancelled) {
  press("Cmd_Ajouter");
  const Snapshot blank = screen();
  desktop_.answer(Answer::Yes);
  press("Cmd_Annuler");
  enterAll();
  desktop_.answer(Answer::No);
  const Snapshot entered = screen();
  press("Cmd_Annuler");
  EXPECT_EQ(difference(entered, screen()), "");
  desktop_.answer(Answer::Yes);
  press("Cmd_Annuler");
  expectNothingWritten();
  press("Cmd_Ajouter");
  EXPECT_EQ(difference(blank, screen()), "");
}

// What a field was shown from is not what the same text typed for another body stands for.
TEST_F(WholeBody, OfTheSameTextsAsAnOddOneKeepsNoneOfItsMarks) {
  const auto odd = [this](int attribute, const std::string& begin, const std::string& end) {
    store_.set("ORGPRISECHARGE", "001", attribute, begin + kValue + end);
  };
  odd(2, "Organisme", " entier");
  odd(22, "41200", "00000");
  odd(23, "7060000000", "");
  odd(46, "", "010");
  odd(48, "4", "");
  odd(49, "123", "456");
  odd(54, "70600", "00000");
  odd(56, "7580000000", "");
  odd(58, "TH", "1");
  lookUp("001");
  EXPECT_EQ(box("Txt_Entite").text(), "010");
  EXPECT_EQ(box("Txt_IdentMagnetOrgChg").text(), "123456");
  press("Cmd_Annuler");
  enterAll();
  press("Cmd_OK");
  expectNoBox();
  const std::vector<std::pair<int, const char*>> typed{
      {attribut::RaisonOrgChg, "Organisme entier"},
      {attribut::DebitOrgChg, "4120000000"},
      {attribut::CreditOrgChg, "7060000000"},
      {attribut::Entite, "010"},
      {attribut::NbExemplOrgChg, "4"},
      {attribut::IdentMagnetOrgChg, "123456"},
      {attribut::CptPrestationService, "7060000000"},
      {attribut::CpteProdAide, "7580000000"},
      {attribut::CodeThesaurus, "TH1"}};
  for (const auto& [number, text] : typed)
    EXPECT_EQ(attribute("004", number), text) << bodyAttribute(number);
}

TEST_F(AllPages, TheEntityOfTheBodyBeforeGivesItsChartToNoOther) {
  store_.set("ORGPRISECHARGE", "002", attribut::Entite, "777");
  lookUp("001");
  lookUp("002");
  expectNoBox();
  regles();
  store_.forgetCalls();
  user_->go(box("Txt_CreditOrgChg"));
  expectBox(
      "Vous devez d'abord sélectionner une entité juridique dans l'onglet \"Activités Couvertes\" "
      "afin de savoir à quel plan comptable associer le compte à créditer",
      Icon::Exclamation);
  EXPECT_EQ(tabs().tab(), 5);
  expectFocus("Txt_Entite");
  EXPECT_TRUE(store_.calls().empty());
}

// --- Leaving -------------------------------------------------------------------------------------

class LeavingAllPages : public AllPages {
 protected:
  LeavingAllPages() {
    store_.set("ORGPRISECHARGE", "001", attribut::PieceRenouOrgChg, "AI");
    store_.set("ORGPRISECHARGE", "001", attribut::StatsOrgChg, "CD");
    store_.set("ORGPRISECHARGE", "001", attribut::CptPrestationService, "7060000000");
    store_.set("ORGPRISECHARGE", "001", attribut::CpteProdAide, "7580000000");
    store_.set("ORGPRISECHARGE", "001", attribut::CodeThesaurus, "TH1");
    store_.set("ORGPRISECHARGE", "001", attribut::IdentMagnetOrgChg, "123456");
    store_.set("ORGPRISECHARGE", "001", attribut::ParamSelecOrgChg, "1" + kValue + "2");
    store_.set("ORGPRISECHARGE", "001", attribut::ParamTriSelect, "3");
    lookUp("001");
  }
  void expectQuestion(Caller at = Caller::here()) {
    const auto trace = called("expectQuestion", at);
    desktop_.answer(Answer::Cancel);
    press("Cmd_Sortir");
    expectBox(kEnregistrer, Icon::Question, toolkit::Buttons::YesNoCancel);
    EXPECT_FALSE(control_->W_Sortir());
  }
  void expectNoQuestion(Caller at = Caller::here()) {
    const auto trace = called("expectNoQuestion", at);
    press("Cmd_Sortir");
    expectNoBox();
    EXPECT_TRUE(control_->W_Sortir());
    control_->setW_Sortir(false);
  }
  // Is asked about while the change stands, and not before and after.
  void expectAsked(std::string_view name, char32_t letter, const std::function<void()>& change,
                   const std::function<void()>& takeBack, Caller at = Caller::here()) {
    const auto trace = called("expectAsked", at);
    SCOPED_TRACE(name);
    expectNoQuestion();
    page(letter);
    change();
    expectNoBox();
    expectQuestion();
    takeBack();
    expectNoBox();
    expectNoQuestion();
  }
  void expectTextAsked(std::string_view name, char32_t letter, std::string_view other,
                       Caller at = Caller::here()) {
    const auto trace = called("expectTextAsked", at);
    const std::string before = box(name).text();
    expectAsked(
        name, letter, [&] { fill(name, other); }, [&] { fill(name, before); });
  }
  void expectChoiceAsked(std::string_view name, char32_t letter, std::string_view before,
                         Caller at = Caller::here()) {
    const auto trace = called("expectChoiceAsked", at);
    expectAsked(
        name, letter, [&] { click(name); }, [&] { click(before); });
  }
  void expectLineAsked(std::string_view name, char32_t letter, int other,
                       Caller at = Caller::here()) {
    const auto trace = called("expectLineAsked", at);
    const std::string before = combo(name).text();
    expectAsked(
        name, letter, [&] { choose(name, other); },
        [&] { choose(name, combo(name).items().find(before)); });
  }
};

TEST_F(LeavingAllPages, AsksAboutEveryTextAndOnlyWhileItIsAnotherOne) {
  for (const char* name :
       {"Txt_RaisonOrgChg", "Txt_Complement", "Txt_NumVoie", "Txt_NomVoie", "Txt_Localite",
        "Txt_CodePostal", "Txt_Ville", "Txt_Telephone", "Txt_Fax", "Txt_Email",
        "Txt_InterlocDossOrgChg", "Txt_InterlocFactOrgChg"}) {
    expectTextAsked(name, 'R', "AUTRE");
  }
  expectLineAsked("Cbo_NatureVoie", 'R', 0);
  expectTextAsked("Txt_DebitOrgChg", 'G', "4120000000");
  expectTextAsked("Txt_CreditOrgChg", 'G', "4110000000");
  expectTextAsked("Txt_CpteProdAide", 'G', "7060000000");
  expectTextAsked("Txt_CodeCptPrestationService", 'P', "7580000000");
  expectTextAsked("Txt_CodeThesaurus", 'B', "TH2");
  expectTextAsked("Txt_IdentMagnetOrgChg", 'B', "654321");
  expectTextAsked("Txt_NbExEmplOrgChg", 'B', "7");
}

TEST_F(LeavingAllPages, AsksAboutEveryChoiceAndOnlyWhileItIsAnotherOne) {
  expectChoiceAsked("Opt_TypeComplOrgChg", 'G', "Opt_TypePrincipalOrgChg");
  expectChoiceAsked("Opt_PlafMensOrgChg", 'G', "Opt_PlafGlobalOrgChg");
  expectChoiceAsked("Opt_PlafMensRepOrgChg", 'G', "Opt_PlafGlobalOrgChg");
  expectChoiceAsked("Opt_RecapBordOrgChg", 'B', "Opt_IndBordOrgChg");
  expectChoiceAsked("Opt_MFPBordOrgChg", 'B', "Opt_IndBordOrgChg");
  expectChoiceAsked("Opt_DimJF", 'V', "Opt_Totalite");
  expectChoiceAsked("Opt_Semaine", 'V', "Opt_Totalite");
  for (const char* name : {"Cac_DemAccordOrgChg", "Cac_LettresInfo"}) {
    expectChoiceAsked(name, 'G', name);
  }
  expectLineAsked("Cbo_RenouvOrgChg", 'G', 4);
  expectLineAsked("Cbo_PeriodFactOrgChg", 'G', 1);
  expectLineAsked("Cbo_StatsOrgChg", 'G', 1);
}

TEST_F(LeavingAllPages, AsksAboutAnticipatedBillingWithItsRequests) {
  store_.set("ORGPRISECHARGE", "001", attribut::DemAccordOrgChg, "1");
  lookUp("002");
  lookUp("001");
  expectChoiceAsked("Cac_FactAnticip", 'G', "Cac_FactAnticip");
}

TEST_F(LeavingAllPages, AsksAboutAmountsOfAComplementaryBody) {
  store_.set("ORGPRISECHARGE", "001", attribut::TypeOrgChg, "C");
  lookUp("002");
  lookUp("001");
  expectChoiceAsked("Opt_MontantOrgChg", 'P', "Opt_HeureOrgChg");
}

TEST_F(LeavingAllPages, AsksAboutListsAndTheirOrder) {
  expectAsked(
      "Lst_PieceRenouOrgChg", 'G', [&] { dblClick("Lst_PiecePossibleOrgChg", 1); },
      [&] { dblClick("Lst_PieceRenouOrgChg", 1); });
  expectAsked(
      "Lst_ParamSelecOrgChg", 'B', [&] { dblClick("Lst_ParamPossOrgChg", 0); },
      [&] { dblClick("Lst_ParamSelecOrgChg", 2); });
  expectAsked(
      "Cmd_BasBord", 'B',
      [&] {
        user_->click(list("Lst_ParamSelecOrgChg"), 0);
        click("Cmd_BasBord");
      },
      [&] { click("Cmd_HautBord"); });
  expectAsked(
      "Lst_ParamTriSelect", 'B', [&] { dblClick("Lst_ParamTriPos", 0); },
      [&] { dblClick("Lst_ParamTriSelect", 1); });
  expectAsked(
      "Lst_ActSelect", 'V', [&] { cover({kGarde}); }, [&] { dblClick("Lst_ActSelect", 1); });
}

TEST_F(LeavingAllPages, AsksAboutAnotherEntityUntilItsActivitiesAreBack) {
  expectAsked(
      "Txt_Entite", 'V', [&] { fill("Txt_Entite", "020"); },
      [&] {
        fill("Txt_Entite", "010");
        cover({kAide});
      });
}

TEST_F(LeavingAllPages, AsksAboutAccountsThatHaveNoEffectAnyMore) {
  expectAsked(
      "Cac_IncidCompta", 'G', [&] { click("Cac_IncidCompta"); },
      [&] {
        click("Cac_IncidCompta");
        fill("Txt_DebitOrgChg", "4110000000");
        fill("Txt_CreditOrgChg", "7060000000");
        fill("Txt_CpteProdAide", "7580000000");
      });
}

TEST_F(LeavingAllPages, AsksNothingAboutWhatIsOnlyLookedAt) {
  for (const char32_t letter : {U'G', U'P', U'B', U'V', U'R'}) page(letter);
  regles();
  user_->click(list("Lst_PiecePossibleOrgChg"), 1);
  user_->open(combo("Cbo_StatsOrgChg"));
  bordereau();
  user_->click(list("Lst_ParamPossOrgChg"), 0);
  user_->click(list("Lst_ParamTriPos"), 0);
  activites();
  user_->open(combo("Cbo_Entite"));
  user_->click(list("Lst_Activite"), 1);
  expectNoQuestion();
}

TEST_F(LeavingAllPages, WithYesChecksAndSavesAllPages) {
  fill("Txt_Ville", "Lyon");
  regles();
  user_->fill(combo("Cbo_PeriodFactOrgChg"), "");
  coordonnees();
  desktop_.answer(Answer::Yes);
  press("Cmd_Sortir");
  const auto boxes = desktop_.takeBoxes();
  ASSERT_PRED_FORMAT2(boxCount, boxes, 2U);
  EXPECT_EQ(boxes[1].text, "La période de facturation est obligatoire.");
  EXPECT_EQ(tabs().tab(), 1);
  expectFocus("Cbo_PeriodFactOrgChg");
  EXPECT_FALSE(control_->W_Sortir());
  expectNothingWritten();
  choose("Cbo_PeriodFactOrgChg", 1);
  desktop_.answer(Answer::Yes);
  press("Cmd_Sortir");
  EXPECT_TRUE(control_->W_Sortir());
  EXPECT_EQ(attribute("001", attribut::AdrVille), "Lyon");
  EXPECT_EQ(attribute("001", attribut::PeriodFactOrgChg), "T");
}

// --- Deletion ------------------------------------------------------------------------------------

TEST_F(AllPages, ABodyWithChangesAndMistakesIsDeletedLikeAnyOther) {
  lookUp("001");
  fill("Txt_RaisonOrgChg", "");
  regles();
  click("Opt_TypeComplOrgChg");
  user_->fill(combo("Cbo_PeriodFactOrgChg"), "");
  store_.forgetCalls();
  desktop_.answer(Answer::Yes);
  press("Cmd_Supprimer");
  expectBox("Etes-vous sûr de vouloir supprimer cet organisme de prise en charge ?", Icon::Question,
            toolkit::Buttons::YesNo);
  EXPECT_FALSE(store_.has("ORGPRISECHARGE", "001"));
  EXPECT_TRUE(store_.calls(CallKind::DBWrite).empty());
  EXPECT_EQ(state(), kEmpty);
}

TEST_F(AllPages, ARefusedDeletionKeepsWhatWasTypedOnAllPages) {
  addAgreement("001");
  lookUp("001");
  fill("Txt_Ville", "Lyon");
  regles();
  choose("Cbo_RenouvOrgChg", 5);
  bordereau();
  dblClick("Lst_ParamPossOrgChg", 0);
  const Snapshot before = screen();
  desktop_.answer(Answer::Yes);
  press("Cmd_Supprimer");
  EXPECT_EQ(desktop_.takeBoxes().back().text,
            "Des accords sont créés pour cet organisme. Suppression impossible.");
  EXPECT_EQ(difference(before, screen()), "");
  press("Cmd_OK");
  EXPECT_EQ(attribute("001", attribut::AdrVille), "Lyon");
  EXPECT_EQ(attribute("001", attribut::RenouvOrgChg), "5");
}

// --- Host, and users who may only look
// ------------------------------------------------------------

TEST_F(AllPages, AreShownAgainAsTheyWereWhateverTheHostHasFilledAndMoved) {
  lookUp("001");
  const Snapshot shown = screen();
  for (const auto member :
       {&control::Ctr_OrgPriseCharge::Remplir_OrgPriseChg,
        &control::Ctr_OrgPriseCharge::Remplir_ParamsPoss,
        &control::Ctr_OrgPriseCharge::Long_ListeParam,
        &control::Ctr_OrgPriseCharge::Remplir_PiecesPoss,
        &control::Ctr_OrgPriseCharge::Remplir_StatOrgChg,
        &control::Ctr_OrgPriseCharge::RechercheAccord, &control::Ctr_OrgPriseCharge::Ecrire_Ong1,
        &control::Ctr_OrgPriseCharge::Ecrire_Ong2, &control::Ctr_OrgPriseCharge::Ecrire_Ong5,
        &control::Ctr_OrgPriseCharge::Ecrire_Ong6, &control::Ctr_OrgPriseCharge::Afficher_Ong1,
        &control::Ctr_OrgPriseCharge::Afficher_Ong2, &control::Ctr_OrgPriseCharge::Afficher_Ong5,
        &control::Ctr_OrgPriseCharge::Afficher_Ong6}) {
    (control_.get()->*member)();
    EXPECT_EQ(difference(shown, screen()), "");
  }
  for (const auto member : {&control::Ctr_OrgPriseCharge::Remplir_Entite,
                            &control::Ctr_OrgPriseCharge::Remplir_Liste_Activite,
                            &control::Ctr_OrgPriseCharge::Passage_A_Droite,
                            &control::Ctr_OrgPriseCharge::Passage_A_Gauche,
                            &control::Ctr_OrgPriseCharge::Passage_A_Droite_Tri,
                            &control::Ctr_OrgPriseCharge::Passage_A_Gauche_Tri}) {
    (control_.get()->*member)();
    control_->Afficher_Donnees();
    EXPECT_EQ(difference(shown, screen()), "");
  }
  press("Cmd_Sortir");
  expectNoBox();
  EXPECT_TRUE(control_->W_Sortir());
  expectNothingWritten();
}

TEST_F(AllPages, AreCheckedByTheHostPageByPage) {
  lookUp("001");
  EXPECT_TRUE(control_->Verif_Ong1() && control_->Verif_Ong2() && control_->Verif_Ong5() &&
              control_->Verif_Ong6());
  control_->Vider_Donnees();
  for (const auto check :
       {&control::Ctr_OrgPriseCharge::Verif_Ong1, &control::Ctr_OrgPriseCharge::Verif_Ong2,
        &control::Ctr_OrgPriseCharge::Verif_Ong5, &control::Ctr_OrgPriseCharge::Verif_Ong6}) {
    EXPECT_FALSE((control_.get()->*check)());
    EXPECT_PRED_FORMAT2(boxCount, desktop_.takeBoxes(), 1U);
  }
  lookUp("001");
  press("Cmd_OK");
  expectNoBox();
  EXPECT_EQ(state(), kEmpty);
}

TEST_F(AllPages, AreLeftWithoutAQuestionByAUserWhoMayOnlyLook) {
  level_->value = 1;
  control_->Init();
  lookUp("001");
  fill("Txt_Ville", "Lyon");
  regles();
  click("Opt_TypeComplOrgChg");
  bordereau();
  dblClick("Lst_ParamSelecOrgChg", 0);
  activites();
  fill("Txt_Entite", "020");
  press("Cmd_Sortir");
  expectNoBox();
  EXPECT_TRUE(control_->W_Sortir());
  expectNothingWritten();
}

// --- Start-up ------------------------------------------------------------------------------------

TEST_F(AllPages, AreAsEmptyAfterASecondInitAsAfterACancel) {
  for (const char* flag : {"", "O"}) {
    store_.set("COMPTEUR", "999", store::compteur::InterfaceComptable, flag);
    control_->Init();
    const Snapshot started = screen();
    lookUp("001");
    press("Cmd_Annuler");
    EXPECT_EQ(difference(started, screen()), "") << flag;
  }
}

}  // namespace
}  // namespace behaviour
