// The choice of a printer for A4 pages.
#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "forms/Frm_ImpressionA4.h"
#include "forms/PrinterChoice.h"
#include "tests/support/Focus.h"
#include "tests/support/Same.h"
#include "toolkit/ControlClosed.h"
#include "toolkit/headless/HeadlessDesktop.h"
#include "toolkit/headless/User.h"

namespace behaviour {
namespace {

using forms::choisirImprimanteA4;
using testing_support::hasFocus;
using testing_support::same;
using toolkit::ComboBox;
using toolkit::CommandButton;
using toolkit::Control;
using toolkit::ControlClosed;
using toolkit::Key;
using toolkit::PrinterInfo;
using toolkit::Window;
using toolkit::headless::Entry;
using toolkit::headless::HeadlessDesktop;

// Notes each printer made the current one, and can refuse each of its calls.
class PrinterDesktop : public HeadlessDesktop {
 public:
  std::set<std::string> failing;  // names of the functions
  bool closesWhileShown = false;
  std::vector<int> selected;

  std::vector<PrinterInfo> printers() override {
    fail("printers");
    return HeadlessDesktop::printers();
  }
  int currentPrinter() override {
    fail("currentPrinter");
    return HeadlessDesktop::currentPrinter();
  }
  void setCurrentPrinter(int position) override {
    fail("setCurrentPrinter");
    HeadlessDesktop::setCurrentPrinter(position);
    selected.push_back(position);
  }
  toolkit::Printer& printer() override {
    fail("printer");
    return HeadlessDesktop::printer();
  }
  void showModal(Window& window) override {
    fail("showModal");
    HeadlessDesktop::showModal(window);
    if (closesWhileShown) throw ControlClosed();
  }

 private:
  void fail(const std::string& function) const {
    if (failing.contains(function)) throw std::runtime_error(function);
  }
};

// The window as its user has it.
class OpenForm {
 public:
  explicit OpenForm(Window& shown) : window(shown), user(shown.surface()) {}

  template <class T>
  T& child(std::string_view name) {
    auto* control = dynamic_cast<T*>(window.surface().find(name));
    if (!control) throw std::logic_error("no child control " + std::string(name));
    return *control;
  }
  ComboBox& names() { return child<ComboBox>("Cbo_Imprimante"); }
  ComboBox& positions() { return child<ComboBox>("Cbo_ImpSelect"); }
  CommandButton& ok() { return child<CommandButton>("Cmd_Ok"); }
  CommandButton& cancel() { return child<CommandButton>("Cmd_Annuler"); }
  // As it is read.
  std::string caption(std::string_view name) {
    return toolkit::withoutMnemonic(child<Control>(name).caption());
  }
  static std::vector<std::string> lines(const ComboBox& combo) {
    std::vector<std::string> all;
    for (int i = 0; i < combo.listCount(); ++i) all.push_back(combo.list(i));
    return all;
  }

  Window& window;
  toolkit::headless::User user;
};

class PrinterChoice : public testing::Test {
 protected:
  PrinterChoice() { forms::imprimanteParDefaut() = {}; }
  ~PrinterChoice() override { forms::imprimanteParDefaut() = {}; }

  void have(std::vector<PrinterInfo> printers, int current) {
    desktop.setPrinters(std::move(printers), current);
    desktop.selected.clear();
  }
  // Two page printers around a dot-matrix one; the last is the current one.
  void haveThree() { have({{"LASER", "USB001"}, {"Matricielle", "LPT1:"}, {"PDF", "FILE:"}}, 2); }

  // Opens the window, lets the user act, and cancels if it is still open then.
  std::string choose(const std::function<void(OpenForm&)>& act) {
    whileOpen(act);
    return choisirImprimanteA4(desktop);
  }
  void whileOpen(const std::function<void(OpenForm&)>& act) {
    desktop.onModal = [act](Window& window) {
      OpenForm form(window);
      act(form);
      if (window.open()) form.user.press(Key::Escape);
    };
  }
  std::string accept() {
    return choose([](OpenForm& form) { form.user.click(form.ok()); });
  }
  // What the window offers and proposes.
  std::vector<std::string> offered() {
    std::vector<std::string> lines;
    choose([&](OpenForm& form) { lines = OpenForm::lines(form.names()); });
    return lines;
  }
  std::string proposed() {
    std::string name;
    choose([&](OpenForm& form) { name = form.names().text(); });
    return name;
  }

  PrinterDesktop desktop;
};

using Names = std::vector<std::string>;

TEST_F(PrinterChoice, IsAModalWindowWithItsTexts) {
  haveThree();
  choose([&](OpenForm& form) {
    EXPECT_EQ(form.window.caption(), "Imprimer");
    EXPECT_EQ(form.caption("Fra_Imprimante"), "Imprimante");
    EXPECT_EQ(form.caption("Etq_Nom"), "Nom :");
    EXPECT_EQ(form.caption("Etq_LibEtat"), "Etat  :");
    EXPECT_EQ(form.caption("Etq_LibOu"), "Où    :");
    EXPECT_EQ(form.caption("Cmd_Ok"), "OK");
    EXPECT_EQ(form.caption("Cmd_Annuler"), "Annuler");
    EXPECT_EQ(form.names().style(), ComboBox::Style::ListOnly);
    EXPECT_FALSE(form.positions().visible());
    EXPECT_PRED_FORMAT1(hasFocus, form.names());
  });
  ASSERT_EQ(desktop.journal().size(), 2U);
  EXPECT_EQ(desktop.journal()[0].what, Entry::What::Shown);
  EXPECT_EQ(desktop.journal()[0].text, "Frm_ImpressionA4");
  EXPECT_EQ(desktop.journal()[1].what, Entry::What::Closed);
}

TEST_F(PrinterChoice, OffersThePagePrintersWithTheirPositions) {
  haveThree();
  choose([](OpenForm& form) {
    EXPECT_EQ(OpenForm::lines(form.names()), (Names{"LASER", "PDF"}));
    EXPECT_EQ(OpenForm::lines(form.positions()), (Names{"0", "2"}));
  });
}

TEST_F(PrinterChoice, TakesAPrinterForDotMatrixInAnyCaseAndPlace) {
  have({{"Épson matricielle", "A"}, {"MATRIC", "B"}, {"xMaTrIcx", "C"}, {"MATRI", "D"}, {"", "E"}},
       3);
  EXPECT_EQ(offered(), (Names{"MATRI", ""}));
}

TEST_F(PrinterChoice, ListingLeavesTheCurrentPrinterAlone) {
  haveThree();
  choose([&](OpenForm& form) {
    form.user.choose(form.names(), 0);
    EXPECT_EQ(desktop.currentPrinter(), 2);
  });
  EXPECT_TRUE(desktop.selected.empty());
}

TEST_F(PrinterChoice, ProposesTheCurrentPrinterAtTheFirstLoad) {
  haveThree();
  choose([](OpenForm& form) {
    EXPECT_EQ(form.names().text(), "PDF");
    EXPECT_EQ(form.positions().list(form.names().listIndex()), "2");
    EXPECT_EQ(form.caption("Etq_Ou"), "FILE:");
    EXPECT_EQ(form.caption("Etq_Etat"), "Imprimante par défaut");
  });
}

TEST_F(PrinterChoice, ProposesTheFirstPagePrinterWhenTheCurrentOneIsDotMatrix) {
  have({{"Matricielle", "LPT1:"}, {"LASER", "USB001"}, {"PDF", "FILE:"}}, 0);
  EXPECT_EQ(proposed(), "LASER");
}

TEST_F(PrinterChoice, ProposesTheFirstPagePrinterWhenThereIsNoCurrentOne) {
  have({{"Matricielle", "LPT1:"}, {"LASER", "USB001"}, {"PDF", "FILE:"}}, -1);
  EXPECT_EQ(proposed(), "LASER");
}

TEST_F(PrinterChoice, ShowsPortAndStateOfTheChosenPrinter) {
  haveThree();
  choose([](OpenForm& form) {
    form.user.choose(form.names(), 0);
    EXPECT_EQ(form.caption("Etq_Ou"), "USB001");
    EXPECT_EQ(form.caption("Etq_Etat"), "");
    form.user.choose(form.names(), 1);
    EXPECT_EQ(form.caption("Etq_Ou"), "FILE:");
    EXPECT_EQ(form.caption("Etq_Etat"), "Imprimante par défaut");
  });
}

TEST_F(PrinterChoice, ShowsAPortAsItIsWritten) {
  have({{"R&D", R"(\\SRV\R&D)"}}, 0);
  choose([](OpenForm& form) {
    EXPECT_EQ(form.names().text(), "R&D");
    EXPECT_EQ(form.caption("Etq_Ou"), R"(\\SRV\R&D)");
    EXPECT_FALSE(form.user.alt(U'd'));
  });
}

TEST_F(PrinterChoice, AnswersTheSystemsPositionAndSelectsThePrinter) {
  haveThree();
  EXPECT_EQ(choose([](OpenForm& form) {
              form.user.choose(form.names(), 0);
              form.user.click(form.ok());
            }),
            "0");
  EXPECT_EQ(desktop.currentPrinter(), 0);
  EXPECT_EQ(choose([](OpenForm& form) {
              form.user.choose(form.names(), 1);
              form.user.click(form.ok());
            }),
            "2");
  EXPECT_EQ(desktop.currentPrinter(), 2);
  EXPECT_PRED_FORMAT2(same, desktop.selected, (std::vector<int>{0, 2}));
}

TEST_F(PrinterChoice, EnterAcceptsWhatIsChosen) {
  haveThree();
  EXPECT_EQ(choose([](OpenForm& form) {
              form.user.choose(form.names(), 0);
              form.user.press(Key::Enter);
            }),
            "0");
}

TEST_F(PrinterChoice, EnterOnTheCancelButtonCancels) {
  haveThree();
  EXPECT_EQ(choose([](OpenForm& form) {
              form.cancel().setFocus();
              form.user.press(Key::Enter);
            }),
            "-1");
}

TEST_F(PrinterChoice, IsRefusedByCancelEscapeAndTheTitleBar) {
  using Act = std::function<void(OpenForm&)>;
  const std::vector<Act> refusals{[](OpenForm& form) { form.user.click(form.cancel()); },
                                  [](OpenForm& form) { form.user.press(Key::Escape); },
                                  [](OpenForm& form) { form.window.userClose(); },
                                  [](OpenForm& form) { form.user.alt(U'a'); }};
  haveThree();
  for (const Act& refuse : refusals) {
    EXPECT_EQ(choose([&](OpenForm& form) {
                form.user.choose(form.names(), 0);
                refuse(form);
                EXPECT_FALSE(form.window.open());
              }),
              "-1");
  }
  EXPECT_EQ(desktop.currentPrinter(), 2);
  EXPECT_TRUE(desktop.selected.empty());
}

TEST_F(PrinterChoice, TabWalksThroughTheListAndTheButtons) {
  haveThree();
  choose([](OpenForm& form) {
    form.user.tab();
    EXPECT_PRED_FORMAT1(hasFocus, form.ok());
    form.user.tab();
    EXPECT_PRED_FORMAT1(hasFocus, form.cancel());
    form.user.tab(true);
    form.user.tab(true);
    EXPECT_PRED_FORMAT1(hasFocus, form.names());
  });
}

TEST_F(PrinterChoice, HasAMnemonicForTheListAndForEachButton) {
  haveThree();
  choose([](OpenForm& form) {
    EXPECT_PRED_FORMAT2(same, form.window.surface().mnemonics(),
                        (std::vector<char32_t>{U'N', U'O', U'A'}));
    form.cancel().setFocus();
    form.user.alt(U'n');
    EXPECT_PRED_FORMAT1(hasFocus, form.names());
  });
  EXPECT_EQ(choose([](OpenForm& form) { form.user.alt(U'o'); }), "2");
}

TEST_F(PrinterChoice, AllOfTheWindowLiesWithinIt) {
  haveThree();
  choose([](OpenForm& form) {
    for (const Control* control : form.window.surface().children()) {
      EXPECT_LE(control->place().left + control->place().width, form.window.width());
      EXPECT_LE(control->place().top + control->place().height, form.window.height());
    }
    const auto& frame = form.child<toolkit::Frame>("Fra_Imprimante");
    for (const Control* control : frame.children()) {
      EXPECT_LE(control->place().left + control->place().width, frame.place().width);
      EXPECT_LE(control->place().top + control->place().height, frame.place().height);
    }
    EXPECT_GE(form.window.width(), 1440 * 75 / 254 * 10);  // 7.5 cm
  });
}

TEST_F(PrinterChoice, WithoutAPagePrinterOffersNothingAndCanOnlyBeRefused) {
  have({{"MATRICIELLE", "LPT1:"}, {"Matrice matricielle", "LPT2:"}}, 0);
  EXPECT_EQ(choose([](OpenForm& form) {
              EXPECT_EQ(form.names().listCount(), 0);
              EXPECT_EQ(form.positions().listCount(), 0);
              EXPECT_EQ(form.names().listIndex(), -1);
              EXPECT_EQ(form.caption("Etq_Ou"), "");
              EXPECT_EQ(form.caption("Etq_Etat"), "");
              EXPECT_FALSE(form.user.click(form.ok()));
              EXPECT_FALSE(form.user.press(Key::Enter));
              EXPECT_FALSE(form.user.alt(U'o'));
              EXPECT_TRUE(form.window.open());
            }),
            "-1");
  EXPECT_EQ(desktop.currentPrinter(), 0);
}

TEST_F(PrinterChoice, WithoutAnyPrinterIsRefused) {
  have({}, -1);
  EXPECT_EQ(accept(), "-1");
}

TEST_F(PrinterChoice, RemembersTheDefaultFromItsFirstLoad) {
  haveThree();
  EXPECT_EQ(proposed(), "PDF");
  desktop.setCurrentPrinter(0);
  EXPECT_EQ(proposed(), "PDF");
}

TEST_F(PrinterChoice, RemembersTheFirstPagePrinterWhenTheFirstLoadFoundNone) {
  have({{"MATRICIELLE", "LPT1:"}}, 0);
  EXPECT_EQ(offered(), Names{});
  // The current printer counts at the first load alone.
  have({{"LASER", "USB001"}, {"PDF", "FILE:"}}, 1);
  EXPECT_EQ(proposed(), "LASER");
  have({{"PDF", "FILE:"}, {"LASER", "USB001"}}, 0);
  EXPECT_EQ(proposed(), "LASER");
}

TEST_F(PrinterChoice, ProposesTheFirstWhenTheDefaultHasGoneAndTheDefaultWhenItIsBack) {
  haveThree();
  EXPECT_EQ(proposed(), "PDF");
  have({{"LASER", "USB001"}, {"COULEUR", "USB002"}}, 1);
  choose([](OpenForm& form) {
    EXPECT_EQ(form.names().text(), "LASER");
    EXPECT_EQ(form.caption("Etq_Etat"), "Imprimante par défaut");
  });
  haveThree();
  EXPECT_EQ(proposed(), "PDF");
}

TEST_F(PrinterChoice, OfPrintersWithOneNameTheLastStandsForTheDefault) {
  have({{"PDF", "A"}, {"PDF", "B"}, {"LASER", "C"}}, 0);
  EXPECT_EQ(choose([](OpenForm& form) {
              EXPECT_EQ(form.names().listIndex(), 1);
              EXPECT_EQ(form.caption("Etq_Ou"), "B");
              form.user.choose(form.names(), 0);
              EXPECT_EQ(form.caption("Etq_Ou"), "A");
              EXPECT_EQ(form.caption("Etq_Etat"), "");
              form.user.click(form.ok());
            }),
            "0");
  EXPECT_EQ(accept(), "1");
}

TEST_F(PrinterChoice, AnErrorOfAnyCallIsItsCallersAndChangesNothing) {
  for (const std::string call : {"printers", "currentPrinter", "showModal", "setCurrentPrinter"}) {
    forms::imprimanteParDefaut() = {};
    haveThree();
    desktop.failing = {call};
    EXPECT_THROW(choose([](OpenForm& form) {
                   form.user.choose(form.names(), 0);
                   form.user.click(form.ok());
                 }),
                 std::runtime_error)
        << call;
    desktop.failing.clear();
    EXPECT_EQ(desktop.currentPrinter(), 2) << call;
    EXPECT_EQ(accept(), "2") << call;
  }
}

TEST_F(PrinterChoice, TheControlClosedMeanwhileChoosesNothing) {
  haveThree();
  desktop.closesWhileShown = true;
  EXPECT_THROW(choose([](OpenForm& form) {
                 form.user.choose(form.names(), 0);
                 form.user.click(form.ok());
               }),
               ControlClosed);
  EXPECT_EQ(desktop.currentPrinter(), 2);
  EXPECT_TRUE(desktop.selected.empty());
}

}  // namespace
}  // namespace behaviour
