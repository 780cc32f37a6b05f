#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "pages/Page.h"
#include "pages/ShownAttribute.h"
#include "screen/Handlers.h"
#include "store/DynamicArray.h"

namespace pages {

// What an account's fields say when they are entered before an entity has been chosen. The wordings
// differ on purpose: users and their documentation know each of them.
inline constexpr std::string_view kSansEntiteDebit =
    "Vous devez d'abord sélectionner une entité juridique dans l'onglet Activités couvertes afin "
    "de savoir à quel plan comptable associer le compte à débiter.";
inline constexpr std::string_view kSansEntiteCreditNumero =
    "Vous devez d'abord sélectionner une entité juridique dans l'onglet \"Activités Couvertes\" "
    "afin de savoir à quel plan comptable associer le compte à créditer";
inline constexpr std::string_view kSansEntiteCredit =
    "Vous devez d'abord sélectionner une entité juridique dans l'onglet \"Activités Couvertes\" "
    "afin de savoir à quel plan comptable associer le compte à créditer.";
inline constexpr std::string_view kSansEntiteCompte =
    "Vous devez d'abord sélectionner une entité juridique dans l'onglet Activités couvertes afin "
    "de savoir à quel plan comptable associer le compte.";

// One account of the chart of accounts: ten digits in a text box, its label in a combo box that
// searches by label. The chart is that of the legal entity chosen (EditSession::entiteCourante): a
// record's key is the entity's code followed by the number.
class AccountPair {
 public:
  enum class Classe { Toutes, Sept };  // the first digit that is asked for
  struct Fields {
    toolkit::TextBox& numero;
    toolkit::ComboBox& libelle;
    // What each field says when it is entered before an entity has been chosen.
    std::string_view sansEntiteNumero;
    std::string_view sansEntiteLibelle;
    Classe classe = Classe::Toutes;
  };

  AccountPair(PageContext context, const Fields& fields);
  AccountPair(const AccountPair&) = delete;
  AccountPair& operator=(const AccountPair&) = delete;
  ~AccountPair() = default;

  void lier(const screen::Handlers& handlers);

  // Shows an account of that entity, with its label when the chart holds it. Says nothing.
  void montrer(std::string_view account, std::string_view entity);
  // Tells the store that these are about to be shown.
  static void annoncer(const PageContext& context, std::string_view entity,
                       std::initializer_list<std::string_view> accounts);
  // Another entity has been chosen: the account stands, with the label of that entity's chart when
  // it holds one. Says nothing.
  void relire();
  void vider() { montrer("", ""); }
  // What the attribute that was shown becomes.
  std::string_view compte() const;
  void setEnabled(bool enabled);

 private:
  void numeroKeyPress(char32_t& key);
  void numeroLostFocus();
  void numeroChange();
  void numeroGotFocus();
  void libelleClick();
  void libelleChange();
  void libelleKeyPress(char32_t& key);
  void libelleGotFocus();
  void libelleLostFocus();

  void exigerEntite(std::string_view message);
  void chercherNumeroSaisi();
  void chercherNumero();
  void chercherLibelle();
  void lireLibelle(std::string_view entity);
  void abandonnerRecherche();
  void verifierNumero();
  void lister(const store::DynamicArray& answer);
  void refuser(std::string_view message);
  store::DynamicArray interroger(const std::string& conditions);

  PageContext context_;
  Fields fields_;
  ShownAttribute shown_;
  // Attribute 1 holds the keys of the accounts listed, attribute 2 their labels, line by line.
  store::DynamicArray resultat_;
  std::string libelleDuCompte_;  // of the whole number, as its chart has it
  std::string numeroCherche_;    // the beginning of a number that has found those listed
  bool retenu_ = false;          // several were found on leaving, and the user was held once
  bool numeroEnCours_ = false;   // the combo is emptied around the number, which stays
};

}  // namespace pages
