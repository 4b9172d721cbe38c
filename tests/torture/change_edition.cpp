// What the dialog of the editions does on OK, in a program of its own, so that it can be killed:
// opens IN, brings it to the edition of YEAR, and saves it as OUT.
#include "application/Application.h"
#include "application/DocumentService.h"
#include "groups/Migration.h"

#include <cstdlib>
#include <iostream>

int main(int argc, char** argv) {
    if (argc != 4) {
        std::cerr << "change_edition IN YEAR OUT\n";
        return EXIT_FAILURE;
    }
    const kavu::FixedClock clock({2024, 5, 6, 7, 8, 9});
    kavu::SystemRandomSource random;
    kavu::Application application(kavu::Environment::ofProcess(), clock, random);
    auto& documents = application.documents();
    bool good = application.startUp(nullptr) && documents.openNamed(nullptr, argv[1]);
    if (good) {
        good = documents.setVersions(nullptr, {2011, 2, std::atoi(argv[2])}) &&
               documents.saveTo(nullptr, argv[3]);
        documents.discard(nullptr);
    }
    return application.shutDown(nullptr) && good ? EXIT_SUCCESS : EXIT_FAILURE;
}
