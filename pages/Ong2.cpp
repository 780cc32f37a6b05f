#include "pages/Ong2.h"

#include <string>
#include <vector>

#include "store/Layouts.h"

namespace pages {
namespace {

std::vector<toolkit::ListItem> labels(const store::Record& table) {
  const store::DynamicArray& fields = table.fields();
  std::vector<toolkit::ListItem> lines;
  for (int i = 1; i <= fields.DCount(store::tables::Libelles); ++i) {
    lines.push_back({std::string(fields.get(store::tables::Libelles, i)), 0});
  }
  return lines;
}

}  // namespace

Ong2::Ong2(PageContext context) : context_(context) {}

void Ong2::Remplir_PiecesPoss() {
  context_.screen.regles.Lst_PiecePossibleOrgChg.setItems(labels(*context_.session.piecesRenouv));
}

void Ong2::Remplir_StatOrgChg() {
  const screen::Quiet quiet(context_.session);
  toolkit::ComboBox& combo = context_.screen.regles.Cbo_StatsOrgChg;
  const std::string shown = combo.text();
  combo.setItems(labels(*context_.session.statOrgChg));
  combo.setText(shown);
}

}  // namespace pages
