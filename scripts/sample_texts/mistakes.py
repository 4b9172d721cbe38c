"""A document full of mistakes, for the manual's page on messages, which lists the message of
each; a comment before each says what is wrong."""

from .writer import Writer


def record(out, index, name, *rows):
    c = f"C-{index}\\"
    out.put_all(c, ("DCN", name), ("MN1", "A record with a mistake"), ("BFM", "UNS"), *rows)


def conversions(out):
    out.raw("COMMENT: The number of pairs has three digits where two are allowed.;")
    record(out, 1, "PAIR-COUNT", ("DCT", "PRS"), ("PS\\N", "123"), ("PS1", "N"))
    out.raw("COMMENT: Codes that are longer than their field.;")
    record(out, 2, "LONG-FIELDS", ("BFM", "UNSIGNED"), ("TRD4", "SECRET"), ("MN4", "PCM-1"),
           ("DCT", "COEF"))
    out.raw("COMMENT: A discrete state that is told in more than 240 characters.;")
    record(out, 3, "LONG-STATE", ("DCT", "DIS"), ("DIC\\N", 1), ("DICI\\N", 1), ("DICC-1", 0),
           ("DICP-1", "This state is told at such a length that nobody will ever read it. " * 4))
    out.raw("COMMENT: A name of more than 32 characters.;")
    record(out, 4, "ENGINE-1-EXHAUST-GAS-TEMPERATURE-LEFT", ("DCT", "NON"))
    out.raw("COMMENT: A second record of one name, and one more in other case, which is none.;")
    record(out, 5, "SPEED", ("DCT", "COE"), ("CO\\N", 1), ("CO", 0), ("CO-1", 2))
    record(out, 6, "SPEED", ("DCT", "NON"))
    record(out, 7, "Speed", ("DCT", "NON"))
    out.raw("COMMENT: A record without its name vanishes.;")
    out.put_all("C-8\\", ("MN1", "Nobody knows what this converts"), ("DCT", "NON"))
    out.raw("COMMENT: A video description that is too long by far.;")
    record(out, 9, "VIDEO", ("DCT", "VID"), ("VID\\E", "A name of an encoding that is very, " * 2),
           ("VID\\D", "MPEG-2"))
    out.raw("COMMENT: This count is too long as well, but nobody minds.;")
    record(out, 10, "DERIVED", ("DCT", "DER"), ("DP\\N", "002"), ("DP-1", "SPEED"),
           ("DP-2", "Speed"))


def streams(out):
    out.raw("COMMENT: SPEED lies in more than one stream, and two of the streams have no home.;")
    for index, link in ((1, "PCM Stream 1"), (2, "PCM Stream 2"), (3, "Nobody's stream"),
                        (4, "Pod Stream")):
        p, d = f"P-{index}\\", f"D-{index}\\"
        out.put_all(p, ("DLN", link), ("TF", "ONE"), ("F1", 16), ("MF\\N", 1), ("MF1", 8))
        if index == 1:
            out.put(p, "AEF\\N", 1)
            out.put(p, "AEF\\DLN-1", "A stream that is embedded but nowhere")
        out.put_all(d, ("DLN", link), ("ML\\N", 1), ("MLN-1", "List"), ("MN\\N-1", 2),
                    ("MN-1-1", "SPEED"), ("LT-1-1", "MF"), ("MF-1-1", 1),
                    ("MN-1-2", f"OWN-{index}"), ("LT-1-2", "MF"), ("MF-1-2", 2))
    out.put_all("D-5\\", ("DLN", "Measurements without a stream"), ("ML\\N", 1))
    out.put_all("B-1\\", ("DLN", "A bus without a home"), ("NBS\\N", 0))


def mistakes():
    out = Writer(2009)
    g = "G\\"
    out.raw("COMMENT: An edition that does not exist yet.;")
    out.put_all(g, ("PN", "KESTREL-7"), ("TA", "Everything that can be wrong"), ("106", "12"),
                ("DSI\\N", 2), ("DSI-1", "L-Band Telemetry"), ("DST-1", "RF"),
                ("DSI-2", "A data source whose name is longer than it may be"), ("DST-2", "RF"))
    out.put_all("T-1\\", ("ID", "L-Band Telemetry"), ("SCO\\N", 0))
    out.put_all("T-2\\", ("ID", "A data source whose name is longer than it may be"),
                ("SCO\\N", 0))
    out.put_all("M-1\\", ("ID", "L-Band Telemetry"), ("BSG1", "PCM"),
                ("BB\\DLN", "PCM Stream 1"), ("SI\\N", 1), ("SI2-1", "PCM"),
                ("SI\\DLN-1", "Pod Stream"))
    out.raw("COMMENT: A link name of more than 32 characters.;")
    out.put_all("M-2\\", ("ID", "A data source whose name is longer than it may be"),
                ("BSG1", "PCM"), ("BB\\DLN", "PCM Stream 2 of the second data source"),
                ("SI\\N", 0))
    streams(out)
    conversions(out)
    out.raw("COMMENT: Lost without a word: a group that does not exist, one of lower case, one "
            "with an index that is too high.;")
    out.raw("X-1\\ID:A group that does not exist;")
    out.raw("p-1\\COM:A group letter of lower case;")
    out.raw("T-100\\ID:An index over 99;")
    return out.text()
