// Undo and redo of the edits of a stream: one level for each, and the stream comes back exactly.
// A level keeps only the words that the edit has changed.
#pragma once

#include "pcm/FrameEditLists.h"

#include <map>
#include <string>
#include <vector>

namespace kavu {

class StreamUndo {
  public:
    /// Takes the stream as it is for the one to begin with. The format must outlive it.
    explicit StreamUndo(PcmFormat& format);

    /// Ends an edit: what it has changed becomes a level, and what was undone before is lost.
    /// False if it has changed nothing.
    bool commit();
    [[nodiscard]] bool canUndo() const { return !undo_.empty(); }
    [[nodiscard]] bool canRedo() const { return !redo_.empty(); }
    /// False if there is no level, or there can be no more cells.
    bool undo();
    bool redo();

  private:
    /// All but the words, and the working files that an edit changes.
    struct Records {
        PcmAttributes attributes;
        std::vector<IdCounter> counters;
        std::vector<AsyncFormat> asyncFormats;
        std::vector<WordFrameDefinition> definitions;
        std::string sectionComment;
        std::string filterList;
    };
    struct State {
        Records records;
        std::vector<WordContents> words;
    };
    /// One side of an edit.
    struct Part {
        Records records;
        std::map<int, WordContents> words;
        int wordCount = 0;
    };
    struct Level {
        Part before;
        Part after;
    };

    [[nodiscard]] State take() const;
    [[nodiscard]] static bool same(const Records& a, const Records& b);
    bool restore(const Part& part);

    PcmFormat& format_;
    State now_;
    std::vector<Level> undo_;
    std::vector<Level> redo_;
};

}  // namespace kavu
