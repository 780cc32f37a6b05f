// What only windows have: the rules that the peers keep.
#include <gtest/gtest.h>

#include <functional>
#include <optional>

#include "tests/unit/toolkit/Layout.h"
#include "tests/windows/toolkit/BoxAnswerer.h"
#include "tests/windows/toolkit/TestHost.h"
#include "toolkit/Buttons.h"
#include "toolkit/ComboBox.h"
#include "toolkit/Frame.h"
#include "toolkit/ListBox.h"
#include "toolkit/SSTab.h"
#include "toolkit/ScrollBar.h"
#include "toolkit/TextBox.h"
#include "toolkit/win32/WideText.h"

#include <commctrl.h>

namespace toolkit::test {
namespace {

class Peers : public ::testing::Test {
 protected:
  Surface surface{"Form"};
  Label label{&surface, "Etq_Label", "&Name"};
  TextBox box{&surface, "Txt_Box"};
  TextBox other{&surface, "Txt_Other"};
  ComboBox combo{&surface, "Cbo_Combo"};
  ComboBox fixed{&surface, "Cbo_Fixed", ComboBox::Style::ListOnly};
  ListBox list{&surface, "Lst_List"};
  ListBox several{&surface, "Lst_Several", ListBox::Selection::Extended};
  Frame frame{&surface, "Cdr_Frame", "Frame"};
  OptionButton option{&frame, "Opt_Option", "Option"};
  CheckBox check{&surface, "Cac_Check", "Check"};
  CommandButton button{&surface, "Cmd_Button", "&Button"};
  ScrollBar bar{&surface, "Bdv_Bar", ScrollBar::Direction::Vertical};
  SSTab tabs{&surface, "Ong_Tabs", {"One", "Two"}};
  TextBox paged{&tabs.page(0), "Txt_Paged"};
  std::optional<TestHost> host_;

  TestHost& host(const win32::Ambience& ambience = {},
                 TestHost::TopLevel topLevel = TestHost::TopLevel::Shared) {
    if (!host_) {
      layOut(surface);
      host_.emplace(surface, ambience, topLevel);
    }
    return *host_;
  }
  HWND window(const Control& control) { return host().find(control.name()); }
  void TearDown() override { host_.reset(); }
  void goTo(const Control& control) { host().click(window(control)); }
};

TEST_F(Peers, EveryControlIsAWindowOfItsStandardClassAndTellsItsName) {
  const std::vector<std::pair<const Control*, std::wstring>> classes{
      {&label, L"Static"},   {&box, L"Edit"},
      {&combo, L"ComboBox"}, {&fixed, L"ComboBox"},
      {&list, L"ListBox"},   {&several, L"ListBox"},
      {&frame, L"Button"},   {&option, L"Button"},
      {&check, L"Button"},   {&button, L"Button"},
      {&bar, L"ScrollBar"},  {&tabs, L"SysTabControl32"},
      {&paged, L"Edit"},     {&tabs.page(0), L"TessalineSurface"}};
  for (const auto& [control, name] : classes) {
    ASSERT_NE(window(*control), nullptr) << control->name();
    EXPECT_STREQ(classOf(window(*control)).c_str(), name.c_str()) << control->name();
  }
}

TEST_F(Peers, TheNameIsCutToTheRoomThatTheAskerHas) {
  const UINT message = RegisterWindowMessageW(L"WM_GETCONTROLNAME");
  wchar_t name[8] = {L'x', L'x', L'x', L'x', L'x', L'x', L'x', L'x'};
  EXPECT_EQ(SendMessageW(window(box), message, 4, reinterpret_cast<LPARAM>(name)), 4);
  EXPECT_STREQ(name, L"Txt");
  EXPECT_EQ(name[4], L'x');
  EXPECT_EQ(SendMessageW(window(box), message, 8, reinterpret_cast<LPARAM>(name)), 8);
  EXPECT_STREQ(name, L"Txt_Box");
  EXPECT_EQ(SendMessageW(window(box), message, 0, 0), 0);
}

// The rows of an area that hold more than one colour, from the first to the last, from its top.
std::pair<int, int> inkedRows(HDC context, const RECT& area) {
  std::pair<int, int> rows{-1, -1};
  for (LONG y = area.top; y < area.bottom; ++y) {
    const COLORREF first = GetPixel(context, area.left, y);
    for (LONG x = area.left; x < area.right; ++x) {
      if (GetPixel(context, x, y) == first) continue;
      if (rows.first < 0) rows.first = static_cast<int>(y - area.top);
      rows.second = static_cast<int>(y - area.top);
    }
  }
  return rows;
}

TEST_F(Peers, AClosedListShowsItsLineInTheMiddleOfAFieldOfAnyHeight) {
  fixed.setItems({{"HHHH", 0}});
  fixed.setListIndex(0);
  host();
  Place place = fixed.place();
  place.height = 900;
  fixed.setPlace(place);
  host().pump();
  UpdateWindow(window(fixed));
  COMBOBOXINFO info{};
  info.cbSize = sizeof info;
  ASSERT_TRUE(GetComboBoxInfo(window(fixed), &info));
  RECT inner = info.rcItem;
  InflateRect(&inner, -1, -1);
  ASSERT_GT(inner.bottom - inner.top, 40);
  HDC context = GetDC(window(fixed));
  const auto [first, last] = inkedRows(context, inner);
  ReleaseDC(window(fixed), context);
  ASSERT_GE(first, 0);
  const int below = static_cast<int>(inner.bottom - inner.top) - 1 - last;
  EXPECT_NEAR(first, below, 3);
}

TEST_F(Peers, GroupBoxesAreSiblingsOfTheirFieldsAndEachPageIsAWindow) {
  EXPECT_EQ(GetParent(window(option)), host().surface().handle());
  EXPECT_EQ(GetParent(window(frame)), host().surface().handle());
  EXPECT_EQ(GetParent(window(paged)), window(tabs.page(0)));
  EXPECT_EQ(GetParent(window(tabs.page(0))), window(tabs));
  EXPECT_TRUE(IsWindowVisible(window(tabs.page(0))));
  EXPECT_FALSE(IsWindowVisible(window(tabs.page(1))));
}

TEST_F(Peers, TheControlsWindowIsNoControlParent) {
  const LONG style = GetWindowLongW(host().surface().handle(), GWL_EXSTYLE);
  EXPECT_EQ(style & WS_EX_CONTROLPARENT, 0);
}

TEST_F(Peers, OptionsAndCheckBoxesAreSetFromTheObjectOnly) {
  EXPECT_EQ(GetWindowLongW(window(option), GWL_STYLE) & BS_TYPEMASK, BS_RADIOBUTTON);
  EXPECT_EQ(GetWindowLongW(window(check), GWL_STYLE) & BS_TYPEMASK, BS_CHECKBOX);
  option.onClick = [this] { option.setValue(false); };
  SendMessageW(window(option), BM_CLICK, 0, 0);
  host().pump();
  EXPECT_FALSE(option.value());
  EXPECT_EQ(SendMessageW(window(option), BM_GETCHECK, 0, 0), BST_UNCHECKED);
}

TEST_F(Peers, SettingTheSameTextInTheWindowFiresNothing) {
  box.setText("abc");
  int changes = 0;
  box.onChange = [&] { ++changes; };
  SetWindowTextW(window(box), L"abc");
  host().pump();
  EXPECT_EQ(changes, 0);
  SetWindowTextW(window(box), L"abcd");
  host().pump();
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(box.text(), "abcd");
}

TEST_F(Peers, CopyingStateIntoTheWindowsFiresNothing) {
  int events = 0;
  const auto count = [&] { ++events; };
  host();
  box.setText("x");
  combo.setItems({{"a", 1}, {"b", 2}});
  combo.setListIndex(1);
  list.setItems({{"a", 1}, {"b", 2}});
  list.setListIndex(0);
  bar.setRange(0, 9);
  box.onChange = combo.onChange = combo.onClick = list.onClick = bar.onChange = count;
  host().pump();
  EXPECT_EQ(SendMessageW(window(combo), CB_GETCURSEL, 0, 0), 1);
  EXPECT_EQ(SendMessageW(window(list), LB_GETCURSEL, 0, 0), 0);
  host().pump();
  EXPECT_EQ(events, 0);
}

TEST_F(Peers, ABoxOpenedFromChangeLosesNoKeyAndGivesTheKeyboardBack) {
  BoxAnswerer answerer(IDOK);
  box.onChange = [this] {
    if (box.text() == "a") MessageBoxW(host().handle(), L"text", L"title", MB_OK);
  };
  goTo(box);
  host().type(L"ab");
  EXPECT_EQ(box.text(), "ab");
  EXPECT_EQ(answerer.seen().size(), 1U);
  EXPECT_EQ(GetFocus(), window(box));
}

TEST_F(Peers, ABoxOpenedFromLostFocusLeavesTheFocusToTheSurface) {
  BoxAnswerer answerer(IDOK);
  box.onLostFocus = [this] {
    MessageBoxW(host().handle(), L"refused", L"title", MB_OK);
    box.setFocus();
  };
  goTo(box);
  goTo(other);
  EXPECT_TRUE(box.hasFocus());
  host().surface().takeFocus();
  EXPECT_EQ(GetFocus(), window(box));
  host().type(L"x");
  EXPECT_EQ(box.text(), "x");
  EXPECT_EQ(other.text(), "");
}

TEST_F(Peers, AButtonClickedAfterABoxInLostFocusIsNotLeftPressed) {
  BoxAnswerer answerer(IDOK);
  int clicks = 0;
  box.onLostFocus = [this] { MessageBoxW(host().handle(), L"text", L"title", MB_OK); };
  button.onClick = [&] { ++clicks; };
  goTo(box);
  goTo(button);
  EXPECT_TRUE(host().pumpUntil([&] { return clicks == 1; }));
  EXPECT_NE(GetCapture(), window(button));
  EXPECT_EQ(SendMessageW(window(button), BM_GETSTATE, 0, 0) & BST_PUSHED, 0);
}

TEST_F(Peers, AComboRefilledInItsClickKeepsTextAndChoice) {
  combo.setItems({{"one", 1}, {"two", 2}});
  combo.onClick = [this] {
    combo.setItems({{"uno", 1}, {"due", 2}, {"tre", 3}});
    combo.setText("tre");
    combo.onClick = {};
    combo.setListIndex(2);
  };
  host().click(window(combo), {10, 8});
  host().key(VK_DOWN);
  EXPECT_EQ(combo.text(), "tre");
  EXPECT_EQ(textOf(window(combo)), L"tre");
  EXPECT_EQ(SendMessageW(window(combo), CB_GETCURSEL, 0, 0), 2);
  EXPECT_EQ(SendMessageW(window(combo), CB_GETCOUNT, 0, 0), 3);
}

TEST_F(Peers, EnterInAnOpenListClosesItAndIsNoKeyPress) {
  combo.setItems({{"one", 1}, {"two", 2}});
  int keys = 0;
  combo.onKeyPress = [&](char32_t&) { ++keys; };
  host().click(window(combo), {10, 8});
  host().key(VK_F4);
  ASSERT_TRUE(SendMessageW(window(combo), CB_GETDROPPEDSTATE, 0, 0));
  host().key(VK_DOWN);
  host().key(VK_RETURN);
  EXPECT_FALSE(SendMessageW(window(combo), CB_GETDROPPEDSTATE, 0, 0));
  EXPECT_EQ(combo.text(), "one");
  EXPECT_EQ(keys, 0);
}

TEST_F(Peers, EscapeInAnOpenListPutsBackWhatTheWindowShowed) {
  combo.setItems({{"one", 1}, {"two", 2}});
  combo.setText("o");
  fixed.setItems({{"one", 1}, {"two", 2}});
  fixed.setListIndex(0);
  host().click(window(combo), {10, 8});
  host().key(VK_F4);
  host().key(VK_DOWN);
  host().key(VK_DOWN);
  host().key(VK_ESCAPE);
  EXPECT_FALSE(SendMessageW(window(combo), CB_GETDROPPEDSTATE, 0, 0));
  EXPECT_EQ(textOf(window(combo)), L"o");
  EXPECT_EQ(SendMessageW(window(combo), CB_GETCURSEL, 0, 0), -1);
  host().key(VK_TAB);
  ASSERT_TRUE(fixed.hasFocus());
  host().key(VK_F4);
  host().key(VK_DOWN);
  host().key(VK_ESCAPE);
  EXPECT_EQ(textOf(window(fixed)), L"one");
  EXPECT_EQ(SendMessageW(window(fixed), CB_GETCURSEL, 0, 0), 0);
}

TEST_F(Peers, AnOpenListShowsWhatWasTypedUntilALineIsPointedAt) {
  combo.setItems({{"one", 1}, {"two", 2}});
  host().click(window(combo), {10, 8});
  host().type(L"t");
  host().key(VK_F4);
  EXPECT_TRUE(SendMessageW(window(combo), CB_GETDROPPEDSTATE, 0, 0));
  EXPECT_EQ(textOf(window(combo)), L"t");
  EXPECT_EQ(combo.text(), "t");
  host().key(VK_F4);
  EXPECT_FALSE(combo.opened());
  EXPECT_EQ(textOf(window(combo)), L"t");
}

TEST_F(Peers, AListOpenedByCodeIsOpenInItsWindow) {
  combo.setItems({{"one", 1}, {"two", 2}});
  combo.onKeyPress = [this](char32_t& key) {
    if (key != U'\r') return;
    combo.setItems({{"tea", 1}, {"two", 2}, {"ten", 3}});
    combo.setText("t");
    combo.openList();
  };
  host().click(window(combo), {10, 8});
  host().type(L"t");
  host().key(VK_RETURN);
  EXPECT_TRUE(SendMessageW(window(combo), CB_GETDROPPEDSTATE, 0, 0));
  EXPECT_EQ(SendMessageW(window(combo), CB_GETCOUNT, 0, 0), 3);
  EXPECT_EQ(textOf(window(combo)), L"t");
  combo.closedUp();
  EXPECT_FALSE(SendMessageW(window(combo), CB_GETDROPPEDSTATE, 0, 0));
}

TEST_F(Peers, AListIsClosedWhenTheKeyboardLeavesAndNothingIsChosen) {
  combo.setItems({{"one", 1}, {"two", 2}});
  combo.setText("zz");
  int clicks = 0;
  combo.onClick = [&] { ++clicks; };
  host().click(window(combo), {10, 8});
  host().key(VK_F4);
  host().key(VK_DOWN);
  ASSERT_TRUE(combo.opened());
  SetFocus(host().field());
  host().pump();
  EXPECT_FALSE(combo.opened());
  EXPECT_EQ(textOf(window(combo)), L"zz");
  EXPECT_EQ(combo.text(), "zz");
  EXPECT_EQ(clicks, 0);
}

TEST_F(Peers, LinesFromOutsideGoAgain) {
  several.setItems({{"a", 1}, {"b", 2}});
  combo.setItems({{"one", 1}, {"two", 2}});
  HWND extended = window(several);
  SendMessageW(extended, LB_SETSEL, TRUE, 1);
  for (int i = 0; i < 200; ++i) {
    SendMessageW(extended, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(L"x"));
    SendMessageW(extended, LB_SETSEL, TRUE, -1);
    SendMessageW(GetParent(extended), WM_COMMAND, MAKEWPARAM(0, LBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(extended));
  }
  SendMessageW(window(combo), CB_DELETESTRING, 0, 0);
  host().pump();
  several.setSelected(0, true);
  EXPECT_EQ(SendMessageW(extended, LB_GETCOUNT, 0, 0), 2);
  EXPECT_EQ(SendMessageW(window(combo), CB_GETCOUNT, 0, 0), 2);
  EXPECT_EQ(several.listCount(), 2);
}

// The list inside a combo is a window of its own, which no peer sees.
TEST_F(Peers, LinesTakenBehindAPeersBackComeBack) {
  combo.setItems({{"one", 1}, {"two", 2}});
  COMBOBOXINFO info{};
  info.cbSize = sizeof info;
  ASSERT_TRUE(GetComboBoxInfo(window(combo), &info));
  SendMessageW(info.hwndList, LB_DELETESTRING, 0, 0);
  SendMessageW(GetParent(window(combo)), WM_COMMAND, MAKEWPARAM(0, CBN_SELCHANGE),
               reinterpret_cast<LPARAM>(window(combo)));
  host().pump();
  EXPECT_EQ(SendMessageW(window(combo), CB_GETCOUNT, 0, 0), 2);
  EXPECT_EQ(combo.listIndex(), -1);
}

TEST_F(Peers, WhatAWindowKeepsForItsOwnerIsNotLookedAt) {
  for (const Control* control : std::initializer_list<const Control*>{&box, &combo, &tabs}) {
    SetWindowLongPtrW(window(*control), GWLP_USERDATA, 0x1234);
  }
  goTo(box);
  host().type(L"x");
  EXPECT_EQ(box.text(), "x");
}

TEST_F(Peers, MessagesThatPointNowhereAreDropped) {
  const std::vector<UINT> messages{TCM_GETITEMRECT, TCM_GETITEMW,   TCM_SETITEMW,  TCM_INSERTITEMW,
                                   TCM_HITTEST,     TCM_ADJUSTRECT, TCM_DELETEITEM};
  for (const UINT message : messages) {
    EXPECT_EQ(SendMessageW(window(tabs), message, 0, 0x10), 0) << message;
  }
  EXPECT_EQ(SendMessageW(window(tabs), TCM_GETITEMCOUNT, 0, 0), 2);
  static const UINT name = RegisterWindowMessageW(L"WM_GETCONTROLNAME");
  EXPECT_EQ(SendMessageW(window(box), name, 100, 0x10), 0);
  SendMessageW(GetParent(window(box)), WM_NOTIFY, 0, 0x10);
  SendMessageW(GetParent(window(box)), WM_DRAWITEM, 0, 0x10);
  SendMessageW(window(box), WM_GETDLGCODE, 0, 0x10);
  EXPECT_TRUE(IsWindow(window(box)));
}

TEST_F(Peers, AListKnowsHowManyLinesItShows) {
  host();
  RECT client{};
  GetClientRect(window(list), &client);
  const auto height = static_cast<LONG>(SendMessageW(window(list), LB_GETITEMHEIGHT, 0, 0));
  EXPECT_EQ(list.linesInView(), client.bottom / height);
}

TEST_F(Peers, DisablingTheSurfaceDisablesNoWindow) {
  goTo(box);
  surface.setEnabled(false);
  EXPECT_TRUE(IsWindowEnabled(host().surface().handle()));
  EXPECT_TRUE(IsWindowEnabled(window(box)));
  EXPECT_EQ(GetFocus(), window(box));
  host().type(L"x");
  host().key(VK_DELETE);
  SendMessageW(window(box), WM_PASTE, 0, 0);
  goTo(other);
  EXPECT_EQ(textOf(window(box)), L"");
  EXPECT_EQ(GetFocus(), window(box));
  surface.setEnabled(true);
  host().type(L"y");
  EXPECT_EQ(box.text(), "y");
}

TEST_F(Peers, WindowsFollowWhatIsAroundTheirControls) {
  host();
  frame.setEnabled(false);
  EXPECT_FALSE(IsWindowEnabled(window(option)));
  frame.setEnabled(true);
  EXPECT_TRUE(IsWindowEnabled(window(option)));
  frame.setVisible(false);
  EXPECT_FALSE(IsWindowVisible(window(option)));
  frame.setVisible(true);
  EXPECT_TRUE(IsWindowVisible(window(option)));
  tabs.setTab(1);
  EXPECT_FALSE(IsWindowVisible(window(paged)));
  EXPECT_TRUE(IsWindowVisible(window(tabs.page(1))));
  EXPECT_EQ(SendMessageW(window(tabs), TCM_GETCURSEL, 0, 0), 1);
}

TEST_F(Peers, ADisabledTabCannotBeChosenByATool) {
  tabs.setTabEnabled(1, false);
  SendMessageW(window(tabs), TCM_SETCURFOCUS, 1, 0);
  host().pump();
  EXPECT_EQ(tabs.tab(), 0);
  EXPECT_EQ(SendMessageW(window(tabs), TCM_GETCURSEL, 0, 0), 0);
  tabs.setTabEnabled(1, true);
  SendMessageW(window(tabs), TCM_SETCURFOCUS, 1, 0);
  host().pump();
  EXPECT_EQ(tabs.tab(), 1);
}

TEST_F(Peers, TheFocusThatAToolGivesIsAUsersMove) {
  int lost = 0;
  box.onLostFocus = [&] { ++lost; };
  goTo(box);
  SetFocus(window(other));
  host().pump();
  EXPECT_EQ(lost, 1);
  EXPECT_TRUE(other.hasFocus());
}

TEST_F(Peers, TheKeyboardComingBackFromTheHostGoesWhereTheSurfaceHasItsFocus) {
  goTo(box);
  SetFocus(host().field());
  other.setFocus();  // by code meanwhile
  EXPECT_EQ(GetFocus(), host().field());
  SetFocus(window(box));  // as a dialog does with the window that it remembers
  host().pump();
  EXPECT_EQ(GetFocus(), window(other));
  SetFocus(host().field());
  SetFocus(host().surface().handle());
  host().pump();
  EXPECT_EQ(GetFocus(), window(other));
}

TEST_F(Peers, TheHostHearsOfTheKeyboardComingAndGoing) {
  std::vector<bool> told;
  host().surface().onKeyboard = [&](bool inside) { told.push_back(inside); };
  goTo(box);
  goTo(other);
  SetFocus(host().field());
  EXPECT_EQ(told, (std::vector<bool>{true, false}));
}

TEST_F(Peers, DialogCodesClaimJustWhatTheSurfaceWouldUse) {
  goTo(paged);
  const auto claims = [](WPARAM key) {
    MSG message{};
    message.hwnd = GetFocus();
    message.message = WM_KEYDOWN;
    message.wParam = key;
    const LRESULT code =
        SendMessageW(message.hwnd, WM_GETDLGCODE, key, reinterpret_cast<LPARAM>(&message));
    return (code & DLGC_WANTMESSAGE) != 0;
  };
  EXPECT_FALSE(claims(VK_TAB));  // the last field: Tab goes to the host
  EXPECT_TRUE(claims(VK_RETURN));
  EXPECT_FALSE(claims(VK_ESCAPE));
  surface.setCancelButton(&button);
  EXPECT_TRUE(claims(VK_ESCAPE));
  goTo(box);
  EXPECT_TRUE(claims(VK_TAB));
}

TEST_F(Peers, TranslateUsesOrLeavesAndDiscardsWhileDisabled) {
  goTo(box);
  const auto down = [this](WPARAM key) {
    MSG message{};
    message.hwnd = GetFocus();
    message.message = WM_KEYDOWN;
    message.wParam = key;
    return host().surface().translate(message);
  };
  EXPECT_TRUE(down(VK_TAB));
  EXPECT_TRUE(other.hasFocus());
  EXPECT_FALSE(down('A'));
  goTo(paged);
  EXPECT_FALSE(down(VK_TAB));
  EXPECT_TRUE(paged.hasFocus());
  surface.setEnabled(false);
  EXPECT_TRUE(down('A'));
}

TEST_F(Peers, AHandlerMayDestroyTheSurfacesWindow) {
  const std::vector<std::function<void()>> actions{[this] { host().click(window(button)); },
                                                   [this] {
                                                     goTo(box);
                                                     host().type(L"a");
                                                   },
                                                   [this] {
                                                     goTo(other);
                                                     host().type(L"a");
                                                   },
                                                   [this] {
                                                     goTo(paged);
                                                     goTo(list);
                                                   },
                                                   [this] { host().click(window(check)); }};
  for (const auto& act : actions) {
    const auto drop = [this] { host().dropSurface(); };
    button.onClick = box.onChange = paged.onLostFocus = check.onClick = drop;
    other.onKeyPress = [drop](char32_t&) { drop(); };
    list.setItems({{"a", 1}});
    ASSERT_TRUE(host().hasSurface());
    const HWND before = host().surface().handle();
    act();
    EXPECT_FALSE(host().hasSurface());
    EXPECT_FALSE(IsWindow(before));
    EXPECT_EQ(box.peer(), nullptr);
    button.onClick = box.onChange = paged.onLostFocus = check.onClick = {};
    other.onKeyPress = {};
    host_.reset();
  }
}

TEST_F(Peers, TheHostMayDestroyItsWindowWithinAHandler) {
  button.onClick = [this] { host().destroyWindow(); };
  host({}, TestHost::TopLevel::Own);
  const HWND field = window(box);
  SendMessageW(window(button), BM_CLICK, 0, 0);
  MSG message{};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
  EXPECT_FALSE(IsWindow(field));
  EXPECT_EQ(host().surface().handle(), nullptr);
  EXPECT_EQ(box.peer(), nullptr);
  box.setText("still an object");
  box.setFocus();
}

TEST_F(Peers, AnErrorInAHandlerEndsThatHandlerAlone) {
  button.onClick = [] { throw std::runtime_error("within a handler"); };
  int changes = 0;
  box.onChange = [&] { ++changes; };
  goTo(button);
  EXPECT_FALSE(surface.busy());
  goTo(box);
  host().type(L"a");
  EXPECT_EQ(changes, 1);
}

TEST_F(Peers, ListsAreFilledInOnePassWithTheirSelection) {
  std::vector<ListItem> items;
  for (int i = 0; i < 999; ++i) items.push_back({"line " + std::to_string(i), i});
  host();
  several.setItems(items);
  several.setSelected(3, true);
  several.setSelected(7, true);
  list.setItems(items);
  list.setListIndex(500);
  list.setTopIndex(495);
  EXPECT_EQ(SendMessageW(window(list), LB_GETCOUNT, 0, 0), 999);
  EXPECT_EQ(SendMessageW(window(list), LB_GETCURSEL, 0, 0), 500);
  EXPECT_EQ(SendMessageW(window(list), LB_GETTOPINDEX, 0, 0), 495);
  EXPECT_EQ(SendMessageW(window(several), LB_GETSELCOUNT, 0, 0), 2);
  EXPECT_GT(SendMessageW(window(several), LB_GETSEL, 7, 0), 0);
}

TEST_F(Peers, TheWindowsSelectionIsTheObjectsWhateverChanges) {
  constexpr int kLines = 12;
  several.setItems(std::vector<ListItem>(kLines, {"line", 0}));
  host();
  const auto expectSame = [this](const char* when) {
    for (int line = 0; line < kLines; ++line) {
      EXPECT_EQ(SendMessageW(window(several), LB_GETSEL, static_cast<WPARAM>(line), 0) > 0,
                several.selected(line))
          << when << ", line " << line;
    }
  };
  for (const int line : {0, 1, 2, 5, 7, 8, 11}) several.setSelected(line, true);
  expectSame("selected");
  for (const int line : {1, 2, 5, 8, 11}) several.setSelected(line, false);
  for (const int line : {3, 4, 9, 10}) several.setSelected(line, true);
  expectSame("changed");
  several.replaceItem(3, "another");
  several.setSelected(3, false);
  several.setSelected(6, true);
  expectSame("with a line replaced");
  for (int line = 0; line < kLines; ++line) several.setSelected(line, line % 2 == 0);
  expectSame("every other");
  for (int line = 0; line < kLines; ++line) several.setSelected(line, false);
  expectSame("none");
}

TEST_F(Peers, TheTopLineIsTheOneSetLast) {
  list.setItems(std::vector<ListItem>(99, {"line", 0}));
  host();
  list.setListIndex(50);
  list.setTopIndex(20);
  EXPECT_EQ(SendMessageW(window(list), LB_GETTOPINDEX, 0, 0), 20);
  EXPECT_EQ(SendMessageW(window(list), LB_GETCURSEL, 0, 0), 50);
}

// A handler that goes through a long list, line by line, must not send the window's worth of
// messages for each of them.
TEST_F(Peers, ManyLinesAreSelectedAndDeselectedByCodeWithoutDelay) {
  constexpr int kLines = 5000;
  constexpr ULONGLONG kPatience =
      1000;  // milliseconds; each line at once would take many times that
  several.setItems(std::vector<ListItem>(kLines, {"line", 0}));
  ASSERT_EQ(SendMessageW(window(several), LB_GETCOUNT, 0, 0), kLines);
  const ULONGLONG start = GetTickCount64();
  for (const bool selected : {true, false}) {
    for (int line = 0; line < kLines; ++line) several.setSelected(line, selected);
    EXPECT_EQ(SendMessageW(window(several), LB_GETSELCOUNT, 0, 0), selected ? kLines : 0);
  }
  const ULONGLONG taken = GetTickCount64() - start;
  EXPECT_LT(taken, kPatience);
}

TEST_F(Peers, AHiddenListStaysHiddenWhenItIsFilled) {
  list.setVisible(false);
  host();
  list.setItems({{"a", 1}, {"b", 2}});
  EXPECT_EQ(SendMessageW(window(list), LB_GETCOUNT, 0, 0), 2);
  EXPECT_FALSE(IsWindowVisible(window(list)));
}

TEST_F(Peers, TheUsersScrollingOfAListIsKnownToTheObject) {
  for (int i = 0; i < 99; ++i) list.addItem(std::to_string(i));
  SendMessageW(window(list), WM_VSCROLL, SB_PAGEDOWN, 0);
  EXPECT_GT(list.topIndex(), 0);
  EXPECT_EQ(SendMessageW(window(list), LB_GETTOPINDEX, 0, 0), list.topIndex());
}

TEST_F(Peers, TwipsFollowTheDpi) {
  win32::Ambience ambience;
  ambience.dpi = 144;
  box.setPlace({150, 300, 1500, 300});
  host_.emplace(surface, ambience);
  RECT place{};
  GetWindowRect(window(box), &place);
  EXPECT_EQ(place.left, 15);
  EXPECT_EQ(place.top, 30);
  EXPECT_EQ(place.right - place.left, 150);
  EXPECT_EQ(place.bottom - place.top, 30);
  const auto font = reinterpret_cast<HFONT>(SendMessageW(window(box), WM_GETFONT, 0, 0));
  LOGFONTW face{};
  GetObjectW(font, sizeof face, &face);
  EXPECT_EQ(face.lfHeight, -16);  // 8 points
  ambience.dpi = 192;
  host().surface().setAmbience(ambience);
  GetWindowRect(window(box), &place);
  EXPECT_EQ(place.right - place.left, 200);
}

TEST_F(Peers, ACombosFieldIsAsHighAsATextBoxAtEveryDpi) {
  host();
  box.setPlace({150, 300, 1500, 315});
  combo.setPlace({1800, 300, 1500, 315});
  for (const unsigned dpi : {96U, 144U, 192U, 96U}) {
    win32::Ambience ambience;
    ambience.dpi = dpi;
    host().surface().setAmbience(ambience);
    RECT text{};
    GetWindowRect(window(box), &text);
    RECT choice{};
    GetWindowRect(window(combo), &choice);
    EXPECT_EQ(text.bottom - text.top,
              MulDiv(615, static_cast<int>(dpi), 1440) - MulDiv(300, static_cast<int>(dpi), 1440));
    EXPECT_EQ(choice.top, text.top);
    EXPECT_EQ(choice.bottom, text.bottom) << dpi;
  }
}

TEST_F(Peers, ATextBoxWritesItsLineInItsMiddle) {
  host();
  box.setPlace({150, 300, 1500, 900});
  RECT outside{};
  GetWindowRect(window(box), &outside);
  RECT line{};
  GetClientRect(window(box), &line);
  MapWindowPoints(window(box), nullptr, reinterpret_cast<POINT*>(&line), 2);
  HDC context = GetDC(window(box));
  const HGDIOBJ before =
      SelectObject(context, reinterpret_cast<HFONT>(SendMessageW(window(box), WM_GETFONT, 0, 0)));
  TEXTMETRICW metrics{};
  GetTextMetricsW(context, &metrics);
  SelectObject(context, before);
  ReleaseDC(window(box), context);
  const LONG above = line.top - outside.top;
  const LONG below = outside.bottom - (line.top + metrics.tmHeight);
  EXPECT_NEAR(static_cast<double>(above), static_cast<double>(below), 1.0);
  const LPARAM inSpare = MAKELPARAM(outside.left + 20, outside.top + 6);
  EXPECT_EQ(SendMessageW(window(box), WM_NCHITTEST, 0, inSpare), HTCLIENT);
}

// Undone into another body, it would be saved with that.
TEST_F(Peers, WhatWasTypedCannotBeBroughtBackIntoATextThatIsRenewed) {
  goTo(box);
  host().type(L"ab");
  ASSERT_EQ(box.text(), "ab");
  ASSERT_TRUE(SendMessageW(window(box), EM_CANUNDO, 0, 0));
  box.renewText("ab");
  EXPECT_FALSE(SendMessageW(window(box), EM_CANUNDO, 0, 0));
  SendMessageW(window(box), WM_UNDO, 0, 0);
  EXPECT_EQ(box.text(), "ab");
}

TEST_F(Peers, EachTabLeavesItsCaptionSpareWidth) {
  SSTab row(&surface, "Ong_Row", {"Un", "Participation béné&ficiaire", "Trois"});
  row.setPlace({0, 4500, 6000, 1500});
  host();
  HDC context = GetDC(window(row));
  const HGDIOBJ before =
      SelectObject(context, reinterpret_cast<HFONT>(SendMessageW(window(row), WM_GETFONT, 0, 0)));
  for (int tab = 0; tab < row.tabs(); ++tab) {
    const std::wstring caption = win32::wide(withoutMnemonic(row.page(tab).caption()));
    SIZE needed{};
    GetTextExtentPoint32W(context, caption.c_str(), static_cast<int>(caption.size()), &needed);
    RECT item{};
    SendMessageW(window(row), TCM_GETITEMRECT, static_cast<WPARAM>(tab),
                 reinterpret_cast<LPARAM>(&item));
    EXPECT_GE((item.right - item.left) * 100, needed.cx * 115) << row.page(tab).caption();
  }
  SelectObject(context, before);
  ReleaseDC(window(row), context);
  host_.reset();
}

TEST_F(Peers, APageLeavesTheTabsTheirBorder) {
  tabs.page(0).setPlace({0, 0, 30000, 30000});
  RECT outside{};
  GetClientRect(window(tabs), &outside);
  RECT page{};
  GetWindowRect(window(tabs.page(0)), &page);
  MapWindowPoints(nullptr, window(tabs), reinterpret_cast<POINT*>(&page), 2);
  EXPECT_GT(page.left, outside.left);
  EXPECT_LT(page.right, outside.right);
  EXPECT_LT(page.bottom, outside.bottom);
}

TEST_F(Peers, ATabIsPaintedAgainWhenItIsEnabledOrDisabled) {
  host().pump();
  for (const bool enabled : {false, true}) {
    ValidateRect(window(tabs), nullptr);
    tabs.setEnabled(enabled);
    EXPECT_TRUE(GetUpdateRect(window(tabs), nullptr, FALSE));
    ValidateRect(window(tabs), nullptr);
    tabs.setTabEnabled(1, enabled);
    EXPECT_TRUE(GetUpdateRect(window(tabs), nullptr, FALSE));
  }
}

TEST_F(Peers, AControlsOwnFontGoesBeforeTheAmbience) {
  list.setFont({"Courier New", 9, true});
  LOGFONTW face{};
  const auto font = reinterpret_cast<HFONT>(SendMessageW(window(list), WM_GETFONT, 0, 0));
  GetObjectW(font, sizeof face, &face);
  EXPECT_STREQ(face.lfFaceName, L"Courier New");
  EXPECT_EQ(face.lfHeight, -12);
  EXPECT_EQ(face.lfWeight, FW_BOLD);
}

TEST_F(Peers, TheBackColourIsTheAmbiences) {
  win32::Ambience ambience;
  ambience.backColor = RGB(1, 2, 3);
  host(ambience);
  const HDC context = GetDC(window(label));
  HWND surfaceWindow = host().surface().handle();
  label.setColor(kRed);
  SendMessageW(surfaceWindow, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(context),
               reinterpret_cast<LPARAM>(window(label)));
  EXPECT_EQ(GetBkColor(context), RGB(1, 2, 3));
  EXPECT_EQ(GetTextColor(context), RGB(255, 0, 0));
  ReleaseDC(window(label), context);
}

TEST_F(Peers, TheClassStaysForTheSurfacesOfOtherThreads) {
  host();
  host_.reset();
  WNDCLASSEXW kind{};
  kind.cbSize = sizeof kind;
  EXPECT_TRUE(GetClassInfoExW(GetModuleHandleW(nullptr), L"TessalineSurface", &kind));
  host();
  EXPECT_NE(window(box), nullptr);
}

TEST_F(Peers, DesignModeIsDrawnWithoutWindows) {
  layOut(surface);
  label.setVisible(false);
  const HDC screen = GetDC(nullptr);
  const HDC memory = CreateCompatibleDC(screen);
  const HBITMAP bitmap = CreateCompatibleBitmap(screen, 300, 500);
  const HGDIOBJ before = SelectObject(memory, bitmap);
  win32::Ambience ambience;
  ambience.backColor = RGB(10, 20, 30);
  win32::SurfaceWindow::draw(surface, memory, {0, 0, 300, 500}, ambience);
  EXPECT_EQ(GetPixel(memory, 1, 1), RGB(10, 20, 30));
  const Place& at = box.place();
  const int x = MulDiv(at.left + at.width / 2, 300, surface.place().width);
  const int y = MulDiv(at.top + at.height / 2, 500, surface.place().height);
  EXPECT_EQ(GetPixel(memory, x, y), GetSysColor(COLOR_WINDOW));
  SelectObject(memory, before);
  DeleteObject(bitmap);
  DeleteDC(memory);
  ReleaseDC(nullptr, screen);
}

}  // namespace
}  // namespace toolkit::test
