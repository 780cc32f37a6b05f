#include "host/Arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "text/Version.h"

namespace host {

Arguments parseArguments(std::vector<std::string> words) {
  Arguments arguments;
  CLI::App app("Organismes de prise en charge : ouvre un magasin et montre le contrôle.",
               "TessalineHost");
  app.set_version_flag("--version", std::string("TessalineHost ") + text::kVersion);
  app.add_option("--store", arguments.store,
                 "fichier du magasin, ou odbc: et une connexion ; sinon le dernier ouvert")
      ->type_name("FICHIER");
  app.add_flag("--create", arguments.create, "créer d'abord ce magasin, vide");
  app.add_option("--rights", arguments.rights, "niveau de droits, 2 pour tous les droits")
      ->type_name("N")
      ->capture_default_str();
  app.add_option("--record", arguments.record, "fichier où noter ce que fait le programme")
      ->type_name("FICHIER");
  std::reverse(words.begin(), words.end());  // as CLI11 wants them
  try {
    app.parse(words);
  } catch (const CLI::CallForHelp&) {
    throw NoStart(0, app.help());
  } catch (const CLI::CallForVersion& asked) {
    throw NoStart(0, asked.what());
  } catch (const CLI::ParseError& error) {
    throw NoStart(2, std::string(error.what()) + "\n\n" + app.help());
  }
  if (arguments.create && arguments.store.empty()) {
    throw NoStart(2, "Il manque --store FICHIER.\n\n" + app.help());
  }
  return arguments;
}

}  // namespace host
