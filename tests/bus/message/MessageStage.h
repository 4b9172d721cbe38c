// A message data group in a document, read, edited and written.
#pragma once

#include "bus/DataStage.h"
#include "bus/message/MessageEdit.h"

namespace kavu::test {

class MessageStage : public DataStage {
  protected:
    explicit MessageStage(int edition = 2009) : DataStage(edition) {}

    void load(std::string_view commands) {
        writeGroup(commands);
        read = loadMessages(t.context, &t.ui, "Link", group);
    }
    [[nodiscard]] std::string stored() {
        EXPECT_TRUE(storeMessages(t.context, &t.ui, group));
        return t.read(groupFile('S', group.index));
    }
    [[nodiscard]] bool writes(std::string_view command) {
        return stored().find("S-1\\" + std::string(command) + ";\r\n") != std::string::npos;
    }
    [[nodiscard]] const MessageStream& stream(std::size_t number = 1) {
        return group.root.children.at(number - 1);
    }
    [[nodiscard]] const MessageStream& message(std::size_t number = 1) {
        return stream().children.at(number - 1);
    }
    [[nodiscard]] const MessageStream& measurement(std::size_t number = 1) {
        return measurementsOf(message()).children.at(number - 1);
    }

    bool add(const GroupPlace& place, const Values& values) {
        return MessageEdit(t.context, group, nullptr).add(&t.ui, place, values);
    }
    bool set(const GroupPlace& place, const Values& values) {
        return MessageEdit(t.context, group, nullptr).set(&t.ui, place, values);
    }
    bool remove(const GroupPlace& place) {
        return MessageEdit(t.context, group, nullptr).remove(&t.ui, place);
    }

    MessageGroup group;
    bool read = false;
};

/// One stream with everything in it, as it is written.
inline constexpr std::string_view kWholeMessages =
    "TA:X1;NS\\N:1;SNA-1:S1;MDT-1:BINARY;MDL-1:FIXED;MES-1:16;MIDL-1:1;MLEN-1:64;"
    "DO-1:BIG ENDIAN;NMS\\N-1:1;MID-1-1:7;MNA-1-1:Temp;NFLDS\\N-1-1:1;FNUM-1-1-1:1;FPOS-1-1-1:8;"
    "FLEN-1-1-1:8;MN\\N-1-1:1;MN-1-1-1:M1;MN1-1-1-1:EV;MN2-1-1-1:L;MBFM-1-1-1:FLOAT;"
    "MFPF-1-1-1:IEEE_32;MDO-1-1-1:B;NML\\N-1-1-1:1;MFN-1-1-1-1:1;MBM-1-1-1-1:FW;MTO-1-1-1-1:MSB;"
    "MFP-1-1-1-1:1;COM:a;";

}  // namespace kavu::test
