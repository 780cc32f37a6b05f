// Which colours can be read on which.
#pragma once

#include "toolkit/Control.h"

namespace toolkit {

// How far two colours are apart for the eye: from 1 to 21, as the accessibility guidelines for the
// web count it.
double contrast(Color one, Color other);

// What text needs, and what text may do with that nobody can use at the moment.
inline constexpr double kReadable = 4.5;
inline constexpr double kDiscernible = 3.0;

// The colour itself where its contrast is enough, else the nearest shade of it, lighter or darker,
// whose is. `least` is at most 4.58, which black or white has on any ground.
Color readable(Color text, Color ground, double least = kReadable);

}  // namespace toolkit
