#include "toolkit/headless/HeadlessDesktop.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "toolkit/ControlClosed.h"
#include "toolkit/Window.h"

namespace toolkit::headless {
namespace {

TEST(HeadlessDesktop, AnswersQuestionsFromItsScriptAndKeepsThem) {
  HeadlessDesktop desktop;
  desktop.answer(Answer::No);
  desktop.answer(Answer::Cancel);
  EXPECT_EQ(desktop.messageBox("Sure?", "Title", Buttons::YesNo, Icon::Question), Answer::No);
  EXPECT_EQ(desktop.messageBox("Save?", "Title", Buttons::YesNoCancel, Icon::Question),
            Answer::Cancel);
  EXPECT_EQ(desktop.messageBox("Done", "Title", Buttons::Ok, Icon::Information), Answer::Ok);
  ASSERT_EQ(desktop.boxes().size(), 3U);
  EXPECT_EQ(desktop.boxes()[0].text, "Sure?");
  EXPECT_EQ(desktop.boxes()[0].title, "Title");
  EXPECT_EQ(desktop.boxes()[0].icon, Icon::Question);
  EXPECT_EQ(desktop.boxes()[0].answer, Answer::No);
  EXPECT_EQ(desktop.boxes()[1].answer, Answer::Cancel);
  EXPECT_FALSE(desktop.answersLeft());
}

TEST(HeadlessDesktop, RefusesAQuestionWithoutAnAnswerAndAnAnswerNotOffered) {
  HeadlessDesktop desktop;
  EXPECT_THROW(desktop.messageBox("Sure?", "", Buttons::YesNo, Icon::None), std::logic_error);
  desktop.answer(Answer::Cancel);
  EXPECT_THROW(desktop.messageBox("Sure?", "", Buttons::YesNo, Icon::None), std::logic_error);
  desktop.answer(Answer::Ok);
  EXPECT_THROW(desktop.messageBox("Save?", "", Buttons::YesNoCancel, Icon::None), std::logic_error);
}

TEST(HeadlessDesktop, ABoxMayEndWithTheControlClosed) {
  HeadlessDesktop desktop;
  desktop.onBox = [](const Entry&) { throw ControlClosed(); };
  EXPECT_THROW(desktop.messageBox("Done", "", Buttons::Ok, Icon::None), ControlClosed);
  EXPECT_EQ(desktop.boxes().size(), 1U);
}

TEST(HeadlessDesktop, GivesTheBoxesSinceTheLastCall) {
  HeadlessDesktop desktop;
  desktop.messageBox("1", "", Buttons::Ok, Icon::None);
  desktop.beep();
  EXPECT_EQ(desktop.takeBoxes().size(), 1U);
  EXPECT_TRUE(desktop.takeBoxes().empty());
  desktop.messageBox("2", "", Buttons::Ok, Icon::None);
  ASSERT_EQ(desktop.takeBoxes().size(), 1U);
  EXPECT_EQ(desktop.boxes().size(), 2U);
  desktop.clearJournal();
  desktop.messageBox("3", "", Buttons::Ok, Icon::None);
  EXPECT_EQ(desktop.takeBoxes().size(), 1U);
}

TEST(HeadlessDesktop, KeepsBeepsPointersAndEventsInOrder) {
  HeadlessDesktop desktop;
  bool ran = false;
  desktop.onEvents = [&] { ran = true; };
  desktop.setPointer(Pointer::Hourglass);
  EXPECT_EQ(desktop.pointer(), Pointer::Hourglass);
  desktop.beep();
  desktop.doEvents();
  EXPECT_TRUE(ran);
  EXPECT_EQ(desktop.beeps(), 1);
  ASSERT_EQ(desktop.journal().size(), 3U);
  EXPECT_EQ(desktop.journal()[0].what, Entry::What::Pointer);
  EXPECT_EQ(desktop.journal()[0].pointer, Pointer::Hourglass);
  EXPECT_EQ(desktop.journal()[1].what, Entry::What::Beep);
  EXPECT_EQ(desktop.journal()[2].what, Entry::What::Events);
}

TEST(HeadlessDesktop, KnowsThePrintersItWasGiven) {
  HeadlessDesktop desktop;
  EXPECT_EQ(desktop.currentPrinter(), -1);
  EXPECT_THROW(desktop.printer(), std::runtime_error);
  desktop.setPrinters({{"PDF", "P1"}, {"MATRIX", "P2"}}, 0);
  EXPECT_EQ(&desktop.printer(), &desktop.page(0));
  desktop.setCurrentPrinter(1);
  EXPECT_EQ(desktop.printers()[1].deviceName, "MATRIX");
  desktop.printer().print("text");
  desktop.printer().endDoc();
  EXPECT_EQ(desktop.page(1).jobs().size(), 1U);
  EXPECT_TRUE(desktop.page(0).jobs().empty());
  EXPECT_THROW(desktop.setCurrentPrinter(2), std::invalid_argument);
  EXPECT_THROW(desktop.page(-1), std::invalid_argument);
  EXPECT_EQ(desktop.currentPrinter(), 1);
}

TEST(HeadlessDesktop, AModalFormMustCloseItself) {
  HeadlessDesktop desktop;
  Window window("Frm_Form", "Caption", 3000, 1500);
  EXPECT_THROW(desktop.showModal(window), std::logic_error);
  desktop.close(window);
  desktop.clearJournal();
  desktop.onModal = [&](Window& shown) {
    EXPECT_TRUE(shown.open());
    desktop.close(shown);
    desktop.close(shown);
  };
  desktop.showModal(window);
  EXPECT_FALSE(window.open());
  ASSERT_EQ(desktop.journal().size(), 2U);
  EXPECT_EQ(desktop.journal()[0].what, Entry::What::Shown);
  EXPECT_EQ(desktop.journal()[0].text, "Frm_Form");
  EXPECT_EQ(desktop.journal()[0].title, "Caption");
  EXPECT_EQ(desktop.journal()[1].what, Entry::What::Closed);
}

TEST(HeadlessDesktop, AModelessFormStaysUntilItIsClosed) {
  HeadlessDesktop desktop;
  Window window("Frm_Form", "Caption", 3000, 1500);
  desktop.show(window);
  EXPECT_TRUE(window.open());
  EXPECT_EQ(window.width(), 3000);
  EXPECT_EQ(window.height(), 1500);
  desktop.close(window);
  EXPECT_FALSE(window.open());
}

}  // namespace
}  // namespace toolkit::headless
