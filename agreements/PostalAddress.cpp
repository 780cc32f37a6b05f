#include "agreements/PostalAddress.h"

#include "store/Layouts.h"
#include "text/Utf8.h"

namespace agreements {
namespace {

namespace adresse = store::adresse;

std::string_view partie(const store::DynamicArray& record, int pas) {
  return record.get(adresse::Premier + pas);
}

std::string ligneVoie(const store::DynamicArray& record, std::string_view natureVoie) {
  return joints({partie(record, adresse::Numero), natureVoie, partie(record, adresse::Voie)});
}

std::string ligneVille(const store::DynamicArray& record) {
  return joints({partie(record, adresse::CodePostal), partie(record, adresse::Ville)});
}

std::vector<std::string> remplies(std::vector<std::string> lignes) {
  std::erase(lignes, "");
  return lignes;
}

}  // namespace

std::string joints(std::initializer_list<std::string_view> parties) {
  std::string ligne;
  for (const std::string_view partie : parties) {
    const std::string_view texte = text::trim(partie);
    if (texte.empty()) continue;
    if (!ligne.empty()) ligne += ' ';
    ligne += texte;
  }
  return ligne;
}

std::string_view cleNatureVoie(const store::DynamicArray& record) {
  return partie(record, adresse::NatureVoie);
}

std::vector<std::string> lignesAdresse(const store::DynamicArray& record,
                                       std::string_view natureVoie) {
  return remplies({joints({partie(record, adresse::Complement)}), ligneVoie(record, natureVoie),
                   joints({partie(record, adresse::Localite)}), ligneVille(record)});
}

std::vector<std::string> lignesAdresseCourte(const store::DynamicArray& record,
                                             std::string_view natureVoie) {
  return remplies({joints({partie(record, adresse::Complement), partie(record, adresse::Localite)}),
                   ligneVoie(record, natureVoie), ligneVille(record)});
}

}  // namespace agreements
