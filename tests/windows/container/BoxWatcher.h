// Sees the message boxes of this thread while they are open, checks them and answers.
#pragma once

#include <windows.h>

#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace container {

// What a box showed.
struct Box {
  std::wstring title;
  std::wstring text;
  std::wstring icon;     // "exclamation", "question", "information", "error", "" for none
  std::wstring buttons;  // their answers: "OK", "YESNO", "YESNOCANCEL", "OKCANCEL"
  std::wstring tab;      // the tab in front as it opened; "" when the owner has none
  HWND owner = nullptr;
};

// One at a time. A box that nobody expected is kept as an error and answered by its last button.
class BoxWatcher {
 public:
  BoxWatcher();
  BoxWatcher(const BoxWatcher&) = delete;
  BoxWatcher& operator=(const BoxWatcher&) = delete;
  ~BoxWatcher();

  // The next box shows this text and is answered with IDOK, IDYES, IDNO or IDCANCEL.
  void expect(std::wstring text, std::wstring icon, std::wstring buttons, int answer);
  // The same, but what happens instead of an answer is up to the test; the box is not closed.
  void expect(std::wstring text, std::wstring icon, std::wstring buttons,
              std::function<void(HWND box)> instead);

  // From now on every box is answered so when it offers that, else by its last button; what it
  // shows is only kept.
  void answerAll(int answer) { all_ = answer; }
  // Called with each box just before it is answered.
  std::function<void()> onBox;

  // Every box has this owner; null: not looked at.
  void setOwner(HWND owner) { owner_ = owner; }

  const std::vector<Box>& seen() const { return seen_; }
  // Boxes that were not as expected, and expected ones that did not come; empty when all is well.
  std::string report() const;

 private:
  struct Expected {
    std::wstring text;
    std::wstring icon;
    std::wstring buttons;
    int answer = 0;
    std::function<void(HWND box)> instead;
  };

  static void CALLBACK tick(HWND window, UINT message, UINT_PTR id, DWORD time);
  void look();
  void meet(HWND box);

  UINT_PTR timer_ = 0;
  HWND owner_ = nullptr;
  HWND met_ = nullptr;
  int all_ = 0;
  std::deque<Expected> expected_;
  std::vector<Box> seen_;
  std::string errors_;
};

// Presses the button of a box that gives this answer.
void press(HWND box, int answer);

std::string narrow(const std::wstring& text);  // UTF-8

}  // namespace container
