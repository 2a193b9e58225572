"""Printer fonts that stand for TrueType fonts, from the command line."""

import unittest

import support


class Fonts(support.Journey):
    def setUp(self):
        super().setUp()
        self.add_printer()

    def fonts(self, command, *arguments, **options):
        return self.heron("fonts", command, "-p", "Office", *arguments, **options)

    def pairs(self):
        answer = self.json("fonts", "list", "-p", "Office")
        self.assertEqual(len(answer["printerFonts"]), 26)
        return {row["truetype"]: row["printer"] for row in answer["fonts"]}

    def test_a_life_of_pairs(self):
        seeded = self.pairs()
        self.assertEqual((len(seeded), seeded["Courier New"]), (26, "Courier"))
        self.fonts("set", "Courier New", "Univers")
        self.fonts("set", "Arial", "none")
        self.fonts("set", "Fraunces Größe", "Times")
        self.fonts("set", "Unknown", "none")
        now = self.pairs()
        self.assertEqual((now["Courier New"], now["Fraunces Größe"], "Arial" in now, len(now)),
                         ("Univers", "Times", False, 26))
        self.fonts("set", "Arial", "Times", "--dry-run")
        self.assertEqual(self.pairs(), now)
        self.fonts("set", "Arial", "times", code=2)
        self.assertIn("Times", self.last_errors)
        for name in ("", "@Arial", "x" * 32):
            self.fonts("set", "--", name, "Times", code=2)
        self.assertEqual(self.pairs(), now)
        self.heron("settings", "-p", "Office", "-o", "lpDLFontFormat=2")
        self.fonts("reset")
        self.assertEqual(self.pairs(), seeded)


if __name__ == "__main__":
    unittest.main()
