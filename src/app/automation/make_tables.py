#!/usr/bin/env python3
"""Makes what serves the automation from its type library: the table of the methods, with the call
of each, and the files of the two interfaces as they are installed.

    make_tables.py LIBRARY TABLES_CPP INTERFACES_FOLDER

Tables and files are written only where they differ, so that nothing is built for nothing.
"""

import re
import sys
import xml.etree.ElementTree
from pathlib import Path

# What a type on the bus is in a call, and how a result becomes a value on the bus.
ARGUMENTS = {"x": "arguments.at({}).toLongLong()", "i": "arguments.at({}).toInt()",
             "b": "arguments.at({}).toBool()", "d": "arguments.at({}).toDouble()",
             "s": "toBytes(arguments.at({}).toString())"}
RESULTS = {"i": "QVariant({})", "b": "QVariant({})", "d": "QVariant({})",
           "s": "QVariant(toQString({}))"}

HEAD = """\
<!DOCTYPE node PUBLIC "-//freedesktop//DTD D-BUS Object Introspection 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/introspect.dtd">
"""


def table_row(method):
    """The row of a method: its name, the signature of its arguments, and its call."""
    name = method.get("name")
    given = [arg for arg in method.findall("arg") if arg.get("direction") == "in"]
    results = [arg for arg in method.findall("arg") if arg.get("direction") == "out"]
    values = ", ".join(ARGUMENTS[arg.get("type")].format(index)
                       for index, arg in enumerate(given))
    call = f"methods.{name}({values})"
    if not results:
        body = f"{call}; return {{}};"
    elif len(results) == 1:
        body = f"return {{{RESULTS[results[0].get('type')].format(call)}}};"
    else:
        members = ", ".join(RESULTS[arg.get("type")].format("result." + arg.get("name"))
                            for arg in results)
        body = f"const auto result = {call}; return {{{members}}};"
    signature = "".join(arg.get("type") for arg in given)
    arguments = "const QVariantList& arguments" if given else "const QVariantList&"
    return (f'    {{"{name}", "{signature}",\n'
            f"     [](AutomationMethods& methods, {arguments}) -> QVariantList {{ {body} }}}},\n")


def tables(interfaces):
    """The source with the tables of all interfaces."""
    text = ("// Made from the type library.\n"
            '#include "app/automation/AutomationTable.h"\n\n'
            '#include "app/automation/AutomationMethods.h"\n'
            '#include "app/framework/QtText.h"\n\n'
            "#include <array>\n\n"
            "namespace kavu {\n\nnamespace {\n\n")
    rows = ""
    for number, (name, path, node, file_text) in enumerate(interfaces):
        text += f"constexpr AutomationMethod kMethods{number}[] = {{\n"
        text += "".join(table_row(method) for method in node.findall("method"))
        text += f'}};\n\nconstexpr char kLibrary{number}[] = R"kavu({file_text})kavu";\n\n'
        rows += f'    AutomationInterface{{"{name}", "{path}", kMethods{number}, kLibrary{number}}},\n'
    return (text + f"constexpr std::array<AutomationInterface, {len(interfaces)}> kInterfaces{{{{\n{rows}}}}};\n\n"
            "}  // namespace\n\n"
            "std::span<const AutomationInterface> automationInterfaces() {\n"
            "    return kInterfaces;\n}\n\n}  // namespace kavu\n")


def write(path, text):
    if not path.exists() or path.read_text(encoding="utf-8") != text:
        path.write_text(text, encoding="utf-8")


def main():
    library, source, folder = (Path(argument) for argument in sys.argv[1:])
    text = library.read_text(encoding="utf-8")
    root = xml.etree.ElementTree.fromstring(text)
    interfaces = []
    for node in root.findall("node"):
        path = root.get("name") + "/" + node.get("name")
        for interface in node.findall("interface"):
            name = interface.get("name")
            part = re.search(rf'  <interface name="{re.escape(name)}">.*?</interface>\n', text, re.S)
            file_text = f'{HEAD}<node name="{path}">\n{part.group(0)}</node>\n'
            interfaces.append((name, path, interface, file_text))
            write(folder / f"{name}.xml", file_text)
    write(source, tables(interfaces))


if __name__ == "__main__":
    main()
