// The coverage page as its user has it, and its two editors on a desk of their own where the record
// in hand and the editors' state can be read.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "pages/Ong3.h"
#include "screen/EditSession.h"
#include "screen/Screen.h"
#include "tests/behaviour/ControlTest.h"

namespace behaviour {

using Row = std::vector<std::string>;  // one text a column, as it is shown
using Rows = std::vector<Row>;

// The day number of a dd/mm/yyyy text, the hundredths of a number as it is shown; "" stays "".
std::string stored(std::string_view shown);
// One attribute a column, from what the rows show. `first` is the attribute of the first column.
void putRows(store::DynamicArray& record, int first, std::size_t columns, const Rows& rows);
// What lists of one length show.
Rows rowsOf(std::initializer_list<const ListBox*> lists);

// Every control below, with whether it is enabled, by name.
std::vector<std::pair<std::string, bool>> enabledBelow(const toolkit::Container& container);

inline constexpr const char* kDateIllisible =
    "Erreur de saisie dans la date, veuillez la ressaisir.";
inline constexpr const char* kDateExistante =
    "La date d'effet est déjà existante, l'ajout du taux de remboursement est annulé.";
inline constexpr const char* kDateAnterieure =
    "La date d'effet doit être postérieure à celles déjà saisies.";
inline constexpr const char* kSeulTaux =
    "Vous avez déjà supprimé le seul taux accessible en modification. Il ne vous est plus possible "
    "de modifier un taux.";
inline constexpr const char* kSupprimerLigne = "Etes-vous sûr de vouloir supprimer cette ligne ?";

class Coverage : public ControlTest {
 protected:
  // Body 001 has two rates, 01/01/2026 and 01/01/2025, and no deduction; it is on screen, with the
  // coverage page in front.
  Coverage();
  void putRates(const Rows& rows, std::string_view code = "001");
  void putDeductions(const Rows& rows, std::string_view code = "001");
  // Looks the body up again; what was changed is lost.
  void show(std::string_view code = "001", Caller at = Caller::here());

  toolkit::ScrollBar& bar(std::string_view name) { return child<toolkit::ScrollBar>(name); }
  Rows rates();
  Rows deductions();
  // Into the zones of the open row, from the first on.
  void fillRate(const Row& row, Caller at = Caller::here());
  void fillDeduction(const Row& row, Caller at = Caller::here());
  // Presses the add button, fills the zones, presses OK.
  void addRate(const Row& row, Caller at = Caller::here());
  void addDeduction(const Row& row, Caller at = Caller::here());
  bool openRate(int row, std::string_view list = "Lst_DateRembOrgChg");
  bool openDeduction(int row, std::string_view list = "Lst_DebAbatHOrgChg");
  bool rateOpen() { return button("Cmd_OKTaux").usable(); }
  bool deductionOpen() { return button("Cmd_OKAbat").usable(); }
  // Saves the body with Cmd_OK, which must accept it.
  void save(Caller at = Caller::here());
};

// The page, its session and its screen, without the rest of the control.
class Desk : public testing::Test {
 protected:
  Desk();
  // A body comes to hand, as by a look-up.
  void hand(const Rows& rates, const Rows& deductions);
  store::DynamicArray& record() { return session_.RecOrgChg->fields(); }
  Rows rates() const;
  Rows deductions() const;

  testing_support::TestDesktop desktop_;
  toolkit::Surface surface_{"Ctr_OrgPriseCharge"};
  screen::Screen screen_{surface_};
  screen::EditSession session_;
  pages::Ong3 page_{{desktop_, screen_, session_}};
  toolkit::headless::User user_{surface_};
  screen::PriseEnCharge& prise_ = screen_.priseEnCharge;
};

}  // namespace behaviour
