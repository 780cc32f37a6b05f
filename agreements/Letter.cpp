#include "agreements/Letter.h"

#include "agreements/FrenchDate.h"
#include "agreements/LetterContents.h"
#include "agreements/PostalAddress.h"
#include "agreements/PrintedSheet.h"
#include "screen/StoreTrap.h"

namespace agreements {
namespace {

constexpr std::string_view kProcedure = "Impression_ModifAccord";

// Centimetres from the left edge.
constexpr int kMarge = 1;
constexpr int kRetrait = 3;
constexpr int kAppel = 5;
constexpr int kLieuEtDate = 9;
constexpr int kColonneDroite = 11;  // addressee and signature
// Centimetres from the top.
constexpr int kHautExpediteur = 1;
constexpr int kHautDestinataire = 5;
constexpr int kHautLieu = 9;
constexpr int kHautObjet = 10;
constexpr int kHautAppel = 12;
constexpr int kHautSignature = 22;

// One below the other; what is too wide goes on in the same column.
void bloc(PrintedSheet& feuille, int gauche, int haut, const std::vector<std::string>& lignes) {
  feuille.margin(gauche);
  feuille.place(gauche, haut);
  for (const std::string& ligne : lignes) {
    feuille.left(gauche);
    feuille.line(ligne);
  }
  feuille.margin(kMarge);
}

std::string lieuEtDate(const LetterContents& lettre, const std::string& date) {
  return (lettre.lieu.empty() ? "le " : lettre.lieu + ", le ") + date;
}

std::string objet(const LetterContents& lettre) {
  if (!lettre.concerne) return " Modification de votre participation.";
  if (lettre.concerne->empty()) return " Modification de la participation.";
  return " Modification de la participation de " + *lettre.concerne + ".";
}

void entete(PrintedSheet& feuille, const LetterContents& lettre, const std::string& date) {
  feuille.bold(true);
  bloc(feuille, kMarge, kHautExpediteur, lettre.expediteur);
  bloc(feuille, kColonneDroite, kHautDestinataire, lettre.destinataire);
  feuille.bold(false);
  feuille.place(kLieuEtDate, kHautLieu);
  feuille.line(lieuEtDate(lettre, date));
  feuille.place(kMarge, kHautObjet);
  feuille.paragraph({{{.text = "Objet :", .underline = true}, {objet(lettre)}}});
}

// The title with the comma after it; nothing without a title.
std::string appel(const LetterContents& lettre) {
  return lettre.titre.empty() ? std::string() : lettre.titre + ",";
}

void accord(PrintedSheet& feuille, const LetterContents& lettre, const std::string& sigle) {
  feuille.place(kRetrait, 13);
  feuille.paragraph({{{"Un accord de prise en charge vous a été alloué du " + lettre.debut + " au" +
                       (lettre.fin.empty() ? "" : " " + lettre.fin)}},
                     {{" par l'organisme " + sigle + "."}}});
}

void nouveauTarif(PrintedSheet& feuille, const LetterContents& lettre, const std::string& bareme) {
  feuille.place(kRetrait, 15);
  feuille.paragraph(
      {{{"Nous vous informons que, par suite de la modification des tarifs"}},
       {{"de remboursement de cet organisme, votre participation horaire est portée"}},
       {{"à "},
        {.text = lettre.participation + lettre.devise, .bold = true},
        {", et ce à compter du "},
        {.text = bareme, .bold = true},
        {"."}}});
}

void formule(PrintedSheet& feuille, const LetterContents& lettre) {
  feuille.place(kRetrait, 17);
  feuille.paragraph({{{"Soyez certain que nous mettons tout en oeuvre pour vous apporter"}},
                     {{"entière satisfaction."}}});
  feuille.place(kRetrait, 19);
  feuille.paragraph(
      {{{"Nous vous prions d'agréer, " +
         (lettre.titre.empty() ? "l'expression de nos sentiments "
                               : lettre.titre + ", l'expression de nos sentiments ")}},
       {{"les plus dévoués."}}});
  feuille.place(kColonneDroite, kHautSignature);
  feuille.line("Le Responsable");
}

void imprimer(const AgreementContext& context, PrintedSheet& feuille) {
  const LetterContents lettre = contenuDeLettre(context);
  const std::string sigle = context.screen.bar.Txt_SigleOrgChg.text();
  const std::string bareme = context.screen.participation.Txt_DatBaremCours.text();
  feuille.title(joints({"Lettres", sigle, bareme}));
  feuille.font("Courier New", 12);
  std::string date;
  screen::quietly(context.session, kProcedure,
                  [&] { date = dateEnLettres(context.desktop.today()); });
  entete(feuille, lettre, date);
  feuille.place(kAppel, kHautAppel);
  feuille.line(appel(lettre));
  accord(feuille, lettre, sigle);
  nouveauTarif(feuille, lettre, bareme);
  formule(feuille, lettre);
}

}  // namespace

void Impression_ModifAccord(const AgreementContext& context) {
  screen::quietly(context.session, kProcedure, [&] {
    PrintedSheet feuille(context.desktop.printer(), kProcedure);
    imprimer(context, feuille);
  });
}

void fermerFichiersLettre(screen::EditSession& session) { session.accords.fichiersLettre = {}; }

}  // namespace agreements
