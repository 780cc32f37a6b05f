#include "toolkit/Trap.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

#include "toolkit/ControlClosed.h"
#include "toolkit/Trace.h"

namespace toolkit {
namespace {

void setTrace(const char* path) {
#ifdef _WIN32
  _putenv_s("TESSALINE_TRACE", path);
#else
  setenv("TESSALINE_TRACE", path, 1);
#endif
}

class Trap : public ::testing::Test {
 protected:
  void SetUp() override {
    std::remove(path.c_str());
    setTrace(path.c_str());
  }
  void TearDown() override {
    setTrace("");
    std::remove(path.c_str());
  }
  std::string traced() const {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  std::string path = ::testing::TempDir() + "tessaline_trap_test.log";
};

TEST_F(Trap, ResumeNextGoesOnAfterAStepThatFails) {
  std::string done;
  EXPECT_FALSE(resumeNext(
      "Cmd_Save_Click",
      {[&] { done += "1"; }, [] { throw std::runtime_error("no store"); }, [&] { done += "3"; }}));
  EXPECT_EQ(done, "13");
  EXPECT_EQ(traced(), "Cmd_Save_Click: no store\n");
}

TEST_F(Trap, ResumeNextIsTrueWhenEveryStepSucceeded) {
  EXPECT_TRUE(resumeNext("Procedure", {[] {}, [] {}}));
  EXPECT_TRUE(resumeNext("Procedure", {}));
  EXPECT_EQ(traced(), "");
}

TEST_F(Trap, ControlClosedPassesThroughResumeNextAndStopsIt) {
  bool reached = false;
  EXPECT_THROW(resumeNext("Procedure", {[] { throw ControlClosed(); }, [&] { reached = true; }}),
               ControlClosed);
  EXPECT_FALSE(reached);
}

TEST_F(Trap, QuietlyEndsTheHandlerAtItsFirstError) {
  EXPECT_TRUE(quietly("Procedure", [] {}));
  EXPECT_FALSE(quietly("Procedure", [] { throw std::invalid_argument("two\nlines"); }));
  EXPECT_EQ(traced(), "Procedure: two lines\n");
}

TEST_F(Trap, ControlClosedPassesThroughQuietly) {
  EXPECT_THROW(quietly("Procedure", [] { throw ControlClosed(); }), ControlClosed);
}

TEST_F(Trap, TheTraceAppendsLineAfterLine) {
  trace("A", "one");
  trace("B", "two");
  EXPECT_EQ(traced(), "A: one\nB: two\n");
}

TEST_F(Trap, WithoutAFileNothingIsTraced) {
  setTrace("");
  trace("A", "one");
  EXPECT_EQ(traced(), "");
  setTrace((path + "/absent/file").c_str());
  EXPECT_FALSE(quietly("Procedure", [] { throw std::runtime_error("still quiet"); }));
}

}  // namespace
}  // namespace toolkit
