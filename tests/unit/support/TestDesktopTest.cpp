// What a failing test says of boxes and of its own place.
#include "tests/support/TestDesktop.h"

#include <gtest/gtest-spi.h>

#include "toolkit/SSTab.h"
#include "toolkit/Trap.h"

namespace {

using testing_support::boxCount;
using testing_support::noBoxes;
using testing_support::TestDesktop;
using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;
using toolkit::headless::Entry;
using toolkit::headless::User;

// A surface with a button that asks, within a trap as handlers are, on the second of two pages.
class Asked : public testing::Test {
 protected:
  Asked() {
    tabs_.setTab(1);
    ask_.onClick = [this] {
      toolkit::quietly("Cmd_Ask", [this] {
        desktop_.messageBox("Vraiment ?", "Title", Buttons::YesNo, Icon::Question);
        after_ = true;
      });
    };
    desktop_.follow([this] { return &user_; });
  }
  bool press(toolkit::headless::Caller at = toolkit::headless::Caller::here()) {
    return user_.click(ask_, at);
  }

  TestDesktop desktop_;
  toolkit::Surface surface_{"Surface"};
  toolkit::SSTab tabs_{&surface_, "Ong", {"&Coordonnées", "&Règles"}};
  toolkit::CommandButton ask_{&tabs_.page(1), "Cmd_Ask", "Ask"};
  User user_{surface_};
  bool after_ = false;
};

const std::string kWhere = "tab \"Règles\", focus Cmd_Ask";

TEST_F(Asked, AQuestionWithoutAnAnswerFailsAtTheLineOfTheVerbThroughATrap) {
  testing::TestPartResultArray results;
  int line = 0;
  {
    const testing::ScopedFakeTestPartResultReporter reporter(&results);
    line = __LINE__ + 1;
    press();
  }
  ASSERT_EQ(results.size(), 1);
  const testing::TestPartResult& result = results.GetTestPartResult(0);
  EXPECT_EQ(result.line_number(), line);
  EXPECT_STREQ(result.file_name(), __FILE__);
  EXPECT_NE(std::string(result.message()).find("No answer left for: Vraiment ?\n" + kWhere),
            std::string::npos)
      << result.message();
  EXPECT_FALSE(after_);
}

TEST_F(Asked, ABoxTellsItsTextIconButtonsTabAndFocus) {
  desktop_.answer(Answer::Yes);
  press();
  EXPECT_STREQ(
      noBoxes("", desktop_.takeBoxes()).message(),
      ("Nothing should have been shown:\n  box «Vraiment ?», question, Yes/No, " + kWhere).c_str());
  EXPECT_TRUE(noBoxes("", desktop_.takeBoxes()));
}

TEST_F(Asked, AWrongNumberOfBoxesTellsThem) {
  desktop_.answer(Answer::Yes);
  press();
  const std::vector<Entry> boxes = desktop_.takeBoxes();
  EXPECT_TRUE(boxCount("", "", boxes, 1));
  EXPECT_STREQ(boxCount("", "", boxes, 2).message(),
               ("1 boxes instead of 2:\n  box «Vraiment ?», question, Yes/No, " + kWhere).c_str());
  EXPECT_STREQ(boxCount("", "", {}, 1).message(), "0 boxes instead of 1");
}

}  // namespace
