// The asynchronous formats of a PCM group: embedded streams (AEF) and data merge (ADM), as far as a
// plan cannot write them.
#pragma once

#include "xml/bridge/write/ExportRun.h"
#include "xml/bridge/write/PlanWriter.h"

#include <string_view>

namespace kavu {

class AsyncWriter {
  public:
    /// `stream` is the number of the stream, for errors. The run must outlive the writer.
    AsyncWriter(ExportRun& run, int stream) : run_(run), stream_(stream) {}

    /// Writes a special step of the plan of a PCM group at a row. False if the definition ends
    /// here.
    bool write(PlanWriter& plan, const ElementStep& step, const RowNumbers& at);

  private:
    struct Codes;
    bool writeLocations(PlanWriter& plan, const ElementStep& step, const Codes& codes,
                        const RowNumbers& at);
    void writePatterns(PlanWriter& plan, const ElementStep& step, const RowNumbers& at);
    void writeColumn(PlanWriter& plan, const ElementStep& step, const RowNumbers& at);
    void writeRanges(PlanWriter& plan, const ElementStep& step, const Codes& codes,
                     const RowNumbers& at);
    void writeRange(PlanWriter& plan, const ElementStep& step, const Codes& codes,
                    const RowNumbers& range);

    ExportRun& run_;
    int stream_;
};

}  // namespace kavu
