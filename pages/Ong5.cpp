#include "pages/Ong5.h"

#include <string>
#include <vector>

#include "store/Conversions.h"
#include "store/Layouts.h"
#include "store/Request.h"

namespace pages {

Ong5::Ong5(PageContext context) : context_(context) {}

void Ong5::Remplir_ParamsPoss() {
  screen::Bordereau& page = context_.screen.bordereau;
  page.Lst_ParamPossOrgChg.clear();
  page.Lst_LongParam.clear();
  const store::DynamicArray answer =
      store::select(*context_.session.TheDatabase, "SSELECT PARAMBORDORGCHG PAR 1",
                    store::parambordorgchg::kFile, "0 1 2");
  if (!store::anySelected(answer)) return;
  std::vector<toolkit::ListItem> parameters;
  std::vector<toolkit::ListItem> widths;
  for (int i = 1; i <= answer.DCount(); ++i) {
    parameters.push_back({std::string(answer.get(i, 2)), store::wholeNumber(answer.get(i, 1))});
    widths.push_back({std::string(answer.get(i, 3)), 0});
  }
  page.Lst_ParamPossOrgChg.setItems(std::move(parameters));
  page.Lst_LongParam.setItems(std::move(widths));
}

}  // namespace pages
