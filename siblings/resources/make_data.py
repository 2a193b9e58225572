#!/usr/bin/env python3
"""Makes the resource module's C++ source of its data: make_data.py OUTPUT.CC KIND=FILE...

A file's name begins with its number. A doubled number of a kind ends it with a message, and no output is written.
"""

import os
import re
import sys

HEAD = """// Made from the files of resources/; don't edit.
#include <iterator>

#include "platform/module_data.h"

namespace {

"""

TAIL = """};

}  // namespace

extern "C" __attribute__((visibility("default"))) const HeronModuleData* HeronModuleDataTable(uint32_t* count) {
  *count = static_cast<uint32_t>(std::size(kData));
  return kData;
}
"""


def read(argument):
    """Kind, number and bytes of a file."""
    kind, _, path = argument.partition("=")
    number = re.match(r"\d+", os.path.basename(path))
    if number is None:
        sys.exit(f"{path}: the name doesn't begin with a number")
    with open(path, "rb") as file:
        return int(kind), int(number.group()), file.read()


def main(target, *arguments):
    rows = sorted(map(read, arguments))
    for (kind, number, _), (next_kind, next_number, _) in zip(rows, rows[1:]):
        if (kind, number) == (next_kind, next_number):
            sys.exit(f"number {number} of kind {kind} is there twice")
    text = HEAD
    for kind, number, data in rows:
        cells = "".join(f"{byte}," for byte in data)
        text += f"constexpr uint8_t kData{kind}x{number}[] = {{{cells}0}};\n"
    text += "\nconstexpr HeronModuleData kData[] = {\n"
    for kind, number, data in rows:
        text += f"    {{{kind}, {number}, {len(data)}, kData{kind}x{number}}},\n"
    partial = f"{target}.tmp"
    with open(partial, "w", encoding="utf-8") as file:
        file.write(text + TAIL)
    os.replace(partial, target)


if __name__ == "__main__":
    main(*sys.argv[1:])
