#!/usr/bin/env python3
"""Draws the terminal session of the README from what the program really prints.

    make_picture.py KAVU_CLI     writes docs/pictures/terminal.svg
"""

import html
import os
import subprocess
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
COMMANDS = [
    (["check", "flight-test.tma"], 99),
    (["tree", "flight-test.tma"], 12),
    (["check", "mistakes.tma", "2>/dev/null"], 24),
    (["save", "flight-test.tma", "-o", "{out}/flight-11.tma", "--edition", "2011"], 99),
]
LINE, COLUMN, MARGIN = 18, 8.4, 16


def session(program):
    """Lines of (kind, text)."""
    with tempfile.TemporaryDirectory() as out:
        environment = dict(os.environ, TEMP=out, XDG_CONFIG_HOME=out)
        for command, most in COMMANDS:
            words = [word.replace("{out}", out) for word in command]
            quiet = words[-1] == "2>/dev/null"
            result = subprocess.run([program, *words[:len(words) - quiet]], cwd=ROOT / "samples",
                                    env=environment, stdout=subprocess.PIPE,
                                    stderr=subprocess.DEVNULL if quiet else subprocess.STDOUT,
                                    text=True, check=False, stdin=subprocess.DEVNULL)
            yield "command", "$ kavu-cli " + " ".join(words).replace(out + "/", "")
            lines = result.stdout.replace(out + "/", "").rstrip("\n").split("\n")
            for line in lines[:most]:
                yield "text", line
            if len(lines) > most:
                yield "text", "..."
            yield "text", ""


def main(program):
    lines = list(session(os.path.abspath(program)))[:-1]
    width = round(max(len(text) for _, text in lines) * COLUMN + 2 * MARGIN)
    height = len(lines) * LINE + 2 * MARGIN
    rows = []
    for number, (kind, text) in enumerate(lines):
        y = MARGIN + (number + 1) * LINE - 5
        colour = "#8fd0a0" if kind == "command" else "#e4e6e3"
        rows.append(f'<text x="{MARGIN}" y="{y}" fill="{colour}" xml:space="preserve">'
                    f"{html.escape(text, quote=False)}</text>")
    picture = (f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" '
               f'font-family="monospace" font-size="14">\n'
               f'<rect width="100%" height="100%" rx="6" fill="#1e2321"/>\n'
               + "\n".join(rows) + "\n</svg>\n")
    target = ROOT / "docs/pictures/terminal.svg"
    target.parent.mkdir(parents=True, exist_ok=True)
    target.write_text(picture, encoding="utf-8")
    print(f"{target.relative_to(ROOT)}: {len(lines)} lines")


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
