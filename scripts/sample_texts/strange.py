"""Small documents as they occur in use: correct in the eyes of their authors."""

GENERAL = ["G\\PN:STRANGE", "G\\106:09", "G\\DSI\\N:1", "G\\DSI-1:Radio", "G\\DST-1:RF"]
REST = ["T-1\\ID:Radio", "T-1\\SCO\\N:0", "M-1\\ID:Radio", "M-1\\BSG1:PCM",
        "M-1\\BB\\DLN:PCM Stream 1", "M-1\\SI\\N:0", "P-1\\DLN:PCM Stream 1", "P-1\\TF:ONE",
        "D-1\\DLN:PCM Stream 1", "D-1\\ML\\N:1", "D-1\\MLN-1:List", "D-1\\MN\\N-1:1",
        "D-1\\MN-1-1:SPEED", "C-1\\DCN:SPEED", "C-1\\DCT:NON"]


def text(commands, end="\r\n"):
    return "".join(command + ";" + end for command in commands).encode("latin-1")


def renamed(commands, old, new):
    return [command.replace(old, new) for command in commands]


def strange():
    """{file name: bytes}; each name states the oddity."""
    plain = GENERAL + REST
    ninety = [f"V-1\\REC\\SET:step {n:02d}" for n in range(1, 91)]
    made = {
        "everything-on-one-line.tma": text(plain, ""),
        "carriage-return-alone.tma": text(plain, "\r"),
        "line-feed-alone.tma": text(plain, "\n"),
        "tab-after-the-colon.tma": text([c.replace(":", ":\t", 1) for c in plain]),
        "blanks-around-the-code.tma": text(["  \t" + c + "   " for c in plain]),
        "nul-bytes.tma": text(GENERAL[:2]) + b"\0\0\0" + text(GENERAL[2:] + REST) + b"\0" * 16,
        "nul-bytes-in-a-value.tma": text(plain).replace(b"STRANGE", b"STR\0ANGE"),
        "byte-order-mark.tma": b"\xef\xbb\xbf" + text(plain),
        "no-end-of-line-at-the-end.tma": text(plain)[:-2],
        "last-semicolon-missing.tma": text(plain)[:-3],
        "semicolon-typed-as-colon.tma": text(plain).replace(b"G\\106:09;", b"G\\106:09:"),
        "mixed-case.tma": text(renamed(plain, "\\DLN", "\\Dln")),
        "lower-case-letters-of-groups.tma": text([c[0].lower() + c[1:] if c[0] in "PD" else c
                                                  for c in plain]),
        "two-sources-of-one-name.tma": text(
            ["G\\PN:STRANGE", "G\\106:09", "G\\DSI\\N:2", "G\\DSI-1:Radio", "G\\DST-1:RF",
             "G\\DSI-2:Radio", "G\\DST-2:RF", "T-2\\ID:Radio", "M-2\\ID:Radio"] + REST),
        "one-code-ninety-times.tma": text(plain + ["V-1\\ID:Radio", "V-1\\VN:REC"] + ninety),
        "groups-interleaved.tma": text(
            [c for pair in zip(REST, ninety) for c in pair] + ["V-1\\ID:Radio"] + GENERAL),
        "indices-with-leading-zeros.tma": text(
            renamed(renamed(plain, "P-1\\", "P-01\\"), "D-1\\", "D-001\\")),
        "index-zero.tma": text(plain + ["P-0\\DLN:PCM Stream 0", "D-0\\DLN:PCM Stream 0"]),
        "index-too-large.tma": text(plain + ["P-100\\DLN:A", "T-99999999999999999999\\ID:B"]),
        "comment-without-its-semicolon.tma":
            b"COMMENT: made by hand\r\n" + text(plain),
        "code-without-a-colon.tma": text(GENERAL + ["G\\TA", "P-1\\TF ONE"] + REST),
        "dates-in-other-forms.tma": text(
            GENERAL + ["G\\OD:2009/06/14", "G\\RD:14.06.2009", "G\\UD:June 14"] + REST
            + ["C-1\\TRD5:14-JUN-09", "C-1\\CRT:2009-06-14T08:30:00"]),
        "text-behind-binary-bytes.tma":
            bytes(range(0x80, 0x100)) + b"\x25\xeb\x01\x00;" + text(plain),
        "text-in-front-of-binary-bytes.tma": text(plain) + bytes(range(0x80, 0x100)),
        "control-z-at-the-end.tma": text(plain) + b"\x1a",
        "control-z-in-the-middle.tma": text(GENERAL) + b"\x1a\r\n" + text(REST),
        "empty-values.tma": text(plain + ["G\\TA:", "P-1\\COM:", "C-1\\MN1:"]),
        "blanks-and-nothing-else.tma": b" \r\n\t\r\n  \r\n",
        "empty.tma": b"",
        "comments-only.tma": b"COMMENT: nothing here;\r\ncomment:nor here;\r\n",
        "umlauts-of-an-old-code-page.tma": text(plain + ["G\\COM:Pr\xfcfstand, 20 \xb0C"]),
        "quotes-and-backslashes-in-values.tma": text(
            plain + ['V-1\\ID:Radio', 'V-1\\REC\\PATH:C:\\Data\\"Flight 1"\\x.tmt']),
    }
    return made
