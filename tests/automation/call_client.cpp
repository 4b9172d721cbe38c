// A compiled client: opens a document, asks for a name very often, and tells how long it took.
//
//     call_client FILE COUNT flight|row
//
// "flight" sends all calls before it looks at the replies, "row" one after the other.
#include <chrono>
#include <cstdio>
#include <string_view>
#include <vector>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>

namespace {

QDBusMessage method(const char* name, const QVariantList& arguments) {
    auto message =
        QDBusMessage::createMethodCall(QStringLiteral("Kavu.Kavu"), QStringLiteral("/Kavu/Kavu"),
                                       QStringLiteral("Kavu.IKavu"), QString::fromLatin1(name));
    message.setArguments(arguments);
    return message;
}

bool isName(const QDBusMessage& reply) {
    return reply.type() == QDBusMessage::ReplyMessage && reply.arguments().size() == 1 &&
           reply.arguments().at(0).toString() == QStringLiteral("ENG1-N1");
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    if (argc != 4) {
        return 64;
    }
    auto bus = QDBusConnection::sessionBus();
    const qlonglong noWindow = 0;
    const auto path = QString::fromLocal8Bit(argv[1]);
    for (const auto& message :
         {method("OpenTmatsFile", {noWindow, path}), method("LoadPCMFormat", {noWindow, 1})}) {
        if (bus.call(message).type() != QDBusMessage::ReplyMessage) {
            return 2;
        }
    }
    const int count = QByteArray(argv[2]).toInt();
    const auto call = method("GetMeasurementName", {14, 1, 1});
    const auto begin = std::chrono::steady_clock::now();
    bool isRight = true;
    if (std::string_view(argv[3]) == "flight") {
        std::vector<QDBusPendingCall> calls;
        for (int i = 0; i < count; ++i) {
            calls.push_back(bus.asyncCall(call));
        }
        for (auto& each : calls) {
            each.waitForFinished();
            isRight = isRight && isName(each.reply());
        }
    } else {
        for (int i = 0; i < count; ++i) {
            isRight = isRight && isName(bus.call(call));
        }
    }
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
    std::printf("%.3f\n", took.count());
    return isRight ? 0 : 1;
}
