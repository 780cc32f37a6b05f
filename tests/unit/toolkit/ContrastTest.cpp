#include "toolkit/Contrast.h"

#include <gtest/gtest.h>

namespace toolkit {
namespace {

constexpr Color kWhite = 0xFFFFFF;

TEST(Contrast, IsThatOfTheGuidelines) {
  EXPECT_NEAR(contrast(kBlack, kWhite), 21, 0.001);
  EXPECT_NEAR(contrast(kWhite, kBlack), 21, 0.001);
  EXPECT_NEAR(contrast(kWhite, kWhite), 1, 0.001);
  EXPECT_NEAR(contrast(0x777777, kWhite), 4.48, 0.005);
  EXPECT_NEAR(contrast(0x767676, kWhite), 4.54, 0.005);
  EXPECT_NEAR(contrast(kRed, kWhite), 4.00, 0.005);
}

TEST(Contrast, WhatCanBeReadIsLeftAsItIs) {
  EXPECT_EQ(readable(kBlack, kWhite), kBlack);
  EXPECT_EQ(readable(0x767676, kWhite), 0x767676U);
  EXPECT_EQ(readable(kRed, kBlack), kRed);
}

TEST(Contrast, WhatCannotBecomesDarkerOnALightGroundAndLighterOnADarkOne) {
  const Color onLight = readable(kRed, kWhite);
  EXPECT_GE(contrast(onLight, kWhite), kReadable);
  EXPECT_LT(onLight >> 16, 0xFFU);
  EXPECT_EQ(onLight & 0xFFFF, 0U);
  const Color onDark = readable(0x600000, kBlack);
  EXPECT_GE(contrast(onDark, kBlack), kReadable);
  EXPECT_GT(onDark & 0xFF, 0U);
}

TEST(Contrast, EveryGroundHasAReadableShadeOfEveryText) {
  constexpr unsigned kStep = 0x33;
  for (unsigned ground = 0; ground < 216; ++ground) {
    const Color back =
        (ground / 36) * kStep << 16 | (ground / 6 % 6) * kStep << 8 | ground % 6 * kStep;
    for (const Color text : {kBlack, kWhite, kRed, Color{0x808080}, back}) {
      EXPECT_GE(contrast(readable(text, back), back), kReadable) << std::hex << text << " " << back;
      EXPECT_GE(contrast(readable(text, back, kDiscernible), back), kDiscernible);
    }
  }
}

TEST(Contrast, LessIsAskedOfWhatNobodyCanUse) {
  constexpr Color kGray = 0x808080;
  EXPECT_EQ(readable(kGray, kWhite, kDiscernible), kGray);
  EXPECT_NE(readable(kGray, kWhite), kGray);
}

}  // namespace
}  // namespace toolkit
