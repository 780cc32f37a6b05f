// Attribute numbers, from 1, under their names, one namespace a file;
// docs/record-layouts.md tells what each attribute holds. An enumerator is the number:
// get(orgprisecharge::SigleOrgChg).
#pragma once

#include <cstddef>
#include <string_view>

namespace store {

// An address is the same run of attributes wherever it stands: ten in use, two more kept free.
namespace adresse {
inline constexpr int Premier = 3;
inline constexpr int Dernier = 14;
// Steps from an address's first attribute.
inline constexpr int Complement = 0;
inline constexpr int Numero = 1;
inline constexpr int NatureVoie = 2;  // key of NATUREVOIE
inline constexpr int Voie = 3;
inline constexpr int Localite = 4;
inline constexpr int CodePostal = 5;
inline constexpr int Ville = 6;
inline constexpr int Telephone = 7;
inline constexpr int Fax = 8;
inline constexpr int Mail = 9;
}  // namespace adresse

namespace orgprisecharge {
inline constexpr std::string_view kFile = "ORGPRISECHARGE";
enum Attribut : int {
  SigleOrgChg = 1,
  RaisonOrgChg = 2,
  AdrComplement = adresse::Premier + adresse::Complement,
  AdrNumero = adresse::Premier + adresse::Numero,
  AdrNatureVoie = adresse::Premier + adresse::NatureVoie,
  AdrVoie = adresse::Premier + adresse::Voie,
  AdrLocalite = adresse::Premier + adresse::Localite,
  AdrCodePostal = adresse::Premier + adresse::CodePostal,
  AdrVille = adresse::Premier + adresse::Ville,
  AdrTelephone = adresse::Premier + adresse::Telephone,
  AdrFax = adresse::Premier + adresse::Fax,
  AdrMail = adresse::Premier + adresse::Mail,
  InterlocDossOrgChg = 15,
  InterlocFactOrgChg = 16,
  PeriodFactOrgChg = 17,
  TypeOrgChg = 18,
  PlafondOrg = 19,
  RenouvOrgChg = 20,
  PieceRenouOrgChg = 21,
  DebitOrgChg = 22,
  CreditOrgChg = 23,
  AttribOrgChg = 24,
  DateRembOrgChg = 25,
  TxRembOrgChg = 26,
  TxRembMajOrgChg = 27,
  PrestServOrgChg = 28,
  DebAbatHOrgChg = 29,
  FinAbatHOrgChg = 30,
  PourcentAbatOrgChg = 31,
  DebRevSeulOrgChg = 32,
  FinRevSeulOrgChg = 33,
  DebRevMenOrgChg = 34,
  FinRevMenOrgChg = 35,
  BaremPrecOrgChg = 36,
  BaremCoursOrgChg = 37,
  DatBaremPrec = 38,
  DatBaremCours = 39,
  Bareme = 40,
  GestPartBenef = 41,
  Abonnement = 42,
  StatsOrgChg = 43,
  DemAccordOrgChg = 44,
  TypeBordOrgChg = 45,
  Entite = 46,
  CodActSelect = 47,
  NbExemplOrgChg = 48,
  IdentMagnetOrgChg = 49,
  IncidCompta = 50,
  GestionExclu = 51,
  LettresInfo = 52,
  AjusTarif = 53,
  CptPrestationService = 54,
  CoutGlobal = 55,
  CpteProdAide = 56,
  FactAnticip = 57,
  CodeThesaurus = 58,
  DesFacture = 59,
  DelaiPaiement = 60,
  ParamSelecOrgChg = 61,
  ParamTriSelect = 62,
  Dernier = ParamTriSelect,
};
}  // namespace orgprisecharge

namespace compteur {
inline constexpr std::string_view kFile = "COMPTEUR";
enum Attribut : int {
  DernierOrgChg = 10,
  InterfaceComptable = 15,
};
}  // namespace compteur

namespace tables {
inline constexpr std::string_view kFile = "TABLES";
inline constexpr std::string_view kPiecesRenouv = "PIECESRENOUV";
inline constexpr std::string_view kStatOrgChg = "STATORGCHG";
enum Attribut : int {
  Intitule = 1,
  Codes = 2,
  Libelles = 3,
};
}  // namespace tables

namespace parambordorgchg {
inline constexpr std::string_view kFile = "PARAMBORDORGCHG";
enum Attribut : int {
  Libelle = 1,
  Longueur = 2,
};
}  // namespace parambordorgchg

namespace activites {
inline constexpr std::string_view kFile = "ACTIVITES";
enum Attribut : int {
  Libelle = 1,
  CodAssoActivite = 2,
  TypeActivite = 12,
  Service = 13,
};
}  // namespace activites

namespace association {
inline constexpr std::string_view kFile = "ASSOCIATION";
enum Attribut : int {
  NomAsso = 1,
  SigleAsso = 2,
  AdrComplement = adresse::Premier + adresse::Complement,
  AdrNumero = adresse::Premier + adresse::Numero,
  AdrNatureVoie = adresse::Premier + adresse::NatureVoie,
  AdrVoie = adresse::Premier + adresse::Voie,
  AdrLocalite = adresse::Premier + adresse::Localite,
  AdrCodePostal = adresse::Premier + adresse::CodePostal,
  AdrVille = adresse::Premier + adresse::Ville,
  AdrTelephone = adresse::Premier + adresse::Telephone,
  AdrFax = adresse::Premier + adresse::Fax,
  AdrMail = adresse::Premier + adresse::Mail,
};
}  // namespace association

namespace plancomptable {
inline constexpr std::string_view kFile = "PLANCOMPTABLE";
enum Attribut : int {
  Libelle = 1,
};
}  // namespace plancomptable

namespace accord {
inline constexpr std::string_view kFile = "ACCORD";
// Characters of the key that are the beneficiary's number.
inline constexpr std::size_t kNumeroAide = 5;
enum Attribut : int {
  OrgChgAcc = 1,
  NumAideAcc = 2,
  HeuresAcc = 3,
  MontantAcc = 4,
  DateDebAcc = 5,
  DateFinAcc = 6,
  CodActAcc = 7,
  TxRembAcc = 10,
  DatePartAcc = 11,
  TrancheAcc = 12,
  PartBenefAcc = 13,
  ClotureAcc = 18,
  Dernier = ClotureAcc,
};
}  // namespace accord

namespace demandacc {
inline constexpr std::string_view kFile = "DEMANDACC";
enum Attribut : int {
  OrgChgDem = 1,
  NumAideDem = 2,
  DateDem = 3,
  CodActDem = 4,
  HeuresDem = 5,
};
}  // namespace demandacc

namespace periodespaie {
inline constexpr std::string_view kFile = "PERIODESPAIE";
enum Attribut : int {
  PeriodeCourante = 1,
};
}  // namespace periodespaie

namespace constantespaie {
inline constexpr std::string_view kFile = "CONSTANTESPAIE";
enum Attribut : int {
  DateEuro = 9,
};
}  // namespace constantespaie

namespace civilaide {
inline constexpr std::string_view kFile = "CIVILAIDE";
enum Attribut : int {
  TitreAide = 1,
  NomAide = 2,
  AdrComplement = adresse::Premier + adresse::Complement,
  AdrNumero = adresse::Premier + adresse::Numero,
  AdrNatureVoie = adresse::Premier + adresse::NatureVoie,
  AdrVoie = adresse::Premier + adresse::Voie,
  AdrLocalite = adresse::Premier + adresse::Localite,
  AdrCodePostal = adresse::Premier + adresse::CodePostal,
  AdrVille = adresse::Premier + adresse::Ville,
  AdrTelephone = adresse::Premier + adresse::Telephone,
  AdrFax = adresse::Premier + adresse::Fax,
  AdrMail = adresse::Premier + adresse::Mail,
  PrenomAide = 15,
  NomPatronymique = 16,
  DateNaissance = 17,
  Secteur = 18,
};
}  // namespace civilaide

namespace responsable {
inline constexpr std::string_view kFile = "RESPONSABLE";
enum Attribut : int {
  TitreResp = 1,
  NomResp = 2,
  AdrComplement = adresse::Premier + adresse::Complement,
  AdrNumero = adresse::Premier + adresse::Numero,
  AdrNatureVoie = adresse::Premier + adresse::NatureVoie,
  AdrVoie = adresse::Premier + adresse::Voie,
  AdrLocalite = adresse::Premier + adresse::Localite,
  AdrCodePostal = adresse::Premier + adresse::CodePostal,
  AdrVille = adresse::Premier + adresse::Ville,
  AdrTelephone = adresse::Premier + adresse::Telephone,
  AdrFax = adresse::Premier + adresse::Fax,
  AdrMail = adresse::Premier + adresse::Mail,
  PrenomResp = 15,
};
}  // namespace responsable

namespace eltsfactaide {
inline constexpr std::string_view kFile = "ELTSFACTAIDE";
enum Attribut : int {
  AccordElt = 1,
  OrgChgElt = 2,
  DateElt = 3,
  PartBenefElt = 4,
  RevenuElt = 5,
  FoyerElt = 6,
};
}  // namespace eltsfactaide

namespace titres {
inline constexpr std::string_view kFile = "TITRES";
enum Attribut : int {
  Libelle = 1,
  Abrege = 2,
};
}  // namespace titres

namespace naturevoie {
inline constexpr std::string_view kFile = "NATUREVOIE";
enum Attribut : int {
  Libelle = 1,
};
}  // namespace naturevoie

// Records whose attributes are all alike: attribute i is the key of the i-th agreement.
namespace tempo {
inline constexpr std::string_view kFile = "TEMPO";
// Followed directly by the funding body's code.
inline constexpr std::string_view kAccordsModifies = "ACCORDSMODIFIES";
inline constexpr std::string_view kAccordsLimite = "ACCORDSLIMITE";
}  // namespace tempo

}  // namespace store
