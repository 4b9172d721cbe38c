"""The measurement database of the flight test: an XML file as the program writes it."""

from xml.sax.saxutils import escape

CONVERSION = "DataConversionAttributes/"
TRANSDUCER = CONVERSION + "TransducerInformation/"
CONTACT = CONVERSION + "PointOfContact/"
MEASURAND = CONVERSION + "Measurand/"
OTHER = CONVERSION + "OtherInformation/"
BUS = "BusAttributes/"

# In the order of the file.
ELEMENTS = [
    "Name", "Root", "Length", "BitMask", "MeasurementTransferOrder", "ParityTransferOrder", "Parity",
    BUS + "Name", BUS + "Number", BUS + "RemoteTerminal/Name", BUS + "RemoteTerminal/Address",
    BUS + "SubTerminal/Name", BUS + "SubTerminal/Address", BUS + "TransmitReceiveMode",
    BUS + "WordNumber",
    TRANSDUCER + "Type", TRANSDUCER + "ModelNumber", TRANSDUCER + "SerialNumber",
    TRANSDUCER + "SecurityClassification", TRANSDUCER + "OriginationDate",
    TRANSDUCER + "RevisionNumber", TRANSDUCER + "Orientation",
    CONTACT + "Name", CONTACT + "Agency", CONTACT + "Address", CONTACT + "Telephone",
    MEASURAND + "Description", MEASURAND + "EngineeringUnits",
    CONVERSION + "TelemetryValueDefinition/BinaryFormat",
    OTHER + "MeasurementValue/Low", OTHER + "MeasurementValue/High",
    OTHER + "AlertValue/Low", OTHER + "AlertValue/High", OTHER + "SampleRate",
]


class Writer:
    """Elements line by line, with a tab for each level."""

    def __init__(self):
        self.lines = []
        self.open = []

    def line(self, text):
        self.lines.append("\t" * (len(self.open) + 1) + text)

    def enter(self, path):
        common = 0
        while common < min(len(self.open), len(path)) and self.open[common] == path[common]:
            common += 1
        while len(self.open) > common:
            name = self.open.pop()
            self.line(f"</{name}>")
        for name in path[common:]:
            self.line(f"<{name}>")
            self.open.append(name)

    def leaf(self, name, text, attributes=""):
        self.line(f"<{name}{attributes}>{escape(text)}</{name}>")


def coefficients(*terms):
    return "Coefficients", [("Coefficients", "Coefficient", term) for term in terms]


def pairs(*values):
    return "Pair Sets", [("PairSets", "Pair", value) for value in values]


def events(*values):
    return "Discrete", [("Discrete", "Event", value) for value in values]


PARTS = {"Pair": ("TmValue", "EuValue"), "Event": ("ConversionData", "EventDefinition")}


def write_conversion(writer, kind, items):
    attribute = f' Type="{kind}"'
    writer.enter(["Measurement", "DataConversionAttributes"])
    writer.line(f"<DataConversion{attribute}>")
    writer.open.append("DataConversion")
    writer.line(f"<{items[0][0]}>")
    writer.open.append(items[0][0])
    for number, (_, element, value) in enumerate(items):
        if element == "Coefficient":
            writer.leaf(element, value, f' N="{number}"')
            continue
        writer.line(f"<{element}>")
        writer.open.append(element)
        for part, text in zip(PARTS[element], value):
            writer.leaf(part, text)
        writer.open.pop()
        writer.line(f"</{element}>")


def record(values, conversion=None):
    writer = Writer()
    writer.enter(["Measurement"])
    for element in ELEMENTS:
        if element in values:
            *path, name = element.split("/")
            writer.enter(["Measurement"] + path)
            writer.leaf(name, values[element])
    if conversion:
        write_conversion(writer, *conversion)
    writer.enter([])
    return "\n".join(writer.lines)


def word(name, description, units, low, high, **more):
    values = {"Name": name, "Length": "16", "BitMask": "FW", "MeasurementTransferOrder": "MSB First",
              "ParityTransferOrder": "Default", "Parity": "Default",
              TRANSDUCER + "SecurityClassification": "Unclassified",
              CONTACT + "Name": "Calibration desk", CONTACT + "Agency": "Kestrel test team",
              MEASURAND + "Description": description,
              CONVERSION + "TelemetryValueDefinition/BinaryFormat": "Unsigned Binary"}
    if units:
        values[MEASURAND + "EngineeringUnits"] = units
    if low:
        values[OTHER + "MeasurementValue/Low"] = low
        values[OTHER + "MeasurementValue/High"] = high
    values.update(more)
    return values


def bus(name, description, number, mask="FW"):
    return word(name, description, "", "", "", **{
        "BitMask": mask, BUS + "Name": "Left", BUS + "Number": "0001",
        BUS + "RemoteTerminal/Name": "AIR DATA", BUS + "RemoteTerminal/Address": "00101",
        BUS + "SubTerminal/Name": "AIR DATA 1", BUS + "SubTerminal/Address": "00010",
        BUS + "TransmitReceiveMode": "Transmit", BUS + "WordNumber": number})


def flight_database():
    records = [
        record(word("ENG1-N1", "Engine 1 fan speed, new calibration", "PCT", "0", "110",
                    **{TRANSDUCER + "Type": "TACHOMETER", TRANSDUCER + "SerialNumber": "SN2007"}),
               coefficients("0.0", "0.00167912")),
        record(word("ENG1-N2", "Engine 1 core speed", "PCT", "0", "115"),
               coefficients("0.0", "0.00175")),
        record(word("ENG1-EGT", "Engine 1 exhaust gas temperature", "DEGC", "0", "1200",
                    **{OTHER + "AlertValue/High": "950"}),
               pairs(("0", "-40"), ("32768", "560"), ("65535", "1200"))),
        record(word("EVENT-MARK", "Event marks of the crew", "", "", "")),
        record(word("EVENT-PILOT", "Event mark of the pilot", "", "", "",
                    **{"Root": "EVENT-MARK", "BitMask": "1000000000000000"}),
               events(("0", "No mark"), ("1", "Mark"))),
        record(word("EVENT-ENGINEER", "Event mark of the engineer", "", "", "",
                    **{"Root": "EVENT-MARK", "BitMask": "0100000000000000"}),
               events(("0", "No mark"), ("1", "Mark"))),
        record(bus("ADC-MACH", "Mach number of the air data computer", "3"),
               coefficients("0.0", "0.0001")),
        record(bus("ADC-ALT", "Pressure altitude of the air data computer", "4"),
               coefficients("-1000", "1.0")),
    ]
    text = "<MeasurementDatabase>\n" + "\n".join(records) + "\n</MeasurementDatabase>\n"
    return text.encode("utf-8")
