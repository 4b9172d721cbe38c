"""The sample document in any edition."""

from .measurements import bus, elsewhere, number, stream_1, stream_2, stream_3
from .streams import (PCM_STREAMS, STREAM_BUS, write_bus, write_format, write_measurements)
from .writer import Writer

YEAR = {1996: 1998, 2009: 2009, 2011: 2012}


def write_general(out, name):
    g = "G\\"
    year = YEAR[out.edition]
    recorder = "TAP" if out.edition < 2004 else "STO"
    out.put_all(
        g, ("FN", name, 2009), ("PN", "KESTREL-7"), ("TA", "Air vehicle 2, flight test article"),
        ("106", f"{out.edition % 100:02d}", 1999), ("OD", out.date("03-09", year)),
        ("RN", "B"), ("RD", out.date("05-21", year)), ("UN", "02"),
        ("UD", out.date("06-14", year)), ("TN", "FT-0012"), ("POC\\N", 2),
        ("POC1-1", "Instrumentation desk"), ("POC2-1", "Kestrel test team"),
        ("POC3-1", "Hangar 3, North Field"), ("POC4-1", "555-0101"),
        ("POC1-2", "Data reduction"), ("POC2-2", "Kestrel test team"),
        ("POC3-2", "Building 12, North Field"), ("POC4-2", "555-0102"),
        ("DSI\\N", 3), ("DSI-1", "L-Band Telemetry"), ("DST-1", "RF"),
        ("DSI-2", "S-Band Telemetry"), ("DST-2", "RF"), ("DSI-3", "Onboard Recorder"),
        ("DST-3", recorder), ("TI1", "2.5"), ("TI2", "Y"), ("TI3", "Y"), ("SC", "U"),
        ("COM", "Flutter clearance to 0.95 Mach, first flight of the block.\n"
                "\nTest points 1 to 7 at 10,000 ft, 8 to 14 at 20,000 ft.\n"
                "\tChase aircraft: yes.\n\tRecorder on before taxi: yes."))


def write_transmission(out, index, name, frequency, bandwidth, comment):
    t = f"T-{index}\\"
    out.put_all(
        t, ("ID", name), ("TID", f"TX-{index}"), ("RF1", frequency), ("RF2", "2000"),
        ("RF3", bandwidth), ("RF4", "FM"), ("RF5", "350"), ("RF6", "10"),
        ("SCO\\N", 0 if index == 1 else 2))
    if index == 2:
        out.put_all(t, ("SCO1-1", "15"), ("SCO2-1", "0.8"), ("SCO1-2", "18"), ("SCO2-2", "0.5"))
    out.put_all(
        t, ("RF7", "1.0"), ("PMF1", "750"), ("PMF2", "36"), ("PMF3", "CA"),
        ("AN1", "BLADE"), ("AN2", "LIN"), ("AN3", "LOWER FUSELAGE"), ("AP", "KT-ANT-004"),
        ("AP\\POC1", "Antenna desk"), ("AP\\POC2", "Kestrel test team"),
        ("AP\\POC3", "Building 12, North Field"), ("AP\\POC4", "555-0107"),
        ("GST1", "1500"), ("GST2", "750"), ("GST3", "100"), ("GST4", "-95"), ("GST5", "AFC"),
        ("GST6", "100"), ("GST7", "RHCP"), ("FM1", "750"), ("FM2", "1.0"), ("COM", comment))


CHANNELS = [
    # data type, link name, kind of the details
    ("TIMEIN", "Recorder time", "time"), ("PCMIN", "PCM Stream 1", "pcm"),
    ("PCMIN", "PCM Stream 2", "pcm"), ("PCMIN", "PCM Stream 3", "pcm"),
    ("1553IN", "1553 Bus 1", "bus"), ("VIDIN", "HUD video", "video"),
]
DETAILS = {
    "time": [("TTF", 1, 2007), ("TFMT", "B"), ("TSRC", "E", 2005)],
    "pcm": [("PDTF", 1), ("PDP", "PFS"), ("ICE", 0, 2007), ("IST", "RS422", 2007),
            ("ITM", "LOW-Z", 2007), ("MFF\\E", "F", 2009), ("POF\\E", "F", 2009)],
    "bus": [("BTF", 1), ("MRF\\E", "F", 2009)],
    "video": [("VTF", 0, 2007), ("VXF", 0, 2007), ("VST", 1, 2007), ("VSF", 1, 2007),
              ("CBR", "4000000", 2007), ("VCO\\OE", "F", 2009)],
}


def write_recorder(out):
    r = "R-1\\"
    year = YEAR[out.edition]
    old = out.edition < 2004
    out.put_all(
        r, ("ID", "Onboard Recorder"), ("RID", "REC-01"), ("R1", "Recorder in the avionics bay"),
        ("TC1", "ANAL" if old else "OTHR"), ("TC2", "NORTHREC"),
        ("TC3", "MT-14" if old else "CART-64G"), ("RML", "I", 2011), ("ERBS", "AUTO", 2011),
        ("TC4", "1.0" if old else ""), ("TC5", "14.0" if old else ""),
        ("N", len(CHANNELS)), ("TC6", "60" if old else ""), ("TC7", "WB" if old else ""),
        ("TC8", "Y" if old else ""), ("NSB", 4, 2005), ("RI1", "NORTHREC"), ("RI2", "NR-200"),
        ("RI3", "Y"), ("RI4", out.date("06-14", year, "-08-30-00")),
        ("POC1", "Recorder desk"), ("POC2", "Kestrel test team"),
        ("POC3", "Hangar 3, North Field"), ("POC4", "555-0104"),
        ("RI6", "N", 2011), ("RIM\\N", 1, 2009), ("RIMI-1", "BASE", 2009),
        ("RIMS-1", "BM-0031", 2009), ("RIMF-1", "1.4.2", 2009), ("EV\\E", "T", 2005),
        ("EV\\N", 1, 2005), ("EV\\ID-1", "PILOT", 2005), ("EV\\D-1", "Pilot event marker", 2005),
        ("EV\\T-1", "D", 2005), ("EV\\P-1", 1, 2005), ("EV\\CM-1", 1, 2007),
        ("EV\\IC-1", "T", 2007), ("EV\\LC-1", 100, 2007), ("EV\\MS-1", "PCM Stream 1", 2007),
        ("EV\\MN-1", "EVENT-MARK", 2007), ("IDX\\E", "T", 2005), ("IDX\\IT", "T", 2005),
        ("IDX\\ITV", "1000000", 2005))
    for n, (kind, link, details) in enumerate(CHANNELS, 1):
        out.put_all(r, (f"TK1-{n}", n), (f"TK2-{n}", "HDDR" if old else ""),
                    (f"IDDR-{n}", "N", 2011), (f"DSI-{n}", "Onboard Recorder"),
                    (f"TK3-{n}", "FWD"), (f"TK4-{n}", n, 2007), (f"CHE-{n}", "T", 2004),
                    (f"CDT-{n}", kind, 2004), (f"CDLN-{n}", link, 2007))
        for code, value, *since in DETAILS[details]:
            out.put(r, f"{code}-{n}", value, *(since or [2004]))
    out.put_all(r, ("RT\\N", 1), ("RT1-1", 1), ("RT2-1", "100" if old else ""),
                ("COM", "Channel 6 is the head-up display camera."))


def write_multiplex(out):
    other = "OTH" if out.edition < 1999 else "OT"
    for index, source, link in ((1, "L-Band Telemetry", "PCM Stream 1"),
                                (2, "S-Band Telemetry", "PCM Stream 2"),
                                (3, "Onboard Recorder", "1553 Bus 1")):
        m = f"M-{index}\\"
        out.put_all(m, ("ID", source), ("BB1", "PCM/SCO" if index == 2 else "PCM"),
                    ("BB2", "POS"), ("BB3", "750"), ("BSG1", "PCM"), ("BSF1", "750"),
                    ("BSF2", "CA"), ("BB\\DLN", link))
        if index != 2:
            out.put(m, "SI\\N", 0)
            continue
        out.put_all(m, ("SCO\\N", 2), ("SI\\N", 2), ("SI1-1", "15"), ("SI2-1", "PCM"),
                    ("SI3-1", "POS"), ("SIF1-1", "50"), ("SIF2-1", "CD"),
                    ("SI\\DLN-1", "PCM Stream 3"), ("SI1-2", "18"), ("SI2-2", "ANA"),
                    ("SI3-2", "POS"), ("SIF1-2", "4"), ("SIF2-2", other),
                    ("SI\\MN-2", "HOT-MIC"), ("SO", "N"), ("RC", "100"),
                    ("COM", "Subcarrier 15 carries the pod stream, 18 the voice."))


def binary_format(out, one):
    """The format, or its replacement in an edition without it."""
    if one.format in ("BCD", "SIM") and out.edition < 2000:
        return {"BCD": "OTH", "SIM": "SIG"}[one.format]
    if (one.format == "FPT" and out.edition < 1999) or (
            one.format == "BWT" and out.edition < 2007):
        return "OTH"
    return one.format


def conversion_of(out, one):
    """The conversion, or its replacement in an edition without it."""
    kind = one.conversion[0]
    if kind == "NPC" and out.edition < 2007:
        c = one.conversion[1]
        return ("PRS", [(x, sum(k / x ** i for i, k in enumerate(c)))
                        for x in (200, 500, 1000, 2000, 4095)])
    if kind in ("PTM", "BTM", "VOI", "VID") and out.edition < 1999:
        return ("NON", kind)
    return one.conversion


def write_conversion_fields(out, c, conversion, one):
    kind, values = conversion[0], conversion[1:]
    if kind == "PRS":
        out.put_all(c, ("PS\\N", len(values[0])), ("PS1", "N"), ("PS2", "1"))
        for i, (x, y) in enumerate(values[0], 1):
            out.put_all(c, (f"PS3-{i}", number(x)), (f"PS4-{i}", number(y)))
    elif kind == "COE":
        out.put_all(c, ("CO\\N", len(values[0]) - 1), ("CO1", "N"),
                    *((f"CO-{i}" if i else "CO", number(x)) for i, x in enumerate(values[0])))
    elif kind == "NPC":
        out.put_all(c, ("NPC\\N", len(values[0]) - 1), ("NPC1", "N"),
                    *((f"NPC-{i}" if i else "NPC", number(x)) for i, x in enumerate(values[0])))
    elif kind == "DER":
        inputs, constants, algorithm = values
        out.put_all(c, ("DPAT", "N", 2009), ("DPA", algorithm, 2009), ("DPTM", inputs[0], 2009),
                    ("DPNO", 1, 2009), ("DP\\N", len(inputs)))
        for i, name in enumerate(inputs, 1):
            out.put(c, f"DP-{i}", name)
        out.put(c, "DPC\\N", len(constants), 1999)
        for i, value in enumerate(constants, 1):
            out.put(c, f"DPC-{i}", value, 1999)
        out.put(c, "DPA", algorithm, 1999, 2008)
    elif kind == "DIS":
        bits, states = values
        out.put_all(c, ("DIC\\N", len(states)), ("DICI\\N", bits))
        for i, (value, text) in enumerate(states, 1):
            out.put_all(c, (f"DICC-{i}", value), (f"DICP-{i}", text))
    elif kind in ("PTM", "BTM"):
        out.put(c, kind, values[0])
    elif kind == "OTH":
        out.put(c, "OTH", values[0])
    if one.conversion[0] == "VOI":
        out.put_all(c, ("VOI\\E", "CVSD"), ("VOI\\D", "Continuously variable slope, 16 kbit/s"))
    if one.conversion[0] == "VID":
        out.put_all(c, ("VID\\E", "MPEG-2"), ("VID\\D", "Main profile at main level, 4 Mbit/s"))


COMMENTS = {
    "CAL": "Calibrated on the aircraft with the locks in.\nRepeat after every rigging change.",
    "TABLE": "See table FD-3:\n\tcolumn 1 capacitance\n\tcolumn 2 temperature\n\tcolumn 3 density",
    "CRC": "Polynomial 1021 hex, start value FFFF hex.\nThe pod counts over words 2 to 30.",
}


def write_record(out, index, one, rate):
    """The C group of one measurement."""
    c = f"C-{index}\\"
    year = YEAR[out.edition]
    calibrated = one.conversion[0] in ("PRS", "COE") and index % 12 == 1
    conversion = conversion_of(out, one)
    out.put_all(
        c, ("DCN", one.name), ("TRD1", one.sensor), ("TRD2", f"M-{200 + index % 40}"),
        ("TRD3", f"SN{1000 + 7 * index}"), ("TRD4", "C" if one.name == "POD-CRC" else "U"),
        ("TRD5", out.date("02-11", year)), ("TRD6", "A"), ("TRD7", "Instrumentation"),
        ("POC1", "Calibration desk"), ("POC2", "Kestrel test team"),
        ("MN1", one.text), ("MN3", one.unit), ("MN4", "ANA" if one.name == "HOT-MIC" else "PCM"),
        ("BFM", binary_format(out, one)))
    if one.format == "FPT":
        out.put(c, "FPF", "IEEE_32", 2000)
    if one.format == "BWT":
        out.put(c, "BWT\\N", 12, 2007)
        for i in range(1, 13):
            out.put_all(c, (f"BWTB-{i}", i, 2007), (f"BWTV-{i}", number(12000 / 2 ** i), 2007))
    if calibrated:
        out.put_all(c, ("MC\\N", 2), ("MC1-1", "LOW"), ("MC2-1", 0), ("MC3-1", number(one.low)),
                    ("MC1-2", "HIGH"), ("MC2-2", 2 ** min(one.bits, 16) - 1),
                    ("MC3-2", number(one.high)))
    else:
        out.put(c, "MC\\N", "N")
    ambient = (("MA1", "21 DEGC"), ("MA2", 2 ** min(one.bits, 16) // 2),
               ("MA3", number((one.low + one.high) / 2)))
    if out.edition < 1999:
        out.put_all(c, *(ambient if calibrated else ()))
    else:
        out.put(c, "MA\\N", 1 if calibrated else "N")
        for code, value in ambient if calibrated else ():
            out.put(c, code + "-1", value)
    if one.high > one.low:
        span = one.high - one.low
        out.put_all(c, ("MOT1", number(one.high)), ("MOT2", number(one.low)),
                    ("MOT3", number(one.high - 0.05 * span)),
                    ("MOT4", number(one.low + 0.05 * span)),
                    ("MOT5", number(one.high - 0.1 * span), 1999),
                    ("MOT6", number(one.low + 0.1 * span), 1999))
    out.put_all(c, ("SR", one.rate or rate),
                ("CRT", out.date("02-12", year, "-10-15-00"), 2004),
                ("DCT", conversion[0]))
    write_conversion_fields(out, c, conversion, one)
    out.put(c, "COM", COMMENTS.get(one.comment, ""))


def flight_test(edition, name):
    """The whole document as bytes."""
    out = Writer(edition)
    write_general(out, name)
    write_transmission(out, 1, "L-Band Telemetry", "1485.5", "1040",
                       "Flight data.\nAntennas switch by hand.")
    write_transmission(out, 2, "S-Band Telemetry", "2250.5", "592", "Loads and pod.")
    write_recorder(out)
    write_multiplex(out)
    streams = [stream_1(), stream_2(), stream_3()]
    on_bus = bus()
    for stream in PCM_STREAMS + [STREAM_BUS]:
        write_format(out, stream)
    for stream, measurements in zip(PCM_STREAMS, streams):
        write_measurements(out, stream, measurements)
    write_bus(out, on_bus)
    index = 0
    for measurements, rate in zip(streams + [on_bus, elsewhere()], ("1000", "1000", "100", "", "")):
        for one in measurements:
            index += 1
            write_record(out, index, one, rate)
    out.put_all("H\\", ("TA", "KESTREL-7"), ("COM", "Wiring list KT-WL-12, revision C."))
    out.put_all("V-1\\", ("ID", "Onboard Recorder", 2004), ("VN", "NRC", 2004),
                ("NRC\\SYS", "gain=2 trig=ext clk=10M", 2004))
    return out.text()
