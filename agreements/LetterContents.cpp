#include "agreements/LetterContents.h"

#include <utility>

#include "agreements/History.h"
#include "agreements/PostalAddress.h"
#include "screen/StoreTrap.h"
#include "store/Amounts.h"
#include "store/Dates.h"
#include "store/Layouts.h"
#include "text/Utf8.h"

namespace agreements {
namespace {

constexpr std::string_view kProcedure = "Impression_ModifAccord";
constexpr std::size_t kLignesAuPlus = 9;  // of the sender

// CIVILAIDE and RESPONSABLE number title, name and first name alike.
namespace personne = store::civilaide;
static_assert(int{personne::TitreAide} == int{store::responsable::TitreResp});
static_assert(int{personne::NomAide} == int{store::responsable::NomResp});
static_assert(int{personne::PrenomAide} == int{store::responsable::PrenomResp});

class Lecture {
 public:
  explicit Lecture(screen::EditSession& session)
      : session_(session), fichiers_(session.accords.fichiersLettre) {}

  store::DynamicArray aide(std::string_view numero) {
    return lireAide(fichiers_.civilAide, store::civilaide::kFile, numero);
  }
  store::DynamicArray responsable(std::string_view numero) {
    return lireAide(fichiers_.responsable, store::responsable::kFile, numero);
  }
  store::DynamicArray elements(std::string_view numero) {
    return lireAide(fichiers_.eltsFactAide, store::eltsfactaide::kFile, numero);
  }
  std::string titre(const store::DynamicArray& record) {
    return libelle(fichiers_.titres, store::titres::kFile, record.get(personne::TitreAide),
                   store::titres::Libelle);
  }
  std::string natureVoie(const store::DynamicArray& record) {
    return libelle(fichiers_.natureVoie, store::naturevoie::kFile, cleNatureVoie(record),
                   store::naturevoie::Libelle);
  }

 private:
  // An empty array when the record is not there or cannot be read. `annoncer` tells what will be
  // read of a file that has just been opened.
  template <class Annonce>
  store::DynamicArray lire(std::unique_ptr<store::File>& fichier, std::string_view nom,
                           std::string_view id, const Annonce& annoncer) {
    store::DynamicArray fields;
    if (id.empty()) return fields;
    screen::quietly(session_, kProcedure, [&] {
      if (!fichier) {
        fichier = session_.TheDatabase->OpenFile(nom);
        annoncer(*fichier);
      }
      fields = std::move(fichier->ReadRecord(id)->fields());
    });
    return fields;
  }
  store::DynamicArray lireAide(std::unique_ptr<store::File>& fichier, std::string_view nom,
                               std::string_view numero) {
    return lire(fichier, nom, numero,
                [this](store::File& file) { file.announce(session_.accords.aidesAnnonces); });
  }
  std::string libelle(std::unique_ptr<store::File>& fichier, std::string_view nom,
                      std::string_view id, int attribut) {
    const auto annoncer = [](store::File& file) { file.announceAll(); };
    return std::string(lire(fichier, nom, id, annoncer).get(attribut));
  }

  screen::EditSession& session_;
  screen::FichiersLettre& fichiers_;
};

std::string cleDeLAccord(const screen::MiseAJourAccords& accords) {
  if (!accords.cleLettre.empty() || accords.indiceLettre < 1) return accords.cleLettre;
  return std::string(accords.accordsModifies.get(accords.indiceLettre));
}

std::string titreEtNom(const store::DynamicArray& record, std::string_view titre) {
  return joints({titre, record.get(personne::PrenomAide), record.get(personne::NomAide)});
}

std::vector<std::string> lignesExpediteur(Lecture& lecture, const store::DynamicArray& entite) {
  using namespace store::association;
  std::vector<std::string> lignes = lignesAdresse(entite, lecture.natureVoie(entite));
  lignes.insert(lignes.begin(), joints({entite.get(NomAsso)}));
  lignes.push_back(joints({entite.get(AdrTelephone)}));
  lignes.push_back(joints({entite.get(AdrMail)}));
  std::erase(lignes, "");
  if (lignes.size() > kLignesAuPlus) lignes.resize(kLignesAuPlus);
  return lignes;
}

std::vector<std::string> lignesDestinataire(Lecture& lecture, const store::DynamicArray& record,
                                            std::string_view titre) {
  std::vector<std::string> lignes = lignesAdresseCourte(record, lecture.natureVoie(record));
  const std::string nomme = titreEtNom(record, titre);
  if (!nomme.empty()) lignes.insert(lignes.begin(), nomme);
  return lignes;
}

void nommerDestinataire(Lecture& lecture, std::string_view numero, LetterContents& lettre) {
  const store::DynamicArray aide = lecture.aide(numero);
  const store::DynamicArray responsable = lecture.responsable(numero);
  const bool pourResponsable = !responsable.get(store::responsable::NomResp).empty();
  if (pourResponsable) lettre.concerne = titreEtNom(aide, lecture.titre(aide));
  const store::DynamicArray& destinataire = pourResponsable ? responsable : aide;
  lettre.titre = lecture.titre(destinataire);
  lettre.destinataire = lignesDestinataire(lecture, destinataire, lettre.titre);
}

// Of an agreement without a history, the billing elements tell.
std::string participation(Lecture& lecture, const store::DynamicArray& accord, std::string_view cle,
                          std::string_view numero, long jour) {
  const int position = positionEnVigueur(accord, jour);
  if (position > 0) {
    return store::shownHundredths(accord.get(store::accord::PartBenefAcc, position));
  }
  using namespace store::eltsfactaide;
  const store::DynamicArray elements = lecture.elements(numero);
  for (int ligne = 1; ligne <= elements.DCount(AccordElt); ++ligne) {
    if (elements.get(AccordElt, ligne) == cle) {
      return store::shownHundredths(elements.get(PartBenefElt, ligne));
    }
  }
  return {};
}

std::string devise(const store::DynamicArray& constantes, std::optional<long> jour) {
  const long euro = store::wholeNumber(constantes.get(store::constantespaie::DateEuro));
  return jour && *jour < euro ? " Francs" : " Euros";
}

}  // namespace

void annoncerLettres(screen::EditSession& session, std::vector<std::string> aides) {
  const screen::FichiersLettre& fichiers = session.accords.fichiersLettre;
  session.accords.aidesAnnonces = std::move(aides);
  for (const auto* fichier : {&fichiers.civilAide, &fichiers.responsable, &fichiers.eltsFactAide}) {
    if (*fichier) (*fichier)->announce(session.accords.aidesAnnonces);
  }
  for (const auto* fichier : {&fichiers.titres, &fichiers.natureVoie}) {
    if (*fichier) (*fichier)->announceAll();
  }
}

LetterContents contenuDeLettre(const AgreementContext& context) {
  const screen::MiseAJourAccords& accords = context.session.accords;
  const std::string cle = cleDeLAccord(accords);
  const std::string numero = text::left(cle, store::accord::kNumeroAide);
  const std::optional<long> jour =
      store::dayOfText(context.screen.participation.Txt_DatBaremCours.text());
  Lecture lecture(context.session);
  LetterContents lettre;
  lettre.expediteur = lignesExpediteur(lecture, accords.entite);
  lettre.lieu = joints({accords.entite.get(store::association::AdrVille)});
  nommerDestinataire(lecture, numero, lettre);
  lettre.debut = store::textOfDay(accords.accord.get(store::accord::DateDebAcc));
  lettre.fin = store::textOfDay(accords.accord.get(store::accord::DateFinAcc));
  lettre.participation = participation(lecture, accords.accord, cle, numero, jour.value_or(0));
  lettre.devise = devise(accords.constantesPaie, jour);
  return lettre;
}

}  // namespace agreements
