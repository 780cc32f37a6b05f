#include "toolkit/Frame.h"

#include <utility>

namespace toolkit {

Frame::Frame(Container* parent, std::string name, std::string_view caption)
    : Container(parent, Kind::Frame, std::move(name)) {
  setCaption(caption);
}

Label::Label(Container* parent, std::string name, std::string_view caption)
    : Control(parent, Kind::Label, std::move(name)) {
  setCaption(caption);
}

void Label::setCentered(bool centered) {
  if (centered == centered_) return;
  centered_ = centered;
  changed(Aspect::Style);
}

}  // namespace toolkit
