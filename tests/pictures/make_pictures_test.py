#!/usr/bin/env python3
"""The program that draws the pictures: the same bytes every time, nothing stale, no number twice."""

import os
import subprocess
import sys
import tempfile
import unittest

RECIPES = os.environ["HERON_RECIPES_DIR"]
MAKE_DATA = os.path.join(os.path.dirname(RECIPES), "make_data.py")


def run(*arguments, seed="0"):
    return subprocess.run([sys.executable, "-B", *arguments], env={**os.environ, "PYTHONHASHSEED": seed}, capture_output=True,
                          text=True, check=False)


def contents(folder):
    files = {}
    for name in sorted(os.listdir(folder)):
        with open(os.path.join(folder, name), "rb") as file:
            files[name] = file.read()
    return files


class MakePictures(unittest.TestCase):
    def setUp(self):
        temporary = tempfile.TemporaryDirectory()
        self.addCleanup(temporary.cleanup)
        self.folder = temporary.name

    def draw(self, name, seed="0"):
        folder = os.path.join(self.folder, name)
        result = run(os.path.join(RECIPES, "make_pictures.py"), folder, seed=seed)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        return folder

    def test_it_draws_the_same_bytes_every_time(self):
        first, second = self.draw("first", "1"), self.draw("second", "2")
        self.assertGreater(len(contents(first)), 300)
        self.assertEqual(contents(first), contents(second))

    def test_what_no_recipe_draws_goes_and_what_is_unchanged_stays(self):
        folder = self.draw("pictures")
        before = contents(folder)
        kept = os.path.join(folder, "19000-body.svg")
        os.utime(kept, (1, 1))
        for name, text in (("19999-gone.svg", "x"), ("19011-old-name.svg", "x"), ("notes.txt", "mine")):
            with open(os.path.join(folder, name), "w", encoding="utf-8") as file:
                file.write(text)
        self.draw("pictures")
        self.assertEqual(contents(folder), {**before, "notes.txt": b"mine"})
        self.assertEqual(os.stat(kept).st_mtime, 1, "an unchanged picture was written")

    def test_a_number_that_is_drawn_by_a_recipe_and_by_hand_is_refused(self):
        folder = self.draw("pictures")
        by_hand = os.path.join(self.folder, "19000-by-hand.svg")
        target = os.path.join(self.folder, "data.cc")
        with open(by_hand, "w", encoding="utf-8") as file:
            file.write("<svg/>")
        result = run(MAKE_DATA, target, f"10={folder}", f"10={by_hand}")
        self.assertNotEqual(result.returncode, 0)
        self.assertIn("19000", result.stderr)
        self.assertFalse(os.path.exists(target))


if __name__ == "__main__":
    unittest.main()
