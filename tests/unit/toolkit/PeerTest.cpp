// What a peer is told: the object decides, the window follows.
#include <gtest/gtest.h>

#include "tests/unit/toolkit/PeerStub.h"
#include "toolkit/Buttons.h"
#include "toolkit/ComboBox.h"
#include "toolkit/Frame.h"
#include "toolkit/ListBox.h"
#include "toolkit/SSTab.h"
#include "toolkit/ScrollBar.h"
#include "toolkit/Surface.h"
#include "toolkit/TextBox.h"

namespace toolkit::test {
namespace {

using Aspects = std::vector<Aspect>;

TEST(Peer, HearsOfWhatCodeChangesInATextBox) {
  Surface surface("Form");
  TextBox box(&surface, "Txt");
  PeerStub peer(box);
  box.setText("a");
  box.setText("a");
  box.select(0, 1);
  box.setMaxLength(3);
  box.setRightAligned(true);
  EXPECT_EQ(peer.told, (Aspects{Aspect::Text, Aspect::Selection, Aspect::Style, Aspect::Style}));
}

TEST(Peer, IsNotToldOfAnEditThatItsWindowHoldsAlready) {
  Surface surface("Form");
  TextBox box(&surface, "Txt");
  ComboBox combo(&surface, "Cbo");
  PeerStub boxPeer(box);
  PeerStub comboPeer(combo);
  EXPECT_TRUE(box.userEdit("abc"));
  EXPECT_TRUE(combo.userEdit("abc"));
  EXPECT_EQ(boxPeer.told, Aspects{});
  EXPECT_EQ(comboPeer.told, Aspects{});
}

TEST(Peer, IsToldOfAnEditThatTheObjectDidNotTakeAsItWas) {
  Surface surface("Form");
  TextBox box(&surface, "Txt");
  box.setMaxLength(2);
  PeerStub peer(box);
  EXPECT_TRUE(box.userEdit("abc"));
  EXPECT_EQ(box.text(), "ab");
  EXPECT_EQ(peer.told, Aspects{Aspect::Text});
}

TEST(Peer, IsToldOfWhatTheUserDidInVain) {
  Surface surface("Form");
  TextBox box(&surface, "Txt");
  ComboBox combo(&surface, "Cbo");
  ListBox list(&surface, "Lst");
  ScrollBar bar(&surface, "Bdv", ScrollBar::Direction::Vertical);
  SSTab tabs(&surface, "Ong", {"One", "Two"});
  PeerStub boxPeer(box);
  PeerStub comboPeer(combo);
  PeerStub listPeer(list);
  PeerStub barPeer(bar);
  PeerStub tabsPeer(tabs);
  combo.addItem("line");
  list.addItem("line");
  surface.setAcceptsInput(false);
  EXPECT_FALSE(box.userEdit("x"));
  EXPECT_FALSE(combo.userChoose(0));
  EXPECT_FALSE(list.userSelect(0));
  EXPECT_FALSE(bar.userScroll(1));
  EXPECT_FALSE(tabs.userSelectTab(1));
  EXPECT_EQ(boxPeer.told.back(), Aspect::Text);
  EXPECT_EQ(comboPeer.told.back(), Aspect::Selection);
  EXPECT_EQ(listPeer.told.back(), Aspect::Selection);
  EXPECT_EQ(barPeer.told.back(), Aspect::Value);
  EXPECT_EQ(tabsPeer.told.back(), Aspect::Value);
}

TEST(Peer, HearsOfLinesInOnePass) {
  Surface surface("Form");
  ListBox list(&surface, "Lst");
  ComboBox combo(&surface, "Cbo");
  PeerStub listPeer(list);
  PeerStub comboPeer(combo);
  list.setItems({{"a", 1}, {"b", 2}, {"c", 3}});
  combo.setText("free");
  combo.setItems({{"a", 1}, {"b", 2}, {"c", 3}});
  EXPECT_EQ(listPeer.told, Aspects{Aspect::Items});
  EXPECT_EQ(comboPeer.told, (Aspects{Aspect::Text, Aspect::Items}));
}

TEST(Peer, HearsOfOptionsThatAreClearedSilently) {
  Surface surface("Form");
  OptionButton first(&surface, "Opt_1");
  OptionButton second(&surface, "Opt_2");
  first.setValue(true);
  PeerStub firstPeer(first);
  PeerStub secondPeer(second);
  second.setValue(true);
  EXPECT_EQ(firstPeer.told, Aspects{Aspect::Value});
  EXPECT_EQ(secondPeer.told, Aspects{Aspect::Value});
}

TEST(Peer, HearsOfAContainersEnablingAndVisibility) {
  Surface surface("Form");
  Frame frame(&surface, "Cdr");
  TextBox box(&frame, "Txt");
  PeerStub peer(box);
  frame.setEnabled(false);
  frame.setEnabled(false);
  frame.setVisible(false);
  surface.setEnabled(false);
  EXPECT_EQ(peer.told, (Aspects{Aspect::Enabled, Aspect::Visible, Aspect::Enabled}));
}

TEST(Peer, HearsOfAPageComingToTheFrontAndGoingBehind) {
  Surface surface("Form");
  SSTab tabs(&surface, "Ong", {"One", "Two", "Three"});
  TextBox one(&tabs.page(0), "Txt_1");
  TextBox two(&tabs.page(1), "Txt_2");
  TextBox three(&tabs.page(2), "Txt_3");
  PeerStub tabsPeer(tabs);
  PeerStub pagePeer(tabs.page(1));
  PeerStub onePeer(one);
  PeerStub twoPeer(two);
  PeerStub threePeer(three);
  tabs.setTab(1);
  EXPECT_EQ(tabsPeer.told, Aspects{Aspect::Value});
  EXPECT_EQ(pagePeer.told, Aspects{Aspect::Visible});
  EXPECT_EQ(onePeer.told, Aspects{Aspect::Visible});
  EXPECT_EQ(twoPeer.told, Aspects{Aspect::Visible});
  EXPECT_EQ(threePeer.told, Aspects{});
}

TEST(Peer, HearsOfRangePlaceFontColourAndCaption) {
  Surface surface("Form");
  ScrollBar bar(&surface, "Bdv", ScrollBar::Direction::Vertical);
  Label label(&surface, "Etq");
  PeerStub barPeer(bar);
  PeerStub labelPeer(label);
  bar.setRange(0, 5);
  bar.setLargeChange(3);
  label.setPlace({15, 15, 150, 30});
  label.setFont({"Courier New", 10, true});
  label.setColor(kRed);
  label.setCaption("Text");
  label.setCentered(true);
  EXPECT_EQ(barPeer.told, (Aspects{Aspect::Range, Aspect::Range}));
  EXPECT_EQ(labelPeer.told,
            (Aspects{Aspect::Place, Aspect::Style, Aspect::Style, Aspect::Caption, Aspect::Style}));
}

TEST(Peer, IsToldBeforeTheHandler) {
  Surface surface("Form");
  TextBox box(&surface, "Txt");
  PeerStub peer(box);
  box.onChange = [&] { EXPECT_EQ(peer.told, Aspects{Aspect::Text}); };
  box.setText("a");
  EXPECT_EQ(peer.told.size(), 1U);
}

TEST(Peer, AWindowFollowsTheFocusBeforeGotFocusRuns) {
  Surface surface("Form");
  TextBox box(&surface, "Txt");
  std::vector<std::string> events;
  surface.onFocusMoved = [&] { events.push_back(surface.focus()->name() + " has the window"); };
  box.onGotFocus = [&] { events.emplace_back("got"); };
  box.setFocus();
  EXPECT_EQ(events, (std::vector<std::string>{"Txt has the window", "got"}));
}

}  // namespace
}  // namespace toolkit::test
