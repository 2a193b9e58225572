"""What the generator of the resource module accepts and refuses."""

import os
import sys
import unittest

sys.path.insert(0, os.environ["HERON_MAKE_TEXTS_DIR"])
import make_texts  # noqa: E402


class ParseTest(unittest.TestCase):
    def test_good_lines(self):
        lines = ["# remark", "20000\ta\\nb\\\\n \twhere", "64000\t\u5b8b\U0001f5a8\t"]
        self.assertEqual(make_texts.parse(lines), [(20000, "a\nb\\n "), (64000, "\u5b8b\U0001f5a8")])
        self.assertEqual(make_texts.units("\u5b8b\U0001f5a8"), 3)

    def test_refusals(self):
        for line, reason in [
            ("20001\ta\\tb\t", "escape"),
            ("20001\ta\\\t", "escape"),
            ("20001\t\t", "empty"),
            ("20001\ta", "columns"),
            ("20001\ta\tb\tc", "columns"),
            ("", "columns"),
            ("x\ta\t", "not a number"),
            ("20000\ta\t", "ascend"),
            ("19999\ta\t", "outside"),
            ("64001\ta\t", "outside"),
            ("20001\ta\rb\t", "control"),
            ("20001\t" + "a" * 1000 + "\t", "999"),
        ]:
            with self.subTest(line=line[:20]), self.assertRaisesRegex(ValueError, f"line 2: .*{reason}"):
                make_texts.parse(["20000\ta\t", line])

    def test_no_texts(self):
        with self.assertRaises(ValueError):
            make_texts.parse(["# remark"])


if __name__ == "__main__":
    unittest.main()
