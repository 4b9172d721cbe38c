// The parts of a P group outside the model: they are kept as commands in working files,
// which the sheet edits and a save appends unchanged.
#pragma once

namespace kavu {

class PcmLoad;

void keepFrameFilter(PcmLoad& load);   ///< MFF, from 106-09 on
void keepFormatSwitch(PcmLoad& load);  ///< FFI, MLC, FSC
void keepAltTag(PcmLoad& load);        ///< ALT

}  // namespace kavu
