#include <gtest/gtest.h>

#include <memory>
#include <optional>

#include "toolkit/Buttons.h"
#include "toolkit/Frame.h"
#include "toolkit/SSTab.h"
#include "toolkit/ScrollBar.h"
#include "toolkit/Surface.h"
#include "toolkit/TextBox.h"

namespace toolkit {
namespace {

TEST(Caption, MnemonicIsTheLetterAfterTheAmpersandInUpperCase) {
  EXPECT_EQ(mnemonicOf("&Ajouter"), U'A');
  EXPECT_EQ(mnemonicOf("Supp&rimer"), U'R');
  EXPECT_EQ(mnemonicOf("&été"), U'É');
  EXPECT_EQ(mnemonicOf("R&&D &now"), U'N');
  EXPECT_EQ(mnemonicOf("R&&D"), 0U);
  EXPECT_EQ(mnemonicOf("plain"), 0U);
  EXPECT_EQ(mnemonicOf("end&"), 0U);
  EXPECT_EQ(mnemonicOf(""), 0U);
}

TEST(Caption, ReadsWithoutItsAmpersands) {
  EXPECT_EQ(withoutMnemonic("&Ajouter"), "Ajouter");
  EXPECT_EQ(withoutMnemonic("R&&D &now"), "R&D now");
  EXPECT_EQ(withoutMnemonic("end&"), "end&");
}

TEST(Surface, FindsAnyControlBelowByItsName) {
  Surface surface("Form");
  Frame frame(&surface, "Cdr");
  SSTab tabs(&frame, "Ong", {"One", "Two"});
  TextBox box(&tabs.page(1), "Txt");
  EXPECT_EQ(surface.find("Txt"), &box);
  EXPECT_EQ(surface.find("Ong_2"), &tabs.page(1));
  EXPECT_EQ(surface.find("Cdr"), &frame);
  EXPECT_EQ(surface.find("Absent"), nullptr);
}

TEST(Control, KnowsItsSurfaceAndItsSiblings) {
  Surface surface("Form");
  Frame frame(&surface, "Cdr");
  TextBox box(&frame, "Txt");
  EXPECT_EQ(box.surface(), &surface);
  EXPECT_EQ(surface.surface(), &surface);
  EXPECT_EQ(box.parent(), &frame);
  EXPECT_EQ(frame.children(), std::vector<Control*>{&box});
}

TEST(Control, OnlyCertainKindsTakeTheFocus) {
  Surface surface("Form");
  Frame frame(&surface, "Cdr");
  Label label(&surface, "Etq");
  SSTab tabs(&surface, "Ong", {"One"});
  ScrollBar bar(&surface, "Bdv", ScrollBar::Direction::Vertical);
  TextBox box(&surface, "Txt");
  EXPECT_FALSE(surface.focusable());
  EXPECT_FALSE(frame.focusable());
  EXPECT_FALSE(label.focusable());
  EXPECT_FALSE(tabs.page(0).focusable());
  EXPECT_TRUE(tabs.focusable());
  EXPECT_TRUE(bar.focusable());
  EXPECT_FALSE(bar.tabStop());
  EXPECT_TRUE(box.tabStop());
}

TEST(Control, IsUsableWhenEverythingAroundItIs) {
  Surface surface("Form");
  Frame frame(&surface, "Cdr");
  SSTab tabs(&frame, "Ong", {"One", "Two"});
  TextBox box(&tabs.page(0), "Txt");
  EXPECT_TRUE(box.usable());
  for (Control* around : std::vector<Control*>{&box, &tabs.page(0), &tabs, &frame, &surface}) {
    around->setEnabled(false);
    EXPECT_FALSE(box.reachable()) << around->name();
    EXPECT_TRUE(box.shown());
    around->setEnabled(true);
    around->setVisible(false);
    EXPECT_FALSE(box.shown()) << around->name();
    EXPECT_TRUE(box.reachable());
    around->setVisible(true);
  }
  tabs.setTab(1);
  EXPECT_FALSE(box.shown());
  EXPECT_TRUE(box.visible());
}

TEST(Control, ThatIsDestroyedIsForgotten) {
  Surface surface("Form");
  TextBox first(&surface, "Txt_1");
  std::optional<Frame> frame(std::in_place, &surface, "Cdr");
  std::optional<CommandButton> button(std::in_place, &*frame, "Cmd");
  surface.setCancelButton(&*button);
  button->setFocus();
  surface.setEnabled(false);
  button->setFocus();
  button.reset();
  EXPECT_EQ(surface.focus(), nullptr);
  EXPECT_FALSE(surface.cancelable());
  EXPECT_TRUE(frame->children().empty());
  surface.setEnabled(true);
  EXPECT_EQ(surface.focus(), nullptr);
  frame.reset();
  EXPECT_EQ(surface.children(), std::vector<Control*>{&first});
  EXPECT_TRUE(surface.moveFocus(&first));
}

TEST(Control, WhoseContainerIsDestroyedIsForgottenToo) {
  Surface surface("Form");
  std::optional<SSTab> tabs(std::in_place, &surface, "Ong", std::vector<std::string>{"One", "Two"});
  TextBox box(&tabs->page(0), "Txt");
  box.setFocus();
  tabs.reset();
  EXPECT_EQ(surface.focus(), nullptr);
  EXPECT_EQ(box.surface(), nullptr);
  EXPECT_EQ(box.parent(), nullptr);
  EXPECT_FALSE(box.userEdit("x"));
  box.setFocus();
  box.setText("x");
  EXPECT_EQ(box.text(), "x");
}

TEST(Control, OutlivesItsSurfaceWithoutHarm) {
  auto surface = std::make_unique<Surface>("Form");
  TextBox box(surface.get(), "Txt");
  OptionButton option(surface.get(), "Opt");
  box.setFocus();
  surface.reset();
  box.setText("x");
  box.setEnabled(false);
  option.setValue(true);
  EXPECT_FALSE(box.hasFocus());
  EXPECT_FALSE(option.userClick());
}

}  // namespace
}  // namespace toolkit
