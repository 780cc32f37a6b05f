#include "pages/AccountPair.h"

#include <functional>
#include <utility>
#include <vector>

#include "screen/BusyScreen.h"
#include "screen/Messages.h"
#include "screen/StoreTrap.h"
#include "store/Layouts.h"
#include "store/Request.h"
#include "text/Utf8.h"
#include "toolkit/Keys.h"

namespace pages {
namespace {

namespace plan = store::plancomptable;

constexpr std::size_t kChiffres = 10;
constexpr std::size_t kCodeEntite = 3;

bool complet(std::string_view numero) { return text::length(numero) == kChiffres; }

}  // namespace

AccountPair::AccountPair(PageContext context, const Fields& fields)
    : context_(context), fields_(fields) {}

void AccountPair::annoncer(const PageContext& context, std::string_view entity,
                           std::initializer_list<std::string_view> accounts) {
  std::vector<std::string> keys;
  keys.reserve(accounts.size());
  for (const std::string_view account : accounts) {
    if (!entity.empty() && complet(account)) keys.emplace_back(entity).append(account);
  }
  context.session.files.planComptable->announce(keys);
}

void AccountPair::lier(const screen::Handlers& handlers) {
  fields_.numero.onKeyPress = handlers.key(*this, &AccountPair::numeroKeyPress);
  fields_.numero.onLostFocus = handlers.on(*this, &AccountPair::numeroLostFocus);
  fields_.numero.onChange = handlers.on(*this, &AccountPair::numeroChange);
  fields_.numero.onGotFocus = handlers.on(*this, &AccountPair::numeroGotFocus);
  fields_.libelle.onClick = handlers.on(*this, &AccountPair::libelleClick);
  fields_.libelle.onChange = handlers.on(*this, &AccountPair::libelleChange);
  fields_.libelle.onKeyPress = handlers.key(*this, &AccountPair::libelleKeyPress);
  fields_.libelle.onGotFocus = handlers.on(*this, &AccountPair::libelleGotFocus);
  fields_.libelle.onLostFocus = handlers.on(*this, &AccountPair::libelleLostFocus);
}

void AccountPair::montrer(std::string_view account, std::string_view entity) {
  const screen::Quiet quiet(context_.session);
  fields_.numero.renewText(account);
  shown_.keep(account, fields_.numero.text());
  lireLibelle(entity);
}

void AccountPair::relire() { lireLibelle(context_.session.entiteCourante); }

void AccountPair::lireLibelle(std::string_view entity) {
  const screen::Quiet quiet(context_.session);
  resultat_ = store::NewDynamicArray();
  libelleDuCompte_.clear();
  numeroCherche_.clear();
  retenu_ = false;
  fields_.libelle.clear();
  const std::string& numero = fields_.numero.text();
  if (!complet(numero) || entity.empty()) return;
  const auto lire = [&] {
    const auto record =
        context_.session.files.planComptable->ReadRecord(std::string(entity) + numero);
    libelleDuCompte_ = record->fields().get(plan::Libelle, 1);
    fields_.libelle.setText(libelleDuCompte_);
  };
  screen::quietly(context_.session, "AccountPair::lireLibelle", std::ref(lire));
}

std::string_view AccountPair::compte() const { return shown_.written(fields_.numero.text()); }

void AccountPair::setEnabled(bool enabled) {
  fields_.numero.setEnabled(enabled);
  fields_.libelle.setEnabled(enabled);
}

void AccountPair::numeroGotFocus() { exigerEntite(fields_.sansEntiteNumero); }

void AccountPair::libelleGotFocus() { exigerEntite(fields_.sansEntiteLibelle); }

// A code that is no entity's, or not yet, has no chart: a search would find what others call
// theirs. Who may only read an account searches none.
void AccountPair::exigerEntite(std::string_view message) {
  if (!context_.session.entiteCourante.empty() || fields_.numero.readOnly()) return;
  screen::avertir(context_.desktop, message);
  context_.screen.Ong_OrgPriseChg.setTab(screen::kActivites);
  context_.screen.activites.Txt_Entite.setFocus();
}

void AccountPair::numeroKeyPress(char32_t& key) {
  if (key != toolkit::kEnter) {
    const bool chiffre = key >= U'0' && key <= U'9';
    if (!chiffre && key != toolkit::kBackspace) key = 0;
    return;
  }
  chercherNumeroSaisi();
}

void AccountPair::numeroLostFocus() {
  if (numeroCherche_.empty()) {
    chercherNumeroSaisi();
  } else {
    fields_.libelle.openList();
  }
  retenu_ = !numeroCherche_.empty();
}

// What a record holds is kept as it is, of any length, until the user has changed it.
void AccountPair::chercherNumeroSaisi() {
  const std::string& numero = fields_.numero.text();
  if (numero.empty() || text::length(numero) >= kChiffres || shown_.stands(numero)) return;
  screen::quietly(context_.session, "AccountPair::chercherNumero", [this] { chercherNumero(); });
}

void AccountPair::chercherNumero() {
  const store::DynamicArray found = [this] {
    const screen::BusyScreen busy(context_.desktop, *fields_.numero.surface());
    return interroger("AVEC @ID = " +
                      store::quotedPrefix(context_.session.entiteCourante + fields_.numero.text()));
  }();
  if (!store::anySelected(found)) {
    refuser("Le compte comptable n'existe pas.");
    return;
  }
  {
    const screen::Held enCours(numeroEnCours_, true);
    fields_.libelle.clear();
  }
  lister(found);
  if (fields_.libelle.listCount() == 1) {
    fields_.libelle.setListIndex(0);
    return;
  }
  numeroCherche_ = fields_.numero.text();
  fields_.libelle.openList();
  retenu_ = false;
}

store::DynamicArray AccountPair::interroger(const std::string& conditions) {
  return store::select(*context_.session.TheDatabase,
                       "SSELECT PLANCOMPTABLE " + conditions + " PAR 1", plan::kFile, "0 1");
}

void AccountPair::lister(const store::DynamicArray& answer) {
  resultat_ = store::turnedOver(answer);
  const int count = answer.DCount();
  std::vector<toolkit::ListItem> lines;
  lines.reserve(static_cast<std::size_t>(count));
  for (int i = 1; i <= count; ++i) lines.push_back({std::string(resultat_.get(2, i)), 0});
  fields_.libelle.setItems(std::move(lines));
}

void AccountPair::libelleClick() {
  const int line = fields_.libelle.listIndex();
  const bool chosen = line >= 0 && !fields_.libelle.text().empty();
  libelleDuCompte_ = fields_.libelle.text();
  fields_.numero.setText(chosen ? text::mid(resultat_.get(1, line + 1), kCodeEntite + 1) : "");
}

void AccountPair::libelleChange() {
  retenu_ = false;
  if (fields_.libelle.text().empty() && !numeroEnCours_) fields_.numero.setText("");
}

void AccountPair::libelleKeyPress(char32_t& key) {
  if (key != toolkit::kEnter) {
    screen::filtrerRecherche(context_.desktop, key);
  } else if (!fields_.libelle.text().empty()) {
    screen::quietly(context_.session, "AccountPair::chercherLibelle",
                    [this] { chercherLibelle(); });
  } else if (!numeroCherche_.empty()) {
    screen::quietly(context_.session, "AccountPair::chercherNumero", [this] { chercherNumero(); });
  } else {
    fields_.numero.setText("");
  }
}

// Whoever leaves several found accounts without choosing is held, once: what only began an account
// must not stay, and nobody must be locked in.
void AccountPair::libelleLostFocus() {
  const std::string& libelle = fields_.libelle.text();
  if (complet(fields_.numero.text())) {
    const screen::Held enCours(numeroEnCours_, true);
    fields_.libelle.setText(libelleDuCompte_);
    return;
  }
  if (libelle.empty() && numeroCherche_.empty()) return;
  const bool versNumero = fields_.libelle.surface()->focusGoal() == &fields_.numero;
  if (libelle.empty() && versNumero) return;
  if (retenu_) {
    abandonnerRecherche();
    return;
  }
  if (libelle.empty()) {
    fields_.libelle.openList();
    retenu_ = true;
    return;
  }
  const bool done = screen::quietly(context_.session, "AccountPair::chercherLibelle",
                                    [this] { chercherLibelle(); });
  retenu_ = done && fields_.libelle.listCount() > 1;
}

void AccountPair::abandonnerRecherche() {
  fields_.libelle.clear();
  fields_.numero.setText("");
}

void AccountPair::chercherLibelle() {
  const std::string typed = fields_.libelle.text();
  {
    const screen::BusyScreen busy(context_.desktop, *fields_.libelle.surface());
    const store::DynamicArray found =
        interroger("AVEC 1 = " + store::quotedPrefix(text::upper(typed)) +
                   " AND AVEC @ID = " + store::quotedPrefix(context_.session.entiteCourante));
    fields_.libelle.clear();
    if (!store::anySelected(found)) {
      context_.desktop.beep();
      screen::avertir(context_.desktop, "Aucune ventilation comptable commençant par " + typed);
      fields_.libelle.setFocus();
      return;
    }
    lister(found);
  }
  if (fields_.libelle.listCount() == 1) return;
  fields_.libelle.setText(typed);
  fields_.libelle.openList();
}

void AccountPair::numeroChange() {
  numeroCherche_.clear();
  retenu_ = false;
  const std::string& numero = fields_.numero.text();
  if (fields_.classe == Classe::Sept && !numero.empty() && numero.front() != '7') {
    refuser("Vous devez saisir un compte de classe 7.");
    return;
  }
  screen::quietly(context_.session, "AccountPair::verifierNumero", [this] { verifierNumero(); });
}

void AccountPair::verifierNumero() {
  if (!complet(fields_.numero.text())) {
    const screen::Held enCours(numeroEnCours_, true);
    fields_.libelle.clear();
    resultat_ = store::NewDynamicArray();  // gone with its list: it may hold a whole chart
    libelleDuCompte_.clear();
    return;
  }
  const auto record = context_.session.files.planComptable->ReadRecord(
      context_.session.entiteCourante + fields_.numero.text());
  if (!record->found()) {
    refuser("Ce compte n'existe pas.");
    return;
  }
  const screen::Held enCours(numeroEnCours_, true);
  libelleDuCompte_ = record->fields().get(plan::Libelle, 1);
  fields_.libelle.setText(libelleDuCompte_);
}

void AccountPair::refuser(std::string_view message) {
  screen::avertir(context_.desktop, message);
  fields_.numero.setText("");
  fields_.numero.setFocus();
}

}  // namespace pages
