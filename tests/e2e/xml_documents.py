"""Makes TMATS documents whose values the schema of 106-11 has a place for."""

import random


class Maker:
    """One document; the same seed makes the same one."""

    def __init__(self, seed):
        self.chance = random.Random(seed)
        self.lines = []

    def maybe(self, likelihood=0.7):
        return self.chance.random() < likelihood

    def put(self, head, code, value):
        self.lines.append("%s%s:%s;" % (head, code, value))

    def some(self, head, pairs):
        """Some of the commands; a list is a choice of values, a number a text of that length."""
        for code, values in pairs:
            if self.maybe():
                self.put(head, code, self.value(values))

    def value(self, values):
        if isinstance(values, list):
            return self.chance.choice(values)
        if values == "number":
            return str(self.chance.randint(1, 99))
        if values == "real":
            return "%.3f" % self.chance.uniform(-90, 90)
        if values == "date":
            return "%02d-%02d-%04d" % (self.chance.randint(1, 12), self.chance.randint(1, 28),
                                       self.chance.randint(1990, 2030))
        if values == "datetime":
            return self.value("date") + "-%02d-%02d-%02d" % (
                self.chance.randint(0, 23), self.chance.randint(0, 59), self.chance.randint(0, 59))
        if values == "bits":
            return "".join(self.chance.choice("01") for _ in range(self.chance.randint(1, 24)))
        letters = "abc XYZ09&<>\"'\u00f6\u00e9-_/"
        return "t" + "".join(self.chance.choice(letters) for _ in range(self.chance.randint(0, 12)))

    def text(self):
        self.general()
        return "\n".join(self.lines).encode() + b"\n"

    def contact(self, head, front):
        self.some(head, [(front + str(number), "text") for number in range(1, 5)])

    def general(self):
        head = "G\\"
        self.put(head, "106", "11")
        self.some(head, [("PN", "text"), ("TA", "text"), ("OD", "date"), ("RN", "text"),
                         ("RD", "date"), ("UN", "text"), ("UD", "date"), ("TN", "text"),
                         ("TI1", "text"), ("TI2", ["Y", "N"]), ("TI3", ["Y", "N"]),
                         ("SC", list("UCSTO")), ("COM", "text")])
        contacts = self.chance.randint(0, 3)
        self.put(head, "POC\\N", contacts)
        for row in range(1, contacts + 1):
            self.put(head, "POC1-%d" % row, self.value("text"))
            self.some(head, [("POC%d-%d" % (column, row), "text") for column in (2, 3, 4)])
        sources = self.chance.randint(1, 3)
        self.put(head, "DSI\\N", sources)
        for row in range(1, sources + 1):
            self.source(row)

    def source(self, row):
        name = "Source %d" % row
        kind = self.chance.choice(["RF", "TAP", "STO", "DSS", "DRS", "REP", "OTH"])
        self.put("G\\", "DSI-%d" % row, name)
        self.put("G\\", "DST-%d" % row, kind)
        links = ["Link %d-%d" % (row, number) for number in range(self.chance.randint(0, 2))]
        if kind == "RF":
            self.transmission("T-%d\\" % row, name)
        else:
            self.recorder("R-%d\\" % row, name, links)
        self.multiplex("M-%d\\" % row, name, links)
        for number, link in enumerate(links):
            group = row * 5 + number
            self.chance.choice([self.pcm, self.bus, self.pam, self.message])(group, link)

    def transmission(self, head, name):
        self.put(head, "ID", name)
        self.some(head, [("TID", "text"), ("RF1", "text"), ("RF4", ["FM", "PM", "QPSK", "OTHR"]),
                         ("RF6", "text"), ("RF7", "text"), ("PMF1", "text"),
                         ("PMF3", ["CA", "CD", "OT"]), ("AN1", "text"),
                         ("AN2", ["RHCP", "LHCP", "LIN"]), ("AP", "text"), ("GST1", "text"),
                         ("GST5", ["AFC", "APC", "NON"]), ("GST7", ["BOTH", "B&DPR", "OTHER"]),
                         ("FM1", "text"), ("PLL", "text"), ("COM", "text")])
        self.contact(head, "AP\\POC")
        rows = self.chance.randint(0, 3)
        self.put(head, "SCO\\N", rows)
        for row in range(1, rows + 1):
            self.put(head, "SCO1-%d" % row, self.value("number"))
            self.put(head, "SCO2-%d" % row, self.value("number"))

    def recorder(self, head, name, links):
        self.put(head, "ID", name)
        self.some(head, [("RID", "text"), ("R1", "text"), ("TC1", ["ANAL", "SSR", "MD", "N"]),
                         ("TC5", ["10.5", "15.0", "OTHER"]), ("TT", ["LO", "RO"]),
                         ("NSB", "number"), ("RI1", "text"), ("RI3", ["Y", "N"]),
                         ("RI4", "datetime"), ("RI5", "datetime"), ("RI6", ["Y", "N"]),
                         ("RI7", list("1234567")), ("RI8", "datetime"), ("CRE", ["T", "F"]),
                         ("RSS", ["R", "C", "RP", "CP"]), ("RI9", "text"), ("RI10", "text"),
                         ("EV\\E", ["T", "F"]), ("IDX\\E", ["T", "F"]), ("COM", "text")])
        self.contact(head, "POC")
        self.contact(head, "DPOC")
        rows = self.chance.randint(0, 2)
        self.put(head, "RMM\\N", rows)
        for row in range(1, rows + 1):
            self.put(head, "RMMID-%d" % row, self.value("text"))
        tracks = self.chance.randint(0, 4)
        self.put(head, "N", tracks)
        for track in range(1, tracks + 1):
            self.put(head, "TK1-%d" % track, track)
            self.some(head, [("TK2-%d" % track, ["FMWBII", "SSR", "RO-K", "OTHER"]),
                             ("TK3-%d" % track, ["FWD", "REV"]), ("CHE-%d" % track, ["T", "F"])])
            if links and self.maybe():
                self.put(head, "CDLN-%d" % track, self.chance.choice(links))
            kind, pairs = self.chance.choice([
                ("PCMIN", [("PDTF", ["0", "1"]), ("PDP", ["UN", "PFS", "TM"]), ("ITH", "real")]),
                ("TIMEIN", [("TTF", ["0", "1"]), ("TFMT", list("ABGINUX"))]),
                ("VIDIN", [("VTF", ["0", "1", "2"]), ("VED", "number")]),
                ("IMGIN", [("ITF", ["0", "1"]), ("SIT", ["0", "3"])]),
                ("ETHIN", [("ENTF", ["0"])])])
            self.put(head, "CDT-%d" % track, kind)
            self.some(head, [("%s-%d" % (code, track), values) for code, values in pairs])

    def multiplex(self, head, name, links):
        self.put(head, "ID", name)
        self.some(head, [("BB1", ["PCM", "PAM", "OTHER"]), ("BB2", ["POS", "NEG"]),
                         ("BB3", "text"), ("BSG1", ["PCM", "PAM", "ANA"]), ("BSF1", "text"),
                         ("BSF2", ["CA", "CD", "OT"]), ("RC", "text"), ("COM", "text")])
        if links:
            self.put(head, "BB\\DLN", links[0])
        self.put(head, "SI\\N", len(links[1:]))
        for row, link in enumerate(links[1:], 1):
            self.put(head, "SI1-%d" % row, row)
            self.put(head, "SI\\DLN-%d" % row, link)

    def pcm(self, group, link):
        head = "P-%d\\" % group
        frames = self.chance.randint(1, 4)
        self.put(head, "DLN", link)
        self.some(head, [("D1", ["NRZ-L", "BIO-M", "OTHER"]), ("D2", ["100", "1E6"]),
                         ("D3", ["E", "U"]), ("D4", ["N", "I"]), ("D8", ["STD", "OTH", "N/A"]),
                         ("TF", ["ONE", "TWO"]), ("F1", ["8", "16"]), ("F2", ["M", "L"]),
                         ("F3", ["EV", "OD", "NO"]), ("F4", ["L", "T"]),
                         ("SYNC1", ["NS", "4"]), ("SYNC3", ["NS", "0"]), ("COM", "text")])
        self.put(head, "MF\\N", frames)
        self.put(head, "MF1", 16)
        pattern = self.value("bits")
        self.put(head, "MF4", len(pattern))
        self.put(head, "MF5", pattern)
        self.put(head, "ISF\\N", 1)
        self.put(head, "ISF1-1", self.value("text"))
        self.some(head, [("ISF2-1", ["ID"]), ("IDC1-1", ["1"]), ("IDC6-1", ["0"]),
                         ("IDC7-1", ["1"]), ("IDC8-1", [str(frames - 1)]), ("IDC10-1", ["INC", "DEC"])])
        head = "D-%d\\" % group
        self.put(head, "DLN", link)
        self.put(head, "ML\\N", 1)
        self.put(head, "MLN-1", self.value("text"))
        names = ["M%d-%d" % (group, number) for number in range(1, self.chance.randint(1, 8))]
        self.put(head, "MN\\N-1", len(names))
        for row, name in enumerate(names, 1):
            self.measurement(head, row, name)
        for number, name in enumerate(names):
            self.conversion("C-%d\\" % (group * 100 + number), name)

    def measurement(self, head, row, name):
        self.put(head, "MN-1-%d" % row, name)
        self.some(head, [("MN1-1-%d" % row, ["EV", "OD", "NO", "DE"]),
                         ("MN2-1-%d" % row, list("LTD")), ("MN3-1-%d" % row, list("MLD"))])
        self.put(head, "LT-1-%d" % row, "WDFR")
        locations = self.chance.randint(1, 2)
        self.put(head, "MML\\N-1-%d" % row, locations)
        for location in range(1, locations + 1):
            at = "-1-%d-%d" % (row, location)
            fragments = self.chance.randint(1, 2)
            self.put(head, "MNF\\N" + at, fragments)
            for fragment in range(1, fragments + 1):
                last = at + "-%d" % fragment
                self.put(head, "WP" + last, row + fragment)
                self.put(head, "WI" + last, 0)
                self.put(head, "FP" + last, 1)
                self.put(head, "FI" + last, 0)
                self.some(head, [("WFM" + last, ["FW", "1100"]), ("WFT" + last, list("MLD"))])
                self.put(head, "WFP" + last, fragment)

    def conversion(self, head, name):
        self.put(head, "DCN", name)
        self.some(head, [("TRD1", "text"), ("TRD4", ["U", "SB", "OE"]), ("TRD5", "date"),
                         ("MN1", "text"), ("MNA", "text"), ("MN3", "text"),
                         ("MN4", ["ANA", "PCM", "PAM", "OTH"]), ("BFM", ["INT", "SIG", "SIM", "BCD"]),
                         ("MOT1", "real"), ("MOT2", "real"), ("SR", "real"), ("CRT", "datetime"),
                         ("COM", "text")])
        self.contact(head, "POC")
        kind = self.chance.choice(["NON", "PRS", "COE", "DER", "DIS", "PTM", "VOI", "OTH"])
        self.put(head, "DCT", kind)
        if kind == "PRS":
            self.put(head, "PS1", "Y")
            self.put(head, "PS2", 1)
            self.put(head, "PS\\N", 2)
            for row in (1, 2):
                self.put(head, "PS3-%d" % row, row)
                self.put(head, "PS4-%d" % row, self.value("real"))
        elif kind == "COE":
            self.put(head, "CO1", "N")
            self.put(head, "CO\\N", 2)
            self.put(head, "CO", self.value("real"))
            self.put(head, "CO-1", self.value("real"))
            self.put(head, "CO-2", self.value("real"))
        elif kind == "DER":
            self.put(head, "DPAT", self.value(["N", "A"]))
            self.put(head, "DPA", self.value("text"))
            self.put(head, "DP\\N", 1)
            self.put(head, "DP-1", self.value("text"))
        elif kind == "DIS":
            self.put(head, "DICI\\N", 1)
            self.put(head, "DIC\\N", 1)
            self.put(head, "DICC-1", self.value("text"))
            self.put(head, "DICP-1", self.value("text"))
        elif kind == "PTM":
            self.put(head, "PTM", self.value(["H", "L", "M"]))
        elif kind == "VOI":
            self.put(head, "VOI\\E", self.value(["CVSD", "OTHR"]))
        elif kind == "OTH":
            self.put(head, "OTH", self.value("text"))

    def bus(self, group, link):
        head = "B-%d\\" % group
        self.put(head, "DLN", link)
        self.some(head, [("TA", "text"), ("COM", "text")])
        self.put(head, "NBS\\N", 1)
        self.put(head, "BID-1", "001")
        self.put(head, "BNA-1", self.value("text"))
        self.put(head, "BT-1", self.value(["1553", "A429"]))
        messages = self.chance.randint(1, 3)
        self.put(head, "NMS\\N-1", messages)
        for row in range(1, messages + 1):
            at = "-1-%d" % row
            self.put(head, "MID" + at, row)
            self.put(head, "MNA" + at, self.value("text"))
            if self.maybe(0.5):
                self.put(head, "CWE" + at, "W")
                self.put(head, "CMD" + at, "2C2C")
            else:
                self.put(head, "TRN" + at, self.value("text"))
                self.put(head, "TRA" + at, "00101")
                self.some(head, [("TRM" + at, ["0", "1"]), ("DWC" + at, ["4"])])
            self.put(head, "MN\\N" + at, 1)
            self.put(head, "MN" + at + "-1", "B%d-%d" % (group, row))
            self.put(head, "NML\\N" + at + "-1", 1)
            self.put(head, "MWN" + at + "-1-1", row)
            self.some(head, [("MBM" + at + "-1-1", ["FW", "1111"]),
                             ("MTO" + at + "-1-1", ["MSB", "LSB", "DEF"])])

    def pam(self, group, link):
        head = "A-%d\\" % group
        self.put(head, "DLN", link)
        self.put(head, "A1", self.value(["RZ", "NR"]))
        self.some(head, [("A2", ["N", "I"]), ("A3", ["STD", "OTH"]), ("A4", list("0HFX")),
                         ("A5", "number"), ("A\\N", "number"), ("RC1", "number"), ("COM", "text")])
        self.put(head, "SF\\N", 1)
        self.put(head, "SF1-1", 3)
        self.put(head, "SF2-1", "STD")

    def message(self, group, link):
        head = "S-%d\\" % group
        self.put(head, "DLN", link)
        self.put(head, "NS\\N", 1)
        self.put(head, "SNA-1", self.value("text"))
        self.some(head, [("TA", "text"), ("MDT-1", ["ASCII", "BINARY"]), ("DO-1", ["B", "L"]),
                         ("COM", "text")])
        if self.maybe(0.5):
            self.put(head, "MDL-1", "FIXED")
            self.put(head, "MLEN-1", 20)
        else:
            self.put(head, "MDL-1", "DELIMITED")
            self.put(head, "MDEL-1", "CRLF")
        self.put(head, "NMS\\N-1", 1)
        self.put(head, "MID-1-1", self.value("text"))
        self.put(head, "FLDS\\N-1-1", 1)
        self.put(head, "FNUM-1-1-1", 1)
        self.put(head, "MN\\N-1-1", 1)
        self.put(head, "MN-1-1-1", "S%d" % group)
        self.some(head, [("MBFM-1-1-1", ["ASCII", "FLOAT", "HEX"]), ("MDO-1-1-1", ["L", "B"])])
        self.put(head, "NML\\N-1-1-1", 1)
        self.put(head, "MFN-1-1-1-1", 1)
