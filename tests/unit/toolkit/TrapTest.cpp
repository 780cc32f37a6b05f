#include "toolkit/Trap.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

#include "text/Discreet.h"
#include "toolkit/ControlClosed.h"
#include "toolkit/Trace.h"

namespace toolkit {
namespace {

void setVariable(const char* name, const char* value) {
#ifdef _WIN32
  _putenv_s(name, value);
#else
  setenv(name, value, 1);
#endif
}

void setTrace(const char* path) { setVariable("TESSALINE_TRACE", path); }

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

TEST_F(Trap, TracingLetsTheErrorPassOn) {
  EXPECT_THROW(tracing("Cmd_Supprimer_Click", [] { throw std::invalid_argument("no"); }),
               std::invalid_argument);
  EXPECT_EQ(traced(), "Cmd_Supprimer_Click: no\n");
  EXPECT_THROW(tracing("Procedure", [] { throw ControlClosed(); }), ControlClosed);
}

class DiscreetError : public std::runtime_error, public text::Discreet {
 public:
  DiscreetError() : std::runtime_error("Mme Martin is locked") {}
  std::string withoutText() const override { return "ReadRecord 0x80040003"; }
};

TEST_F(Trap, OfADiscreetErrorTheTextIsTracedOnlyWhenTextsAreWanted) {
  const auto fails = [] { throw DiscreetError(); };
  quietly("A", fails);
  for (const char* unwanted : {"0", "yes", ""}) {
    setVariable("TESSALINE_TRACE_TEXTS", unwanted);
    quietly("B", fails);
  }
  setVariable("TESSALINE_TRACE_TEXTS", "1");
  quietly("C", fails);
  setVariable("TESSALINE_TRACE_TEXTS", "");
  EXPECT_EQ(traced(),
            "A: ReadRecord 0x80040003\nB: ReadRecord 0x80040003\nB: ReadRecord 0x80040003\n"
            "B: ReadRecord 0x80040003\nC: Mme Martin is locked\n");
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
