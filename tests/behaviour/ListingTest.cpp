// The listing of the agreements that an update has left as they were.
#include "agreements/Listing.h"

#include <algorithm>

#include "agreements/ListingPages.h"
#include "tests/behaviour/PrintTest.h"
#include "text/Utf8.h"
#include "toolkit/ControlClosed.h"
#include "toolkit/Window.h"
#include "toolkit/headless/User.h"

namespace behaviour {
namespace {

using Job = toolkit::headless::HeadlessPrinter::Job;

constexpr int kPageWidth = 11906;
constexpr int kLinesAPage = 48;

class Listing : public PrintTest {
 protected:
  // Top of the first line of entries: 1 cm, three lines of title, an empty one, the header.
  static constexpr int kFirst = kCm + 5 * kLine;

  void entry(std::string_view number, std::string_view participation = "1250",
             std::string_view row = "3", std::string_view begin = "01/01/2025",
             std::string_view end = "31/12/2027") {
    auto& list = session_.accords.accordsNonModifies;
    const int next = list.DCount(1) + 1;
    list.set(1, next, number);
    list.set(2, next, begin);
    list.set(3, next, end);
    list.set(4, next, participation);
    list.set(5, next, row);
  }
  void entries(int count) {
    for (int i = 1; i <= count; ++i) {
      const std::string digits = std::to_string(i);
      entry(std::string(5 - digits.size(), '0') + digits);
    }
  }
  void person(std::string_view number, std::string_view name, std::string_view firstName = "") {
    store_.put("CIVILAIDE", number,
               {"2", name, "", "", "", "", "", "", "", "", "", "", "", "", firstName});
  }
  Job print() {
    const std::size_t before = desktop_.page(0).jobs().size();
    agreements::imprimerListe(context_);
    const auto& jobs = desktop_.page(0).jobs();
    EXPECT_EQ(jobs.size(), before + 1);
    return jobs.size() > before ? jobs.back() : Job{};
  }
  // The only entry's line.
  std::string lineOf(std::string_view number, std::string_view participation = "1250",
                     std::string_view row = "3") {
    session_.accords.accordsNonModifies = {};
    entry(number, participation, row);
    const auto all = onPage(print());
    return all.size() < 6 ? "" : all[5].text;
  }

  static Printed centred(const std::string& text, int y, const std::string& style = "[b]") {
    const int width = static_cast<int>(text::length(text)) * kCharacter;
    return {(kPageWidth - width) / 2, y, style + text};
  }
  static std::vector<Printed> heading(bool first) {
    std::vector<Printed> all = {centred("Accords non modifés de l'organisme", kCm),
                                centred("'CRAM'", kCm + kLine),
                                centred(" actifs au 01/02/2026", kCm + 2 * kLine)};
    const int y = kCm + 4 * kLine;
    all.push_back({0, y, first ? "[b]Aidé :" : "[b]Aidant :"});
    all.push_back({40 * kCharacter, y,
                   first ? "[b]Debut      Fin          Part. bénef."
                         : "[b]Debut        Fin        Part. béneficiaire"});
    return all;
  }
  static int entriesOn(const Job& job) {
    int count = 0;
    for (const auto& piece : job.pieces) count += piece.text.starts_with("000") ? 1 : 0;
    return count;
  }
  static int continuations(const std::vector<Printed>& all) {
    int count = 0;
    for (const Printed& printed : all) count += printed.text == "A suivre..." ? 1 : 0;
    return count;
  }
};

TEST_F(Listing, OfOneAgreementIsOnePage) {
  person("00042", "HERBOTIERE", "GINETTE");
  entry("00042");
  const Job job = print();
  EXPECT_EQ(job.pages, 1);
  std::vector<Printed> expected = heading(true);
  expected.push_back({0, kFirst,
                      "00042 HERBOTIERE GINETTE                01/01/2025 31/12/2027  12,50"
                      "           3"});
  EXPECT_PRED_FORMAT2(same, onPage(job), expected);
}

TEST_F(Listing, TheColumnsStandUnderTheirHeader) {
  person("00042", "HERBOTIERE", "GINETTE");
  const std::string line = lineOf("00042");
  EXPECT_EQ(line.find("HERBOTIERE"), 6U);
  EXPECT_EQ(line.find("01/01/2025"), 40U);  // "Debut"
  EXPECT_EQ(line.find("31/12/2027"), 51U);  // "Fin"
  EXPECT_EQ(line.find("12,50"), 63U);       // "Part. bénef." is at 64
  EXPECT_EQ(line.find('3', 68), 79U);
}

TEST_F(Listing, HowParticipationsAreShown) {
  const std::vector<std::pair<const char*, const char*>> rows = {
      {"1250", " 12,50"},   {"0", " 00,00"},        {"5", " 00,05"},     {"900", " 09,00"},
      {"9999", " 99,99"},   {"123456", " 1234,56"}, {"-5", "- 00,05"},   {"-1250", "- 12,50"},
      {"1250.5", " 12,51"}, {"1250,4", " 12,50"},   {"-0.5", "- 00,01"}, {"", "      "},
      {"abc", "      "}};
  for (const auto& [stored, shown] : rows) {
    EXPECT_EQ(lineOf("00042", stored), "00042" + std::string(35, ' ') + "01/01/2025 31/12/2027 " +
                                           shown + std::string(11, ' ') + "3")
        << stored;
  }
}

TEST_F(Listing, NamesAreCutAndPaddedByCharacters) {
  const std::string tail = " 01/01/2025 31/12/2027  12,50           3";
  const std::string accents = "ÉLÉONORE-HÉLÈNE DE LA FORÊT-NOIRÈ";  // 33 characters
  ASSERT_EQ(text::length(accents), 33U);
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"", std::string(33, ' ')},
      {"ZOÉ", "ZOÉ" + std::string(30, ' ')},
      {text::left(accents, 32), text::left(accents, 32) + " "},
      {accents, text::left(accents, 32) + " "},
      {std::string(90, 'X'), std::string(32, 'X') + " "}};
  for (const auto& [name, shown] : rows) {
    person("00042", name);
    EXPECT_EQ(lineOf("00042"), "00042 " + shown + tail);
  }
  person("00042", "FORÊT", "HÉLÈNE-ÉLÉONORE-ANTOINETTE-MARIE");
  EXPECT_EQ(lineOf("00042"), "00042 FORÊT HÉLÈNE-ÉLÉONORE-ANTOINETTE " + tail);
}

TEST_F(Listing, ShortNumbersKeepTheColumns) {
  person("7", "ZOÉ");
  const std::string line = lineOf("7");
  EXPECT_EQ(text::left(line, 7), "7 ZOÉ  ");
  EXPECT_EQ(text::mid(line, 41, 10), "01/01/2025");
}

TEST_F(Listing, APersonWithoutAReadableRecordHasABlankName) {
  person("00001", "ALBERT");
  person("00003", "ZOE");
  const std::string tail = " 01/01/2025 31/12/2027  12,50           3";
  const std::string blank = "00002" + std::string(34, ' ') + tail;
  entries(3);
  for (const bool failing : {false, true}) {
    // The calls: the file is opened, then a record read for each line.
    if (failing) {
      person("00002", "NADIA");
      store_.failAt(3);
    }
    const auto all = onPage(print());
    ASSERT_EQ(all.size(), 8U);
    EXPECT_EQ(all[5].text, "00001 ALBERT" + std::string(27, ' ') + tail);
    EXPECT_EQ(all[6].text, blank);
    EXPECT_EQ(all[7].text, "00003 ZOE" + std::string(30, ' ') + tail);
  }
}

TEST_F(Listing, AFileThatCannotBeOpenedIsTriedAgainForTheNextLine) {
  person("00001", "ALBERT");
  person("00002", "NADIA");
  entries(2);
  store_.failAt(1);
  const auto all = onPage(print());
  EXPECT_EQ(all[5].text.substr(0, 12), "00001       ");
  EXPECT_EQ(all[6].text.substr(0, 12), "00002 NADIA ");
  store_.fail(CallKind::OpenFile);
  EXPECT_EQ(onPage(print()).size(), 7U);
}

TEST_F(Listing, AnyStoreCallThatFailsBlanksTheNameOfItsOwnLine) {
  const std::vector<std::string> names = {"ALBERT", "NADIA", "ZOE", "YVES"};
  const std::string tail = " 01/01/2025 31/12/2027  12,50           3";
  entries(4);
  for (std::size_t i = 0; i < names.size(); ++i) person("0000" + std::to_string(i + 1), names[i]);
  store_.forgetCalls();
  print();
  const std::vector<std::string> calls = store_.told();
  ASSERT_EQ(calls.size(), 5U);
  for (std::size_t call = 0; call < calls.size(); ++call) {
    SCOPED_TRACE(calls[call]);
    // The file is opened for the first line.
    const std::size_t blank = call == 0 ? 0 : call - 1;
    store_.failAt(static_cast<int>(call) + 1);
    const Job job = print();
    EXPECT_EQ(job.pages, 1);
    const auto all = onPage(job);
    ASSERT_EQ(all.size(), 5U + names.size());
    for (std::size_t i = 0; i < names.size(); ++i) {
      const std::string name = i == blank ? "" : names[i];
      EXPECT_EQ(all[5 + i].text, "0000" + std::to_string(i + 1) + " " + name +
                                     std::string(33 - name.size(), ' ') + tail);
    }
  }
}

TEST_F(Listing, OpensTheCivilRecordsOnceAndReleasesThem) {
  entries(20);
  store_.forgetCalls();
  store_.releases().clear();
  print();
  EXPECT_EQ(store_.calls(CallKind::OpenFile).size(), 1U);
  EXPECT_EQ(store_.calls(CallKind::ReadRecord).size(), 20U);
  EXPECT_EQ(store_.releases().back(), "File CIVILAIDE");
}

TEST_F(Listing, ExactlyOnePageIsNotFollowed) {
  entries(kLinesAPage);
  const Job job = print();
  EXPECT_EQ(job.pages, 1);
  const auto all = onPage(job);
  EXPECT_EQ(all.size(), 5U + kLinesAPage);
  EXPECT_EQ(continuations(all), 0);
}

TEST_F(Listing, OnePageAndALineGoOnUnderTheOtherHeader) {
  entries(kLinesAPage + 1);
  const Job job = print();
  EXPECT_EQ(job.pages, 2);
  const auto first = onPage(job);
  ASSERT_EQ(first.size(), 5U + kLinesAPage + 1);
  EXPECT_EQ(first.back(), centred("A suivre...", kFirst + kLinesAPage * kLine, ""));
  EXPECT_LE(first.back().y + kLine, desktop_.page(0).pageHeight());
  std::vector<Printed> second = heading(false);
  second.push_back(
      {0, kFirst, "00049" + std::string(35, ' ') + "01/01/2025 31/12/2027  12,50           3"});
  EXPECT_PRED_FORMAT2(same, onPage(job, 2), second);
}

TEST_F(Listing, OfTwoHundredAgreementsHasAHeadingOnEachPage) {
  entries(200);
  const Job job = print();
  ASSERT_EQ(job.pages, 5);
  int entry = 0;
  for (int page = 1; page <= job.pages; ++page) {
    SCOPED_TRACE(page);
    const auto all = onPage(job, page);
    const std::vector<Printed> head(all.begin(), all.begin() + 5);
    EXPECT_PRED_FORMAT2(same, head, heading(page == 1));
    const int lines = page < 5 ? kLinesAPage : 200 - 4 * kLinesAPage;
    for (int i = 0; i < lines; ++i) {
      const Printed& printed = all[5 + static_cast<std::size_t>(i)];
      EXPECT_EQ(printed.x, 0);
      EXPECT_EQ(printed.y, kFirst + i * kLine);
      EXPECT_EQ(std::stoi(printed.text.substr(0, 5)), ++entry);
    }
    EXPECT_EQ(continuations(all), page < 5 ? 1 : 0);
    EXPECT_EQ(all.size(), 5U + static_cast<std::size_t>(lines) + (page < 5 ? 1 : 0));
  }
  EXPECT_EQ(entry, 200);
}

TEST_F(Listing, ANarrowPageTakesItsRoomFromTheName) {
  desktop_.page(0).setPrintableSize(11424, 16838);  // 79 characters
  person("00042", std::string(40, 'X'));
  EXPECT_EQ(lineOf("00042"),
            "00042 " + std::string(29, 'X') + "  01/01/2025 31/12/2027  12,50           3");
  const auto all = onPage(print());
  EXPECT_EQ(all[4].x, 37 * kCharacter);
  session_.accords.accordsNonModifies = {};
  entries(kLinesAPage + 1);
  const auto second = onPage(print(), 2);
  EXPECT_EQ(second[4].text, "[b]Debut        Fin        Part. béneficiaire");
  EXPECT_LE(second[4].x + 42 * kCharacter, desktop_.page(0).pageWidth());
  EXPECT_EQ(second.size(), 6U);
}

// The margins of the paper, the names that are left whole, and the column of the first day.
struct OnA4 {
  int margin = 0;  // millimetres
  int name = 0;    // characters
  int begin = 0;
};
constexpr OnA4 kMarginsOfPrinters[] = {{0, 32, 40}, {4, 29, 37}, {6, 27, 35}};

TEST_F(Listing, KeepsWithinWhatPrintersWithMarginsPrint) {
  person("00001", std::string(40, 'X'), "ANNE");
  entries(2 * kLinesAPage + 3);
  for (const OnA4& paper : kMarginsOfPrinters) {
    SCOPED_TRACE(paper.margin);
    setMargins(paper.margin);
    const Job job = print();
    EXPECT_EQ(job.pages, 3);
    EXPECT_EQ(entriesOn(job), 2 * kLinesAPage + 3);
    EXPECT_PRED_FORMAT2(same, outside(job), std::vector<Printed>());
    const auto all = onPage(job);
    EXPECT_EQ(all[4].x, paper.begin * kCharacter);
    EXPECT_EQ(all[5].text, "00001 " + std::string(static_cast<std::size_t>(paper.name), 'X') +
                               "  01/01/2025 31/12/2027  12,50           3");
  }
}

TEST_F(Listing, TakesTheRoomOfItsWidestLineFromTheNames) {
  const std::string name(40, 'X');
  for (const char* number : {"00001", "00002"}) person(number, name);
  entry("00001");
  entry("00002", "123456789", "1234");
  for (const OnA4& paper : kMarginsOfPrinters) {
    SCOPED_TRACE(paper.margin);
    setMargins(paper.margin);
    const Job job = print();
    EXPECT_PRED_FORMAT2(same, outside(job), std::vector<Printed>());
    // Six characters more than the wider header has.
    const std::string shown = name.substr(0, static_cast<std::size_t>(paper.name) - 6) + "  ";
    const auto all = onPage(job);
    ASSERT_EQ(all.size(), 7U);
    EXPECT_EQ(all[5].text, "00001 " + shown + "01/01/2025 31/12/2027  12,50           3");
    EXPECT_EQ(all[6].text, "00002 " + shown + "01/01/2025 31/12/2027  1234567,89           1234");
    EXPECT_EQ(all[4].x, (paper.begin - 6) * kCharacter);
  }
}

// Where the printer tells of its margins, the narrower ones are made up for.
TEST_F(Listing, KeepsOffTheEdgesOfThePaper) {
  person("00001", std::string(40, 'X'));
  entries(kLinesAPage + 1);
  for (const int millimetres : {0, 4, 6, 9}) {
    SCOPED_TRACE(millimetres);
    setMargins(millimetres);
    desktop_.page(0).setMargins({twips(millimetres), twips(millimetres)});
    const int left = std::max(0, 340 - twips(millimetres));
    const Job job = print();
    EXPECT_EQ(entriesOn(job), kLinesAPage + 1);
    const auto all = onPage(job);
    const int width = desktop_.page(0).pageWidth();
    for (const Printed& printed : all) {
      const int right =
          printed.x + kCharacter * static_cast<int>(text::length(withoutStyle(printed.text)));
      EXPECT_GE(printed.x, left) << printed;
      EXPECT_LE(right, width - left) << printed;
    }
    EXPECT_EQ(all[0].x, (width - 34 * kCharacter) / 2);
    const int name = millimetres == 9 ? 25 : 27;
    EXPECT_EQ(all[4].x, left + (name + 8) * kCharacter);
    EXPECT_EQ(all[5], (Printed{left, kFirst,
                               "00001 " + std::string(static_cast<std::size_t>(name), 'X') +
                                   "  01/01/2025 31/12/2027  12,50           3"}));
  }
}

TEST_F(Listing, BeginsAShortNameThatIsWiderThanThePageAtItsEdge) {
  setMargins(6);
  screen_.bar.Txt_SigleOrgChg.setText(std::string(70, 'L') + " " + std::string(9, 'M'));
  entries(1);
  const Job job = print();
  EXPECT_PRED_FORMAT2(same, outside(job), std::vector<Printed>());
  const auto all = onPage(job);
  EXPECT_EQ(all[1], (Printed{0, kCm + kLine, "[b]'" + std::string(70, 'L')}));
  EXPECT_EQ(all[2], (Printed{0, kCm + 2 * kLine, "[b]" + std::string(9, 'M') + "'"}));
}

TEST_F(Listing, FollowsTheShortNameAndTheScaleOnScreen) {
  screen_.bar.Txt_SigleOrgChg.setText("L'ÉTÉ");
  screen_.participation.Txt_DatBaremCours.setText("15/03/2027");
  entries(1);
  const auto all = onPage(print());
  EXPECT_EQ(all[1], centred("'L'ÉTÉ'", kCm + kLine));
  EXPECT_EQ(all[2], centred(" actifs au 15/03/2027", kCm + 2 * kLine));
}

TEST_F(Listing, NamesItsJob) {
  entries(1);
  EXPECT_EQ(print().title, "Accords non modifiés CRAM");
}

TEST_F(Listing, GoesOnAfterAnythingThatThePrinterRefuses) {
  entries(kLinesAPage + 2);
  EXPECT_EQ(entriesOn(print()), kLinesAPage + 2);
  const int calls = desktop_.onPaper.calls;
  ASSERT_GT(calls, 200);
  for (int call = 1; call < calls; ++call) {  // the last one ends the job
    SCOPED_TRACE(call);
    desktop_.onPaper.calls = 0;
    desktop_.onPaper.failingCall = call;
    EXPECT_GE(entriesOn(print()), kLinesAPage + 1);
  }
}

TEST_F(Listing, EndsQuietlyWhenThePrinterRefusesEverything) {
  entries(200);
  desktop_.onPaper.andAllAfter = true;
  desktop_.onPaper.failingCall = 1;
  agreements::imprimerListe(context_);
  EXPECT_TRUE(desktop_.page(0).jobs().empty());
  EXPECT_EQ(desktop_.page(0).current().pages, 0);
  EXPECT_TRUE(desktop_.journal().empty());
}

TEST_F(Listing, EndsQuietlyWithoutAPrinter) {
  entries(2);
  testing_support::TestDesktop desktop;
  agreements::imprimerListe({desktop, surface_, screen_, session_});
  EXPECT_TRUE(desktop.journal().empty());
}

TEST_F(Listing, IsPrintedOnThePrinterThatTheUserChooses) {
  entries(2);
  desktop_.onModal = [](toolkit::Window& window) {
    toolkit::headless::User(window.surface()).press(toolkit::Key::Enter);
  };
  agreements::Imprimer_AccordsNonModifies(context_);
  ASSERT_EQ(desktop_.page(0).jobs().size(), 1U);
  EXPECT_EQ(onPage(desktop_.page(0).jobs()[0]).size(), 7U);
  // A printer that refuses its font prints all the same.
  desktop_.onPaper.calls = 0;
  desktop_.onPaper.failingCall = 1;
  agreements::Imprimer_AccordsNonModifies(context_);
  EXPECT_EQ(desktop_.page(0).jobs().size(), 2U);
}

TEST_F(Listing, IsNotPrintedWhenThePrinterIsRefused) {
  entries(2);
  desktop_.onModal = [](toolkit::Window& window) {
    toolkit::headless::User(window.surface()).press(toolkit::Key::Escape);
  };
  agreements::Imprimer_AccordsNonModifies(context_);
  EXPECT_TRUE(desktop_.page(0).jobs().empty());
  EXPECT_EQ(desktop_.onPaper.calls, 0);
  EXPECT_TRUE(store_.calls().empty());
}

TEST_F(Listing, IsNotPrintedWhenTheControlIsClosedMeanwhile) {
  entries(2);
  desktop_.onModal = [](toolkit::Window& window) {
    toolkit::headless::User(window.surface()).press(toolkit::Key::Escape);
    throw toolkit::ControlClosed();
  };
  EXPECT_THROW(agreements::Imprimer_AccordsNonModifies(context_), toolkit::ControlClosed);
  EXPECT_EQ(desktop_.onPaper.calls, 0);
}

}  // namespace
}  // namespace behaviour
