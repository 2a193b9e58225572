#!/usr/bin/env python3
"""Makes the resource module's C++ source out of texts.tsv: make_texts.py TEXTS.TSV OUTPUT.CC

Any line that isn't well-formed ends it with a message that names the line, and no output is written.
"""

import os
import sys

FIRST, LAST = 20000, 64000
LIMIT = 999  # characters; the driver shows a longer text as an empty one

HEAD = """// Made from texts.tsv; don't edit.
#include <iterator>

#include "platform/api/module_texts.h"

namespace {

constexpr HeronModuleText kTexts[] = {
"""

TAIL = """};

}  // namespace

extern "C" __attribute__((visibility("default"))) const HeronModuleText* HeronModuleTexts(uint32_t* count) {
  *count = static_cast<uint32_t>(std::size(kTexts));
  return kTexts;
}
"""


def unescape(text):
    """The text with its escapes resolved; raises ValueError for an escape that isn't known."""
    plain, rest = "", text
    while rest:
        before, slash, rest = rest.partition("\\")
        plain += before
        if slash:
            if rest[:1] not in ("n", "\\"):
                raise ValueError(f"unknown escape '\\{rest[:1]}'")
            plain += "\n" if rest[0] == "n" else "\\"
            rest = rest[1:]
    return plain


def units(text):
    """Length in UTF-16 units."""
    return len(text.encode("utf-16-le")) // 2


def parse_line(line, last_id):
    """Number and text of a line."""
    columns = line.split("\t")
    if len(columns) != 3:
        raise ValueError(f"{len(columns)} columns instead of 3")
    if not (columns[0].isascii() and columns[0].isdigit()):
        raise ValueError(f"'{columns[0]}' is not a number")
    text_id, text = int(columns[0]), unescape(columns[1])
    if not FIRST <= text_id <= LAST:
        raise ValueError(f"{text_id} is outside {FIRST} to {LAST}")
    if text_id <= last_id:
        raise ValueError(f"{text_id} doesn't ascend")
    if not text:
        raise ValueError(f"text {text_id} is empty")
    if any(ord(c) < 32 and c != "\n" for c in text):
        raise ValueError(f"text {text_id} holds a control character")
    if units(text) > LIMIT:
        raise ValueError(f"text {text_id} has more than {LIMIT} characters")
    return text_id, text


def parse(lines):
    """All texts, as (number, text) in ascending order."""
    texts, last_id = [], 0
    for number, line in enumerate(lines, 1):
        if line.startswith("#"):
            continue
        try:
            text_id, text = parse_line(line, last_id)
        except ValueError as error:
            raise ValueError(f"line {number}: {error}") from None
        texts.append((text_id, text))
        last_id = text_id
    if not texts:
        raise ValueError("there are no texts")
    return texts


def literal(text):
    escaped = text.replace("\\", "\\\\").replace('"', '\\"').replace("\n", "\\n")
    return f'u"{escaped}"'


def main(source, target):
    try:
        with open(source, encoding="utf-8", newline="\n") as file:
            texts = parse(file.read().removesuffix("\n").split("\n"))
    except (OSError, ValueError) as error:
        sys.exit(f"{source}: {error}")
    rows = "".join(f"    {{{text_id}, {units(text)}, {literal(text)}}},\n" for text_id, text in texts)
    partial = f"{target}.tmp"
    with open(partial, "w", encoding="utf-8") as file:
        file.write(HEAD + rows + TAIL)
    os.replace(partial, target)


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    main(sys.argv[1], sys.argv[2])
