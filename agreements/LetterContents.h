#pragma once

#include <optional>
#include <string>
#include <vector>

#include "agreements/AgreementContext.h"

namespace agreements {

// What one letter says; "" where the store has nothing to say.
struct LetterContents {
  std::vector<std::string> expediteur;    // lines of the sender
  std::string lieu;                       // where it is written
  std::vector<std::string> destinataire;  // lines of the addressee
  std::string titre;                      // of the addressee
  // The beneficiary's title and name, when the letter goes to a person responsible.
  std::optional<std::string> concerne;
  std::string debut;  // dd/mm/yyyy
  std::string fin;
  std::string participation;  // two decimals
  std::string devise;         // with its leading blank
};

// Tells the store of which beneficiaries the next letters are, and what these letters read besides:
// files that are open already at once, the others as they are opened.
void annoncerLettres(screen::EditSession& session, std::vector<std::string> aides);

// The letter of MiseAJourAccords::accord. Every store call is trapped.
LetterContents contenuDeLettre(const AgreementContext& context);

}  // namespace agreements
