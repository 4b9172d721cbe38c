#!/usr/bin/env python3
"""Proves the rules of the house by reading the sources.

A folder of src includes only itself and folders to its left, and a room of a folder only
itself and rooms to its left; the gallery, which is not part of the product, may include all
that the editor may, and nothing includes the gallery; the toolkit, the command line parser, the
JSON library and the XML parser are seen only where they belong; files of the open document
change through one gate; files that are compiled in one unit have no name of their own in two
senses; files and functions stay short; nothing is left half done.

    check_house.py SOURCE_DIR               checks the tree, exit status 1 on a finding
    check_house.py --self-test SOURCE_DIR   checks that planted violations are found
"""

import re
import sys
import tempfile
from pathlib import Path

# From left to right. The programs stand side by side: neither may include the other; and so do
# the folders of ASIDE and what they may not see.
ORDER = ["core", "drawing", "vocabulary", "conversion", "groups", "bus", "pcm", "sdk", "xml", "mdb", "reports",
         "application"]
PROGRAMS = ["cli", "app"]
# Beside src: the pictures of the windows.
GALLERY = "gallery"
ASIDE = {"vocabulary": {"drawing"}, "groups": {"drawing"}}
# The rooms of a folder, from left to right. What is in no room, at the root of its folder, is
# shared by all rooms.
ROOMS = {
    "core": ["text", "files", "talk", "command", "document"],
    # Not ordered among themselves: each is one kind of group. What they share is at the root.
    "bus": ["definition", "message", "packet"],
    "pcm": ["model", "structure", "read", "write", "undo", "edit", "display"],
    "mdb": ["record", "storage", "dbase", "operations", "import"],
    "reports": ["layout", "content", "writers", "print", "calibration"],
}
# Folders in which a header with its source may need another and be needed by it: the functions of
# one large class, windows that open each other, and the application that makes what is given it.
# Even there no headers include each other.
MAY_NEED_EACH_OTHER = {"pcm", "app", "cli", "application", GALLERY}
XML_AND_RIGHT = ORDER[ORDER.index("xml"):] + PROGRAMS

# (what the include looks like, who may use it, how it is called)
LIBRARIES = [
    (re.compile(r"<Q[A-Z]\w*(/\w+)?>|<Qt\w+/"), ["app", GALLERY], "the toolkit"),
    (re.compile(r"<CLI/"), ["cli"], "the command line parser"),
    (re.compile(r"<nlohmann/"), ["cli"], "the JSON library"),
    (re.compile(r"<pugixml\.hpp>"), XML_AND_RIGHT, "the XML parser"),
    (re.compile(r"<(cairo|pango/)"), ["drawing"], "the library of pages"),
    (re.compile(r"<xlsxwriter"), ["reports"], "the library of workbooks"),
]

# Files of the open document change through core/document/DocumentFiles alone: former contents are
# kept as links, and a file that is written where it is would change them as well. So nobody else
# calls what writes, deletes or renames files, but for those whose files are not of the document.
FILE_CHANGE = re.compile(
    r"(?<![\w.>])(?:writeWholeFile|replaceWorkingFile|replaceUserFile|replaceUnchangedFile|overwriteBytes|replaceWithCopy|renameFile|deleteFile|copyFile|linkOrCopyFile|"
    r"makeFolders?|deleteFolder)\s*\("
    r"|\bFileWriter\s+\w+\s*[;({=]|<FileWriter>"
    r"|(?:\.|->)(?:deleteFiles|clearDocumentFiles|verifyNoDocumentFiles)\s*\("
    r"|(?:\.|->)flush\(\)"
    r"|(?<!\w)::(?:openat|creat|write|unlink|unlinkat|rename|renameat|link|linkat|symlink|truncate|"
    r"ftruncate|remove|mkdir|rmdir)\s*\("
    r"|\bstd::(?:filesystem|ofstream|fstream|fopen)\b|\bfopen\s*\(")
# What the gate is made of, and what is no part of the product.
FILE_GATE = ("core/files/", "core/document/DocumentFiles.", "core/document/FileJournal.",
             "core/WorkingStore.", GALLERY + "/")
# (how many places, whose files these are)
OTHER_FILES = {
    "app/automation/Registration.cpp": (3, "the files by which the bus finds the program"),
    "app/conversion/PlotOutput.cpp": (1, "a picture that the user has asked for"),
    "app/framework/MessagesWindow.cpp": (1, "a copy of the messages that the user has asked for"),
    "app/reports/PageOutput.cpp": (1, "pages and reports that the user has asked for"),
    "application/Application.cpp": (1, "the start, before there is a document"),
    "application/Recovery.cpp": (1, "the raw commands of a load"),
    "cli/Commands.cpp": (2, "copies of the files in a folder of the user"),
    "cli/FitCommand.cpp": (1, "a picture that the user has asked for"),
    "cli/ReportCommands.cpp": (1, "a report that the user has asked for"),
    "conversion/ConversionEdit.cpp": (6, "the working copy of a record that is being edited"),
    "conversion/ConversionLoader.cpp": (1, "scratch of a load"),
    "conversion/RecordCheck.h": (1, "scratch of a load"),
    "conversion/ConversionWriter.cpp": (1, "the update file of the user"),
    "application/StoreFacts.cpp": (1, "the mark of a dead store"),
    "conversion/DefinitionEdit.cpp": (4, "the working copy of a record that is being edited"),
    "conversion/PairSetPage.cpp": (1, "the working copy of a record that is being edited"),
    "conversion/UpdateFile.cpp": (1, "the update file of the user"),
    "conversion/UpdateFile.h": (1, "the update file of the user"),
    "core/TmatsReader.cpp": (1, "the message log"),
    "core/document/BuildDocument.cpp": (2, "scratch of the C group"),
    "core/document/FormerContents.cpp": (5, "the file of the user, its backup, and what is kept of it"),
    "core/document/GroupRewrite.cpp": (1, "a staged copy that the gate takes in"),
    "core/document/GroupSplitter.h": (1, "the raw commands of a load"),
    "core/document/KeyValueStore.cpp": (3, "an index in files of its own"),
    "core/document/KeyValueStore.h": (1, "an index in files of its own"),
    "core/document/OpenDocument.cpp": (1, "the message log"),
    "core/document/SaveTarget.cpp": (1, "the backup of the file of the user"),
    "core/talk/Messages.cpp": (3, "the message log"),
    "core/talk/OpenFileChecked.cpp": (1, "the backup of the file of the user"),
    "core/talk/SupportFolder.cpp": (3, "the folder of the settings"),
    "groups/Migration.cpp": (1, "the message log"),
    "groups/Reindex.cpp": (2, "the folder of the copies that the gate takes in"),
    "groups/SourceCopy.cpp": (1, "the message log"),
    "groups/SourceImport.cpp": (3, "the message log, and the raw commands of a load"),
    "groups/SourceTransfer.cpp": (1, "staged files that the gate takes in"),
    "groups/SourceTransfer.h": (1, "staged files that the gate takes in"),
    "mdb/operations/DatabaseCsv.cpp": (1, "an export that the user has asked for"),
    "mdb/operations/DatabaseEdit.cpp": (3, "the database of the user, and its copy"),
    "mdb/operations/DatabaseWork.cpp": (2, "the message log, and the folder of a new database"),
    "mdb/dbase/DbaseSearch.cpp": (1, "the table of the user"),
    "mdb/dbase/DbaseTable.cpp": (3, "the table of the user"),
    "mdb/import/ImportFile.cpp": (2, "the message log"),
    "mdb/import/ImportSource.cpp": (1, "the message log"),
    "pcm/PcmLoad.cpp": (2, "the message log"),
    "pcm/read/DataChunks.cpp": (3, "the scratch in which a load sorts the measurements"),
    "pcm/write/WordFrameConversion.cpp": (2, "the message log"),
    "reports/ReportRun.cpp": (3, "reports that the user has asked for, and scratch that is shown"),
    "reports/writers/XlsxWriter.cpp": (1, "scratch of a workbook"),
    "reports/layout/LayoutFile.cpp": (6, "the layout of the user, and its working copy"),
    "sdk/SessionFiles.cpp": (3, "the files of a session, in a store of its own"),
    "sdk/TranslatorConfiguration.cpp": (5, "the settings of translators"),
    "sdk/TranslatorShell.cpp": (2, "the log of a translator"),
    "xml/XmlDocument.cpp": (1, "the file of the user"),
}

MAX_FILE_LINES = 600
MAX_FUNCTION_LINES = 80
# Tables are as long as what they list.
TABLES = {"core/talk/MessageTexts.h"}

# Commands and their codes are taken apart in one place. The others: what the reader keeps beside
# it; the raw commands of conversions, for speed; and texts that are no codes.
CODE_CUT = re.compile(r"""find(_first_of|_last_of)?\((['"])(\\\\|:|-)\2""")
CODE_CUTTERS = {"core/command/CommandPath.h", "core/command/CommandPath.cpp",
                "core/command/GroupIndex.h", "core/command/TmatsCommand.cpp",
                "conversion/RawChunk.h", "conversion/ConversionEdit.cpp", "core/talk/SupportFolder.cpp",
                "groups/CommandCode.cpp"}

# A type at the level of the namespace, with its body or its bases.
TYPE = re.compile(r"^(?:class|struct|enum class) (\w+)(?: final)?\s*(?::[^;]*)?\{", re.M)
INCLUDE = re.compile(r'^\s*#\s*include\s+(?:"([^"]+)"|(<[^>]+>))')
# A setting has a key, with its default and its range.
NAKED_SETTING = re.compile(r'[sS]ettings_?(?:\(\))?(?:\.|->)'
                           r'(?:integer|text|write|writeInteger|profile\w+)\(\s*"')
# Several files of a library are one unit of the compiler, and which ones changes with each new
# file. What each has in its anonymous namespace meets the others' there, and what the headers that
# any of them includes have in the namespace of the product. So a name may have one sense in a
# library, unless its file is a unit of its own (kavu_alone).
OWN_NAME = re.compile(
    r"^(?P<opens>namespace(?: [\w:]+)? \{)$|^(?P<closes>\}  // namespace.*)$"
    r"|^(?:(?:inline |static )*(?:constexpr|const) [^\n=({]*?\b(?P<value>\w+)(?:\[\])?\s*[={])"
    r"|^(?:class|struct|enum class|enum|union) (?P<type>\w+)(?: final)?\s*(?::[^;{]*)?\{"
    r"|^using (?:(?P<alias>\w+) =(?P<of>[^;]*)|(?P<taken>(?:\w+::)+\w+));"
    r"|^(?!namespace|using|struct|class|enum|union|template|return|else|if|for|while|switch|typedef|"
    r"friend|TEST|Q_)(?:\[\[nodiscard\]\] )?[A-Za-z_][\w:<>,&* ]*?[ &*](?P<function>\w+)"
    r"\((?P<parameters>[^{;]*?)\)(?: const)?(?: noexcept)? ?[{;]", re.M)
ALONE = re.compile(r"\bkavu_alone\(([^)]*)\)")
GLOB = re.compile(r"\bfile\(GLOB (\w+) (?:CONFIGURE_DEPENDS )?([^)]*)\)")
# Whether the document differs from its file follows from what was done to it: who does it says so
# to its history, which sets the mark and tells everybody.
MARK = re.compile(r"\b\w*[dD]ocument_?(?:\(\))?(?:\.|->)changed\s*=(?!=)")
MARKERS = {"core/document/DocumentHistory.cpp", "core/document/Transaction.cpp"}
UNFINISHED = re.compile(r"\b(TODO|FIXME|XXX)\b")
NO_FUNCTION = re.compile(r"^(namespace|struct|class|enum|union|extern|typedef|using|constexpr|"
                         r"inline constexpr|static constexpr|const |#|//|}|template <.*> *$)")


def allowed_folders(folder):
    """The folders that FOLDER may include, itself among them."""
    if folder == GALLERY:
        return set(ORDER) | {"app", GALLERY}
    if folder in PROGRAMS:
        return set(ORDER) | {folder}
    return set(ORDER[:ORDER.index(folder) + 1]) - ASIDE.get(folder, set())


def room_of(name):
    """The room of a file or include, or nothing for one at the root of its folder."""
    parts = name.split("/")
    return parts[1] if len(parts) > 2 else None


def room_finding(name, own):
    """Why the file NAME may not include OWN of the same folder, or nothing."""
    folder = name.split("/")[0]
    rooms = ROOMS.get(folder)
    room, target = room_of(name), room_of(own)
    if not rooms or room is None or target is None:
        return None
    if target not in rooms or rooms.index(target) > rooms.index(room):
        return f"the room {folder}/{room} may not include {own}"
    return None


def long_functions(lines):
    """(line number, length) of functions that are too long.

    clang-format puts the head of a function and its closing brace into the first column,
    so nobody has to parse C++ for this.
    """
    head = start = None
    for number, line in enumerate(lines, 1):
        if line[:1].strip():
            if start is not None and line.startswith("}"):
                length = number - start + 1
                if length > MAX_FUNCTION_LINES:
                    yield start, length
                start = None
            head = None if NO_FUNCTION.match(line) else number
        if start is None and head is not None and line.endswith("{"):
            start = head


def file_changes(lines, name):
    """Findings about changes of files outside the gate."""
    if name.startswith(FILE_GATE):
        return
    places = [number for number, line in enumerate(lines, 1)
              if FILE_CHANGE.search(line.split("//")[0])]
    allowed = OTHER_FILES.get(name, (0, ""))[0]
    if len(places) > allowed:
        yield (f"{name}:{places[0]}: {len(places)} changes of files outside the gate, "
               f"{allowed} are allowed: lines {', '.join(map(str, places))}")
    elif len(places) < allowed:
        yield f"{name}: {len(places)} changes of files outside the gate, {allowed} are listed"


def check_file(path, name):
    """Findings in one file of src or the gallery, and the folders that it includes."""
    folder = name.split("/")[0]
    findings = []
    used = set()
    lines = path.read_text(encoding="utf-8").splitlines()
    if folder in ROOMS and room_of(name) not in ROOMS[folder] + [None]:
        findings.append(f"{name}: the room {room_of(name)} has no place in the order")
    if len(lines) > MAX_FILE_LINES and name not in TABLES:
        findings.append(f"{name}: {len(lines)} lines, more than {MAX_FILE_LINES}")
    if name not in TABLES:
        for start, length in long_functions(lines):
            findings.append(f"{name}:{start}: a function of {length} lines, more than "
                            f"{MAX_FUNCTION_LINES}")
    findings += file_changes(lines, name)
    for number, line in enumerate(lines, 1):
        if UNFINISHED.search(line):
            findings.append(f"{name}:{number}: something is left to do: {line.strip()}")
        if CODE_CUT.search(line) and name not in CODE_CUTTERS:
            findings.append(f"{name}:{number}: takes a code apart, as CommandPath.h does: "
                            f"{line.strip()}")
        if MARK.search(line) and name not in MARKERS:
            findings.append(f"{name}:{number}: sets the mark of a change outside the history")
        if NAKED_SETTING.search(line):
            findings.append(f"{name}:{number}: a setting without a key: {line.strip()}")
        match = INCLUDE.match(line)
        if not match:
            continue
        own, foreign = match.groups()
        if own:
            if "/" not in own:
                findings.append(f"{name}:{number}: includes {own} without its folder")
                continue
            target = own.split("/")[0]
            used.add(target)
            if target not in allowed_folders(folder):
                findings.append(f"{name}:{number}: {folder} may not include {own}")
            elif target == folder and (finding := room_finding(name, own)):
                findings.append(f"{name}:{number}: {finding}")
        else:
            for pattern, users, what in LIBRARIES:
                if pattern.match(foreign) and folder not in users:
                    findings.append(f"{name}:{number}: {folder} may not see {what}, {foreign}")
    return findings, used


def twice_defined(definitions):
    """Two types of one name compile, link, and take each other's functions."""
    for type_name, places in sorted(definitions.items()):
        if len(places) > 1:
            yield f"{type_name} is defined in {' and in '.join(places)}"


def find_circle(uses):
    """A list of folders that include each other in a ring, or nothing."""
    done = set()

    def walk(folder, road):
        if folder in road:
            return road[road.index(folder):] + [folder]
        if folder in done:
            return None
        for target in sorted(uses.get(folder, ())):
            if target != folder:
                circle = walk(target, road + [folder])
                if circle:
                    return circle
        done.add(folder)
        return None

    for folder in sorted(uses):
        circle = walk(folder, [])
        if circle:
            return circle
    return None


def own_names(text, where):
    """(name, sense) of what a text has in one namespace, which is "" for the anonymous ones.

    A function's name goes with the types of its parameters; two of one sense may meet.
    """
    road = []
    for match in OWN_NAME.finditer(text):
        if match["opens"]:
            road.append(match["opens"].split()[1].rstrip("{"))
        elif match["closes"]:
            del road[-1:]
        elif (road[-1:] == [where] if where == "" else road == [where]):
            if match["function"]:
                parameters = re.split(r",(?![^<]*>)", re.sub(r"\s+", " ", match["parameters"]))
                types = [re.sub(r" ?\b\w+$", "", each.split("=")[0].strip())
                         if " " in each.split("=")[0].strip() else each.strip()
                         for each in parameters]
                yield f"{match['function']}({', '.join(types)})", None
            else:
                taken = match["taken"] or ""
                yield (match["value"] or match["type"] or match["alias"] or taken.split(":")[-1],
                       taken or match["of"] and match["of"].strip())


def units_of_their_own(folder):
    """The files that the CMakeLists.txt of a folder keeps out of larger units."""
    path = folder / "CMakeLists.txt"
    text = path.read_text(encoding="utf-8") if path.exists() else ""
    listed = {name: [found.name for pattern in patterns.split() for found in folder.glob(pattern)]
              for name, patterns in GLOB.findall(text)}
    alone = set()
    for arguments in ALONE.findall(text):
        for argument in arguments.split():
            variable = re.fullmatch(r"\$\{(\w+)\}", argument)
            alone.update(listed.get(variable[1], []) if variable else [argument])
    return {folder / name for name in alone}


def names_in_two_senses(root):
    """Names that a file has for itself, and another file or a header of its library as well."""
    for top in (root / "src", root / "tests"):
        alone = units_of_their_own(top)
        headers = {}
        for path in sorted(top.rglob("*.h")) if top.name == "src" else []:
            for name, _ in own_names(path.read_text(encoding="utf-8"), "kavu"):
                headers.setdefault(name, []).append(path)
        for folder in sorted(each for each in top.glob("*") if each.is_dir()):
            mine = alone | units_of_their_own(folder)
            places = {}
            for path in sorted(set(folder.rglob("*.cpp")) - mine):
                for name, sense in set(own_names(path.read_text(encoding="utf-8"), "")):
                    places.setdefault(name, []).append((path, sense))
            for name, found in sorted(places.items()):
                files = [path.relative_to(root).as_posix() for path, _ in found]
                if len(found) > 1 and (found[0][1] is None or len({each for _, each in found}) > 1):
                    yield f"{name} has two senses in one library: {', '.join(files)}"
                for header in headers.get(name, []):
                    if header.relative_to(top).parts[0] in allowed_folders(folder.name):
                        yield (f"{name} of {files[0]} is another one than that of "
                               f"{header.relative_to(root).as_posix()}")


def sources_of(root):
    """(path, name) of every source file; a name begins with its folder."""
    for top, start in ((root / "src", root / "src"), (root / GALLERY, root)):
        for path in sorted(top.rglob("*")):
            if path.suffix in (".h", ".cpp"):
                yield path, path.relative_to(start).as_posix()


def circles_of_files(includes):
    """Headers that include each other, and modules (a header with its source) that do."""
    headers = {name: {target for target in targets if target.endswith(".h")}
               for name, targets in includes.items() if name.endswith(".h")}
    circle = find_circle(headers)
    if circle:
        yield "a circle of headers: " + " -> ".join(circle)
    modules = {}
    for name, targets in includes.items():
        if name.split("/")[0] not in MAY_NEED_EACH_OTHER:
            modules.setdefault(name.rsplit(".", 1)[0], set()).update(
                target.rsplit(".", 1)[0] for target in targets)
    circle = find_circle(modules)
    if circle:
        yield "a circle of files: " + " -> ".join(circle)


def check_tree(root):
    findings = []
    uses = {}
    includes = {}
    definitions = {}
    count = 0
    for path, name in sources_of(root):
        folder = name.split("/")[0]
        if folder not in ORDER + PROGRAMS + [GALLERY]:
            findings.append(f"{name}: the folder {folder} has no place in the order")
            continue
        count += 1
        includes[name] = {match[1] for line in path.read_text(encoding="utf-8").splitlines()
                          if (match := INCLUDE.match(line)) and match[1]}
        in_file, used = check_file(path, name)
        findings += in_file
        if path.suffix == ".h":
            for type_name in TYPE.findall(path.read_text(encoding="utf-8")):
                definitions.setdefault(type_name, []).append(name)
        uses.setdefault(folder, set()).update(used)
    if any(name.startswith("core/document/DocumentFiles.") for _, name in sources_of(root)):
        names = {name for _, name in sources_of(root)}
        findings += [f"{name} is not there, but may change files" for name in OTHER_FILES
                     if name not in names]
    findings += twice_defined(definitions)
    circle = find_circle(uses)
    if circle:
        findings.append("a circle of folders: " + " -> ".join(circle))
    findings += circles_of_files(includes)
    findings += names_in_two_senses(root)
    if not count:
        findings.append("no sources found; the check would prove nothing")
    return findings


# Each plant: file, text, words that the finding must hold.
PLANTS = [
    ("core/A.cpp", '#include "groups/B.h"\n', "core may not include groups/B.h"),
    ("conversion/A.h", '  #  include "application/B.h"\n', "conversion may not include"),
    ("cli/A.cpp", '#include "app/B.h"\n', "cli may not include app/B.h"),
    ("app/A.cpp", '#include "cli/B.h"\n', "app may not include cli/B.h"),
    ("core/A.cpp", '#include "B.h"\n', "without its folder"),
    ("groups/A.cpp", "#include <QString>\n", "may not see the toolkit"),
    ("cli/A.cpp", "#include <QtWidgets/QLabel>\n", "may not see the toolkit"),
    ("core/A.cpp", "#include <nlohmann/json.hpp>\n", "may not see the JSON library"),
    ("application/A.cpp", "#include <CLI/CLI.hpp>\n", "may not see the command line parser"),
    ("pcm/A.cpp", "#include <pugixml.hpp>\n", "may not see the XML parser"),
    ("reports/A.cpp", "#include <cairo-pdf.h>\n", "may not see the library of pages"),
    ("cli/A.cpp", "#include <xlsxwriter.h>\n", "may not see the library of workbooks"),
    ("core/A.cpp", "// TODO" ": later\n", "left to do"),
    ("app/A.cpp", "    context.document.changed = true;\n", "outside the history"),
    ("groups/A.cpp", "    document->changed = false;\n", "outside the history"),
    ("core/A.cpp", "// x\n" * (MAX_FILE_LINES + 1), "601 lines"),
    ("core/A.cpp", "void f() {\n" + "    g();\n" * MAX_FUNCTION_LINES + "}\n", "a function of"),
    ("core/A.cpp", "void f(int a,\n       int b) {\n" + "    g();\n" * MAX_FUNCTION_LINES + "}\n",
     "a function of"),
    ("other/A.cpp", "", "no place in the order"),
    ("vocabulary/A.cpp", '#include "drawing/B.h"\n', "vocabulary may not include drawing/B.h"),
    ("core/text/A.cpp", '#include "core/files/B.h"\n', "core/text may not include core/files/B.h"),
    ("pcm/read/A.h", '#include "pcm/edit/B.h"\n', "pcm/read may not include pcm/edit/B.h"),
    ("pcm/A.cpp", "auto at = code.find('-');\n", "takes a code apart"),
    ("groups/A.cpp", "auto at = code.rfind('\\\\');\n", "takes a code apart"),
    ("groups/A.cpp", 'auto at = code.find_first_of(":", 2);\n', "takes a code apart"),
    ("core/attic/A.cpp", "", "the room attic has no place in the order"),
    ("app/A.cpp", '#include "gallery/B.h"\n', "app may not include gallery/B.h"),
    ("groups/A.cpp", "    (void)deleteFile(path);\n", "changes of files outside the gate"),
    ("groups/A.cpp", "    status = status.ok() ? renameFile(a, b) : status;\n",
     "changes of files outside the gate"),
    ("pcm/A.cpp", "    FileWriter writer;\n", "changes of files outside the gate"),
    ("pcm/A.h", "    std::optional<FileWriter> writer_;\n", "changes of files outside the gate"),
    ("conversion/A.cpp", "    return replaceWorkingFile(path, text);\n",
     "changes of files outside the gate"),
    ("conversion/A.cpp", "    return chunk.flush();\n", "changes of files outside the gate"),
    ("app/A.cpp", "    context.store.deleteFiles(nullptr, name);\n",
     "changes of files outside the gate"),
    ("cli/A.cpp", "    ::unlink(path.c_str());\n", "changes of files outside the gate"),
    ("cli/A.cpp", "    std::ofstream out(path);\n", "changes of files outside the gate"),
    ("groups/Migration.cpp", "    deleteFile(a);\n    deleteFile(b);\n",
     "2 changes of files outside the gate, 1 are allowed"),
    ("groups/Migration.cpp", "", "0 changes of files outside the gate, 1 are listed"),
    ("gallery/A.cpp", '#include "cli/B.h"\n', "gallery may not include cli/B.h"),
    ("gallery/A.cpp", "#include <nlohmann/json.hpp>\n", "may not see the JSON library"),
    ("app/A.cpp", 'if (form.settings.integer("X", 0) != 0) {\n', "a setting without a key"),
]
# Files that include each other only together: the files, words that the finding must hold.
CIRCLES = [
    ([("core/document/A.cpp", '#include "core/document/A.h"\n#include "core/document/B.h"\n'),
      ("core/document/B.cpp", '#include "core/document/B.h"\n#include "core/document/A.h"\n')],
     "a circle of files: core/document/A -> core/document/B -> core/document/A"),
    ([("pcm/A.h", '#include "pcm/B.h"\n'), ("pcm/B.h", '#include "pcm/C.h"\n'),
      ("pcm/C.h", '#include "pcm/A.h"\n')],
     "a circle of headers: pcm/A.h -> pcm/B.h -> pcm/C.h -> pcm/A.h"),
]
# The same of names in two senses.
OWN = "namespace kavu {\nnamespace {\n%s\n}  // namespace\n}  // namespace kavu\n"
SENSES = [
    ([("groups/A.cpp", OWN % "constexpr int kMost = 1;"),
      ("groups/B.cpp", OWN % "constexpr auto kMost = std::to_array({1});")],
     "kMost has two senses in one library: src/groups/A.cpp, src/groups/B.cpp"),
    ([("pcm/read/A.cpp", OWN % "int rowOf(const Field& field,\n          int n = 1) {"),
      ("pcm/edit/B.cpp", OWN % "long rowOf(const Field& other, int row) {")],
     "rowOf(const Field&, int) has two senses"),
    ([("core/A.cpp", OWN % "struct Row {"), ("core/B.cpp", OWN % "using Row = int;")],
     "Row has two senses"),
    ([("core/A.cpp", OWN % "using Row = long;"), ("core/B.cpp", OWN % "using Row = int;")],
     "Row has two senses"),
    ([("core/B.h", "namespace kavu {\n[[nodiscard]] int indexOf(int place);\n}  // namespace kavu\n"),
      ("groups/A.cpp", OWN % "int indexOf(int at) {")],
     "indexOf(int) of src/groups/A.cpp is another one than that of src/core/B.h"),
    ([("core/CMakeLists.txt", "kavu_alone(C.cpp)\n"), ("core/A.cpp", OWN % "struct Row {"),
      ("core/B.cpp", OWN % "struct Row {")], "Row has two senses"),
]
CLEAN = [
    ("core/A.cpp", '#include "core/B.h"\n#include <string>\n'),
    ("core/A.h", '#include "core/document/B.h"\n'),
    ("core/files/A.cpp", '#include "core/A.h"\n#include "core/text/B.h"\n'),
    ("cli/A.cpp", '#include "application/B.h"\n#include <CLI/CLI.hpp>\n'),
    ("app/A.cpp", '#include "core/B.h"\n#include <QString>\n'),
    ("app/C.cpp", "changed = document.changed || document.changed == last;\n"),
    ("app/B.cpp", 'if (settings.get(setting::kX)) {\n    settings.profileText(kFiles, key);\n'),
    ("mdb/A.cpp", '#include "xml/B.h"\n#include <pugixml.hpp>\n'),
    ("gallery/A.cpp", '#include "app/B.h"\n#include "gallery/C.h"\n#include <QString>\n'),
    ("core/files/A.cpp", "    (void)deleteFile(path);\n"),
    ("groups/Migration.cpp", "    deleteFile(path);\n"),
    ("groups/A.cpp", "    // deleteFile(path) is not for us.\n    files.remove(name);\n"
                     "void write(FileWriter& writer);\n"),
    ("bus/CMakeLists.txt", "file(GLOB tables CONFIGURE_DEPENDS *Fields.cpp)\n"
     "kavu_alone(${tables} message/A.cpp)\n"),
    ("bus/message/A.cpp", OWN % "constexpr int kMost = 1;\nusing Row = int;"),
    ("bus/BFields.cpp", OWN % "constexpr int kMost = 2;\nusing Row = int;"),
    ("bus/C.cpp", OWN % "constexpr int kMost = 3;\nusing Row = int;\nint f(int a) {"),
    ("bus/D.cpp", OWN % "using Row = int;\nint f(long a) {"),
    ("bus/D.h", "namespace kavu {\nnamespace field {\ninline constexpr int kMost = 4;\n"
     "}  // namespace field\nint f(char a);\n}  // namespace kavu\n"),
    ("xml/E.h", "namespace kavu {\ninline constexpr int kMost = 5;\n}  // namespace kavu\n"),
]


def findings_of(files):
    with tempfile.TemporaryDirectory() as folder:
        for name, text in files:
            path = Path(folder, name if name.startswith(GALLERY + "/") else "src/" + name)
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")
        return check_tree(Path(folder))


def self_test():
    problems = []
    for name, text, words in PLANTS:
        findings = findings_of([(name, text)])
        if not any(words in finding for finding in findings):
            problems.append(f"a planted {words!r} in {name} was not found: {findings}")
    findings = findings_of(CLEAN)
    if findings:
        problems.append(f"clean files were refused: {findings}")
    findings = findings_of([("core/A.cpp", '#include "groups/B.h"\n'),
                            ("groups/B.cpp", '#include "core/A.h"\n')])
    if not any("circle" in finding for finding in findings):
        problems.append(f"a planted circle was not found: {findings}")
    for files, words in CIRCLES + SENSES:
        findings = findings_of(files)
        if not any(words in finding for finding in findings):
            problems.append(f"a planted {words!r} was not found: {findings}")
    findings = findings_of([("core/A.h", "struct Same {\n};\n"),
                            ("groups/B.h", "enum class Same : int {\n};\n")])
    if not any("Same is defined in core/A.h and in groups/B.h" in finding for finding in findings):
        problems.append(f"a type that is defined twice was not found: {findings}")
    findings = findings_of([("core/document/DocumentFiles.h", "")])
    if not any("groups/Reindex.cpp is not there" in finding for finding in findings):
        problems.append(f"a file that went was not found in the list: {findings}")
    if not findings_of([]):
        problems.append("an empty tree passed")
    return problems


def main(arguments):
    if arguments[:1] == ["--self-test"]:
        findings = self_test()
    else:
        findings = check_tree(Path(arguments[0]))
    for finding in findings:
        print(finding)
    print(f"{len(findings)} findings")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
