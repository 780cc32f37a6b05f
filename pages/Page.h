// What the tab pages have in common.
#pragma once

#include "screen/EditSession.h"
#include "screen/Screen.h"
#include "toolkit/Desktop.h"

namespace pages {

// What a page works with; all of it outlives the page.
struct PageContext {
  toolkit::Desktop& desktop;
  screen::Screen& screen;
  screen::EditSession& session;
};

// One tab. The record in hand must be there for afficher and ecrire (EditSession::RecOrgChg).
class Page {
 public:
  Page() = default;
  Page(const Page&) = delete;
  Page& operator=(const Page&) = delete;
  virtual ~Page() = default;

  // Afficher_OngN: shows the record, and leaves nothing of what the page showed before. Handlers
  // stay quiet meanwhile.
  virtual void afficher() = 0;
  // Tells the store which records afficher is about to read.
  virtual void annoncer() {}
  // Ecrire_OngN: clears the page's error flag; in checking mode runs the check (Verif_OngN) first,
  // which has then shown its message and set the flag. Writes the page into the record in hand
  // unless the flag is set.
  virtual void ecrire() = 0;
  // Clears every field of the page. Handlers stay quiet meanwhile.
  virtual void vider() = 0;
};

}  // namespace pages
