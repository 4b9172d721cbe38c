// Writes the reference pages of the vocabularies into a folder, one for each group. Run by the
// build: the pages are never older than the tables.
#include "core/files/FileIo.h"
#include "vocabulary/VocabularyPage.h"

#include <iostream>
#include <string>

int main(int count, char** arguments) {
    if (count != 2) {
        std::cerr << "usage: kavu-reference FOLDER\n";
        return 64;
    }
    const std::string folder = arguments[1];
    auto status = kavu::makeFolders(folder);
    std::string index =
        "# Reference of the attribute groups\n\n"
        "Made from the tables that the program itself works with.\n\n";
    for (const auto& vocabulary : kavu::vocabularies()) {
        const auto name = kavu::vocabularyPageName(vocabulary.letter);
        index += std::string("- [") + vocabulary.letter + ": " + std::string(vocabulary.name) +
                 "](" + name + ")\n";
        if (status.ok()) {
            status = kavu::writeWholeFile(folder + "/" + name, kavu::vocabularyPage(vocabulary));
        }
    }
    if (status.ok()) {
        status = kavu::writeWholeFile(folder + "/index.md", index);
    }
    if (!status.ok()) {
        std::cerr << status.path() << ": " << status.reason() << '\n';
        return 1;
    }
    return 0;
}
