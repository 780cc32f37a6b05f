// Accounts: a chart for two legal entities, and a user's verbs on the four pairs of number and
// label.
#pragma once

#include <array>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "tests/behaviour/ControlTest.h"

namespace behaviour {

using toolkit::Key;

inline constexpr const char* kInconnu = "Ce compte n'existe pas.";
inline constexpr const char* kAucunNumero = "Le compte comptable n'existe pas.";
inline constexpr const char* kAucunLibelle = "Aucune ventilation comptable commençant par ";

struct Champs {
  const char* test;
  const char* numero;
  const char* libelle;
  int tab;
  int attribute;
};

inline void PrintTo(const Champs& champs, std::ostream* out) { *out << champs.test; }

inline constexpr Champs kDebit{"Debit", "Txt_DebitOrgChg", "Cbo_DebitOrgChg", 1,
                               attribut::DebitOrgChg};
inline constexpr Champs kCredit{"Credit", "Txt_CreditOrgChg", "Cbo_CreditOrgChg", 1,
                                attribut::CreditOrgChg};
inline constexpr Champs kProduitAide{"ProduitAide", "Txt_CpteProdAide", "Cbo_CpteProdAide", 1,
                                     attribut::CpteProdAide};
inline constexpr Champs kPrestation{"Prestation", "Txt_CodeCptPrestationService",
                                    "Cbo_CptPrestationService", 2, attribut::CptPrestationService};
inline constexpr std::array kPaires{kDebit, kCredit, kProduitAide, kPrestation};

// The labels of entity 010's accounts that begin with 70, as they are listed.
inline const std::vector<std::string> kSoixanteDix = {
    "AIDE A DOMICILE", "AIDE A DOMICILE", "PRESTATIONS DE SERVICES", "REMISES \"SOCIALES\""};

// Body 001 of legal entity 010, with an accounting interface. Of its chart, several accounts begin
// with 70, one alone with 74 and with 6.
class AccountTest : public ControlTest {
 protected:
  AccountTest();

  // Starts the control.
  void begin();
  void show(std::string_view body = "001", Caller at = Caller::here());
  void open(Caller at = Caller::here()) {
    const auto trace = called("open", at);
    begin();
    show();
  }
  void forget();

  TextBox& numero(const Champs& champs) { return box(champs.numero); }
  ComboBox& libelle(const Champs& champs) { return child<ComboBox>(champs.libelle); }

  void goTo(const Champs& champs, toolkit::Control& field, Caller at = Caller::here());
  void typeNumber(const Champs& champs, std::string_view keys, Caller at = Caller::here());
  void typeLabel(const Champs& champs, std::string_view keys, Caller at = Caller::here());
  // A press of the Down key in the closed list.
  void down(const Champs& champs, Caller at = Caller::here());
  void elsewhere(Caller at = Caller::here()) {
    const auto trace = called("elsewhere", at);
    ASSERT_TRUE(user_->go(code()));
  }

  std::vector<std::string> lines(const Champs& champs);
  // The texts of number and label, as "number|label".
  std::string shown(const Champs& champs) {
    return numero(champs).text() + "|" + libelle(champs).text();
  }
  // The one search since the journals were forgotten, with the control busy meanwhile.
  void expectSearch(std::string_view sentence, Caller at = Caller::here());
  void expectNoSearch(Caller at = Caller::here());
  void expectAtRest(Caller at = Caller::here());
  // The keys of the accounts that were read.
  std::vector<std::string> chartReads();

 private:
  // What the control was like while the store ran a sentence.
  struct Meanwhile {
    toolkit::Pointer pointer = toolkit::Pointer::Normal;
    bool enabled = true;
  };
  std::vector<Meanwhile> meanwhile_;
};

// The same on one pair.
class AccountPair : public AccountTest, public testing::WithParamInterface<Champs> {
 protected:
  TextBox& numero() { return AccountTest::numero(GetParam()); }
  ComboBox& libelle() { return AccountTest::libelle(GetParam()); }
  std::vector<std::string> lines() { return AccountTest::lines(GetParam()); }
  std::string shown() { return AccountTest::shown(GetParam()); }
  void typeNumber(std::string_view keys, Caller at = Caller::here()) {
    AccountTest::typeNumber(GetParam(), keys, at);
  }
  void typeLabel(std::string_view keys, Caller at = Caller::here()) {
    AccountTest::typeLabel(GetParam(), keys, at);
  }
  void down(Caller at = Caller::here()) { AccountTest::down(GetParam(), at); }
  void goToNumber(Caller at = Caller::here()) { goTo(GetParam(), numero(), at); }
  void goToLabel(Caller at = Caller::here()) { goTo(GetParam(), libelle(), at); }
  // The body is shown with this account.
  void showAccount(std::string_view account, Caller at = Caller::here()) {
    const auto trace = called("showAccount", at);
    store_.set("ORGPRISECHARGE", "001", GetParam().attribute, account);
    open();
  }
};

}  // namespace behaviour
