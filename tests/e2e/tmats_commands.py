"""What of a TMATS file another one lacks, whatever the numbers of the groups."""

import re
from collections import Counter

LINK = re.compile(r"[CPDBSATRMV]-\d+\\(DCN|DLN|ID)", re.IGNORECASE)


def commands(data):
    """The codes and values of a file, with the name of a group in place of its number."""
    found = []
    for command in data.decode("latin-1").split(";"):
        code, colon, value = command.strip().partition(":")
        if colon:
            # The count of the fields of a message has two spellings.
            code = re.sub(r"\\FLDS\\N", r"\\NFLDS\\N", code.strip().upper())
            found.append((code, value.strip()))
    names = {code.split("\\")[0]: value for code, value in found if LINK.fullmatch(code)}
    return [(names.get(code.split("\\")[0], "") + " " + code[0] + "\\" + code.partition("\\")[2], value)
            for code, value in found]


def is_count(code):
    return re.search(r"\\N(-\d+)*$", code) is not None


def field(code):
    """A code without its numbers."""
    head, _, rest = code.partition("\\")
    return head[-1:] + "\\" + re.sub(r"(-\d+)+$", "", rest)


def missing(before, after, losses=()):
    """The commands of a file that another one lacks and that are not told as losses. Counts that
    are no number of rows, and the case of letters in values, are no difference."""
    lost = {field(re.sub(r"^([A-Z])-\d+", r"\1", loss["code"].upper())) for loss in losses}
    left = (Counter((code, value.upper()) for code, value in commands(before)) -
            Counter((code, value.upper()) for code, value in commands(after)))
    return [(code, value) for code, value in left
            if field(code) not in lost and not (is_count(code) and not re.fullmatch("[1-9][0-9]*", value))]
