// The second page, "Règles de gestion", in front of its user: three bodies, accounts as the counter
// record says.
#pragma once

#include <utility>
#include <vector>

#include "tests/behaviour/ControlTest.h"
#include "toolkit/Frame.h"

namespace behaviour {

using toolkit::Frame;
using toolkit::Label;

inline constexpr int kRulesTab = 1;

class RulesPage : public ControlTest {
 protected:
  enum class Accounts { Without, With };

  explicit RulesPage(Accounts accounts = Accounts::Without) {
    fillThreeBodies(store_);
    if (accounts == Accounts::With) {
      store_.set("COMPTEUR", "999", store::compteur::InterfaceComptable, "O");
      store_.put("PLANCOMPTABLE", "0104110000001", {"AIDE A DOMICILE"});
      store_.put("PLANCOMPTABLE", "0104670000002", {"CREDITEURS"});
      store_.put("PLANCOMPTABLE", "0107060000003", {"PRODUITS"});
    }
  }

  Frame& frame(std::string_view name) { return child<Frame>(name); }
  ComboBox& period() { return combo("Cbo_PeriodFactOrgChg"); }
  ComboBox& renewal() { return combo("Cbo_RenouvOrgChg"); }
  ComboBox& statistics() { return combo("Cbo_StatsOrgChg"); }

  // The user looks the body up and brings the page forward.
  void show(std::string_view code, Caller at = Caller::here()) {
    const auto trace = called("show", at);
    lookUp(code);
    ASSERT_TRUE(user_->click(tabs(), kRulesTab));
  }
  // The same after attributes of the stored record have been set.
  using Attributes = std::vector<std::pair<int, std::string>>;
  void show(std::string_view code, const Attributes& attributes, Caller at = Caller::here()) {
    const auto trace = called("show", at);
    for (const auto& [number, text] : attributes) store_.set("ORGPRISECHARGE", code, number, text);
    show(code);
  }
  void choose(std::string_view name, Caller at = Caller::here()) {
    const auto trace = called("choose", at);
    ASSERT_TRUE(user_->click(option(name))) << name;
  }
  void tick(std::string_view name, Caller at = Caller::here()) {
    const auto trace = called("tick", at);
    ASSERT_TRUE(user_->click(check(name))) << name;
  }

  // The user saves, and the stored record differs from what it was in these attributes alone.
  void expectSaved(std::string_view code, const Attributes& changes, Caller at = Caller::here()) {
    const auto trace = called("expectSaved", at);
    store::DynamicArray expected = store_.record("ORGPRISECHARGE", code);
    for (const auto& [number, text] : changes) expected.set(number, text);
    ASSERT_TRUE(press("Cmd_OK"));
    expectNoBox();
    EXPECT_EQ(state(), kEmpty);
    EXPECT_PRED_FORMAT2(sameBody, store_.record("ORGPRISECHARGE", code).text(), expected.text());
  }
};

class RulesPageWithAccounts : public RulesPage {
 protected:
  RulesPageWithAccounts() : RulesPage(Accounts::With) {
    for (const char* code : {"001", "002", "003"}) {
      store_.set("ORGPRISECHARGE", code, attribut::DebitOrgChg, "4110000001");
      store_.set("ORGPRISECHARGE", code, attribut::CreditOrgChg, "4670000002");
      store_.set("ORGPRISECHARGE", code, attribut::CpteProdAide, "7060000003");
    }
  }
};

}  // namespace behaviour
