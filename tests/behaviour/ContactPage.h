// The first page, "Coordonnées", in front of its user: three bodies, nothing in hand.
#pragma once

#include "tests/behaviour/ControlTest.h"

namespace behaviour {

class ContactPage : public ControlTest {
 protected:
  ContactPage() {
    fillThreeBodies(store_);
    start();
  }
};

// Body 001 in hand, each of the page's attributes with a second value.
class MultivaluedContacts : public ContactPage {
 protected:
  MultivaluedContacts() {
    record_ = store_.record("ORGPRISECHARGE", "001");
    for (int i = attribut::SigleOrgChg; i <= attribut::InterlocFactOrgChg; ++i) {
      if (keptFree(i)) continue;
      record_.set(i, 1, "R");
      record_.set(i, 2, "deux" + std::to_string(i));
    }
    store_.put("ORGPRISECHARGE", "001", record_);
    lookUp("001");
  }
  void expectStored(Caller at = Caller::here()) {
    const auto trace = called("expectStored", at);
    EXPECT_PRED_FORMAT2(sameBody, store_.record("ORGPRISECHARGE", "001").text(), record_.text());
  }

  store::DynamicArray record_;
};

}  // namespace behaviour
