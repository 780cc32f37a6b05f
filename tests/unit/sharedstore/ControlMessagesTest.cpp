// How often the whole control goes to the server and back for what its users do.
#include "ControlOnServer.h"
#include "toolkit/Window.h"

namespace {

namespace attribut = store::orgprisecharge;
using behaviour::Answer;

class ControlMessages : public ControlOnServer {
 protected:
  void expectWholeBody() {
    EXPECT_EQ(list("Lst_ActSelect").listCount(), 20);
    EXPECT_EQ(combo("Cbo_DebitOrgChg").text(), "Compte 4110000000");
    EXPECT_EQ(combo("Cbo_CreditOrgChg").text(), "Compte 7060000000");
    EXPECT_EQ(combo("Cbo_CpteProdAide").text(), "Compte 7400000000");
    EXPECT_EQ(combo("Cbo_CptPrestationService").text(), "Compte 7080000000");
  }
};

TEST_F(ControlMessages, AnInit) {
  carry();
  connectToServer();
  EXPECT_EQ(messagesOf([&] { control_->Init(); }), 5);
}

TEST_F(ControlMessages, ALookUpOfAWholeBody) {
  startOnServer();
  EXPECT_EQ(messagesOf([&] { lookUp("001"); }), 3);
  expectWholeBody();
  EXPECT_EQ(messagesOf([&] { lookUp("002"); }), 3);
}

TEST_F(ControlMessages, ASave) {
  startOnServer();
  lookUp("001");
  user_->fill(box("Txt_Ville"), "AILLEURS");
  EXPECT_EQ(messagesOf([&] { press("Cmd_OK"); }), 3);
  expectNoBox();
  EXPECT_EQ(store::DynamicArray(stored(attribut::kFile, "001")).get(attribut::AdrVille),
            "AILLEURS");
}

TEST_F(ControlMessages, ACreation) {
  withoutAccounts();
  startOnServer();
  beginCreation();
  EXPECT_EQ(messagesOf([&] { press("Cmd_OK"); }), 5);
  expectNoBox();
  EXPECT_EQ(storedCount(attribut::kFile), 4);
}

TEST_F(ControlMessages, ADeletion) {
  startOnServer();
  lookUp("003");
  desktop_.answer(Answer::Yes);
  EXPECT_EQ(messagesOf([&] { press("Cmd_Supprimer"); }), 7);
  EXPECT_EQ(storedCount(attribut::kFile), 2);
}

// The delay makes nothing more: a look-up waits for it as often as it goes there and back.
TEST_F(ControlMessages, ALookUpOverADistance) {
  startOnServer();
  for (const int delay : {0, 5, 20}) {
    control_->Vider_Donnees();
    relay_.delayEachWay(std::chrono::milliseconds(delay));
    const auto begun = std::chrono::steady_clock::now();
    const int messages = messagesOf([&] { lookUp("001"); });
    const auto took = std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now() - begun);
    expectWholeBody();
    EXPECT_EQ(messages, 3);
    EXPECT_GE(took.count(), 2 * delay * messages);
    RecordProperty("milliseconds_at_" + std::to_string(delay), static_cast<int>(took.count()));
  }
}

// --- A new scale and its letters

using ControlLetters = ControlOnServer;

TEST_F(ControlLetters, AreReadInBlocks) {
  constexpr int kAgreements = 10000;
  putScale();
  startOnServer();
  putAgreements(kAgreements, true);
  enterScale("01/02/2026");
  std::vector<int> printers;  // messages until a printer has been asked for
  desktop_.onModal = [&](toolkit::Window& window) {
    toolkit::headless::User user(window.surface());
    user.press(toolkit::Key::Enter);
    printers.push_back(relay_.messages());
  };
  const int before = relay_.messages();
  for (int question = 0; question < 3; ++question) desktop_.answer(Answer::Yes);
  press("Cmd_OK");
  ASSERT_EQ(printers.size(), 2U);
  EXPECT_LE(printers[0] - before, 75) << "the save and the update";
  EXPECT_LE(printers[1] - printers[0], 47) << "the letters";
  EXPECT_LE(relay_.messages() - printers[1], 17) << "the listing";
  int names = 0;
  for (const auto& job : desktop_.page(0).jobs()) {
    for (const auto& piece : job.pieces) names += piece.text.find("NOM") != std::string::npos;
  }
  EXPECT_GE(names, kAgreements);
  EXPECT_TRUE(told_ == behaviour::Lines{"Enregistre 001"});
}

}  // namespace
