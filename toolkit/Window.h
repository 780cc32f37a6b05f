#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "toolkit/Surface.h"

namespace toolkit {

// A small form of the system's own: a surface with a caption and a client size in twips.
class Window {
 public:
  Window(std::string name, std::string_view caption, int width, int height);
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;
  ~Window() = default;

  Surface& surface() { return surface_; }
  const std::string& caption() const { return caption_; }
  int width() const { return width_; }
  int height() const { return height_; }

  bool open() const { return open_; }
  void setOpen(bool open) { open_ = open; }  // by the desktop alone

  // The user closes it by its title bar (a form with a cancel button is clicked there instead).
  // Without a handler the form stays open.
  std::function<void()> onCloseAsked;
  // Would closing it do something, when it opens: only then its title bar has a close button.
  bool closable() const { return onCloseAsked || surface_.cancelable(); }
  // What the user does there. Dropped while the form takes no input.
  void userClose();

 private:
  Surface surface_;
  std::string caption_;
  int width_;
  int height_;
  bool open_ = false;
};

}  // namespace toolkit
