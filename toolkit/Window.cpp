#include "toolkit/Window.h"

#include <utility>

namespace toolkit {

Window::Window(std::string name, std::string_view caption, int width, int height)
    : surface_(std::move(name)), caption_(caption), width_(width), height_(height) {}

}  // namespace toolkit
