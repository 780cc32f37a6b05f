#include "agreements/Letter.h"

#include "agreements/FrenchDate.h"
#include "agreements/LetterContents.h"
#include "agreements/PostalAddress.h"
#include "agreements/PrintedSheet.h"
#include "toolkit/Trap.h"

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

void bloc(PrintedSheet& feuille, int gauche, int haut, const std::vector<std::string>& lignes) {
  feuille.margin(gauche);
  feuille.place(gauche, haut);
  for (const std::string& ligne : lignes) {
    feuille.left(gauche);
    feuille.line(ligne);
  }
  feuille.margin(kMarge);
}

void souslignes(PrintedSheet& feuille, std::initializer_list<std::string_view> lignes) {
  for (const std::string_view ligne : lignes) {
    feuille.left(kMarge);
    feuille.line(ligne);
  }
}

void enGras(PrintedSheet& feuille, std::string_view texte) {
  feuille.bold(true);
  feuille.write(texte);
  feuille.bold(false);
}

void entete(PrintedSheet& feuille, const LetterContents& lettre, const std::string& date) {
  feuille.underline(false);
  feuille.bold(true);
  bloc(feuille, kMarge, kHautExpediteur, lettre.expediteur);
  bloc(feuille, kColonneDroite, kHautDestinataire, lettre.destinataire);
  feuille.bold(false);
  feuille.place(kLieuEtDate, kHautLieu);
  feuille.line(lettre.lieu + ", le " + date);
  feuille.place(kMarge, kHautObjet);
  feuille.underline(true);
  feuille.write("Objet :");
  feuille.underline(false);
  feuille.line(lettre.concerne ? " Modification de la participation de " + *lettre.concerne + "."
                               : " Modification de votre participation.");
}

// The title with the comma after it; nothing without a title.
std::string appel(const LetterContents& lettre) {
  return lettre.titre.empty() ? std::string() : lettre.titre + ",";
}

void accord(PrintedSheet& feuille, const LetterContents& lettre, const std::string& sigle) {
  feuille.place(kRetrait, 13);
  feuille.line("Un accord de prise en charge vous a été alloué du " + lettre.debut + " au" +
               lettre.fin);
  souslignes(feuille, {" par l'organisme " + sigle + "."});
}

void nouveauTarif(PrintedSheet& feuille, const LetterContents& lettre, const std::string& bareme) {
  feuille.place(kRetrait, 15);
  feuille.line("Nous vous informons que, par suite de la modification des tarifs");
  souslignes(feuille,
             {"de remboursement de cet organisme, votre participation horaire est portée"});
  feuille.left(kMarge);
  feuille.write("à ");
  enGras(feuille, lettre.participation + lettre.devise);
  feuille.write(",");
  feuille.write("et ce à compter du ");
  enGras(feuille, bareme);
  feuille.line(".");
}

void formule(PrintedSheet& feuille, const LetterContents& lettre) {
  feuille.place(kRetrait, 17);
  feuille.line("Soyez certain que nous mettons tout en oeuvre pour vous apporter");
  souslignes(feuille, {"entière satisfaction."});
  feuille.place(kRetrait, 19);
  feuille.line("Nous vous prions d'agréer, " +
               (lettre.titre.empty() ? "l'expression de nos sentiments "
                                     : lettre.titre + ", l'expression de nos sentiments "));
  souslignes(feuille, {"les plus dévoués."});
  feuille.place(kColonneDroite, kHautSignature);
  feuille.line("Le Responsable");
}

void imprimer(const AgreementContext& context, PrintedSheet& feuille) {
  const LetterContents lettre = contenuDeLettre(context);
  feuille.font("Courier New", 12);
  std::string date;
  toolkit::quietly(kProcedure, [&] { date = dateEnLettres(context.desktop.today()); });
  entete(feuille, lettre, date);
  feuille.place(kAppel, kHautAppel);
  feuille.line(appel(lettre));
  accord(feuille, lettre, context.screen.bar.Txt_SigleOrgChg.text());
  nouveauTarif(feuille, lettre, context.screen.participation.Txt_DatBaremCours.text());
  formule(feuille, lettre);
}

}  // namespace

void Impression_ModifAccord(const AgreementContext& context) {
  toolkit::quietly(kProcedure, [&] {
    PrintedSheet feuille(context.desktop.printer(), kProcedure);
    imprimer(context, feuille);
  });
}

void fermerFichiersLettre(screen::EditSession& session) { session.accords.fichiersLettre = {}; }

}  // namespace agreements
