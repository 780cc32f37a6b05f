#include "toolkit/Contrast.h"

#include <algorithm>
#include <cmath>

namespace toolkit {

namespace {

constexpr Color kWhite = 0xFFFFFF;

unsigned channel(Color color, int shift) { return (color >> shift) & 0xFF; }

double linear(unsigned level) {
  const double share = level / 255.0;
  return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

double luminance(Color color) {
  return 0.2126 * linear(channel(color, 16)) + 0.7152 * linear(channel(color, 8)) +
         0.0722 * linear(channel(color, 0));
}

Color mixed(Color from, Color to, unsigned step, unsigned steps) {
  Color color = 0;
  for (const int shift : {16, 8, 0}) {
    const unsigned level =
        (channel(from, shift) * (steps - step) + channel(to, shift) * step) / steps;
    color |= level << shift;
  }
  return color;
}

}  // namespace

double contrast(Color one, Color other) {
  const double first = luminance(one);
  const double second = luminance(other);
  return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

Color readable(Color text, Color ground, double least) {
  constexpr unsigned kSteps = 16;
  const Color end = contrast(kWhite, ground) > contrast(kBlack, ground) ? kWhite : kBlack;
  for (unsigned step = 0; step < kSteps; ++step) {
    const Color shade = mixed(text, end, step, kSteps);
    if (contrast(shade, ground) >= least) return shade;
  }
  return end;
}

}  // namespace toolkit
