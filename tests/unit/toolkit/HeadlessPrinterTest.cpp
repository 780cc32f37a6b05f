#include "toolkit/headless/HeadlessPrinter.h"

#include <gtest/gtest.h>

namespace toolkit::headless {
namespace {

TEST(HeadlessPrinter, ALineEndGoesToTheLeftOfTheNextLine) {
  HeadlessPrinter printer;
  printer.setFontSize(10);
  printer.setCurrentX(500);
  printer.setCurrentY(1000);
  printer.print("abc");
  EXPECT_EQ(printer.currentX(), 0);
  EXPECT_EQ(printer.currentY(), 1240);
  ASSERT_EQ(printer.current().pieces.size(), 1U);
  EXPECT_EQ(printer.current().pieces[0].x, 500);
  EXPECT_EQ(printer.current().pieces[0].y, 1000);
}

TEST(HeadlessPrinter, WithoutALineEndThePositionStaysAfterTheText) {
  HeadlessPrinter printer;
  printer.setFontSize(10);
  printer.print("été", Printer::LineEnd::Stay);
  EXPECT_EQ(printer.currentX(), 360);
  EXPECT_EQ(printer.currentY(), 0);
  EXPECT_EQ(printer.textWidth("été"), 360);
}

TEST(HeadlessPrinter, TakesAPrintableSize) {
  HeadlessPrinter printer;
  EXPECT_EQ(printer.pageWidth(), 11906);
  EXPECT_EQ(printer.pageHeight(), 16838);
  printer.setPrintableSize(5000, 4000);
  EXPECT_EQ(printer.pageWidth(), 5000);
  EXPECT_EQ(printer.pageHeight(), 4000);
}

TEST(HeadlessPrinter, AJobHasTheTitleThatStoodWhenItBegan) {
  HeadlessPrinter printer;
  printer.print("untitled");
  printer.endDoc();
  printer.setTitle("first");
  printer.print("a");
  printer.setTitle("second");
  printer.newPage();
  printer.endDoc();
  printer.newPage();
  printer.endDoc();
  ASSERT_EQ(printer.jobs().size(), 3U);
  EXPECT_EQ(printer.jobs()[0].title, "");
  EXPECT_EQ(printer.jobs()[1].title, "first");
  EXPECT_EQ(printer.jobs()[2].title, "second");
}

TEST(HeadlessPrinter, WritesDownTheFontOfEachPiece) {
  HeadlessPrinter printer;
  printer.setFontName("Arial");
  printer.setFontSize(14);
  printer.setBold(true);
  printer.print("title", Printer::LineEnd::Stay);
  printer.setBold(false);
  printer.setUnderline(true);
  printer.print("text");
  const HeadlessPrinter::Job& job = printer.current();
  ASSERT_EQ(job.pieces.size(), 2U);
  EXPECT_EQ(job.pieces[0].fontName, "Arial");
  EXPECT_EQ(job.pieces[0].fontSize, 14);
  EXPECT_TRUE(job.pieces[0].bold);
  EXPECT_FALSE(job.pieces[0].underline);
  EXPECT_TRUE(job.pieces[1].underline);
}

TEST(HeadlessPrinter, ANewPageStartsAtItsUpperLeftCorner) {
  HeadlessPrinter printer;
  printer.print("one");
  printer.newPage();
  EXPECT_EQ(printer.currentX(), 0);
  EXPECT_EQ(printer.currentY(), 0);
  printer.print("two");
  printer.endDoc();
  ASSERT_EQ(printer.jobs().size(), 1U);
  EXPECT_EQ(printer.jobs()[0].pages, 2);
  EXPECT_EQ(printer.jobs()[0].pieces[0].page, 1);
  EXPECT_EQ(printer.jobs()[0].pieces[1].page, 2);
}

TEST(HeadlessPrinter, AJobWithoutAnythingOnItPrintsNothing) {
  HeadlessPrinter printer;
  printer.endDoc();
  EXPECT_TRUE(printer.jobs().empty());
  printer.print("one");
  printer.endDoc();
  printer.endDoc();
  EXPECT_EQ(printer.jobs().size(), 1U);
  EXPECT_EQ(printer.currentY(), 0);
}

}  // namespace
}  // namespace toolkit::headless
