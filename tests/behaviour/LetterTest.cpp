// The letter that tells a beneficiary, or the person responsible, of the new participation.
#include "agreements/Letter.h"

#include <algorithm>

#include "store/Layouts.h"
#include "tests/behaviour/PrintTest.h"

namespace behaviour {
namespace {

class Letter : public PrintTest {
 protected:
  static constexpr const char* kKey = "00001002";

  Letter() {
    desktop_.setToday({2026, 1, 5});
    store_.put("TITRES", "1", {"Monsieur", "M."});
    store_.put("TITRES", "2", {"Madame", "Mme"});
    store_.put("NATUREVOIE", "ALL", {"allée"});
    store_.put("NATUREVOIE", "AV", {"avenue"});
    store_.put("NATUREVOIE", "IMP", {"impasse"});
    store_.put("CIVILAIDE", "00001",
               {"2", "HERBOTIERE", "BATIMENT B", "60", "ALL", "DES LAVANDIERES", "", "83000",
                "TOULON", "04 65 71 44 80", "", "", "", "", "GINETTE"});
    auto& accords = session_.accords;
    accords.lettresVoulues = true;
    accords.indiceLettre = 2;
    accords.accordsModifies.set(1, "00009001");
    accords.accordsModifies.set(2, kKey);
    history(
        "21216\xFD"
        "20870",
        "1250\xFD"
        "1100");
    accords.accord.set(store::accord::DateDebAcc, "20870");
    accords.accord.set(store::accord::DateFinAcc, "21964");
    accords.constantesPaie.set(store::constantespaie::DateEuro, "12420");
    accords.entite = store::DynamicArray(
        "AIDE A DOMICILE DU VAL CLAIR\xFE"
        "ADVC\xFE\xFE"
        "83\xFEIMP\xFE"
        "DES TILLEULS\xFE\xFE"
        "01000\xFE"
        "BOURG-EN-BRESSE");
  }

  void history(std::string_view dates, std::string_view participations) {
    session_.accords.accord.set(store::accord::DatePartAcc, dates);
    session_.accords.accord.set(store::accord::PartBenefAcc, participations);
  }
  void responsible() {
    store_.put("RESPONSABLE", "00001",
               {"1", "ESTRANELLE", "", "46", "AV", "DES REMPARTS", "LE BOURG", "84000", "AVIGNON",
                "", "", "", "", "", "RENE"});
  }
  std::vector<Printed> print() {
    const std::size_t jobs = desktop_.page(0).jobs().size();
    agreements::Impression_ModifAccord(context_);
    std::vector<Printed> all = onPage(desktop_.page(0).current());
    EXPECT_LE(desktop_.page(0).current().pages, 1);
    EXPECT_EQ(desktop_.page(0).jobs().size(), jobs);
    desktop_.page(0).endDoc();
    return all;
  }
  // Of what was printed, what stands in these lines: the first is `top`, in centimetres.
  static std::vector<std::string> linesAt(const std::vector<Printed>& all, int left, int top,
                                          int lines) {
    std::vector<std::string> texts;
    for (int i = 0; i < lines; ++i) {
      const Printed at{left * kCm, top * kCm + i * kLine, ""};
      const auto found = std::find_if(all.begin(), all.end(), [&at](const Printed& printed) {
        return printed.x == at.x && printed.y == at.y;
      });
      texts.push_back(found == all.end() ? "" : found->text);
    }
    return texts;
  }
  // All that stands in one line, styles included.
  static std::string lineAt(const std::vector<Printed>& all, int top, int line = 0) {
    std::string whole;
    for (const Printed& printed : all) {
      if (printed.y == top * kCm + line * kLine) whole += printed.text;
    }
    return whole;
  }
  static std::vector<std::string> senderOf(const std::vector<Printed>& all, int lines) {
    return linesAt(all, 1, 1, lines);
  }
  static std::vector<std::string> addresseeOf(const std::vector<Printed>& all) {
    return linesAt(all, 11, 5, 5);
  }

  using Lines = std::vector<std::string>;
};

// From the salutation on, as every letter has it.
std::vector<Printed> body(const std::string& title) {
  constexpr int kCm = 567;
  constexpr int kLine = 288;
  constexpr int kCharacter = 144;
  const int amount = 15 * kCm + 2 * kLine;
  return {
      {5 * kCm, 12 * kCm, title + ","},
      {3 * kCm, 13 * kCm, "Un accord de prise en charge vous a été alloué du 19/02/2025 au"},
      {1 * kCm, 13 * kCm + kLine, "18/02/2028 par l'organisme CRAM."},
      {3 * kCm, 15 * kCm, "Nous vous informons que, par suite de la modification des tarifs"},
      {1 * kCm, 15 * kCm + kLine,
       "de remboursement de cet organisme, votre participation horaire est portée"},
      {1 * kCm, amount, "à "},
      {1 * kCm + 2 * kCharacter, amount, "[b]12,50 Euros"},
      {1 * kCm + 13 * kCharacter, amount, ", et ce à compter du "},
      {1 * kCm + 34 * kCharacter, amount, "[b]01/02/2026"},
      {1 * kCm + 44 * kCharacter, amount, "."},
      {3 * kCm, 17 * kCm, "Soyez certain que nous mettons tout en oeuvre pour vous apporter"},
      {1 * kCm, 17 * kCm + kLine, "entière satisfaction."},
      {3 * kCm, 19 * kCm,
       "Nous vous prions d'agréer, " + title + ", l'expression de nos sentiments "},
      {1 * kCm, 19 * kCm + kLine, "les plus dévoués."},
      {11 * kCm, 22 * kCm, "Le Responsable"},
  };
}

std::vector<Printed> joined(std::vector<Printed> head, const std::vector<Printed>& rest) {
  head.insert(head.end(), rest.begin(), rest.end());
  return head;
}

TEST_F(Letter, ToABeneficiaryStandsLineByLineInItsPlace) {
  EXPECT_PRED_FORMAT2(
      same, print(),
      joined({{kCm, kCm, "[b]AIDE A DOMICILE DU VAL CLAIR"},
              {kCm, kCm + kLine, "[b]83 impasse DES TILLEULS"},
              {kCm, kCm + 2 * kLine, "[b]01000 BOURG-EN-BRESSE"},
              {11 * kCm, 5 * kCm, "[b]Madame GINETTE HERBOTIERE"},
              {11 * kCm, 5 * kCm + kLine, "[b]BATIMENT B"},
              {11 * kCm, 5 * kCm + 2 * kLine, "[b]60 allée DES LAVANDIERES"},
              {11 * kCm, 5 * kCm + 3 * kLine, "[b]83000 TOULON"},
              {9 * kCm, 9 * kCm, "BOURG-EN-BRESSE, le 05 janvier 2026"},
              {kCm, 10 * kCm, "[u]Objet :"},
              {kCm + 7 * kCharacter, 10 * kCm, " Modification de votre participation."}},
             body("Madame")));
}

TEST_F(Letter, ToAPersonResponsibleNamesTheBeneficiaryInItsSubject) {
  responsible();
  EXPECT_PRED_FORMAT2(same, print(),
                      joined({{kCm, kCm, "[b]AIDE A DOMICILE DU VAL CLAIR"},
                              {kCm, kCm + kLine, "[b]83 impasse DES TILLEULS"},
                              {kCm, kCm + 2 * kLine, "[b]01000 BOURG-EN-BRESSE"},
                              {11 * kCm, 5 * kCm, "[b]Monsieur RENE ESTRANELLE"},
                              {11 * kCm, 5 * kCm + kLine, "[b]LE BOURG"},
                              {11 * kCm, 5 * kCm + 2 * kLine, "[b]46 avenue DES REMPARTS"},
                              {11 * kCm, 5 * kCm + 3 * kLine, "[b]84000 AVIGNON"},
                              {9 * kCm, 9 * kCm, "BOURG-EN-BRESSE, le 05 janvier 2026"},
                              {kCm, 10 * kCm, "[u]Objet :"},
                              {kCm + 7 * kCharacter, 10 * kCm,
                               " Modification de la participation de Madame GINETTE HERBOTIERE."}},
                             body("Monsieur")));
}

TEST_F(Letter, ARecordWithoutANameIsNoPersonResponsible) {
  store_.put("RESPONSABLE", "00001", {"1", "", "", "46"});
  const auto all = print();
  EXPECT_EQ(addresseeOf(all)[0], "[b]Madame GINETTE HERBOTIERE");
  EXPECT_EQ(lineAt(all, 10), "[u]Objet : Modification de votre participation.");
}

TEST_F(Letter, IsDatedInFrenchInFull) {
  const std::vector<std::pair<toolkit::CalendarDate, const char*>> rows = {
      {{2026, 1, 1}, "01 janvier 2026"},    {{2024, 2, 29}, "29 février 2024"},
      {{2026, 3, 9}, "09 mars 2026"},       {{2026, 4, 10}, "10 avril 2026"},
      {{2026, 5, 31}, "31 mai 2026"},       {{2026, 6, 30}, "30 juin 2026"},
      {{2026, 7, 14}, "14 juillet 2026"},   {{2026, 8, 15}, "15 août 2026"},
      {{1999, 9, 9}, "09 septembre 1999"},  {{2026, 10, 20}, "20 octobre 2026"},
      {{2026, 11, 11}, "11 novembre 2026"}, {{2026, 12, 31}, "31 décembre 2026"}};
  for (const auto& [today, text] : rows) {
    desktop_.setToday(today);
    EXPECT_EQ(lineAt(print(), 9), std::string("BOURG-EN-BRESSE, le ") + text);
  }
}

TEST_F(Letter, CountsInFrancsBeforeTheDayOfTheEuro) {
  const std::vector<std::pair<const char*, const char*>> rows = {
      {"01/01/2002", " Francs"}, {"02/01/2002", " Euros"}, {"03/01/2002", " Euros"}};
  for (const char* euro : {"12421", "12421.75", "12421,2"}) {
    session_.accords.constantesPaie.set(store::constantespaie::DateEuro, euro);
    for (const auto& [scale, word] : rows) {
      screen_.participation.Txt_DatBaremCours.setText(scale);
      EXPECT_EQ(lineAt(print(), 15, 2),
                std::string("à [b]11,00") + word + ", et ce à compter du [b]" + scale + ".");
    }
  }
}

TEST_F(Letter, CountsInEurosWithoutADayOfTheEuro) {
  session_.accords.constantesPaie = {};
  EXPECT_EQ(lineAt(print(), 15, 2), "à [b]12,50 Euros, et ce à compter du [b]01/02/2026.");
}

TEST_F(Letter, TellsTheParticipationInForceOnTheDayOfTheScale) {
  struct Row {
    const char* dates;
    const char* participations;
    const char* told;
  };
  // The scale is of day 21217.
  for (const Row& row :
       {Row{"21217\xFD"
            "21000",
            "1375\xFD"
            "900",
            "13,75"},
        Row{"21218\xFD"
            "21217\xFD"
            "21000",
            "5\xFD"
            "0\xFD"
            "900",
            "0,00"},
        Row{"21218.5\xFD"
            "21217.9",
            "5\xFD"
            "105",
            "1,05"},
        Row{"21300\xFD"
            "21218",
            "100\xFD"
            "123456",
            "1234,56"},
        Row{"21218", "100", "1,00"}, Row{"21217", "", ""}, Row{"21217", "abc", ""}}) {
    history(row.dates, row.participations);
    EXPECT_EQ(lineAt(print(), 15, 2),
              std::string("à [b]") + row.told + " Euros, et ce à compter du [b]01/02/2026.");
  }
}

TEST_F(Letter, TakesTheParticipationFromTheBillingElementsWithoutAHistory) {
  history("", "");
  store_.put("ELTSFACTAIDE", "00001",
             {"00001001\xFD"
              "00001002\xFD"
              "00001003",
              "083\xFD"
              "083\xFD"
              "083",
              "21186\xFD"
              "21186\xFD"
              "21186",
              "140\xFD"
              "985\xFD"
              "300"});
  EXPECT_EQ(lineAt(print(), 15, 2), "à [b]9,85 Euros, et ce à compter du [b]01/02/2026.");
  store_.put("ELTSFACTAIDE", "00001",
             {"00001001\xFD"
              "00001003",
              "", "",
              "140\xFD"
              "300"});
  EXPECT_EQ(lineAt(print(), 15, 2), "à [b] Euros, et ce à compter du [b]01/02/2026.");
}

TEST_F(Letter, LeavesTheBillingElementsUnreadWhenThereIsAHistory) {
  print();
  for (const auto& call : store_.calls()) EXPECT_NE(call.file, "ELTSFACTAIDE");
}

TEST_F(Letter, FindsTheBeneficiaryByTheFirstFiveCharactersOfTheKey) {
  store_.forgetCalls();
  print();
  EXPECT_PRED_FORMAT2(
      same, store_.told(),
      (Lines{"OpenFile NATUREVOIE", "ReadRecord NATUREVOIE IMP", "OpenFile CIVILAIDE",
             "ReadRecord CIVILAIDE 00001", "OpenFile RESPONSABLE", "ReadRecord RESPONSABLE 00001",
             "OpenFile TITRES", "ReadRecord TITRES 2", "ReadRecord NATUREVOIE ALL"}));
}

TEST_F(Letter, TheFilesStayOpenUntilTheRunOfLettersEnds) {
  print();
  store_.forgetCalls();
  print();
  EXPECT_TRUE(store_.calls(CallKind::OpenFile).empty());
  store_.releases().clear();
  agreements::fermerFichiersLettre(session_);
  EXPECT_PRED_FORMAT2(
      same, store_.releases(),
      (Lines{"File CIVILAIDE", "File RESPONSABLE", "File TITRES", "File NATUREVOIE"}));
  print();
  EXPECT_EQ(store_.calls(CallKind::OpenFile).size(), 4U);
}

TEST_F(Letter, TheSendersLinesStandWithoutHolesNineAtMost) {
  session_.accords.entite = store::DynamicArray(
      "ENTRAIDE\xFE\xFE"
      "ETAGE 2\xFE"
      "12 BIS\xFEIMP\xFE"
      "DU LAC\xFE"
      "LE HAMEAU\xFE"
      "74000\xFE"
      "ANNECY\xFE"
      "04 65 71 75 85\xFE"
      "04 65 71 75 86\xFE"
      "contact@edv.example");
  EXPECT_PRED_FORMAT2(
      same, senderOf(print(), 8),
      (Lines{"[b]ENTRAIDE", "[b]ETAGE 2", "[b]12 BIS impasse DU LAC", "[b]LE HAMEAU",
             "[b]74000 ANNECY", "[b]04 65 71 75 85", "[b]contact@edv.example", ""}));
  session_.accords.entite =
      store::DynamicArray(" ENTRAIDE \xFE\xFE \xFE\xFE\xFEPLACE\xFE\xFE\xFE ");
  EXPECT_PRED_FORMAT2(same, senderOf(print(), 3), (Lines{"[b]ENTRAIDE", "[b]PLACE", ""}));
}

TEST_F(Letter, TheAddresseesLinesStandWithoutHoles) {
  store_.put("CIVILAIDE", "00001", {"", "HERBOTIERE", "", "", "", "", "", "83000", ""});
  EXPECT_PRED_FORMAT2(same, addresseeOf(print()), (Lines{"[b]HERBOTIERE", "[b]83000", "", "", ""}));
  store_.put("CIVILAIDE", "00001",
             {"", "HERBOTIERE", "BAT B", "", "ALL", "DU LAC", "LE HAMEAU", "", "ANNECY"});
  EXPECT_PRED_FORMAT2(
      same, addresseeOf(print()),
      (Lines{"[b]HERBOTIERE", "[b]BAT B LE HAMEAU", "[b]allée DU LAC", "[b]ANNECY", ""}));
}

TEST_F(Letter, AnAddressTooLongForThePaperGoesOnInItsColumn) {
  store_.put("CIVILAIDE", "00001",
             {"2", "DE LA ROCHEFOUCAULD-MONTMORENCY", "", "1254", "ALL",
              "DU GENERAL DE LA CROIX DE SAINT-ANDRE", "", "83000", "TOULON", "", "", "", "", "",
              "MARIE-ANTOINETTE"});
  EXPECT_PRED_FORMAT2(
      same, addresseeOf(print()),
      (Lines{"[b]Madame MARIE-ANTOINETTE DE LA", "[b]ROCHEFOUCAULD-MONTMORENCY",
             "[b]1254 allée DU GENERAL DE LA CROIX DE", "[b]SAINT-ANDRE", "[b]83000 TOULON"}));
  // Without a blank there is nowhere to break.
  store_.put("CIVILAIDE", "00001", {"", std::string(60, 'X')});
  EXPECT_EQ(addresseeOf(print())[0], "[b]" + std::string(60, 'X'));
}

TEST_F(Letter, NoWordStandsBeyondTheEdgeOfThePaper) {
  responsible();
  store_.put("TITRES", "1", {"Monsieur et Madame"});
  store_.put("CIVILAIDE", "00001",
             {"2", "DE LA ROCHEFOUCAULD-MONTMORENCY", "", "", "", "", "", "", "", "", "", "", "",
              "", "MARIE-ANTOINETTE"});
  const auto all = print();
  for (const Printed& printed : all) {
    std::string text = printed.text;
    if (text.front() == '[') text.erase(0, 3);
    text.erase(text.find_last_not_of(' ') + 1);
    EXPECT_LE(printed.x + desktop_.page(0).textWidth(text), desktop_.page(0).pageWidth()) << text;
  }
  EXPECT_EQ(lineAt(all, 10),
            "[u]Objet : Modification de la participation de Madame MARIE-ANTOINETTE DE LA");
  EXPECT_EQ(linesAt(all, 1, 10, 2)[1], "ROCHEFOUCAULD-MONTMORENCY.");
  EXPECT_EQ(lineAt(all, 19), "Nous vous prions d'agréer, Monsieur et Madame, l'expression de nos");
  EXPECT_EQ(linesAt(all, 1, 19, 3)[1], "sentiments les plus dévoués.");
  EXPECT_EQ(linesAt(all, 1, 19, 3)[2], "");
}

TEST_F(Letter, AMissingCivilRecordLeavesTheAddresseeEmpty) {
  store_.erase("CIVILAIDE", "00001");
  const auto all = print();
  EXPECT_PRED_FORMAT2(same, addresseeOf(all), Lines(5));
  EXPECT_EQ(lineAt(all, 10), "[u]Objet : Modification de votre participation.");
  EXPECT_EQ(lineAt(all, 12), "");
  EXPECT_EQ(lineAt(all, 19), "Nous vous prions d'agréer, l'expression de nos sentiments ");
  EXPECT_EQ(lineAt(all, 22), "Le Responsable");
}

TEST_F(Letter, AMissingTitleOrStreetKindIsLeftOut) {
  store_.erase("TITRES", "2");
  store_.erase("NATUREVOIE", "ALL");
  const auto all = print();
  EXPECT_PRED_FORMAT2(same, addresseeOf(all),
                      (Lines{"[b]GINETTE HERBOTIERE", "[b]BATIMENT B", "[b]60 DES LAVANDIERES",
                             "[b]83000 TOULON", ""}));
  EXPECT_EQ(lineAt(all, 12), "");
}

TEST_F(Letter, AMissingCivilRecordLeavesThePersonResponsibleAsItIs) {
  responsible();
  store_.erase("CIVILAIDE", "00001");
  const auto all = print();
  EXPECT_EQ(addresseeOf(all)[0], "[b]Monsieur RENE ESTRANELLE");
  EXPECT_EQ(lineAt(all, 10), "[u]Objet : Modification de la participation.");
  EXPECT_EQ(lineAt(all, 12), "Monsieur,");
}

TEST_F(Letter, AMissingEntityLeavesTheSenderEmpty) {
  session_.accords.entite = {};
  const auto all = print();
  EXPECT_PRED_FORMAT2(same, senderOf(all, 9), Lines(9));
  EXPECT_EQ(lineAt(all, 9), "le 05 janvier 2026");
  EXPECT_EQ(addresseeOf(all)[0], "[b]Madame GINETTE HERBOTIERE");
}

TEST_F(Letter, AnEmptyAgreementLeavesItsDatesAndAmountEmpty) {
  session_.accords.accord = {};
  const auto all = print();
  EXPECT_EQ(lineAt(all, 13), "Un accord de prise en charge vous a été alloué du  au");
  EXPECT_EQ(lineAt(all, 13, 1), " par l'organisme CRAM.");
  EXPECT_EQ(lineAt(all, 15, 2), "à [b] Euros, et ce à compter du [b]01/02/2026.");
}

TEST_F(Letter, APositionOutsideTheListLeavesTheAddresseeEmpty) {
  for (const std::int16_t position : {std::int16_t{-1}, std::int16_t{0}, std::int16_t{3}}) {
    session_.accords.indiceLettre = position;
    const auto all = print();
    EXPECT_PRED_FORMAT2(same, addresseeOf(all), Lines(5));
    EXPECT_EQ(lineAt(all, 22), "Le Responsable");
  }
}

TEST_F(Letter, IsPrintedWholeWhicheverStoreCallFails) {
  responsible();
  history("", "");
  store_.put("ELTSFACTAIDE", "00001", {kKey, "083", "21186", "1250"});
  const auto whole = print();
  agreements::fermerFichiersLettre(session_);
  store_.forgetCalls();
  print();
  const int calls = static_cast<int>(store_.calls().size());
  ASSERT_EQ(calls, 12);
  for (int call = 1; call <= calls; ++call) {
    SCOPED_TRACE(call);
    agreements::fermerFichiersLettre(session_);
    store_.failAt(call);
    const auto all = print();
    EXPECT_EQ(lineAt(all, 10).substr(0, 10), "[u]Objet :");
    EXPECT_EQ(lineAt(all, 17), lineAt(whole, 17));
    EXPECT_EQ(lineAt(all, 22), "Le Responsable");
    EXPECT_NE(all, whole);
    // The next letter misses nothing.
    EXPECT_PRED_FORMAT2(same, print(), whole);
  }
}

TEST_F(Letter, IsPrintedWithoutAStoreThatAnswers) {
  for (const CallKind kind : {CallKind::OpenFile, CallKind::ReadRecord}) {
    store_.fail(kind);
    const auto all = print();
    EXPECT_PRED_FORMAT2(same, addresseeOf(all), Lines(5));
    EXPECT_PRED_FORMAT2(same, senderOf(all, 3),
                        (Lines{"[b]AIDE A DOMICILE DU VAL CLAIR", "[b]83 DES TILLEULS",
                               "[b]01000 BOURG-EN-BRESSE"}));
    EXPECT_EQ(lineAt(all, 22), "Le Responsable");
    store_.stopFailing();
  }
}

TEST_F(Letter, GoesOnAfterAnythingThatThePrinterRefuses) {
  const std::size_t whole = print().size();
  const int calls = desktop_.onPaper.calls;
  ASSERT_GT(calls, 60);
  for (int call = 1; call <= calls; ++call) {
    SCOPED_TRACE(call);
    desktop_.page(0).setFontName("Courier New");
    desktop_.page(0).setFontSize(12);
    desktop_.onPaper.calls = 0;
    desktop_.onPaper.failingCall = call;
    // One text is missing at most, or a broken one stands whole.
    EXPECT_GE(print().size() + 1, whole);
  }
  desktop_.onPaper.failingCall = 0;
  EXPECT_EQ(print().size(), whole);
}

TEST_F(Letter, EndsQuietlyWhenThePrinterRefusesEverything) {
  desktop_.onPaper.andAllAfter = true;
  desktop_.onPaper.failingCall = 1;
  EXPECT_TRUE(print().empty());
  EXPECT_EQ(desktop_.page(0).jobs().size(), 0U);
  EXPECT_TRUE(desktop_.journal().empty());
}

TEST_F(Letter, EndsQuietlyWithoutAPrinter) {
  testing_support::TestDesktop desktop;
  agreements::Impression_ModifAccord({desktop, surface_, screen_, session_});
  EXPECT_TRUE(desktop.journal().empty());
}

TEST_F(Letter, TakesItsKeyFromBesideTheAgreement) {
  store_.put("CIVILAIDE", "00007",
             {"1", "VALCLAIR", "", "", "", "", "", "", "", "", "", "", "", "", "PAUL"});
  session_.accords.cleLettre = "00007001";
  EXPECT_EQ(addresseeOf(print())[0], "[b]Monsieur PAUL VALCLAIR");
}

TEST_F(Letter, OfATownOfBlanksIsDatedWithoutIt) {
  session_.accords.entite.set(store::association::AdrVille, "  ");
  EXPECT_EQ(lineAt(print(), 9), "le 05 janvier 2026");
}

TEST_F(Letter, NamesItsJob) {
  print();
  EXPECT_EQ(desktop_.page(0).jobs().back().title, "Lettres CRAM 01/02/2026");
}

TEST_F(Letter, OnAPageAsWideAsItsLinesStandsAsItIs) {
  desktop_.page(0).setPrintableSize(3 * kCm + 73 * kCharacter + kCharacter, 16838);
  const auto all = print();
  EXPECT_EQ(lineAt(all, 13),
            "Un accord de prise en charge vous a été alloué du 19/02/2025 au "
            "18/02/2028");
  EXPECT_EQ(linesAt(all, 1, 13, 2)[1], " par l'organisme CRAM.");
}

TEST_F(Letter, KeepsWithinWhatPrintersWithMarginsPrint) {
  responsible();
  store_.put("TITRES", "1", {"Monsieur et Madame"});
  store_.put("CIVILAIDE", "00001",
             {"2", "HERBOTIERE DE LA FORET-NOIRE", "", "", "", "", "", "", "", "", "", "", "", "",
              "GINETTE-ELEONORE"});
  for (const int millimetres : {0, 4, 6}) {
    SCOPED_TRACE(millimetres);
    setMargins(millimetres);
    agreements::Impression_ModifAccord(context_);
    desktop_.page(0).endDoc();
    const auto& job = desktop_.page(0).jobs().back();
    EXPECT_EQ(job.pages, 1);
    EXPECT_PRED_FORMAT2(same, outside(job), std::vector<Printed>());
    const auto all = onPage(job);
    EXPECT_EQ(lineAt(all, 13), "Un accord de prise en charge vous a été alloué du 19/02/2025 au");
    EXPECT_EQ(lineAt(all, 13, 1), "18/02/2028 par l'organisme CRAM.");
    EXPECT_EQ(lineAt(all, 15, 2), "à [b]12,50 Euros, et ce à compter du [b]01/02/2026.");
    EXPECT_EQ(lineAt(all, 19),
              "Nous vous prions d'agréer, Monsieur et Madame, l'expression de nos");
    EXPECT_EQ(lineAt(all, 19, 1), "sentiments les plus dévoués.");
    EXPECT_EQ(lineAt(all, 22), "Le Responsable");
  }
}

// On narrow paper each paragraph is filled line by line, from the left, whatever its styles.
TEST_F(Letter, FlowsAsParagraphsOnNarrowPaper) {
  desktop_.page(0).setPrintableSize(kCm + 50 * kCharacter, 16838);
  const auto all = print();
  const auto lines = [&all](int top) {
    Lines texts;
    for (int i = 0; i < 5; ++i) texts.push_back(lineAt(all, top, i));
    return texts;
  };
  EXPECT_PRED_FORMAT2(
      same, lines(13),
      (Lines{"Un accord de prise en charge vous a été",
             "alloué du 19/02/2025 au 18/02/2028 par l'organisme", "CRAM.", "", ""}));
  EXPECT_PRED_FORMAT2(same, lines(15),
                      (Lines{"Nous vous informons que, par suite de la",
                             "modification des tarifs de remboursement de cet",
                             "organisme, votre participation horaire est portée",
                             "à [b]12,50 Euros, et ce à compter du [b]01/02/2026.", ""}));
  EXPECT_PRED_FORMAT2(same, lines(17),
                      (Lines{"Soyez certain que nous mettons tout en",
                             "oeuvre pour vous apporter entière satisfaction.", "", "", ""}));
  EXPECT_PRED_FORMAT2(same, lines(19),
                      (Lines{"Nous vous prions d'agréer, Madame,",
                             "l'expression de nos sentiments les plus dévoués.", "", "", ""}));
}

TEST_F(Letter, BreaksItsSubjectBehindItsHeading) {
  desktop_.page(0).setPrintableSize(kCm + 12 * kCharacter, 16838);
  const auto all = print();
  EXPECT_EQ(lineAt(all, 10), "[u]Objet :");
  EXPECT_EQ(lineAt(all, 10, 1), "Modification");
}

TEST_F(Letter, BreaksNoWordOfTwoStyles) {
  // The bold amount alone would fit in a line, but not with its comma.
  desktop_.page(0).setPrintableSize(kCm + 11 * kCharacter, 16838);
  const auto all = print();
  Lines texts;
  for (int i = 0; i < 30; ++i) texts.push_back(lineAt(all, 15, i));
  const auto amount = std::find(texts.begin(), texts.end(), "[b]12,50");
  ASSERT_NE(amount, texts.end());
  EXPECT_PRED_FORMAT2(
      same, Lines(amount - 1, amount + 5),
      (Lines{"portée à", "[b]12,50", "[b]Euros, et", "ce à", "compter du", "[b]01/02/2026."}));
}

TEST_F(Letter, FollowsAnotherOnTheNextPage) {
  agreements::Impression_ModifAccord(context_);
  const auto first = onPage(desktop_.page(0).current());
  desktop_.page(0).newPage();
  agreements::Impression_ModifAccord(context_);
  EXPECT_PRED_FORMAT2(same, onPage(desktop_.page(0).current(), 2), first);
  EXPECT_EQ(desktop_.page(0).current().pages, 2);
}

}  // namespace
}  // namespace behaviour
