#pragma once

#include <string_view>

#include "pages/Page.h"

namespace pages {

// A page of the control, with its check.
class Onglet : public Page {
 public:
  // The flag tells of a refusal.
  Onglet(PageContext context, bool screen::EditSession::*erreur)
      : context_(context), erreur_(erreur) {}

 protected:
  // The check refuses: it sets the flag and shows the message. With a tab, that one comes forward
  // and the field gets the focus. Always false.
  bool refuser(std::string_view message);
  bool refuser(std::string_view message, int tab, toolkit::Control& field);

  PageContext context_;

 private:
  bool screen::EditSession::*erreur_;
};

}  // namespace pages
