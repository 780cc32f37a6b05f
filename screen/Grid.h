// The grid that all pages keep to: heights, columns, and how fields stand on them. Twips.
#pragma once

#include "toolkit/Control.h"

namespace screen::grid {

inline constexpr int kFieldHeight = 315;
inline constexpr int kLabelHeight = 225;
inline constexpr int kLabelDrop = 75;  // brings a label's text to the line of the text in its field
inline constexpr int kChoiceHeight = 255;  // of an option or check box
inline constexpr int kButtonHeight = 375;
inline constexpr int kHeadHeight = 225;  // from a heading's top to that of the list below it
inline constexpr int kEndHead = 300;     // width of the heading of a bracket's end
inline constexpr int kRow = 420;         // from field to field
inline constexpr int kChoiceRow = 300;   // from option to option
// Of a list box that shows twelve rows of the fixed-pitch font, its border included.
inline constexpr int kTwelveRows = 12 * 225 + 60;

// Frames stand this far from the page's left edge, so the fields in them are moved back by as much
// to line up with those on the page itself.
inline constexpr int kFrameLeft = 240;
inline constexpr int kFrameWidth = 10560;
inline constexpr int kFrameEnd = kFrameLeft + kFrameWidth;
inline constexpr int kFrameFoot = 180;  // below the last thing in a frame
inline constexpr int kGap = 120;        // between neighbours
inline constexpr int kLabels = 420;     // left of the labels, from the page's edge
inline constexpr int kFields = 2700;
inline constexpr int kFieldsEnd = 10620;
inline constexpr int kLabelInFrame = kLabels - kFrameLeft;
inline constexpr int kInFrame = kFields - kFrameLeft;
inline constexpr int kInFrameEnd = kFieldsEnd - kFrameLeft;
inline constexpr int kLabelWidth = kFields - kLabels - 60;

inline void field(toolkit::Control& control, int left, int top, int width) {
  control.setPlace({left, top, width, kFieldHeight});
}

// The label of the field that stands at this top.
inline void label(toolkit::Control& control, int left, int top, int width) {
  control.setPlace({left, top + kLabelDrop, width, kLabelHeight});
}

// The heading of a list.
inline void head(toolkit::Control& control, int left, int top, int width) {
  control.setPlace({left, top, width, kLabelHeight});
}

// An option or check box.
inline void choice(toolkit::Control& control, int left, int top, int width) {
  control.setPlace({left, top, width, kChoiceHeight});
}

inline void button(toolkit::Control& control, int left, int top, int width) {
  control.setPlace({left, top, width, kButtonHeight});
}

}  // namespace screen::grid
