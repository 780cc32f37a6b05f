// The waiting window.
#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>

#include "forms/Frm_Anim.h"
#include "toolkit/ControlClosed.h"
#include "toolkit/headless/HeadlessDesktop.h"
#include "toolkit/headless/User.h"

namespace behaviour {
namespace {

using forms::Frm_Anim;
using toolkit::ControlClosed;
using toolkit::Window;
using toolkit::headless::Entry;
using toolkit::headless::HeadlessDesktop;

class Desktop : public HeadlessDesktop {
 public:
  enum class Fault { None, Error, Closed };
  Fault onShow = Fault::None;
  Fault onClose = Fault::None;
  Window* shown = nullptr;

  void show(Window& window) override {
    fail(onShow);
    shown = &window;
    HeadlessDesktop::show(window);
  }
  void close(Window& window) override {
    fail(onClose);
    shown = nullptr;
    HeadlessDesktop::close(window);
  }

 private:
  static void fail(Fault fault) {
    if (fault == Fault::Error) throw std::runtime_error("refused");
    if (fault == Fault::Closed) throw ControlClosed();
  }
};

TEST(WaitingWindow, IsShownWhileItLives) {
  Desktop desktop;
  std::optional<Frm_Anim> waiting(desktop);
  ASSERT_EQ(desktop.journal().size(), 1U);
  EXPECT_EQ(desktop.journal()[0].what, Entry::What::Shown);
  EXPECT_EQ(desktop.journal()[0].text, "Frm_Anim");
  EXPECT_EQ(desktop.journal()[0].title, "Mise à jour des accords en cours...");
  waiting.reset();
  ASSERT_EQ(desktop.journal().size(), 2U);
  EXPECT_EQ(desktop.journal()[1].what, Entry::What::Closed);
  EXPECT_EQ(desktop.journal()[1].text, "Frm_Anim");
}

TEST(WaitingWindow, SaysToWait) {
  Desktop desktop;
  const Frm_Anim waiting(desktop);
  const toolkit::Control* label = desktop.shown->surface().find("Label1");
  ASSERT_NE(label, nullptr);
  EXPECT_EQ(label->kind(), toolkit::Kind::Label);
  EXPECT_EQ(label->caption(), "Merci de patienter...");
}

TEST(WaitingWindow, CannotBeClosedByTheUser) {
  Desktop desktop;
  const Frm_Anim waiting(desktop);
  toolkit::headless::User user(desktop.shown->surface());
  EXPECT_FALSE(user.press(toolkit::Key::Escape));
  EXPECT_FALSE(user.press(toolkit::Key::Enter));
  EXPECT_FALSE(desktop.shown->closable());
  desktop.shown->userClose();
  EXPECT_TRUE(desktop.shown->open());
}

TEST(WaitingWindow, ThatCannotBeShownIsAnErrorOfItsCaller) {
  Desktop desktop;
  desktop.onShow = Desktop::Fault::Error;
  EXPECT_THROW(Frm_Anim{desktop}, std::runtime_error);
  desktop.onShow = Desktop::Fault::Closed;
  EXPECT_THROW(Frm_Anim{desktop}, ControlClosed);
  EXPECT_TRUE(desktop.journal().empty());
}

TEST(WaitingWindow, GoesQuietlyWhenItCannotBeClosed) {
  for (const Desktop::Fault fault : {Desktop::Fault::Error, Desktop::Fault::Closed}) {
    Desktop desktop;
    std::optional<Frm_Anim> waiting(desktop);
    desktop.onClose = fault;
    EXPECT_NO_THROW(waiting.reset());
  }
}

TEST(WaitingWindow, GoesQuietlyWhileAnErrorUnwinds) {
  Desktop desktop;
  const auto run = [&] {
    const Frm_Anim waiting(desktop);
    desktop.onClose = Desktop::Fault::Error;
    throw ControlClosed();
  };
  EXPECT_THROW(run(), ControlClosed);
}

}  // namespace
}  // namespace behaviour
