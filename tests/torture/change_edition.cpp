// What the dialog of the editions does on OK, in a program of its own, so that it can be killed:
// opens IN, brings it to the edition of YEAR, and saves it as OUT.
#include "application/Application.h"
#include "application/DocumentService.h"
#include "cli/ScriptedInterface.h"
#include "groups/Migration.h"

#include <cstdlib>
#include <iostream>

namespace {

/// As `kavu-cli` ends when there is no output.
constexpr int kFailed = 2;

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::cerr << "change_edition IN YEAR OUT\n";
        return kFailed;
    }
    kavu::cli::ScriptedInterface ui({}, std::cerr);
    const kavu::FixedClock clock({2024, 5, 6, 7, 8, 9});
    kavu::SystemRandomSource random;
    kavu::Application application(kavu::Environment::ofProcess(), clock, random);
    auto& documents = application.documents();
    bool good = application.startUp(&ui) && documents.openNamed(&ui, argv[1]);
    if (good) {
        good = documents.setVersions(&ui, {2011, 2, std::atoi(argv[2])}) &&
               documents.saveTo(&ui, argv[3]);
        documents.discard(&ui);
    }
    return application.shutDown(&ui) && good ? EXIT_SUCCESS : kFailed;
}
