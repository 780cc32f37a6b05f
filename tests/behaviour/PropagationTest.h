// A new scale on its way into the agreements: the control with a body whose scale has just been
// entered, a server that answers in TEMPO, two printers, and a user at the printers' window.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tests/behaviour/ScaleTest.h"
#include "tests/support/FaultyDesktop.h"
#include "toolkit/Window.h"

namespace behaviour {

using toolkit::headless::Entry;
using Keys = std::vector<std::string>;

inline constexpr const char* kInformer =
    "Souhaitez-vous informer par écrit les aidés concernés ?\r\nAttention, ce traitement peut "
    "durer quelques minutes.";
std::string questionListe(int count);

class Propagation : public Scale {
 protected:
  // Body 001, three brackets; nothing changed yet. Agreements 00001001 to 00006001 are its own.
  Propagation();
  ~Propagation() override;

  // What the server leaves at the next update; none of an empty list is written.
  void serverAnswers(Keys modified, Keys limit);
  // The agreement's history is given as texts, the dates as shown.
  void agreement(std::string_view key, const Rows& history);
  // The user enters a scale of that day.
  void enterScale(std::string_view date = "01022026", Caller at = Caller::here());
  // The user presses OK and answers the questions that come: the update, the letters, the listing.
  void saveAnswering(const std::vector<Answer>& answers, Caller at = Caller::here());
  // The user at the printers' window: OK or Escape.
  void printerWindow(bool confirms, Caller at = Caller::here());

  toolkit::headless::HeadlessPrinter& pages() { return desktop_.page(0); }
  // Of all jobs of the page printer: how many pages hold a letter, and whose amounts stand there.
  std::vector<std::string> printed();
  bool wasPrinted(std::string_view text);
  // Store calls from the write of the body on, without those of letters and listings.
  std::vector<std::string> callsOfRun();
  // Forms shown and closed, boxes, pointers and pending events, each in a word.
  std::vector<std::string> journal();
  void expectUsable(Caller at = Caller::here());
  void expectListsDeleted(Caller at = Caller::here());
  // The control works on this desktop from now on, which hands on to desktop_.
  void restartOn(toolkit::Desktop& desktop, Caller at = Caller::here());

  testing_support::FaultyDesktop faulty_{desktop_};
};

}  // namespace behaviour
