#include "application/DocumentVocabularies.h"

#include "core/document/GroupFiles.h"
#include "groups/Vocabularies.h"
#include "pcm/model/PcmVocabulary.h"

#include <algorithm>
#include <vector>

namespace kavu {

namespace {

GroupVocabulary vocabularyOf(char letter) {
    if (letter == 'P') {
        return {letter, "PCM format", pcmVocabulary()};
    }
    if (letter == 'D') {
        return {letter, "Measurement description", measurementVocabulary()};
    }
    return {letter, vocabularyName(letter), groupVocabulary(letter)};
}

std::vector<GroupVocabulary> makeList() {
    std::vector<GroupVocabulary> list;
    for (const auto& kind : groupKinds()) {
        if (const auto vocabulary = vocabularyOf(kind.letter); !vocabulary.fields.empty()) {
            list.push_back(vocabulary);
        }
    }
    return list;
}

}  // namespace

std::span<const GroupVocabulary> documentVocabularies() {
    static const auto kList = makeList();
    return kList;
}

const GroupVocabulary* findDocumentVocabulary(char letter) {
    const auto list = documentVocabularies();
    const auto it = std::find_if(list.begin(), list.end(),
                                 [letter](const auto& row) { return row.letter == letter; });
    return it == list.end() ? nullptr : &*it;
}

}  // namespace kavu
