#include "store/Layouts.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

namespace {

using namespace store;

// In each of these a number that two names share is a compile error, and so is a name left out. Of
// a funding body the dictionary shows the same.

constexpr bool known(compteur::Attribut attribute) {
  using enum compteur::Attribut;
  switch (attribute) {
    case DernierOrgChg:
    case InterfaceComptable:
      return true;
  }
  return false;
}

constexpr bool known(tables::Attribut attribute) {
  using enum tables::Attribut;
  switch (attribute) {
    case Intitule:
    case Codes:
    case Libelles:
      return true;
  }
  return false;
}

constexpr bool known(parambordorgchg::Attribut attribute) {
  using enum parambordorgchg::Attribut;
  switch (attribute) {
    case Libelle:
    case Longueur:
      return true;
  }
  return false;
}

constexpr bool known(activites::Attribut attribute) {
  using enum activites::Attribut;
  switch (attribute) {
    case Libelle:
    case CodAssoActivite:
    case TypeActivite:
    case Service:
      return true;
  }
  return false;
}

constexpr bool known(association::Attribut attribute) {
  using enum association::Attribut;
  switch (attribute) {
    case NomAsso:
    case SigleAsso:
    case AdrComplement:
    case AdrNumero:
    case AdrNatureVoie:
    case AdrVoie:
    case AdrLocalite:
    case AdrCodePostal:
    case AdrVille:
    case AdrTelephone:
    case AdrFax:
    case AdrMail:
      return true;
  }
  return false;
}

constexpr bool known(accord::Attribut attribute) {
  using enum accord::Attribut;
  switch (attribute) {
    case OrgChgAcc:
    case NumAideAcc:
    case HeuresAcc:
    case MontantAcc:
    case DateDebAcc:
    case DateFinAcc:
    case CodActAcc:
    case TxRembAcc:
    case DatePartAcc:
    case TrancheAcc:
    case PartBenefAcc:
    case ClotureAcc:
      return true;
  }
  return false;
}

constexpr bool known(demandacc::Attribut attribute) {
  using enum demandacc::Attribut;
  switch (attribute) {
    case OrgChgDem:
    case NumAideDem:
    case DateDem:
    case CodActDem:
    case HeuresDem:
      return true;
  }
  return false;
}

constexpr bool known(civilaide::Attribut attribute) {
  using enum civilaide::Attribut;
  switch (attribute) {
    case TitreAide:
    case NomAide:
    case AdrComplement:
    case AdrNumero:
    case AdrNatureVoie:
    case AdrVoie:
    case AdrLocalite:
    case AdrCodePostal:
    case AdrVille:
    case AdrTelephone:
    case AdrFax:
    case AdrMail:
    case PrenomAide:
    case NomPatronymique:
    case DateNaissance:
    case Secteur:
      return true;
  }
  return false;
}

constexpr bool known(responsable::Attribut attribute) {
  using enum responsable::Attribut;
  switch (attribute) {
    case TitreResp:
    case NomResp:
    case AdrComplement:
    case AdrNumero:
    case AdrNatureVoie:
    case AdrVoie:
    case AdrLocalite:
    case AdrCodePostal:
    case AdrVille:
    case AdrTelephone:
    case AdrFax:
    case AdrMail:
    case PrenomResp:
      return true;
  }
  return false;
}

constexpr bool known(eltsfactaide::Attribut attribute) {
  using enum eltsfactaide::Attribut;
  switch (attribute) {
    case AccordElt:
    case OrgChgElt:
    case DateElt:
    case PartBenefElt:
    case RevenuElt:
    case FoyerElt:
      return true;
  }
  return false;
}

constexpr bool known(titres::Attribut attribute) {
  using enum titres::Attribut;
  switch (attribute) {
    case Libelle:
    case Abrege:
      return true;
  }
  return false;
}

static_assert(known(compteur::DernierOrgChg) && known(tables::Codes) &&
              known(parambordorgchg::Libelle) && known(activites::Service) &&
              known(association::NomAsso) && known(accord::ClotureAcc) &&
              known(demandacc::OrgChgDem) && known(civilaide::NomAide) &&
              known(responsable::NomResp) && known(eltsfactaide::PartBenefElt) &&
              known(titres::Libelle));

TEST(Layouts, OfAFundingBodyAreTheAgreedNumbers) {
  using namespace orgprisecharge;
  EXPECT_EQ(SigleOrgChg, 1);
  EXPECT_EQ(RaisonOrgChg, 2);
  EXPECT_EQ(InterlocDossOrgChg, 15);
  EXPECT_EQ(InterlocFactOrgChg, 16);
  EXPECT_EQ(TypeOrgChg, 18);
  EXPECT_EQ(PieceRenouOrgChg, 21);
  EXPECT_EQ(CreditOrgChg, 23);
  EXPECT_EQ(AttribOrgChg, 24);
  EXPECT_EQ(PrestServOrgChg, 28);
  EXPECT_EQ(PourcentAbatOrgChg, 31);
  EXPECT_EQ(StatsOrgChg, 43);
  EXPECT_EQ(DemAccordOrgChg, 44);
  EXPECT_EQ(Entite, 46);
  EXPECT_EQ(CodActSelect, 47);
  EXPECT_EQ(IncidCompta, 50);
  EXPECT_EQ(GestionExclu, 51);
  EXPECT_EQ(LettresInfo, 52);
  EXPECT_EQ(AjusTarif, 53);
  EXPECT_EQ(CptPrestationService, 54);
  EXPECT_EQ(CoutGlobal, 55);
  EXPECT_EQ(CpteProdAide, 56);
  EXPECT_EQ(FactAnticip, 57);
  EXPECT_EQ(DesFacture, 59);
}

TEST(Layouts, OfTheOtherFilesAreTheAgreedNumbers) {
  EXPECT_EQ(compteur::DernierOrgChg, 10);
  EXPECT_EQ(compteur::InterfaceComptable, 15);
  EXPECT_EQ(tables::Codes, 2);
  EXPECT_EQ(tables::Libelles, 3);
  EXPECT_EQ(activites::Libelle, 1);
  EXPECT_EQ(activites::TypeActivite, 12);
  EXPECT_EQ(activites::Service, 13);
  EXPECT_EQ(association::NomAsso, 1);
  EXPECT_EQ(plancomptable::Libelle, 1);
  EXPECT_EQ(accord::OrgChgAcc, 1);
  EXPECT_EQ(accord::DateDebAcc, 5);
  EXPECT_EQ(accord::DateFinAcc, 6);
  EXPECT_EQ(accord::TxRembAcc, 10);
  EXPECT_EQ(accord::DatePartAcc, 11);
  EXPECT_EQ(accord::TrancheAcc, 12);
  EXPECT_EQ(accord::PartBenefAcc, 13);
  EXPECT_EQ(accord::ClotureAcc, 18);
  EXPECT_EQ(demandacc::OrgChgDem, 1);
  EXPECT_EQ(periodespaie::PeriodeCourante, 1);
  EXPECT_EQ(constantespaie::DateEuro, 9);
  EXPECT_EQ(responsable::NomResp, 2);
}

TEST(Layouts, AnAddressKeepsAttributesThreeToFourteenForItself) {
  using namespace orgprisecharge;
  for (const int number : {AdrComplement, AdrNumero, AdrNatureVoie, AdrVoie, AdrLocalite,
                           AdrCodePostal, AdrVille, AdrTelephone, AdrFax, AdrMail}) {
    EXPECT_GE(number, adresse::Premier);
    EXPECT_LE(number, adresse::Dernier);
  }
  for (const int kept : {13, 14}) {
    EXPECT_FALSE(known(static_cast<civilaide::Attribut>(kept))) << kept;
    EXPECT_FALSE(known(static_cast<responsable::Attribut>(kept))) << kept;
    EXPECT_FALSE(known(static_cast<association::Attribut>(kept))) << kept;
  }
}

}  // namespace
