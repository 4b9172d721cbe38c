// A packet group in a document, read, edited and written.
#pragma once

#include "bus/DataStage.h"
#include "bus/packet/PacketEdit.h"

namespace kavu::test {

/// A transfer frame and one packet with everything, as it is written.
inline constexpr std::string_view kWholePackets =
    "ASM:11010;FEF:1;CEF:0;TFL:1115;TA:X1;VID:010;OCF:1;SHF:1;OSF:0;SHL:8;TNMS\\N:1;TMN-1:T1;"
    "TPAR-1:EV;TPTO-1:L;TNML\\N-1:1;TWP-1-1:1;TWL-1-1:8;TBM-1-1:FW;TTO-1-1:MSB;TFP-1-1:1;DFL:99;"
    "SP\\N:1;PSHF-1:1;APID-1:42;PDL-1:100;PSHL-1:4;HNMS\\N-1:1;HMN-1-1:H1;HPAR-1-1:NO;HPTO-1-1:T;"
    "HNML\\N-1-1:1;HWP-1-1-1:1;HWL-1-1-1:8;HBM-1-1-1:FW;HTO-1-1-1:LSB;HFP-1-1-1:2;SNMS\\N-1:1;"
    "SMN-1-1:D1;SPAR-1-1:OD;SPTO-1-1:L;SNML\\N-1-1:0;COM-1:packet;COM:group;";

class PacketStage : public DataStage {
  protected:
    explicit PacketStage(int edition = 2007) : DataStage(edition) {}

    void load(std::string_view commands) {
        writeGroup(commands);
        read = loadPackets(t.context, &t.ui, "Link", group);
    }
    [[nodiscard]] std::string stored() {
        EXPECT_TRUE(storePackets(t.context, &t.ui, group));
        return t.read(groupFile('S', group.index));
    }
    [[nodiscard]] bool writes(std::string_view command) {
        return stored().find("S-1\\" + std::string(command) + ";\r\n") != std::string::npos;
    }
    [[nodiscard]] std::span<const GroupRow> packets() const {
        return group.record.rows(packet_field::kPackets);
    }
    [[nodiscard]] static std::span<const GroupRow> rows(char family, const GroupRow& owner) {
        return owner.rows(packetFamily(family).count.code);
    }

    bool add(const GroupPlace& place, const Values& values) {
        return PacketEdit(t.context, group, nullptr).add(&t.ui, place, values);
    }
    bool set(const GroupPlace& place, const Values& values) {
        return PacketEdit(t.context, group, nullptr).set(&t.ui, place, values);
    }
    bool remove(const GroupPlace& place) {
        return PacketEdit(t.context, group, nullptr).remove(&t.ui, place);
    }

    PacketGroup group;
    bool read = false;
};

}  // namespace kavu::test
