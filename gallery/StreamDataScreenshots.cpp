#include "app/bus/GroupTreeEditor.h"
#include "app/bus/MessageRowDialog.h"
#include "app/bus/MessageSheet.h"
#include "app/bus/PacketRowDialog.h"
#include "app/bus/PacketSheet.h"
#include "gallery/EditionStage.h"
#include "gallery/Makers.h"

#include <memory>

#include <QTreeView>

namespace kavu {

namespace {

constexpr int kMessageEdition = 2011;
constexpr int kSamplePacketEdition = 2007;

using Values = std::vector<std::pair<std::string, std::string>>;

/// A link with a stream of fixed messages.
struct SampleMessages : EditionStage {
    explicit SampleMessages(ScreenshotStage& stage)
        : EditionStage(stage, kMessageEdition), edit(context, group, nullptr) {
        group.link = "Serial Messages";
        group.testArticle = "TEST-ARTICLE-1";
        group.comment = "Serial port 2 of the mission computer,\r\nrecorded since flight 12.";
        group.root = newMessageNode(MessageKind::Root);
        const auto add = [this](const GroupPlace& place, const Values& values) {
            (void)edit.add(nullptr, place, values);
        };
        add({}, {{"name", "Navigation"},
                 {"dataType", "Binary"},
                 {"layout", "Fixed"},
                 {"elementSize", "8"},
                 {"idLocation", "1"},
                 {"length", "32"},
                 {"orientation", "Little Endian"}});
        add({}, {{"name", "Maintenance"},
                 {"dataType", "ASCII"},
                 {"layout", "Delimited"},
                 {"delimiter", "CR LF"},
                 {"delimiterLength", "2"},
                 {"fieldDelimiter", "TAB"}});
        add({1}, {{"id", "7"}, {"name", "Position"}});
        add({1}, {{"id", "8"}, {"name", "Attitude"}});
        add({1, 1, 'F'}, {{"number", "1"}, {"position", "3"}, {"length", "4"}});
        add({1, 1, 'F'}, {{"number", "2"}, {"position", "7"}, {"length", "4"}});
        add({1, 1, 'M'}, {{"name", "LATITUDE"},
                          {"parity", "None"},
                          {"dataType", "Float"},
                          {"floatingPointFormat", "IEEE 754 Single Precision"}});
        add({1, 1, 'M'}, {{"name", "LONGITUDE"}, {"dataType", "Signed"}});
        add({1, 1, 'M', 1},
            {{"number", "1"}, {"bitmask", "FW"}, {"transferOrder", "MSB"}, {"fragment", "1"}});
    }

    MessageGroup group;
    MessageEdit edit;
};

/// A link with two source packets.
struct SamplePackets : EditionStage {
    explicit SamplePackets(ScreenshotStage& stage)
        : EditionStage(stage, kSamplePacketEdition), edit(context, group, nullptr) {
        group.link = "Telemetry Packets";
        (void)edit.set(nullptr, {},
                       Values{{"ASM", "00011010110011111111110000011101"},
                              {"FEF", "1"},
                              {"TFL", "1115"},
                              {"TA", "TEST-ARTICLE-1"},
                              {"VID", "010"},
                              {"SHF", "1"},
                              {"SHL", "4"},
                              {"DFL", "1100"},
                              {"COM", "Frames of the second virtual channel."}});
        const auto add = [this](const GroupPlace& place, const Values& values) {
            (void)edit.add(nullptr, place, values);
        };
        add({'T'}, {{"MN", "FRAME_TIME"}});
        add({'T', 1}, {{"WP", "1"}, {"WL", "16"}});
        add({'T', 1}, {{"WP", "2"}, {"WL", "16"}, {"FP", "2"}});
        add({'T'}, {{"MN", "FRAME_STATE"}, {"PAR", "EV"}});
        add({}, {{"PSHF", "1"},
                 {"APID", "64"},
                 {"PDL", "256"},
                 {"PSHL", "8"},
                 {"COM", "Housekeeping"}});
        add({}, {{"PSHF", "0"}, {"APID", "65"}, {"PDL", "512"}});
        add({1, 'H'}, {{"MN", "PACKET_TIME"}});
        add({1, 'S'}, {{"MN", "BUS_VOLTAGE"}});
        add({1, 'S', 1}, {{"WP", "5"}, {"WL", "12"}});
    }

    PacketGroup group;
    PacketEdit edit;
};

/// Makes a window that keeps the sample that it is over.
template <class Sample>
std::function<std::unique_ptr<QWidget>(ScreenshotStage&)> overSample(
    std::function<std::unique_ptr<QWidget>(Sample&)> make) {
    return [make](ScreenshotStage& stage) -> std::unique_ptr<QWidget> {
        if (stage.document == nullptr) {
            return nullptr;
        }
        const auto sample = std::make_shared<Sample>(stage);
        auto window = make(*sample);
        QObject::connect(window.get(), &QObject::destroyed, [sample] {});
        return window;
    };
}
template <class Sample, class Sheet>
std::function<std::unique_ptr<PropertySheet>(ScreenshotStage&)> sheetOverSample(
    std::function<std::unique_ptr<Sheet>(Sample&)> make) {
    return [make](ScreenshotStage& stage) -> std::unique_ptr<PropertySheet> {
        if (stage.document == nullptr) {
            return nullptr;
        }
        const auto sample = std::make_shared<Sample>(stage);
        auto sheet = make(*sample);
        sheet->editor().tree()->expandAll();
        QObject::connect(sheet.get(), &QObject::destroyed, [sample] {});
        return sheet;
    };
}

void addMessages(ScreenshotList& list) {
    list.addSheet({"SMessageStreams", "Misc"},
                  sheetOverSample<SampleMessages, MessageSheet>([](SampleMessages& sample) {
                      return std::make_unique<MessageSheet>(sample.form, sample.context,
                                                            sample.group, nullptr);
                  }));
    const auto addForm = [&](const char* name, const GroupPlace& place) {
        list.add(name, overSample<SampleMessages>([place](SampleMessages& sample) {
                     return std::make_unique<MessageRowDialog>(sample.form, sample.edit, place,
                                                               false, nullptr);
                 }));
    };
    addForm("EditMessageStream", {1});
    addForm("EditMessage", {1, 1});
    addForm("EditMessageField", {1, 1, 'F', 1});
    addForm("EditMessageMeasurement", {1, 1, 'M', 1});
    addForm("EditMessageLocation", {1, 1, 'M', 1, 1});
}

void addPackets(ScreenshotList& list) {
    list.addSheet({"Packet1", "Packet2", "Packet3", "Packet4", "Packet5"},
                  sheetOverSample<SamplePackets, PacketSheet>([](SamplePackets& sample) {
                      return std::make_unique<PacketSheet>(sample.form, sample.context,
                                                           sample.group, nullptr,
                                                           PacketTree::EditConversion());
                  }));
    const auto addForm = [&](const char* name, const GroupPlace& place, PacketForm which) {
        list.add(name, overSample<SamplePackets>([place, which](SamplePackets& sample) {
                     return std::make_unique<PacketRowDialog>(sample.form, sample.edit, place,
                                                              which, nullptr);
                 }));
    };
    addForm("EditSourcePacket", {1}, PacketForm::Row);
    addForm("EditPacketComment", {1}, PacketForm::Comment);
    addForm("EditPacketMeasurement", {1, 'S', 1}, PacketForm::Row);
    addForm("EditPacketLocation", {1, 'S', 1, 1}, PacketForm::Row);
}

}  // namespace

void addStreamDataScreenshots(ScreenshotList& list) {
    addMessages(list);
    addPackets(list);
}

}  // namespace kavu
