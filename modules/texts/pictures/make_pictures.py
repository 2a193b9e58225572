#!/usr/bin/env python3
"""Draws the pictures of the resource module: make_pictures.py FOLDER

Writes NUMBER-WHAT.svg for every picture that a recipe draws, and takes away files of the folder that no recipe draws any more.
A file is written only when its bytes change. A number that two recipes draw ends it with a message, and nothing is written.
With --groups it writes the numbers by group instead, for scripts/contact-sheet.
"""

import os
import sys

import dialog_pictures
import features
import folds
import machine
import sheet_frame
import sheet_marks
import sheet_pages
import status

GROUPS = (sheet_frame, sheet_pages, sheet_marks, status, features, folds, machine, dialog_pictures)


def draw():
    """File names and texts of all pictures, in the order of their numbers."""
    drawn = {}
    for group in GROUPS:
        for number, what, picture in group.pictures():
            if number in drawn:
                sys.exit(f"picture {number} is drawn as {drawn[number][0]} and as {what}")
            drawn[number] = (what, picture)
    return {f"{number}-{what}.svg": picture.svg() for number, (what, picture) in sorted(drawn.items())}


def write(path, text):
    try:
        with open(path, encoding="utf-8") as file:
            if file.read() == text:
                return
    except FileNotFoundError:
        pass
    partial = f"{path}.tmp"
    with open(partial, "w", encoding="utf-8") as file:
        file.write(text)
    os.replace(partial, path)


def main(folder):
    files = draw()
    os.makedirs(folder, exist_ok=True)
    for name in set(os.listdir(folder)) - set(files):
        if name.endswith(".svg"):
            os.remove(os.path.join(folder, name))
    for name, text in files.items():
        write(os.path.join(folder, name), text)


if __name__ == "__main__":
    if sys.argv[1:] == ["--groups"]:
        for each in GROUPS:
            print(each.__name__, *sorted(number for number, _, _ in each.pictures()))
    elif len(sys.argv) == 2 and not sys.argv[1].startswith("-"):
        main(sys.argv[1])
    else:
        sys.exit(__doc__)
