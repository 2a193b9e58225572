#!/usr/bin/env python3
"""Makes the resource module's C++ source of its data: make_data.py OUTPUT.CC KIND=FILE|FOLDER...

A file's name begins with its number; of a folder all SVG files count. A doubled number of a kind ends it with a message, and no
output is written.
"""

import os
import re
import sys

HEAD = """// Made from the files of resources/; don't edit.
#include <iterator>

#include "platform/api/module_data.h"

namespace {

"""

TAIL = """};

}  // namespace

extern "C" __attribute__((visibility("default"))) const HeronModuleData* HeronModuleDataTable(uint32_t* count) {
  *count = static_cast<uint32_t>(std::size(kData));
  return kData;
}
"""


def files_of(argument):
    """Kind and path of each file that an argument names."""
    kind, _, path = argument.partition("=")
    if not os.path.isdir(path):
        return [(kind, path)]
    return [(kind, os.path.join(path, name)) for name in os.listdir(path) if name.endswith(".svg")]


def read(kind, path):
    """Kind, number and bytes of a file."""
    number = re.match(r"\d+", os.path.basename(path))
    if number is None:
        sys.exit(f"{path}: the name doesn't begin with a number")
    with open(path, "rb") as file:
        return int(kind), int(number.group()), file.read()


PLAIN = {byte: chr(byte) for byte in range(32, 127) if chr(byte) not in '"\\?'}


def literal(data):
    """A string literal, which a compiler reads many times faster than a list of numbers."""
    return '"' + "".join(PLAIN.get(byte) or f"\\{byte:03o}" for byte in data) + '"'


def main(target, *arguments):
    rows = sorted(read(*file) for argument in arguments for file in files_of(argument))
    for (kind, number, _), (next_kind, next_number, _) in zip(rows, rows[1:]):
        if (kind, number) == (next_kind, next_number):
            sys.exit(f"number {number} of kind {kind} is there twice")
    text = HEAD
    for kind, number, data in rows:
        text += f"constexpr uint8_t kData{kind}x{number}[] = {literal(data)};\n"
    text += "\nconstexpr HeronModuleData kData[] = {\n"
    for kind, number, data in rows:
        text += f"    {{{kind}, {number}, {len(data)}, kData{kind}x{number}}},\n"
    partial = f"{target}.tmp"
    with open(partial, "w", encoding="utf-8") as file:
        file.write(text + TAIL)
    os.replace(partial, target)


if __name__ == "__main__":
    main(*sys.argv[1:])
