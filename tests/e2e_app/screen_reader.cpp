// Reads what a running program exposes to assistive technology, over the accessibility bus
// and with the calls of a screen reader; writes the answers, and how long each took, as JSON
// to standard output.
//
//     screen_reader PROGRAM TABLE REQUESTS
//
// Walks from the registry to the program and on to the table of that name, reads its rows and
// every cell in view once, then single cells until there were at least REQUESTS requests for
// them. Ends with 1 and a reason on standard error if something is missing.
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <utility>

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRect>
#include <QThread>

namespace {

/// An object on the bus: who answers for it, and its path there.
struct Node {
    QString service;
    QDBusObjectPath path;
};

QDBusArgument& operator<<(QDBusArgument& argument, const Node& node) {
    argument.beginStructure();
    argument << node.service << node.path;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, Node& node) {
    argument.beginStructure();
    argument >> node.service >> node.path;
    argument.endStructure();
    return argument;
}

}  // namespace

Q_DECLARE_METATYPE(Node)

namespace {

constexpr int kPatience = 20000;        // ms for one answer
constexpr int kMostObjects = 5000;      // of a window, without the cells of the table
constexpr qsizetype kMostHeard = 1500;  // cells of a table
constexpr int kLists = 9;               // times that the rows are listed
constexpr unsigned kOfScreen = 0;       // ATSPI_COORD_TYPE_SCREEN
constexpr unsigned kTableRole = 55;     // ATSPI_ROLE_TABLE
constexpr unsigned kCellRole = 56;      // ATSPI_ROLE_TABLE_CELL
constexpr unsigned kRowRole = 90;       // ATSPI_ROLE_TABLE_ROW

const QString kAccessible = QStringLiteral("org.a11y.atspi.Accessible");
const QString kTable = QStringLiteral("org.a11y.atspi.Table");

[[noreturn]] void fail(const QString& reason) {
    std::fprintf(stderr, "%s\n", qPrintable(reason));
    std::exit(1);
}

class Reader {
  public:
    explicit Reader(const QDBusConnection& bus) : bus_(bus) {}

    QVariant call(const Node& node, const QString& interface, const QString& method,
                  const QVariantList& arguments = {}) {
        auto message =
            QDBusMessage::createMethodCall(node.service, node.path.path(), interface, method);
        message.setArguments(arguments);
        QElapsedTimer timer;
        timer.start();
        const auto answer = bus_.call(message, QDBus::Block, kPatience);
        times_.append(static_cast<double>(timer.nsecsElapsed()) / 1e6);
        if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().isEmpty()) {
            fail(node.service + QLatin1Char(' ') + node.path.path() + QLatin1Char(' ') + method +
                 QStringLiteral(": ") + answer.errorMessage());
        }
        return answer.arguments().constFirst();
    }
    QVariant property(const Node& node, const QString& interface, const QString& name) {
        const auto value = call(node, QStringLiteral("org.freedesktop.DBus.Properties"),
                                QStringLiteral("Get"), {interface, name});
        return qvariant_cast<QDBusVariant>(value).variant();
    }
    QString name(const Node& node) {
        return property(node, kAccessible, QStringLiteral("Name")).toString();
    }
    unsigned role(const Node& node) {
        return call(node, kAccessible, QStringLiteral("GetRole")).toUInt();
    }
    int number(const Node& node, const QString& interface, const char* property_) {
        return property(node, interface, QLatin1String(property_)).toInt();
    }
    QList<Node> children(const Node& node) {
        const auto answer = call(node, kAccessible, QStringLiteral("GetChildren"));
        return qdbus_cast<QList<Node>>(answer.value<QDBusArgument>());
    }
    Node cellAt(const Node& table, int row, int column) {
        const auto answer = call(table, kTable, QStringLiteral("GetAccessibleAt"), {row, column});
        return qdbus_cast<Node>(answer.value<QDBusArgument>());
    }

    /// Where it is on the screen: left, top, width and height in pixels.
    QJsonArray extents(const Node& node) {
        const auto answer = call(node, QStringLiteral("org.a11y.atspi.Component"),
                                 QStringLiteral("GetExtents"), {kOfScreen});
        const auto place = qdbus_cast<QRect>(answer.value<QDBusArgument>());
        return {place.x(), place.y(), place.width(), place.height()};
    }

    /// How long the answers took since the last time, in milliseconds.
    QJsonArray takeTimes() { return std::exchange(times_, {}); }

  private:
    QDBusConnection bus_;
    QJsonArray times_;
};

QDBusConnection accessibilityBus() {
    QDBusInterface launcher(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                            QStringLiteral("org.a11y.Bus"), QDBusConnection::sessionBus());
    const auto answer = launcher.call(QStringLiteral("GetAddress"));
    if (answer.type() != QDBusMessage::ReplyMessage) {
        fail(QStringLiteral("no accessibility bus: ") + answer.errorMessage());
    }
    const auto address = answer.arguments().constFirst().toString();
    auto bus = QDBusConnection::connectToBus(address, QStringLiteral("accessibility"));
    if (!bus.isConnected()) {
        fail(address + QStringLiteral(": ") + bus.lastError().message());
    }
    return bus;
}

/// A program makes itself known some time after its start.
Node findProgram(Reader& reader, const QString& name) {
    const Node desktop{QStringLiteral("org.a11y.atspi.Registry"),
                       QDBusObjectPath(QStringLiteral("/org/a11y/atspi/accessible/root"))};
    QStringList there;
    for (QDeadlineTimer deadline(kPatience); !deadline.hasExpired(); QThread::msleep(50)) {
        there.clear();
        for (const auto& program : reader.children(desktop)) {
            there.append(reader.name(program));
            if (there.constLast() == name) {
                return program;
            }
        }
    }
    fail(QStringLiteral("no such program is registered; there are: ") +
         there.join(QStringLiteral(", ")));
}

/// The table, and how many objects were met on the way; tables are not entered.
std::pair<Node, int> findTable(Reader& reader, const Node& program, const QString& name) {
    std::deque<Node> open{program};
    for (int met = 1; !open.empty() && met <= kMostObjects; ++met) {
        const auto node = open.front();
        open.pop_front();
        if (reader.role(node) == kTableRole) {
            if (reader.name(node) == name) {
                return {node, met};
            }
            continue;
        }
        for (const auto& child : reader.children(node)) {
            open.push_back(child);
        }
    }
    fail(QStringLiteral("the program has no table of that name"));
}

/// The rows that the table exposes, and the cells of each; and what the cells are called and
/// are: all of them, or every n-th where they are too many to hear in a test.
QJsonObject hearAll(Reader& reader, const Node& table) {
    QList<Node> rows;
    for (int i = 0; i < kLists; ++i) {
        rows = reader.children(table);
    }
    QList<Node> cells;
    for (const auto& row : rows) {
        cells += reader.children(row);
    }
    const auto lists = reader.takeTimes();
    QJsonArray rowNames;
    int strange = 0;
    for (const auto& row : rows) {
        rowNames.append(reader.name(row));
        strange += reader.role(row) == kRowRole ? 0 : 1;
    }
    reader.takeTimes();
    const qsizetype step = cells.size() / kMostHeard + 1;
    QJsonArray names;
    for (qsizetype i = 0; i < cells.size(); i += step) {
        names.append(reader.name(cells[i]));
        strange += reader.role(cells[i]) == kCellRole ? 0 : 1;
    }
    return {{QStringLiteral("listed"), cells.size()},
            {QStringLiteral("lists"), lists},
            {QStringLiteral("rowNames"), rowNames},
            {QStringLiteral("step"), step},
            {QStringLiteral("names"), names},
            {QStringLiteral("strange"), strange},
            {QStringLiteral("answers"), reader.takeTimes()}};
}

/// Single cells all over the view, asked for by row and column.
QJsonObject hearSingle(Reader& reader, const Node& table, int rows, int columns, int requests) {
    QJsonArray cells;
    for (int i = 0; 2 * i < requests; ++i) {
        // Steps that are no divisors of usual sizes come by different cells each time.
        const int row = i * 7 % rows;
        const int column = i * 11 % columns;
        cells.append(QJsonArray{row, column, reader.name(reader.cellAt(table, row, column))});
    }
    return {{QStringLiteral("cells"), cells}, {QStringLiteral("answers"), reader.takeTimes()}};
}

/// What older readers ask: a cell has one number in the table, and that leads back to its row
/// and its column. True if it does, for the first cell and the last.
bool leadsBack(Reader& reader, const Node& table, int rows, int columns) {
    const auto number = [&](const char* method, const QVariantList& arguments) {
        return reader.call(table, kTable, QLatin1String(method), arguments).toInt();
    };
    for (const auto& [row, column] : {std::pair{0, 0}, std::pair{rows - 1, columns - 1}}) {
        const int index = number("GetIndexAt", {row, column});
        if (number("GetRowAtIndex", {index}) != row ||
            number("GetColumnAtIndex", {index}) != column) {
            return false;
        }
    }
    // The numbers of the rows, which come first, are answered as well.
    return number("GetRowAtIndex", {rows - 1}) == rows - 1;
}

}  // namespace

int main(int argc, char* argv[]) {
    QCoreApplication application(argc, argv);
    const auto arguments = QCoreApplication::arguments();
    if (arguments.size() != 4) {
        fail(QStringLiteral("usage: screen_reader PROGRAM TABLE REQUESTS"));
    }
    qDBusRegisterMetaType<Node>();
    qDBusRegisterMetaType<QList<Node>>();
    Reader reader(accessibilityBus());
    const auto program = findProgram(reader, arguments[1]);
    const auto [table, met] = findTable(reader, program, arguments[2]);
    reader.takeTimes();
    const int rows = reader.number(table, kTable, "NRows");
    const int columns = reader.number(table, kTable, "NColumns");
    const int children = reader.number(table, kAccessible, "ChildCount");
    if (rows < 1 || columns < 1) {
        fail(QStringLiteral("the table is empty"));
    }
    const auto sizes = reader.takeTimes();
    const QJsonObject heard{
        {QStringLiteral("place"), reader.extents(table)},
        {QStringLiteral("firstCell"), reader.extents(reader.cellAt(table, 0, 0))},
        {QStringLiteral("lastCell"), reader.extents(reader.cellAt(table, rows - 1, columns - 1))},
        {QStringLiteral("places"), reader.takeTimes()},
        {QStringLiteral("met"), met},
        {QStringLiteral("rows"), rows},
        {QStringLiteral("columns"), columns},
        {QStringLiteral("children"), children},
        {QStringLiteral("sizes"), sizes},
        {QStringLiteral("leadsBack"), leadsBack(reader, table, rows, columns)},
        {QStringLiteral("numbers"), reader.takeTimes()},
        {QStringLiteral("all"), hearAll(reader, table)},
        {QStringLiteral("single"), hearSingle(reader, table, rows, columns, arguments[3].toInt())}};
    std::printf("%s\n", QJsonDocument(heard).toJson(QJsonDocument::Compact).constData());
    return 0;
}
