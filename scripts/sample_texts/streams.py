"""The P, D and B groups: how a stream is framed and where its measurements are."""

from dataclasses import dataclass

from .measurements import BUS_MESSAGES


@dataclass
class Subframe:
    name: str
    words: list
    depth: int
    mode: str = "NA"      # NA one word, FI first and interval, EL every location
    interval: int = 0


@dataclass
class Stream:
    index: int
    link: str
    kind: str             # TF; a class 2 stream of the oldest editions is "OTHR"
    word_length: int
    frames: int
    words: int
    sync: str
    bit_rate: int
    subframes: list
    odd_words: list       # (word, length)
    comment: str

    def bits(self):
        odd = dict(self.odd_words)
        return len(self.sync) + sum(odd.get(w, self.word_length) for w in range(1, self.words))

    def subframe(self, name):
        return next(s for s in self.subframes if s.name == name)


SYNC_32 = "11111110011010110010100001000000"
SYNC_24 = "111110101111001100100000"

STREAM_1 = Stream(
    1, "PCM Stream 1", "ONE", 16, 32, 64, SYNC_32, 1040000,
    [Subframe("SF-LOADS", [10], 16), Subframe("SF-TEMP", [11], 32),
     Subframe("SF-DISCRETE", [12, 28, 44, 60], 8, "FI", 16), Subframe("SF-TIME", [7], 32),
     Subframe("SF-SPARE", [8, 9], 8, "EL")],
    [], "Flight data of the air vehicle.\n\nWord 1 holds the frame counter in its five low bits.\n"
    "Words 8 and 9 are spare.")
STREAM_2 = Stream(
    2, "PCM Stream 2", "TWO", 12, 16, 48, SYNC_24, 592000,
    [Subframe("SF-HYD", [26], 16)], [(47, 16)],
    "Structural loads.\nPosition words come as fragments of 12, 12 and 8 bits.")
STREAM_3 = Stream(
    3, "PCM Stream 3", "ONE", 16, 8, 32, SYNC_24, 52000,
    [Subframe("SF-POD", [31], 8)], [], "Equipment pod, on a subcarrier.")
STREAM_BUS = Stream(
    4, "1553 Bus 1", "1553", 24, 1, 128, SYNC_24, 3072000, [], [],
    "Avionics bus as the recorder lays it out.")
PCM_STREAMS = [STREAM_1, STREAM_2, STREAM_3]


def write_format(out, stream):
    """The P group of a stream."""
    p = f"P-{stream.index}\\"
    kind = stream.kind
    if kind == "TWO" and out.edition < 2004:
        kind = "OTHR"
    is_bus = kind == "1553"
    out.put_all(
        p, ("DLN", stream.link), ("D1", "NRZ-L" if is_bus else "RNRZ-L"),
        ("D2", stream.bit_rate), ("D3", "U"), ("D4", "N"), ("D5", "Y"), ("D6", "N"),
        ("D7", "N"), ("D8", "N/A"), ("TF", kind), ("F1", stream.word_length), ("F2", "M"),
        ("F3", "OD" if is_bus else "NO"), ("F4", "L" if is_bus else "T"),
        ("MF\\N", stream.frames), ("MF1", stream.words), ("MF2", stream.bits()), ("MF3", "FPT"),
        ("MF4", len(stream.sync)), ("MF5", stream.sync), ("SYNC1", 2), ("SYNC2", 1),
        ("SYNC3", 3), ("SYNC4", 1))
    for n, (word, length) in enumerate(stream.odd_words, 1):
        out.put_all(p, (f"MFW1-{n}", word), (f"MFW2-{n}", length))
    if not is_bus:
        write_counter(out, stream, p)
        out.put(p, "AEF\\N", 0)
    out.put(p, "COM", stream.comment)


def counted_subframes(out, stream):
    """The subframes in the P group of this edition. Word/frame locations need none, and the
    newest edition has no others."""
    if out.edition >= 2011 or (stream is STREAM_3 and out.edition >= 2004):
        return []
    return stream.subframes


def write_counter(out, stream, p):
    bits = (stream.frames - 1).bit_length()
    subframes = counted_subframes(out, stream)
    out.put_all(
        p, ("ISF\\N", 1), ("ISF1-1", "SFID"), ("ISF2-1", "ID"), ("IDC1-1", 1),
        ("IDC2-1", stream.word_length), ("IDC3-1", stream.word_length - bits + 1),
        ("IDC4-1", bits), ("IDC5-1", "M"), ("IDC6-1", 0), ("IDC7-1", 1),
        ("IDC8-1", stream.frames - 1), ("IDC9-1", stream.frames), ("IDC10-1", "INC"))
    out.put(p, "SF\\N-1", len(subframes), until=2009)
    for m, sub in enumerate(subframes, 1):
        single = sub.mode == "NA"
        words = sub.words if sub.mode == "EL" else sub.words[:1]
        out.put(p, f"SF1-1-{m}", sub.name)
        out.put(p, f"SF2-1-{m}", "NO" if single else len(sub.words))
        out.put(p, f"SF3-1-{m}", "" if single else sub.mode)
        for k, word in enumerate(words, 1):
            out.put(p, f"SF4-1-{m}-{k}", word)
        out.put(p, f"SF5-1-{m}", sub.interval or "")
        out.put(p, f"SF6-1-{m}", sub.depth)


def write_measurements(out, stream, measurements):
    """The D group of a stream."""
    d = f"D-{stream.index}\\"
    word_frame = out.edition >= 2011 or (stream is STREAM_3 and out.edition >= 2004)
    out.put_all(d, ("DLN", stream.link), ("ML\\N", 1), ("MLN-1", f"List {stream.index}"),
                ("COM", f"Locations of {stream.link}.\nWord 0 is the sync word."))
    if stream is STREAM_2 and out.edition == 2009:
        out.put_all(d, ("SMF\\N-1", 2), ("SMF\\SMN-1-1", "GPS-LAT"), ("SMF\\SMN-1-2", "GPS-LON"))
    if stream is STREAM_2 and out.edition >= 2011:
        out.put_all(d, ("SMF\\N", 2), ("SMF\\SMN-1", "GPS-LAT"), ("SMF\\MFOT-1", "F"),
                    ("SMF\\SMN-2", "GPS-LON"), ("SMF\\MFOT-2", "F"))
    out.put(d, "MN\\N-1", len(measurements))
    for m, one in enumerate(measurements, 1):
        at = f"-1-{m}"
        out.put_all(d, ("MN" + at, one.name), ("MN1" + at, "DE"), ("MN2" + at, "D"),
                    ("MN3" + at, "M"))
        if stream is STREAM_2 and out.edition == 2009 and one.name in ("GPS-LAT", "GPS-LON"):
            out.put(d, "MFOT" + at, "F")
        if word_frame:
            write_word_frame(out, stream, d, at, one)
        else:
            write_location(out, stream, d, at, one)


def mask(stream, measurement):
    """Of a measurement shorter than its word: the low bits."""
    if measurement.bits >= stream.word_length:
        return "FW"
    return "0" * (stream.word_length - measurement.bits) + "1" * measurement.bits


def fragment_masks(stream, measurement):
    """Full words, and the rest in the high bits of the last one."""
    count = len(measurement.place[1])
    rest = measurement.bits - (count - 1) * stream.word_length
    return ["FW"] * (count - 1) + ["1" * rest + "0" * (stream.word_length - rest)]


def write_location(out, stream, d, at, one):
    """Minor word, subframe, supercommutated or fragmented."""
    kind = one.place[0]
    bits = mask(stream, one)
    out.put(d, "LT" + at, {"MFSE": "MFSC"}.get(kind, kind))
    if kind == "MF":
        out.put_all(d, ("MF" + at, one.place[1]), ("MFM" + at, bits))
    elif kind == "MFSC":
        first, interval, count = one.place[1:]
        out.put_all(d, ("MFS\\N" + at, count), ("MFS1" + at, "I"), ("MFS2" + at, first),
                    ("MFS3" + at, bits), ("MFS4" + at, interval))
    elif kind == "MFSE":
        out.put_all(d, ("MFS\\N" + at, len(one.place[1])), ("MFS1" + at, "E"))
        for k, word in enumerate(one.place[1], 1):
            out.put_all(d, (f"MFSW{at}-{k}", word), (f"MFSM{at}-{k}", bits))
    elif kind == "SF":
        out.put_all(d, ("SF1" + at, one.place[1]), ("SF2" + at, one.place[2]),
                    ("SFM" + at, bits))
    elif kind == "SFSC":
        name, first, interval, count = one.place[1:]
        out.put_all(d, ("SFS1" + at, name), ("SFS\\N" + at, count), ("SFS2" + at, "I"),
                    ("SFS3" + at, first), ("SFS4" + at, bits), ("SFS5" + at, interval))
    elif kind == "MFFR":
        words = one.place[1]
        out.put_all(d, ("FMF\\N" + at, len(words)), ("FMF1" + at, one.bits), ("FMF2" + at, "E"))
        for k, (word, part) in enumerate(zip(words, fragment_masks(stream, one)), 1):
            out.put_all(d, (f"FMF6{at}-{k}", word), (f"FMF7{at}-{k}", part),
                        (f"FMF8{at}-{k}", "M"), (f"FMF9{at}-{k}", k))


def word_frame_locations(stream, one):
    """[(word, interval, end word, frame, interval, end frame)] of a measurement that is not
    fragmented."""
    kind, last = one.place[0], stream.frames
    if kind == "MF":
        return [(one.place[1], 0, one.place[1], 1, 1, last)]
    if kind == "MFSC":
        first, interval, count = one.place[1:]
        return [(first, interval, first + interval * (count - 1), 1, 1, last)]
    if kind == "MFSE":
        return [(word, 0, word, 1, 1, last) for word in one.place[1]]
    sub = stream.subframe(one.place[1])
    if kind == "SF":
        word = sub.words[(one.place[2] - 1) % len(sub.words)]
        frame = (one.place[2] - 1) // len(sub.words) + 1
        if sub.depth == stream.frames:
            return [(word, 0, word, frame, 0, frame)]
        end = last - sub.depth + frame
        return [(word, 0, word, frame, sub.depth, end)]
    first, interval, count = one.place[2:]
    return [(sub.words[0], 0, sub.words[0], first, interval, first + interval * (count - 1))]


def write_word_frame(out, stream, d, at, one):
    out.put(d, "LT" + at, "WDFR")
    if one.place[0] == "MFFR":
        parts = [((w, 0, w, 1, 1, stream.frames), m)
                 for w, m in zip(one.place[1], fragment_masks(stream, one))]
        locations = [parts]
    else:
        locations = [[(place, mask(stream, one))] for place in word_frame_locations(stream, one)]
    out.put(d, "MML\\N" + at, len(locations))
    for k, fragments in enumerate(locations, 1):
        out.put(d, f"MNF\\N{at}-{k}", len(fragments))
        if len(fragments) > 1:
            out.put(d, f"MWL{at}-{k}", one.bits)
        for f, ((word, step, end_word, frame, frame_step, end_frame), bits) in enumerate(
                fragments, 1):
            here = f"{at}-{k}-{f}"
            out.put_all(d, ("WP" + here, word), ("WI" + here, step),
                        ("EWP" + here, end_word, 2009), ("FP" + here, frame),
                        ("FI" + here, frame_step), ("EFP" + here, end_frame, 2009),
                        ("WFM" + here, bits), ("WFT" + here, "M"), ("WFP" + here, f))


def write_bus(out, measurements):
    """The B group: one bus, its messages and their contents."""
    b = "B-1\\"
    out.put_all(b, ("DLN", STREAM_BUS.link), ("TA", "KESTREL-7"), ("BP", "OD", 2007),
                ("NBS\\N", 1), ("BID-1", "000"), ("BNA-1", "AVIONICS"), ("BT-1", "1553", 2004),
                ("TK\\N-1", 1), ("TS-1-1", 5), ("NMS\\N-1", len(BUS_MESSAGES)))
    for m, (name, terminal, address, sub, sub_address, transmit, count) in enumerate(
            BUS_MESSAGES, 1):
        at = f"-1-{m}"
        word = f"{int(address + transmit + sub_address + format(count, '05b'), 2):04X}"
        out.put_all(
            b, ("MID" + at, m), ("MNA" + at, name), ("CWE" + at, "W", 2011),
            ("CMD" + at, word, 2011), ("TRN" + at, terminal), ("TRA" + at, address),
            ("STN" + at, sub), ("STA" + at, sub_address), ("TRM" + at, transmit),
            ("DWC" + at, format(count, "05b")), ("BMG\\FOT" + at, "F", 2009))
        if name == "RALT-DATA":
            last = "" if out.edition >= 2011 else "-1"
            out.put(b, "RNRT\\N" + at, 1, until=1998)
            out.put_all(b, (f"RTRN{at}{last}", "SMS"), (f"RTRA{at}{last}", "01100"),
                        (f"RSTN{at}{last}", "HEIGHT"), (f"RSTA{at}{last}", "00101"),
                        (f"RDWC{at}{last}", "00100"))
        inside = [one for one in measurements if one.place[1] == m]
        out.put(b, "MN\\N" + at, len(inside))
        for n, one in enumerate(inside, 1):
            here = f"{at}-{n}"
            words = one.place[2]
            out.put_all(b, ("MN" + here, one.name), ("MT" + here, "D", 2007),
                        ("MN1" + here, "DE"), ("MN2" + here, "D"),
                        ("NML\\N" + here, len(words)))
            for k, number in enumerate(words, 1):
                out.put_all(b, (f"MWN{here}-{k}", number), (f"MBM{here}-{k}", "FW"),
                            (f"MTO{here}-{k}", "MSB"), (f"MFP{here}-{k}", k))
    out.put(b, "COM", "Message 4 goes from terminal to terminal.\n"
            "The controller sends message 5 ten times a second.")
