#!/usr/bin/env python3
"""Installs the built tree to a prefix and checks everything that is installed.

    check_install.py CMAKE BUILD_DIR PREFIX [--app]

With --app the editor is part of the tree.
"""

import gzip
import os
import re
import shutil
import signal
import subprocess
import sys
import time
from pathlib import Path

FILES = [
    "bin/kavu-cli", "share/man/man1/kavu-cli.1.gz",
    "share/bash-completion/completions/kavu-cli", "share/zsh/site-functions/_kavu-cli",
    "share/doc/kavu/README.md", "share/doc/kavu/CHANGELOG.md", "share/doc/kavu/LICENSE",
    "share/doc/kavu/changelog.gz", "share/doc/kavu/copyright",
    "share/doc/kavu/manual/index.md", "share/doc/kavu/reference/index.md",
    "share/doc/kavu/reference/group-g.md", "share/doc/kavu/reference/group-c.md",
    "share/doc/kavu/samples/flight-test.tma",
    "share/doc/kavu/samples/flight-test-96.tma", "share/doc/kavu/samples/flight-test-11.tma",
    "share/doc/kavu/samples/mistakes.tma", "share/doc/kavu/samples/flight-test.mdb",
    "include/kavu_sdk.h", "include/kavu_sdk.hpp",
    "lib/python3/dist-packages/kavu_sdk/__init__.py",
    "lib/python3/dist-packages/kavu_sdk/py.typed",
    "share/doc/libkavu-sdk-dev/examples/list_streams.c",
    "share/doc/python3-kavu-sdk/examples/decode_frame.py",
]
APP_FILES = [
    "bin/kavu", "share/man/man1/kavu.1.gz", "share/applications/kavu.desktop",
    "share/icons/hicolor/scalable/apps/kavu.svg", "share/mime/packages/kavu.xml",
    "share/metainfo/org.kavu.kavu.metainfo.xml",
]


def run(*command, **more):
    return subprocess.run(command, capture_output=True, text=True, check=False,
                          stdin=subprocess.DEVNULL, **more)


def complete(prefix, words):
    """What bash offers behind WORDS, the last of which is being typed."""
    script = ('. "$1"; shift; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _kavu_cli; '
              'printf "%s\\n" "${COMPREPLY[@]}"')
    completion = prefix / "share/bash-completion/completions/kavu-cli"
    result = run("bash", "--norc", "-uc", script, "bash", str(completion), *words,
                 cwd=prefix / "share/doc/kavu/samples")
    return result.stdout.split(), result.stderr


def commands_of(prefix):
    """The commands that the program itself tells of."""
    text = run(str(prefix / "bin/kavu-cli"), "--help").stdout
    return set(re.findall(r"(?m)^  ([a-z][a-z-]*) ", text.partition("\nCommands:\n")[2]))


def check_completion(prefix):
    commands = commands_of(prefix)
    cases = [
        (["kavu-cli", ""], commands),
        (["kavu-cli", "--quiet", "s"], {name for name in commands if name.startswith("s")}),
        (["kavu-cli", "--settings", "check", "tr"], {"tree"}),
        (["kavu-cli", "save", "--edition", "20"],
         {"2000", "2001", "2004", "2005", "2007", "2009", "2011"}),
        (["kavu-cli", "--progress", ""], {"auto", "always", "never"}),
        (["kavu-cli", "recover", "--li"], {"--list"}),
        (["kavu-cli", "check", "mis"], {"mistakes.tma"}),
    ]
    for words, expected in cases:
        offered, error = complete(prefix, words)
        if set(offered) != expected or error:
            yield f"completion of {words}: {offered}, not {sorted(expected)}; {error}"


def man_page(prefix, name):
    """The text of a page, and what is wrong with it."""
    source = gzip.decompress((prefix / f"share/man/man1/{name}.gz").read_bytes()).decode("ascii")
    result = subprocess.run(["groff", "-man", "-ww", "-Tutf8"], input=source, check=False,
                            capture_output=True, text=True)
    text = re.sub("\x1b\\[[0-9;]*m|.\b", "", result.stdout)
    wrong = result.stderr or (result.returncode and "groff fails")
    return text.replace("‐", "-").replace("−", "-"), wrong


def options_of(program, *arguments):
    return set(re.findall(r"--[a-z][a-z-]+", run(str(program), *arguments, "--help").stdout))


def check_man_page(prefix):
    plain, wrong = man_page(prefix, "kavu-cli.1")
    if wrong:
        yield f"the man page renders with warnings: {wrong}"
    options = options_of(prefix / "bin/kavu-cli")
    commands = commands_of(prefix)
    if not {"check", "save", "store", "tree", "recover"} <= commands:
        yield f"the program tells of few commands: {sorted(commands)}"
    for command in commands:
        options |= options_of(prefix / "bin/kavu-cli", command)
    if len(options) < 10:
        yield f"the program tells of few options: {sorted(options)}"
    for option in sorted(options - {"--output", "--help-all"}):
        if option not in plain:
            yield f"the man page does not tell of {option}"


def check_editor(prefix):
    plain, wrong = man_page(prefix, "kavu.1")
    if wrong:
        yield f"the man page of the editor renders with warnings: {wrong}"
    options = options_of(prefix / "bin/kavu")
    if len(options) < 4:
        yield f"the editor tells of few options: {sorted(options)}"
    for option in sorted(options):
        if option not in plain:
            yield f"the man page of the editor does not tell of {option}"
    for command in (["desktop-file-validate", "share/applications/kavu.desktop"],
                    ["appstreamcli", "validate", "--no-net", "share/metainfo/org.kavu.kavu.metainfo.xml"]):
        result = run(*command, cwd=prefix)
        if result.returncode:
            yield f"{command}: {result.stdout}{result.stderr}"
    yield from check_mime_type(prefix)


def check_mime_type(prefix):
    """The desktop knows the files by their endings, and who opens them."""
    data = prefix / "share"
    result = run("update-mime-database", str(data / "mime"))
    if result.returncode:
        yield f"the MIME type can not be read: {result.stderr}"
        return
    globs = (data / "mime/globs2").read_text(encoding="utf-8").splitlines()
    for pattern in ("*.tma", "*.tmt"):
        if f"50:application/x-tmats:{pattern}" not in globs:
            yield f"the MIME type does not have {pattern}: {globs}"
    if "application/x-tmats" not in (data / "applications/kavu.desktop").read_text("utf-8"):
        yield "the editor does not take files of its MIME type"


def catches(process, number):
    """Whether a running process has a handler of its own for a signal."""
    status = Path(f"/proc/{process.pid}/status").read_text(encoding="ascii")
    return bool(int(re.search(r"(?m)^SigCgt:\s*([0-9a-f]+)$", status).group(1), 16)
                >> (number - 1) & 1)


def check_editor_starts(prefix):
    """It opens a document with what is installed, without a display, and ends when asked to."""
    home = prefix / "home"
    home.mkdir()
    environment = {"PATH": os.environ.get("PATH", ""), "HOME": str(home), "TEMP": str(home),
                   "QT_QPA_PLATFORM": "offscreen", "XDG_RUNTIME_DIR": str(home)}
    sample = prefix / "share/doc/kavu/samples/flight-test.tma"
    with subprocess.Popen([str(prefix / "bin/kavu"), "--no-splash", str(sample)],
                          env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True) as editor:
        # It follows signals from its start on; the document is open when its groups are there.
        def groups_there():
            return [path.name for path in home.glob("KAVU-9-*/*") if path.is_file()]

        deadline = time.monotonic() + 60
        while editor.poll() is None and time.monotonic() < deadline \
                and not (catches(editor, signal.SIGTERM) and len(groups_there()) >= 5):
            time.sleep(0.05)
        # What is asked here is the end of an editor at rest, not of one that is loading.
        time.sleep(2)
        groups = groups_there()
        editor.terminate()
        try:
            output, _ = editor.communicate(timeout=60)
        except subprocess.TimeoutExpired:
            editor.kill()
            output, _ = editor.communicate()
    if editor.returncode or len(groups) < 5:
        yield f"the editor does not start: {editor.returncode}, {sorted(groups)}, {output}"
    if list(home.glob("KAVU-9-*")):
        yield "the editor leaves its working store behind"


def main(cmake, build, prefix_text, *more):
    app = "--app" in more
    prefix = Path(prefix_text)
    shutil.rmtree(prefix, ignore_errors=True)
    result = run(cmake, "--install", build, "--prefix", str(prefix))
    findings = []
    if result.returncode:
        findings.append(result.stdout + result.stderr)
    findings += [f"{name} is missing" for name in FILES + (APP_FILES if app else [])
                 if not (prefix / name).is_file()]
    if not findings:
        version = run(str(prefix / "bin/kavu-cli"), "--version")
        if version.returncode or not re.fullmatch(r"kavu-cli \d+\.\d+\.\d+\n", version.stdout):
            findings.append(f"--version: {version}")
        findings += check_man_page(prefix)
        findings += check_completion(prefix)
        if app:
            findings += check_editor(prefix)
            findings += check_editor_starts(prefix)
        if shutil.which("zsh"):
            zsh = run("zsh", "-n", str(prefix / "share/zsh/site-functions/_kavu-cli"))
            if zsh.returncode:
                findings.append(zsh.stderr)
    for finding in findings:
        print(finding)
    print(f"{len(findings)} findings")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
