#include "agreements/ListingPages.h"

#include <algorithm>
#include <string>
#include <vector>

#include "agreements/PostalAddress.h"
#include "agreements/PrintedSheet.h"
#include "screen/StoreTrap.h"
#include "store/Amounts.h"
#include "store/Layouts.h"
#include "text/Utf8.h"

namespace agreements {
namespace {

constexpr std::string_view kProcedure = "Imprimer_AccordsNonModifies";

// So many beneficiaries are announced to the store together.
constexpr int kAnnonces = 200;

// What printers commonly leave free: a page without margins may be printed again on one of them.
constexpr int kBords = 340;  // 6 mm

constexpr int kHaut = kTwipsPerCentimetre;     // top of the title block
constexpr int kBas = 2 * kTwipsPerCentimetre;  // no entry begins below it, from the bottom

// Columns of a line, in characters; a blank stands between them.
constexpr int kNumero = 5;
constexpr int kNom = 33;  // its last character stays blank
constexpr int kNomAuMoins = 20;
constexpr int kDate = 10;
constexpr int kParticipation = 6;
constexpr int kAvantTranche = 11;
// The headers of what stands after the name.
constexpr std::string_view kEntete = "Debut      Fin          Part. bénef.";
constexpr std::string_view kEnteteSuite = "Debut        Fin        Part. béneficiaire";

// Attributes of accordsNonModifies.
enum Attribut : int { Numero = 1, Debut, Fin, Participation, Tranche };

std::string blancs(int count) { return std::string(static_cast<std::size_t>(count), ' '); }

std::string cadre(std::string_view utf8, int characters) {
  return text::fit(utf8, static_cast<std::size_t>(characters));
}

// " 12,50": a blank, then two digits before the comma at least; blanks for what is no number.
std::string participationMasquee(std::string_view stored) {
  std::string montant = store::shownHundredths(stored);
  if (montant.empty()) return blancs(kParticipation);
  const bool negatif = montant[0] == '-';
  if (negatif) montant.erase(0, 1);
  constexpr std::size_t kDeuxChiffres = 5;  // "00,00"
  montant.insert(0, kDeuxChiffres - std::min(kDeuxChiffres, montant.size()), '0');
  return (negatif ? "- " : " ") + montant;
}

class Liste {
 public:
  Liste(const AgreementContext& context, toolkit::Printer& printer)
      : context_(context),
        accords_(context.session.accords.accordsNonModifies),
        feuille_(printer, kProcedure) {}

  void imprimer() {
    feuille_.title(joints({"Accords non modifiés", context_.screen.bar.Txt_SigleOrgChg.text()}));
    feuille_.font("Courier New", 12);
    feuille_.keepOffEdges(kBords);
    nom_ = largeurDuNom();
    titre();
    enteteColonnes("Aidé :", kEntete);
    const int count = accords_.DCount(Numero);
    for (int k = 1; k <= count; ++k) {
      feuille_.leftTwips(0);
      feuille_.line(ligne(k));
      if (k < count && feuille_.reached(kBas)) pageSuivante();
    }
    feuille_.endDoc();
  }

 private:
  // Of a page narrower than the widest line, the name gives way first.
  int largeurDuNom() {
    constexpr int kMesure = 100;
    const int cent = feuille_.widthOf(std::string(kMesure, '0'));
    const int page = feuille_.pageWidth();
    if (cent <= 0 || page <= 0) return kNom;
    return std::clamp(page * kMesure / cent - largeurSansNom(), kNomAuMoins, kNom);
  }

  // Characters beside the name, of the widest line or header.
  int largeurSansNom() const {
    std::size_t apres = text::length(kEnteteSuite);
    for (int k = 1; k <= accords_.DCount(Numero); ++k) {
      apres = std::max(apres, text::length(apresLeNom(k)));
    }
    return kNumero + 1 + 1 + static_cast<int>(apres);
  }

  void titre() {
    feuille_.bold(true);
    feuille_.topTwips(kHaut);
    feuille_.centred("Accords non modifés de l'organisme");
    feuille_.centred("'" + context_.screen.bar.Txt_SigleOrgChg.text() + "'");
    feuille_.centred(" actifs au " + context_.screen.participation.Txt_DatBaremCours.text());
    feuille_.line("");
  }

  void enteteColonnes(std::string_view aGauche, std::string_view colonnes) {
    feuille_.leftTwips(0);
    feuille_.write(aGauche);
    feuille_.leftTwips(feuille_.widthOf(blancs(kNumero + 1 + nom_ + 1)));
    feuille_.line(colonnes);
    feuille_.bold(false);
  }

  void pageSuivante() {
    feuille_.centred("A suivre...");
    feuille_.newPage();
    titre();
    enteteColonnes("Aidant :", kEnteteSuite);
  }

  std::string ligne(int k) {
    const std::string numero(accords_.get(Numero, k));
    return cadre(cadre(numero + " " + nomDeLAide(k), kNumero + nom_), kNumero + 1 + nom_) + " " +
           apresLeNom(k);
  }

  std::string apresLeNom(int k) const {
    return cadre(accords_.get(Debut, k), kDate) + " " + cadre(accords_.get(Fin, k), kDate) + " " +
           participationMasquee(accords_.get(Participation, k)) + blancs(kAvantTranche) +
           std::string(accords_.get(Tranche, k));
  }

  std::string nomDeLAide(int k) {
    std::string nom;
    screen::quietly(context_.session, kProcedure, [&] {
      if (!civilAide_) civilAide_ = context_.session.TheDatabase->OpenFile(store::civilaide::kFile);
      if (k % kAnnonces == 1) annoncer(k);
      const auto record = civilAide_->ReadRecord(accords_.get(Numero, k));
      nom = joints({record->fields().get(store::civilaide::NomAide),
                    record->fields().get(store::civilaide::PrenomAide)});
    });
    return nom;
  }

  void annoncer(int premier) {
    std::vector<std::string> numeros;
    const int fin = std::min(premier + kAnnonces, accords_.DCount(Numero) + 1);
    for (int k = premier; k < fin; ++k) numeros.emplace_back(accords_.get(Numero, k));
    civilAide_->announce(numeros);
  }

  const AgreementContext& context_;
  const store::DynamicArray& accords_;
  PrintedSheet feuille_;
  std::unique_ptr<store::File> civilAide_;
  int nom_ = kNom;
};

}  // namespace

void imprimerListe(const AgreementContext& context) {
  screen::quietly(context.session, kProcedure,
                  [&] { Liste(context, context.desktop.printer()).imprimer(); });
}

}  // namespace agreements
