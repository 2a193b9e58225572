#!/usr/bin/env python3
"""Turns the driver's tables (*.table) into rows of C++ that headers include, and options into names for code.

  make_tables.py OUTPUT_FOLDER
  make_tables.py --numbers      shows the names of features, options and texts with their numbers, one to a line

Writes features.h, values.h, texts.h and *.inc: initialisers in the order of the structures that hold them. A file that wouldn't change isn't touched. What can't be read ends the run with
the file, the line and the reason.
"""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent


class BadLine(Exception):
    pass


def lines_of(name):
    """Rows of a table with their line numbers; comments and blank lines are left out."""
    for number, line in enumerate((ROOT / name).read_text(encoding="utf-8").splitlines(), 1):
        if line.strip() and not line.startswith("#"):
            yield number, line


def parse(name, read_line):
    """The rows that `read_line` makes of each line, which it may refuse."""
    rows = []
    for number, line in lines_of(name):
        try:
            read_line(line, rows)
        except (BadLine, ValueError, KeyError, IndexError, AttributeError) as error:
            sys.exit(f"{name}:{number}: {error or 'not a row'}: {line.strip()}")
    return rows


def columns(line):
    return [column.strip() for column in line.split("|")]


def number(word, smallest=0, largest=65535):
    value = int(word)
    if not smallest <= value <= largest:
        raise BadLine(f"{value} is out of range")
    return value


def wide(text):
    return f'u"{text}"'


def flag(value):
    return "true" if value else "false"


# -- the settings record ---------------------------------------------------------------------------------------------

FIELD_TYPES = {"u8": "kU8", "u16": "kU16", "i16": "kI16", "u32": "kU32"}


def read_field(line, rows):
    offset, kind, name, default, *marks = line.split()
    letter, length = kind, 1
    if match := re.fullmatch(r"u32x(\d+)|([wb])(\d+)", kind):
        letter = match[2] or "u32"
        length = number(match[1] or match[3])
    type_name = {"w": "kText", "b": "kBytes"}.get(letter) or FIELD_TYPES[letter]
    count, stride = 1, 0
    for mark in marks:
        if match := re.fullmatch(r"x(\d+)\+(\d+)", mark):
            count, stride = number(match[1]), number(match[2])
        elif mark != "dev":
            raise BadLine(f"unknown mark {mark}")
    match = re.fullmatch(r"(f?)(\d+)(\.\.)?|-", default)
    from_feature, value, counts_on = match[1] == "f", number(match[2] or 0), match[3] is not None
    rows.append(f'{{"{name}", {number(offset)}, FieldType::{type_name}, {length}, {count}, {stride}, '
                f'{flag(from_feature)}, {value}, {flag(counts_on)}, {flag("dev" in marks)}}},')


# -- parameters and keys of settings files ---------------------------------------------------------------------------

PARAM_KINDS = {"L": "kList", "R": "kRadio", "C": "kCheck", "N": "kNumber", "T": "kText", "S": "kScalar",
               "B": "kOtherText", "G": "kBlock", "I": "kInternal"}
PARAM_RULES = {"none", "field", "default", "zero", "own", "isCovered", "cover", "layout", "userWidth", "userLength",
               "plusOne"}


def read_param(line, rows):
    if "|" not in line:
        row_id, store_item, file_key = (number(word) for word in line.split())
        rows.append(f"{{.id = {row_id}, .storeItem = {store_item}, .fileKey = {file_key}}},")
        return
    row_id, kind, key, section, source = columns(line)
    letter, *feature = kind.split()
    rule, field, index = (source.split() + ["", "", ""])[:3]
    if rule and rule not in PARAM_RULES:
        raise BadLine(f"unknown rule {rule}")
    rows.append("{"
                f".id = {number(row_id)}, "
                f".feature = {number(feature[0][1:]) if feature else 'kNoFeature'}, "
                f".kind = ParamKind::{PARAM_KINDS[letter]}, "
                f".rule = ParamRule::k{(rule or 'none')[0].upper()}{(rule or 'none')[1:]}, "
                f".key = {wide(key)}, "
                f".section = {'kPlainSection' if section == '=' else wide(section)}, "
                f".field = {wide(key if field == '=' else field)}, "
                f".fieldIndex = {number(index or 0)}"
                "},")


def read_file_key(line, rows):
    row_id, group, name, *rest = columns(line)
    words = rest[0].split() if rest else []
    lo, hi = (number(end) for end in words[0].split("..")) if words else (1, 1)
    link = number(words[1]) if len(words) > 1 else 0
    section, key = (name[1:-1], "") if name.startswith("[") else ("", name)
    rows.append(f"{{{number(row_id)}, {wide(section)}, {wide(key)}, {lo}, {hi}, {link}, 1, {number(group)}}},")


# -- controls --------------------------------------------------------------------------------------------------------

CONTROL_TYPES = {"L": "kList", "R": "kRadio", "C": "kCheck", "N": "kNumber", "B": "kButton"}


class Controls:
    def __init__(self):
        self.dialog = self.mask = None
        self.seen = []  # the setting of each control: (id of a button, parameter, key)

    def read(self, line, rows):
        words = line.split()
        if words[0] == "dialog":
            if words[2] != "mask":
                raise BadLine("a dialog without a mask")
            self.dialog, self.mask = number(words[1]), number(words[3])
            return
        row_id, letter, label, name, *rest = words
        fixed = "fixed" in rest
        rest = [word for word in rest if word != "fixed"]
        options = dict(zip(rest[::2], rest[1::2]))
        if set(options) - {"mask", "parameter"}:
            raise BadLine("unknown word")
        key, parameter = name.split(".")[0], number(options.get("parameter", 0))
        setting = (row_id if letter == "B" else None, parameter, key)
        self.seen.append(setting)
        rows.append(f"{{{number(row_id)}, {number(label)}, {self.dialog}, {number(options.get('mask', self.mask))}, "
                    f"{parameter}, ControlType::{CONTROL_TYPES[letter]}, {flag(fixed)}, {self.seen.index(setting)}, "
                    f"{wide(name)}, {wide(key)}}},")


# -- options of the catalogue ----------------------------------------------------------------------------------------

MASKS = {"": "0", "*": "kEveryDestination", "*U": "kDestinationFirst", "*W": "kDestinationSecond | kDestinationThird"}


class Options:
    def __init__(self):
        self.feature = None
        self.names = []
        self.features = []  # (feature, its own name)
        self.values = {}  # feature -> {option's name: value}

    def read(self, line, rows):
        feature, name, options = columns(line)
        if feature:
            self.feature = number(feature)
            self.names.append(f"{{{feature}, {wide(name)}}},")
            self.features.append((self.feature, name))
        for word in options.split():
            match = re.fullmatch(r"(-?\d+)=([A-Z]\w*)/(\d+)(\*\w?)?", word)
            value = number(match[1], -32768, 32767)
            names = self.values.setdefault(self.feature, {})
            if match[2] in names:
                raise BadLine(f"{match[2]} is there twice")
            names[match[2]] = value
            rows.append(f"{{{self.feature}, {number(match[3])}, {value}, {MASKS[match[4] or '']}}},")


def settings():
    """(parameter, key, feature) of every setting with a feature, in the order of the parameters."""
    for _, line in lines_of("uistate/params.table"):
        if "|" not in line:
            continue
        parameter, kind, key, *_ = columns(line)
        words = kind.split()
        if len(words) > 1:
            yield int(parameter), key, int(words[1][1:])


def control_values(controls, options):
    """The named values of every control: its index, the name, the value."""
    by_parameter = {parameter: feature for parameter, _, feature in settings()}
    by_key = {key: feature for _, key, feature in reversed(list(settings()))}
    for index, (_, parameter, key) in enumerate(controls.seen):
        feature = by_parameter.get(parameter) if parameter else by_key.get(key)
        for name, value in options.values.get(feature, {}).items():
            yield f"{{{index}, {value}, {wide(name)}}},"


def feature_names(options):
    """(name, feature): the keys of the settings that use it; of a feature without one the catalogue's own name."""
    names = {}
    for _, key, feature in settings():
        if re.fullmatch(r"[A-Za-z]\w*", key):
            names.setdefault(key, feature)
    taken = set(names.values())
    for feature, own_name in options.features:
        name = "".join(word[0].upper() + word[1:] for word in own_name.split())
        if feature in taken or not re.fullmatch(r"[A-Za-z]\w*", name):
            continue
        if name in names:
            sys.exit(f"catalog/list_options.table: feature {feature} has the name {name} of feature {names[name]}")
        names[name] = feature
    return names.items()


def features_header(options):
    out = ["// Numbers of the catalogue's features by the key of their setting, or else by their own name:",
           "// feature::lpOutput. Made of uistate/params.table and catalog/list_options.table.",
           "#pragma once", "", "#include <cstdint>", "", "namespace heron::feature {", ""]
    out += [f"inline constexpr uint16_t {name} = {feature};" for name, feature in feature_names(options)]
    return out + ["", "}  // namespace heron::feature"]


def values_header(options):
    out = ["// Names of the options' values by the name of their feature (features.h): value::lpOutput::kFax. Made of",
           "// catalog/list_options.table and uistate/params.table. Values that no option has: catalog/other_values.h.",
           "#pragma once", "", "#include <cstdint>", "", "namespace heron::value {"]
    for name, feature in feature_names(options):
        values = options.values.get(feature)
        if values is None:
            continue
        out += ["", f"namespace {name} {{"]
        out += [f"inline constexpr uint16_t k{option} = {value};" for option, value in values.items()]
        out.append("}")
    return out + ["", "}  // namespace heron::value"]


# -- texts -----------------------------------------------------------------------------------------------------------


class Texts:
    def __init__(self):
        lines = (ROOT.parent / "resources/texts.tsv").read_text(encoding="utf-8").splitlines()
        self.resources = {int(line.split("\t")[0]) for line in lines if line and not line.startswith("#")}
        self.names = {}
        self.last = 0

    def read(self, line, rows):
        text, name, *marks = columns(line)
        value = number(text)
        if not re.fullmatch(r"[A-Z]\w*", name) or name in self.names:
            raise BadLine(f"{name} is no name, or is there twice")
        if value <= self.last:
            raise BadLine("the numbers don't ascend")
        if marks not in ([], ["not a resource"]) or (value in self.resources) == bool(marks):
            raise BadLine("resources/texts.tsv has no such text" if not marks else "the mark is wrong")
        self.names[name] = self.last = value
        rows.append(f"inline constexpr TextNumber k{name} = {value};")


def texts_header(rows):
    return ["// Numbers of the texts that code names: text::kOn. Made of catalog/text_names.table.",
            "#pragma once", "", "#include <cstdint>", "", "namespace heron {", "",
            "/// Number of a line of resources/texts.tsv.", "using TextNumber = uint32_t;", "",
            "namespace text {", "", *rows, "", "}  // namespace text", "", "}  // namespace heron"]


def show_numbers(options, texts):
    for name, feature in feature_names(options):
        print(f"feature {name} = {feature}")
        for option, value in options.values.get(feature, {}).items():
            print(f"value {name} {option} = {value}")
    for name, value in texts.names.items():
        print(f"text {name} = {value}")


def main():
    controls, options, texts = Controls(), Options(), Texts()
    files = {
        "env_fields.inc": parse("settings/env_fields.table", read_field),
        "params.inc": parse("uistate/params.table", read_param),
        "file_keys.inc": parse("uistate/file_keys.table", read_file_key),
        "controls.inc": parse("rules/controls.table", controls.read),
        "list_options.inc": parse("catalog/list_options.table", options.read),
    }
    files["list_features.inc"] = options.names
    files["control_values.inc"] = list(control_values(controls, options))
    files["features.h"] = features_header(options)
    files["values.h"] = values_header(options)
    files["texts.h"] = texts_header(parse("catalog/text_names.table", texts.read))
    if sys.argv[1] == "--numbers":
        show_numbers(options, texts)
        return
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    for name, rows in files.items():
        text = "\n".join(rows) + "\n"
        path = folder / name
        if not path.exists() or path.read_text(encoding="utf-8") != text:
            path.write_text(text, encoding="utf-8")


if __name__ == "__main__":
    main()
