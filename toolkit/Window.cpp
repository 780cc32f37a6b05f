#include "toolkit/Window.h"

#include <utility>

namespace toolkit {

Window::Window(std::string name, std::string_view caption, int width, int height)
    : surface_(std::move(name)), caption_(caption), width_(width), height_(height) {}

void Window::userClose() {
  if (!open_) return;
  if (surface_.cancelable()) {
    surface_.key({.key = Key::Escape});
    return;
  }
  if (!onCloseAsked) return;
  const Surface::Action action(surface_, Surface::Action::By::User);
  if (action.accepted()) onCloseAsked();
}

}  // namespace toolkit
