"""An independent model of a read and write without an edit in between.

It shares nothing with the program's code: it takes the bytes of a document and says which
bytes the saved file must have after its banner.
"""

import random
import re

BLANK = b"\n\r\t \x1a"
ORDER = b"GTRMPDBSACHV"
FIRST_EDITION = {b"S": 2005, b"V": 2004}
INDEX = re.compile(rb"[+-]?\d+")
ZEROS = re.compile(rb"(?<=-)0+(?=\d+(?:[-\\]|$))")


def commands_of(data):
    """The commands of a stream, or None if it ends within one."""
    result = []
    at = 0
    while True:
        while at < len(data) and data[at] in BLANK:
            at += 1
        if at == len(data):
            return result
        end = data.find(b";", at)
        if end < 0:
            return None
        result.append(normal(data[at:end]))
        at = end + 1


def normal(text):
    """One command, given without its semicolon: line ends made whole, blanks cut."""
    text = re.sub(rb"\r+", b"\r", text)
    text = re.sub(rb"(?<!\r)\n", b"\r\n", text)
    if len(text) + 1 > 2:
        text = text.rstrip(b" ")
    return text + b";"


def is_comment(command):
    return command[:8].upper() == b"COMMENT:"


def stored(command):
    return command.replace(b"\r", b"\x14").replace(b"\n", b"\x15")


def unstored(command):
    return command.replace(b"\x14", b"\r").replace(b"\x15", b"\n")


def without_zeros(command):
    """Indices as the numbers they are; the fields of H and V groups are their makers'."""
    code, colon, value = command.partition(b":")
    if not colon:
        return command
    head, backslash, field = code.partition(b"\\")
    if command[:1] in b"HV":
        return ZEROS.sub(b"", head) + backslash + field + colon + value
    return ZEROS.sub(b"", code) + colon + value


class Model:
    def __init__(self, edition, file_name):
        self.edition = edition
        self.file_name = file_name

    def saved(self, data):
        """The bytes of the saved file behind its banner, or None if it is refused."""
        commands = commands_of(data)
        if commands is None:
            return None
        groups = {}
        for command in commands:
            key = self.key(command)
            if key is not None and not is_comment(command):
                groups.setdefault(key, []).append(stored(without_zeros(command)))
        general = self.general(groups.get((0, 0), []))
        lines = []
        for key in sorted(set(groups) | {(0, 0), (ORDER.index(b"C"), 0)}):
            letter = ORDER[key[0]:key[0] + 1]
            if letter == b"C":
                lines += self.conversions(groups.get(key, []))
            elif self.edition >= FIRST_EDITION.get(letter, 0):
                lines += general if key == (0, 0) else groups[key]
        return b"".join(unstored(line) + b"\r\n" for line in lines)

    def key(self, command):
        """Where a command goes, (place of its group in the output, index), or None: lost."""
        letter, second = command[:1], command[1:2]
        if letter in (b"G", b"H"):
            return (ORDER.index(letter), 0) if second == b"\\" else None
        if letter == b"C" and second == b"-":
            return (ORDER.index(b"C"), 0)
        if letter and letter in b"TRMPDBASV" and second == b"-":
            match = INDEX.match(command[2:])
            index = int(match.group()) if match else 0
            return (ORDER.index(letter), index) if 1 <= index <= 99 else None
        return None

    def general(self, lines):
        """The G group behind the banner step and the step of the file name."""
        if self.edition >= 1999:
            lines = [line for line in lines if b"COMMENT:" not in line]
        if self.edition < 2009:
            return lines
        named = [line for line in lines if b"G\\FN:" in line]
        field = b"G\\FN:" + self.file_name + b";"
        if not named:
            return [field] + lines
        return [line[:line.index(b":") + 1] + self.file_name + b";" if line in named else line
                for line in lines]

    def conversions(self, commands):
        """The C group, parsed into records by name and written anew."""
        chunks = {}
        for command in commands:
            group, field = command[:-1].split(b"\\", 1)
            code, value = field.split(b":", 1)
            index = int(group[2:])
            chunks.setdefault(index // 25, {}).setdefault(index, []).append((code, value))
        # A record stands where its first command stood; chunks stand by their number.
        records = []
        for number in sorted(chunks):
            for fields in chunks[number].values():
                if b"DCN" in dict(fields):
                    records.append(dict(fields))
        lines = []
        for count, record in enumerate(records, 1):
            lines += [b"C-%d\\%s:%s;" % (count, code, value)
                      for code, value in self.record(record) if value]
        return lines

    def record(self, record):
        def field(code, default=b""):
            return code, record.get(code, default)

        yield field(b"DCN")
        for code in (b"TRD1", b"POC1", b"MN1", b"BFM"):
            yield field(code)
        yield b"MC\\N", b"N"
        if self.edition >= 1999:
            yield b"MA\\N", b"N"
        yield field(b"MOT1")
        if self.edition >= 2004:
            yield field(b"CRT")
        yield field(b"DCT", b"NON")
        if record.get(b"DCT") == b"OTH":
            yield field(b"OTH")
        yield field(b"COM")


# --- generated documents --------------------------------------------------------------------

WORDS = [b"", b"A", b"value", b"two words", b"a:b", b" blank in front", b"blanks behind   ",
         b"tab\tinside", b"tab behind\t", b"line one\nline two", b"line one\r\nline two\r\n",
         b"cr\rcr\r\r\ncr", b"caf\xe9 \x80\xff", b"caf\xc3\xa9", b"bytes \x01\x02\x1a\x7f",
         b"back\\slash", b"[kavu]", b"%s %d %n", b"x" * 700, b"nul\x00byte", b"\x14\x15 raw",
         b"comment: lower", b"see COMMENT: upper", b"G\\FN:inside", b"=", b"[section]"]
PLAIN = [b"A", b"value", b"two words", b"a:b", b"line one\r\nline two", b"x" * 60]
CODES = [b"X", b"TT\\N", b"ZZ-1", b"ZZ-1-2-3", b"COM", b"unknown field", b"x", b"QQ\\R-9"]
SPACE = [b"", b"\r\n", b"\n", b"\r\n\r\n", b" ", b"\t", b"\r", b"\x1a", b"\r\n   "]


class Generator:
    """Documents of random commands; the same seed gives the same document."""

    def __init__(self, seed):
        self.random = random.Random(seed)

    def document(self, edition):
        chance = self.random
        commands = [self.command() for _ in range(chance.randint(0, 60))]
        # The conversions keep their own order, spread over the whole document.
        places = sorted(chance.randint(0, len(commands)) for _ in range(5))
        records = self.conversions()
        for place, part in zip(reversed(places), reversed([records[i::5] for i in range(5)])):
            commands[place:place] = [command for record in part for command in record]
        if edition >= 1999:
            # The one field that decides the edition.
            number = b"G\\106:%02d;" % (edition % 100)
            commands.insert(chance.randint(0, len(commands)), number)
        return b"".join(chance.choice(SPACE) + command for command in commands) \
            + chance.choice(SPACE)

    def command(self):
        chance = self.random
        letter = chance.choice([b"G", b"G", b"H", b"T", b"R", b"M", b"P", b"D", b"B", b"A", b"V",
                                b"S", b"X", b"g", b"p", b"COMMENT", b"comment", b";"])
        value = chance.choice(WORDS)
        if letter == b";":
            return b";"
        if letter.upper() == b"COMMENT":
            return letter + b":" + value + b";"
        code = chance.choice(CODES)
        if letter in b"GHg":
            if chance.random() < 0.1:
                code = b"FN"
            return letter + b"\\" + code + b":" + value + b";"
        index = chance.choice([b"1", b"2", b"3", b"10", b"99", b"07", b"0", b"100", b"000",
                               b"123456789012345678901234567890"])
        colon = b":" if chance.random() < 0.95 else b""
        return letter + b"-" + index + b"\\" + code + colon + value + b";"

    def conversions(self):
        """The records of a C group, each a list of commands in any order."""
        chance = self.random
        records = []
        index = 0
        for number in range(chance.choice([0, 0, 1, 3, 30])):
            index += chance.randint(1, 4)
            fields = []
            if chance.random() < 0.95:
                fields.append((b"DCN", b"MEAS%d" % number))
            for code in (b"TRD1", b"POC1", b"MN1", b"MOT1", b"COM", b"NOSUCH"):
                if chance.random() < 0.3:
                    value = chance.choice(PLAIN)
                    fields.append((code, value[:32] if code == b"MOT1" else value))
            if chance.random() < 0.3:
                fields.append((b"BFM", chance.choice([b"UNS", b"TWO"])))
            if chance.random() < 0.5:
                fields += [(b"DCT", b"OTH"), (b"OTH", b"words")]
            chance.shuffle(fields)
            records.append([b"C-%d\\%s:%s;" % (index, code, value) for code, value in fields])
        chance.shuffle(records)
        return records
