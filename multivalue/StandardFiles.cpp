#include "multivalue/StandardFiles.h"

#include "store/Layouts.h"

namespace multivalue {

namespace {

// The fields of a file that holds an address, between those that stand before it and after it.
std::vector<FieldName> withAddress(std::vector<FieldName> fields,
                                   const std::vector<FieldName>& following) {
  using namespace store::adresse;
  constexpr FieldName kAddress[] = {{"AdrComplement", Complement},
                                    {"AdrNumero", Numero},
                                    {"AdrNatureVoie", NatureVoie},
                                    {"AdrVoie", Voie},
                                    {"AdrLocalite", Localite},
                                    {"AdrCodePostal", CodePostal},
                                    {"AdrVille", Ville},
                                    {"AdrTelephone", Telephone},
                                    {"AdrFax", Fax},
                                    {"AdrMail", Mail}};
  for (const auto& [name, step] : kAddress) fields.push_back({name, Premier + step});
  fields.insert(fields.end(), following.begin(), following.end());
  return fields;
}

StandardFile orgprisecharge() {
  using namespace store::orgprisecharge;
  return {kFile,
          withAddress({{"SigleOrgChg", SigleOrgChg}, {"RaisonOrgChg", RaisonOrgChg}},
                      {{"InterlocDossOrgChg", InterlocDossOrgChg},
                       {"InterlocFactOrgChg", InterlocFactOrgChg},
                       {"PeriodFactOrgChg", PeriodFactOrgChg},
                       {"TypeOrgChg", TypeOrgChg},
                       {"PlafondOrg", PlafondOrg},
                       {"RenouvOrgChg", RenouvOrgChg},
                       {"PieceRenouOrgChg", PieceRenouOrgChg},
                       {"DebitOrgChg", DebitOrgChg},
                       {"CreditOrgChg", CreditOrgChg},
                       {"AttribOrgChg", AttribOrgChg},
                       {"DateRembOrgChg", DateRembOrgChg},
                       {"TxRembOrgChg", TxRembOrgChg},
                       {"TxRembMajOrgChg", TxRembMajOrgChg},
                       {"PrestServOrgChg", PrestServOrgChg},
                       {"DebAbatHOrgChg", DebAbatHOrgChg},
                       {"FinAbatHOrgChg", FinAbatHOrgChg},
                       {"PourcentAbatOrgChg", PourcentAbatOrgChg},
                       {"DebRevSeulOrgChg", DebRevSeulOrgChg},
                       {"FinRevSeulOrgChg", FinRevSeulOrgChg},
                       {"DebRevMenOrgChg", DebRevMenOrgChg},
                       {"FinRevMenOrgChg", FinRevMenOrgChg},
                       {"BaremPrecOrgChg", BaremPrecOrgChg},
                       {"BaremCoursOrgChg", BaremCoursOrgChg},
                       {"DatBaremPrec", DatBaremPrec},
                       {"DatBaremCours", DatBaremCours},
                       {"Bareme", Bareme},
                       {"GestPartBenef", GestPartBenef},
                       {"Abonnement", Abonnement},
                       {"StatsOrgChg", StatsOrgChg},
                       {"DemAccordOrgChg", DemAccordOrgChg},
                       {"TypeBordOrgChg", TypeBordOrgChg},
                       {"Entite", Entite},
                       {"CodActSelect", CodActSelect},
                       {"NbExemplOrgChg", NbExemplOrgChg},
                       {"IdentMagnetOrgChg", IdentMagnetOrgChg},
                       {"IncidCompta", IncidCompta},
                       {"GestionExclu", GestionExclu},
                       {"LettresInfo", LettresInfo},
                       {"AjusTarif", AjusTarif},
                       {"CptPrestationService", CptPrestationService},
                       {"CoutGlobal", CoutGlobal},
                       {"CpteProdAide", CpteProdAide},
                       {"FactAnticip", FactAnticip},
                       {"CodeThesaurus", CodeThesaurus},
                       {"DesFacture", DesFacture},
                       {"DelaiPaiement", DelaiPaiement},
                       {"ParamSelecOrgChg", ParamSelecOrgChg},
                       {"ParamTriSelect", ParamTriSelect}}),
          {SigleOrgChg}};
}

StandardFile compteur() {
  using namespace store::compteur;
  return {
      kFile, {{"DernierOrgChg", DernierOrgChg}, {"InterfaceComptable", InterfaceComptable}}, {}};
}

StandardFile tables() {
  using namespace store::tables;
  return {kFile, {{"Intitule", Intitule}, {"Codes", Codes}, {"Libelles", Libelles}}, {}};
}

StandardFile parambordorgchg() {
  using namespace store::parambordorgchg;
  return {kFile, {{"Libelle", Libelle}, {"Longueur", Longueur}}, {}};
}

StandardFile activites() {
  using namespace store::activites;
  return {kFile,
          {{"Libelle", Libelle},
           {"CodAssoActivite", CodAssoActivite},
           {"TypeActivite", TypeActivite},
           {"Service", Service}},
          {CodAssoActivite}};
}

StandardFile association() {
  using namespace store::association;
  return {kFile, withAddress({{"NomAsso", NomAsso}, {"SigleAsso", SigleAsso}}, {}), {NomAsso}};
}

StandardFile plancomptable() {
  using namespace store::plancomptable;
  return {kFile, {{"Libelle", Libelle}}, {Libelle}};
}

StandardFile accord() {
  using namespace store::accord;
  return {kFile,
          {{"OrgChgAcc", OrgChgAcc},
           {"NumAideAcc", NumAideAcc},
           {"HeuresAcc", HeuresAcc},
           {"MontantAcc", MontantAcc},
           {"DateDebAcc", DateDebAcc},
           {"DateFinAcc", DateFinAcc},
           {"CodActAcc", CodActAcc},
           {"TxRembAcc", TxRembAcc},
           {"DatePartAcc", DatePartAcc},
           {"TrancheAcc", TrancheAcc},
           {"PartBenefAcc", PartBenefAcc},
           {"ClotureAcc", ClotureAcc}},
          {OrgChgAcc}};
}

StandardFile demandacc() {
  using namespace store::demandacc;
  return {kFile,
          {{"OrgChgDem", OrgChgDem},
           {"NumAideDem", NumAideDem},
           {"DateDem", DateDem},
           {"CodActDem", CodActDem},
           {"HeuresDem", HeuresDem}},
          {OrgChgDem}};
}

StandardFile periodespaie() {
  using namespace store::periodespaie;
  return {kFile, {{"PeriodeCourante", PeriodeCourante}}, {}};
}

StandardFile constantespaie() {
  using namespace store::constantespaie;
  return {kFile, {{"DateEuro", DateEuro}}, {}};
}

StandardFile civilaide() {
  using namespace store::civilaide;
  return {kFile,
          withAddress({{"TitreAide", TitreAide}, {"NomAide", NomAide}},
                      {{"PrenomAide", PrenomAide},
                       {"NomPatronymique", NomPatronymique},
                       {"DateNaissance", DateNaissance},
                       {"Secteur", Secteur}}),
          {}};
}

StandardFile responsable() {
  using namespace store::responsable;
  return {
      kFile,
      withAddress({{"TitreResp", TitreResp}, {"NomResp", NomResp}}, {{"PrenomResp", PrenomResp}}),
      {}};
}

StandardFile eltsfactaide() {
  using namespace store::eltsfactaide;
  return {kFile,
          {{"AccordElt", AccordElt},
           {"OrgChgElt", OrgChgElt},
           {"DateElt", DateElt},
           {"PartBenefElt", PartBenefElt},
           {"RevenuElt", RevenuElt},
           {"FoyerElt", FoyerElt}},
          {}};
}

StandardFile titres() {
  using namespace store::titres;
  return {kFile, {{"Libelle", Libelle}, {"Abrege", Abrege}}, {}};
}

StandardFile naturevoie() {
  using namespace store::naturevoie;
  return {kFile, {{"Libelle", Libelle}}, {}};
}

StandardFile tempo() { return {store::tempo::kFile, {}, {}}; }

}  // namespace

const std::vector<StandardFile>& standardFiles() {
  static const std::vector<StandardFile> files = {
      orgprisecharge(), compteur(),      tables(),      parambordorgchg(), activites(),
      association(),    plancomptable(), accord(),      demandacc(),       periodespaie(),
      constantespaie(), civilaide(),     responsable(), eltsfactaide(),    titres(),
      naturevoie(),     tempo()};
  return files;
}

const StandardFile* standardFile(std::string_view name) {
  for (const StandardFile& file : standardFiles()) {
    if (file.name == name) return &file;
  }
  return nullptr;
}

}  // namespace multivalue
