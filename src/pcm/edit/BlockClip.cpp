#include "pcm/edit/BlockClip.h"

#include "core/text/Text.h"
#include "pcm/edit/BlockPlaces.h"

#include <algorithm>
#include <set>

namespace kavu {

namespace {

constexpr std::size_t kPieceTexts = 10;
constexpr std::size_t kLongestClipName = 32;

Measurement singleValues(const Measurement& cell) {
    Measurement values;
    values.name = cell.name;
    values.parity = cell.parity;
    values.parityTransferOrder = cell.parityTransferOrder;
    values.transferOrder = cell.transferOrder;
    values.filterOverwrite = cell.filterOverwrite;
    values.locationType = cell.locationType;
    values.mask = cell.mask;
    return values;
}

int bounded(const std::string& text, int least, int most) {
    return std::clamp(leadingInt(text), least, most);
}

}  // namespace

FrameClip copyBlock(const PcmFormat& format, const BlockArea& area) {
    FrameClip clip;
    clip.columns = area.columns();
    clip.rows = area.rows();
    std::set<std::string> fragmented;
    const auto& cells = format.cells();
    for (int fwp = area.firstWord; fwp <= area.lastWord; ++fwp) {
        const bool isSubframe = format.wordType(fwp) == WordType::Subframe;
        // A plain word has one cell, which all of its rows show.
        const int last = isSubframe ? area.lastFrame : area.firstFrame;
        const bool isCounter = format.wordType(fwp) == WordType::IdCounter;
        for (int fn = area.firstFrame; fn <= last && !isCounter; ++fn) {
            for (auto at = format.cellAtFrame(fwp, fn); at; at = cells.next(at)) {
                if (!cells.isMeasurement(at)) {
                    continue;
                }
                const auto& cell = cells.measurement(at);
                if (isInFragments(format, cell)) {
                    fragmented.insert(cell.name.str());
                } else {
                    clip.pieces.push_back({fwp - area.firstWord, fn - area.firstFrame, !isSubframe,
                                           singleValues(cell)});
                }
            }
        }
    }
    clip.fragmented.assign(fragmented.begin(), fragmented.end());
    return clip;
}

ClipRows clipRows(const FrameClip& clip) {
    ClipRows rows = {{std::to_string(clip.columns), std::to_string(clip.rows)}};
    rows.front().insert(rows.front().end(), clip.fragmented.begin(), clip.fragmented.end());
    for (const auto& piece : clip.pieces) {
        const auto& values = piece.values;
        rows.push_back({std::to_string(piece.column), std::to_string(piece.row),
                        piece.everyFrame ? "1" : "0", values.name.str(), values.parity.str(),
                        values.parityTransferOrder.str(), values.transferOrder.str(),
                        values.filterOverwrite.str(), values.locationType.str(),
                        values.mask.str()});
    }
    return rows;
}

FrameClip clipFromRows(const ClipRows& rows) {
    FrameClip clip;
    if (rows.empty() || rows.front().size() < 2) {
        return clip;
    }
    clip.columns = bounded(rows.front()[0], 1, kMostWords);
    clip.rows = bounded(rows.front()[1], 1, kMostFrames);
    clip.fragmented.assign(rows.front().begin() + 2, rows.front().end());
    for (std::size_t i = 1; i < rows.size(); ++i) {
        const auto& row = rows[i];
        if (row.size() < kPieceTexts || row[3].empty()) {
            continue;
        }
        ClipPiece piece;
        piece.column = bounded(row[0], 0, clip.columns - 1);
        piece.row = bounded(row[1], 0, clip.rows - 1);
        piece.everyFrame = row[2] == "1";
        auto& values = piece.values;
        values.name = row[3];
        values.parity = row[4];
        values.parityTransferOrder = row[5];
        values.transferOrder = row[6];
        values.filterOverwrite = row[7];
        values.locationType = row[8];
        values.mask = row[9];
        clip.pieces.push_back(std::move(piece));
    }
    return clip;
}

FrameClip clipFromNames(const ClipRows& rows, std::vector<std::string>& refused) {
    FrameClip clip;
    clip.rows = static_cast<int>(std::min<std::size_t>(rows.size(), kMostFrames));
    for (int row = 0; row < clip.rows; ++row) {
        const auto& texts = rows[static_cast<std::size_t>(row)];
        const int columns = static_cast<int>(std::min<std::size_t>(texts.size(), kMostWords));
        clip.columns = std::max(clip.columns, columns);
        for (int column = 0; column < columns; ++column) {
            const std::string name(trim(texts[static_cast<std::size_t>(column)]));
            if (name.empty()) {
                continue;
            }
            if (name.size() > kLongestClipName || !isPrintable(name) ||
                name.find(';') != std::string::npos) {
                refused.push_back(name);
                continue;
            }
            ClipPiece piece;
            piece.column = column;
            piece.row = row;
            piece.values.name = name;
            clip.pieces.push_back(std::move(piece));
        }
    }
    return clip;
}

}  // namespace kavu
