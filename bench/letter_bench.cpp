// Letters on the headless printer from a store file: against hand-written SQL that reads the same
// rows and the same printing, and so many letters against ten times a tenth of them.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <filesystem>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "agreements/FrenchDate.h"
#include "agreements/Letter.h"
#include "localstore/LocalDatabase.h"
#include "store/Amounts.h"
#include "store/Dates.h"
#include "store/Layouts.h"
#include "toolkit/headless/HeadlessDesktop.h"

namespace {

constexpr int kLetters = 10'000;
constexpr int kTenth = 10;
constexpr double kLimit = 1.5;
// Locks, and what is allocated for lines that are measured: a busy machine shows.
constexpr double kLettersLimit = 3;
constexpr int kCm = 567;
constexpr const char* kSigle = "CRAM";
constexpr const char* kScale = "01/02/2026";
constexpr long kScaleDay = 21217;
// One in eight beneficiaries has a person responsible.
constexpr int kResponsibles = 8;

std::string numberOf(int beneficiary) {
  const std::string digits = std::to_string(beneficiary);
  return std::string(5 - digits.size(), '0') + digits;
}

std::string keyOf(int beneficiary) { return numberOf(beneficiary) + "001"; }

std::string personText(int beneficiary, const char* name) {
  using namespace store::civilaide;
  store::DynamicArray person;
  person.set(TitreAide, std::to_string(1 + beneficiary % 3));
  person.set(NomAide, name + std::to_string(beneficiary));
  person.set(AdrNumero, std::to_string(1 + beneficiary % 100));
  person.set(AdrNatureVoie, beneficiary % 2 == 0 ? "AV" : "RUE");
  person.set(AdrVoie, "DES LAVANDIERES");
  person.set(AdrCodePostal, "83000");
  person.set(AdrVille, "TOULON");
  person.set(PrenomAide, "GINETTE");
  return person.text();
}

std::string agreementText(int beneficiary) {
  using namespace store::accord;
  store::DynamicArray agreement;
  agreement.set(OrgChgAcc, "001");
  agreement.set(NumAideAcc, numberOf(beneficiary));
  agreement.set(DateDebAcc, "20870");
  agreement.set(DateFinAcc, "21964");
  for (int row = 1; row <= 3; ++row) {
    agreement.set(DatePartAcc, row, std::to_string(kScaleDay - 365L * (row - 1)));
    agreement.set(PartBenefAcc, row, std::to_string(1250 + beneficiary % 100 - row));
  }
  return agreement.text();
}

class LetterStore {
 public:
  LetterStore() {
    const std::string name = "tessaline-letters-" + std::to_string(std::random_device()());
    folder_ = std::filesystem::temp_directory_path() / name;
    std::filesystem::create_directories(folder_);
    database_ = localstore::createLocalDatabase(path());
    const auto transaction = database_->begin();
    fill();
    transaction->commit();
  }
  ~LetterStore() {
    database_.reset();
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }
  LetterStore(const LetterStore&) = delete;
  LetterStore& operator=(const LetterStore&) = delete;

  std::string path() const { return (folder_ / "letters.store").string(); }
  std::shared_ptr<localstore::LocalDatabase> database() const { return database_; }

 private:
  void fill() {
    database_->write("TITRES", "1", "Monsieur");
    database_->write("TITRES", "2", "Madame");
    database_->write("TITRES", "3", "Monsieur et Madame");
    database_->write("NATUREVOIE", "AV", "avenue");
    database_->write("NATUREVOIE", "RUE", "rue");
    for (int i = 0; i < kLetters; ++i) {
      database_->write("CIVILAIDE", numberOf(i), personText(i, "HERBOTIERE"));
      database_->write("ACCORD", keyOf(i), agreementText(i));
      if (i % kResponsibles == 0) {
        database_->write("RESPONSABLE", numberOf(i), personText(i + 1, "ESTRANELLE"));
      }
    }
  }

  std::filesystem::path folder_;
  std::shared_ptr<localstore::LocalDatabase> database_;
};

const LetterStore& letterStore() {
  static const LetterStore store;
  return store;
}

store::DynamicArray entity() {
  using namespace store::association;
  store::DynamicArray entity;
  entity.set(NomAsso, "AIDE A DOMICILE DU VAL CLAIR");
  entity.set(AdrNumero, "83");
  entity.set(AdrNatureVoie, "RUE");
  entity.set(AdrVoie, "DES TILLEULS");
  entity.set(AdrCodePostal, "01000");
  entity.set(AdrVille, "BOURG-EN-BRESSE");
  entity.set(AdrTelephone, "04 65 71 75 85");
  return entity;
}

// --- The system's letters

struct Run {
  Run() {
    desktop.setPrinters({{"A4", "LPT1:"}}, 0);
    session.TheDatabase = letterStore().database();
    session.files.accord = session.TheDatabase->OpenFile(store::accord::kFile);
    session.accords.entite = entity();
    session.accords.constantesPaie.set(store::constantespaie::DateEuro, "12420");
    screen.bar.Txt_SigleOrgChg.setText(kSigle);
    screen.participation.Txt_DatBaremCours.setText(kScale);
  }
  void print(int letters) {
    auto& accords = session.accords;
    for (int i = 0; i < letters; ++i) {
      accords.cleLettre = keyOf(i);
      accords.accord = session.files.accord->ReadRecord(accords.cleLettre)->fields();
      agreements::Impression_ModifAccord(context);
      desktop.printer().newPage();
    }
    agreements::fermerFichiersLettre(session);
    desktop.printer().endDoc();
  }

  toolkit::headless::HeadlessDesktop desktop;
  toolkit::Surface surface{"Surface"};
  screen::Screen screen{surface};
  screen::EditSession session;
  agreements::AgreementContext context{desktop, surface, screen, session};
};

// --- The same by hand

using Fields = std::vector<std::string_view>;

class Table {
 public:
  Table(sqlite3* database, std::string_view name) {
    const std::string sql = "SELECT record FROM record_" + std::string(name) + " WHERE id = ?1";
    if (sqlite3_prepare_v2(database, sql.c_str(), -1, &statement_, nullptr) != SQLITE_OK) {
      throw std::runtime_error(sqlite3_errmsg(database));
    }
  }
  ~Table() { sqlite3_finalize(statement_); }
  Table(const Table&) = delete;
  Table& operator=(const Table&) = delete;

  // Attributes count from 0 here. They live until the table is asked again.
  Fields read(std::string_view id) {
    sqlite3_bind_text(statement_, 1, id.data(), static_cast<int>(id.size()), SQLITE_STATIC);
    text_.clear();
    if (sqlite3_step(statement_) == SQLITE_ROW) {
      const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement_, 0));
      const void* bytes = sqlite3_column_blob(statement_, 0);
      text_.assign(static_cast<const char*>(bytes), size);
    }
    sqlite3_reset(statement_);
    return split(text_, store::kAttributeMark);
  }
  static Fields split(std::string_view text, char mark) {
    Fields fields;
    for (std::size_t end; (end = text.find(mark)) != text.npos; text.remove_prefix(end + 1)) {
      fields.push_back(text.substr(0, end));
    }
    fields.push_back(text);
    return fields;
  }

 private:
  sqlite3_stmt* statement_ = nullptr;
  std::string text_;
};

struct Connection {
  Connection() {
    if (sqlite3_open(letterStore().path().c_str(), &database) != SQLITE_OK) {
      throw std::runtime_error("no store");
    }
    sqlite3_exec(database, "PRAGMA cache_size = -65536", nullptr, nullptr, nullptr);
  }
  ~Connection() { sqlite3_close_v2(database); }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  sqlite3* database = nullptr;
};

class ByHand {
 public:
  void print(int letters, toolkit::Printer& printer) {
    for (int i = 0; i < letters; ++i) {
      letter(keyOf(i), printer);
      printer.newPage();
    }
    printer.endDoc();
  }

 private:
  static std::string at(const Fields& fields, int attribute) {
    const auto i = static_cast<std::size_t>(attribute - 1);
    return i < fields.size() ? std::string(fields[i]) : std::string();
  }
  static std::string streetOf(const Fields& fields, const std::string& kind) {
    using namespace store::civilaide;
    return at(fields, AdrNumero) + " " + kind + " " + at(fields, AdrVoie);
  }
  static std::string townOf(const Fields& fields) {
    using namespace store::civilaide;
    return at(fields, AdrCodePostal) + " " + at(fields, AdrVille);
  }
  static std::string namedOf(const Fields& fields, const std::string& title) {
    using namespace store::civilaide;
    return title + " " + at(fields, PrenomAide) + " " + at(fields, NomAide);
  }
  static void block(toolkit::Printer& printer, int left, int top,
                    std::initializer_list<std::string> lines) {
    printer.setCurrentY(top * kCm);
    for (const std::string& line : lines) {
      printer.setCurrentX(left * kCm);
      printer.print(line);
    }
  }
  static std::string participation(const Fields& agreement) {
    const Fields dates = Table::split(agreement[store::accord::DatePartAcc - 1], store::kValueMark);
    const Fields values =
        Table::split(agreement[store::accord::PartBenefAcc - 1], store::kValueMark);
    std::size_t row = 0;
    while (row + 1 < dates.size() && store::wholeNumber(dates[row]) > kScaleDay) ++row;
    return store::shownHundredths(values[row]);
  }

  void letter(const std::string& key, toolkit::Printer& printer) {
    using toolkit::Printer;
    const Fields agreement = accord_.read(key);
    const std::string number = key.substr(0, 5);
    const std::string senderKind = at(kinds_.read(entity_.get(5)), 1);
    const Fields beneficiary = persons_.read(number);
    const Fields responsible = responsibles_.read(number);
    const bool toOther = !at(responsible, 2).empty();
    const std::string concerned =
        toOther ? namedOf(beneficiary, at(titles_.read(at(beneficiary, 1)), 1)) : "";
    const Fields& addressee = toOther ? responsible : beneficiary;
    const std::string title = at(titles_.read(at(addressee, 1)), 1);
    const std::string kind = at(kinds_.read(at(addressee, store::civilaide::AdrNatureVoie)), 1);
    printer.setFontName("Courier New");
    printer.setFontSize(12);
    printer.setBold(true);
    block(printer, 1, 1,
          {std::string(entity_.get(1)),
           std::string(entity_.get(4)) + " " + senderKind + " " + std::string(entity_.get(6)),
           std::string(entity_.get(8)) + " " + std::string(entity_.get(9)),
           std::string(entity_.get(10))});
    block(printer, 11, 5,
          {namedOf(addressee, title), streetOf(addressee, kind), townOf(addressee)});
    printer.setBold(false);
    block(printer, 9, 9,
          {std::string(entity_.get(9)) + ", le " + agreements::dateEnLettres({2026, 1, 15})});
    printer.setCurrentX(kCm);
    printer.setCurrentY(10 * kCm);
    printer.setUnderline(true);
    printer.print("Objet :", Printer::LineEnd::Stay);
    printer.setUnderline(false);
    printer.print(toOther ? " Modification de la participation de " + concerned + "."
                          : " Modification de votre participation.");
    block(printer, 5, 12, {title + ","});
    block(printer, 3, 13,
          {"Un accord de prise en charge vous a été alloué du " + store::textOfDay(agreement[4])});
    block(printer, 1, 14,
          {"au " + store::textOfDay(agreement[5]) + " par l'organisme " + kSigle + "."});
    block(printer, 3, 15, {"Nous vous informons que, par suite de la modification des tarifs"});
    block(printer, 1, 16,
          {"de remboursement de cet organisme, votre participation horaire est portée"});
    printer.setCurrentX(kCm);
    printer.print("à ", Printer::LineEnd::Stay);
    printer.setBold(true);
    printer.print(participation(agreement) + " Euros", Printer::LineEnd::Stay);
    printer.setBold(false);
    printer.print(", et ce à compter du ", Printer::LineEnd::Stay);
    printer.setBold(true);
    printer.print(kScale, Printer::LineEnd::Stay);
    printer.setBold(false);
    printer.print(".");
    block(printer, 3, 17, {"Soyez certain que nous mettons tout en oeuvre pour vous apporter"});
    block(printer, 1, 18, {"entière satisfaction."});
    block(printer, 3, 19,
          {"Nous vous prions d'agréer, " + title + ", l'expression de nos sentiments "});
    block(printer, 1, 20, {"les plus dévoués."});
    block(printer, 11, 22, {"Le Responsable"});
  }

  Connection connection_;
  Table accord_{connection_.database, "ACCORD"};
  Table persons_{connection_.database, "CIVILAIDE"};
  Table responsibles_{connection_.database, "RESPONSABLE"};
  Table titles_{connection_.database, "TITRES"};
  Table kinds_{connection_.database, "NATUREVOIE"};
  store::DynamicArray entity_ = entity();
};

// --- The pairs

// Prints them so many times an iteration. Each time a printer of its own, so that no paper piles
// up.
void printLetters(benchmark::State& state, int letters, int times) {
  for (auto _ : state) {
    for (int i = 0; i < times; ++i) {
      state.PauseTiming();
      auto run = std::make_unique<Run>();
      state.ResumeTiming();
      run->print(letters);
      state.PauseTiming();
      const auto& jobs = run->desktop.page(0).jobs();
      if (jobs.size() != 1 || jobs[0].pages != letters + 1) state.SkipWithError("letters missing");
      run.reset();
      state.ResumeTiming();
    }
  }
  state.counters["limit"] = kLimit;
}

void letters(benchmark::State& state) {
  printLetters(state, kLetters, 1);
  state.counters["limit"] = kLettersLimit;
}
BENCHMARK(letters)->Name("Letters")->Unit(benchmark::kMillisecond);

void lettersByHand(benchmark::State& state) {
  ByHand byHand;
  for (auto _ : state) {
    state.PauseTiming();
    auto printer = std::make_unique<toolkit::headless::HeadlessPrinter>();
    state.ResumeTiming();
    byHand.print(kLetters, *printer);
    state.PauseTiming();
    printer.reset();
    state.ResumeTiming();
  }
}
BENCHMARK(lettersByHand)->Name("Letters/baseline")->Unit(benchmark::kMillisecond);

void grown(benchmark::State& state) { printLetters(state, static_cast<int>(state.range(0)), 1); }
BENCHMARK(grown)->Name("LettersGrowth")->Unit(benchmark::kMillisecond)->Arg(kLetters);

void grownTenth(benchmark::State& state) {
  printLetters(state, static_cast<int>(state.range(0)) / kTenth, kTenth);
}
BENCHMARK(grownTenth)->Name("LettersGrowth/baseline")->Unit(benchmark::kMillisecond)->Arg(kLetters);

}  // namespace

BENCHMARK_MAIN();
