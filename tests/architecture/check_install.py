#!/usr/bin/env python3
"""Installs the built tree to a prefix and looks at everything that lands there.

    check_install.py CMAKE BUILD_DIR PREFIX
"""

import re
import shutil
import subprocess
import sys
from pathlib import Path

COMMANDS = {"check", "save", "store", "tree", "recover"}
FILES = [
    "bin/kavu-cli", "share/man/man1/kavu-cli.1",
    "share/bash-completion/completions/kavu-cli", "share/zsh/site-functions/_kavu-cli",
    "share/doc/kavu/README.md", "share/doc/kavu/CHANGELOG.md", "share/doc/kavu/LICENSE",
    "share/doc/kavu/manual/index.md", "share/doc/kavu/samples/flight-test.tma",
    "share/doc/kavu/samples/flight-test-96.tma", "share/doc/kavu/samples/flight-test-11.tma",
    "share/doc/kavu/samples/mistakes.tma",
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


def check_completion(prefix):
    cases = [
        (["kavu-cli", ""], COMMANDS),
        (["kavu-cli", "--quiet", "s"], {"save", "store"}),
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


def check_man_page(prefix):
    page = str(prefix / "share/man/man1/kavu-cli.1")
    result = run("groff", "-man", "-ww", "-Tutf8", page)
    if result.returncode or result.stderr:
        yield f"the man page renders with warnings: {result.stderr}"
    text = re.sub("\x1b\\[[0-9;]*m|.\b", "", result.stdout)
    help_text = run(str(prefix / "bin/kavu-cli"), "--help").stdout
    options = set(re.findall(r"--[a-z][a-z-]+", help_text))
    for command in COMMANDS:
        options |= set(re.findall(r"--[a-z][a-z-]+", run(str(prefix / "bin/kavu-cli"), command,
                                                          "--help").stdout))
    if len(options) < 10:
        yield f"the program tells of few options: {sorted(options)}"
    plain = text.replace("‐", "-").replace("−", "-")
    for option in sorted(options - {"--output", "--help-all"}):
        if option not in plain:
            yield f"the man page does not tell of {option}"


def main(cmake, build, prefix_text):
    prefix = Path(prefix_text)
    shutil.rmtree(prefix, ignore_errors=True)
    result = run(cmake, "--install", build, "--prefix", str(prefix))
    findings = []
    if result.returncode:
        findings.append(result.stdout + result.stderr)
    findings += [f"{name} is missing" for name in FILES if not (prefix / name).is_file()]
    if not findings:
        version = run(str(prefix / "bin/kavu-cli"), "--version")
        if version.returncode or not re.fullmatch(r"kavu-cli \d+\.\d+\.\d+\n", version.stdout):
            findings.append(f"--version: {version}")
        findings += check_man_page(prefix)
        findings += check_completion(prefix)
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
