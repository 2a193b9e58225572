"""Journeys of printing: pages as pixels and text, the job's folder, questions, and what can't be printed."""

import json
import pathlib
import struct
import subprocess
import unittest
import zlib

import support
from support import SAMPLES

LETTER = SAMPLES / "letter.txt"
THREE_PAGES = SAMPLES / "three-pages.pdf"
MASK = 0x5A5A  # of scrambled passwords

# Offsets in a record.
SECURE_PASSWORD, SECURE_ID, OUTPUT_METHOD = 1481, 1545, 1968


class Page:
    """A page of a PDF as grey pixels at 36 dpi."""

    def __init__(self, pdf, number):
        data = subprocess.run(["pdftoppm", "-r", "36", "-gray", "-f", str(number), "-l", str(number), str(pdf)],
                              capture_output=True, check=True).stdout
        magic, size, _, self.pixels = data.split(b"\n", 3)
        assert magic == b"P5"
        self.width, self.height = map(int, size.split())

    def ink(self, left, top, right, bottom):
        """Share of pixels that aren't white in a part of the page; the sides are shares of it too."""
        xs = range(int(left * self.width), int(right * self.width))
        ys = range(int(top * self.height), int(bottom * self.height))
        dark = sum(self.pixels[y * self.width + x] < 250 for y in ys for x in xs)
        return dark / (len(xs) * len(ys))

    def middle(self):
        return self.ink(0.3, 0.47, 0.7, 0.53)


def png(width, height, rgb):
    """A picture of one colour."""
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
    rows = (b"\0" + bytes(rgb) * width) * height
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b""))


class PrintTest(support.Journey):
    def setUp(self):
        super().setUp()
        self.add_printer()
        self.jobs = self.folder / "jobs"
        self.jobs.mkdir()

    def print(self, document, *more, name="job", **options):
        """Prints into a new folder: the folder and its ticket."""
        out = self.jobs / name
        self.heron("print", "-p", "Office", *more, document, "--out", out, **options)
        return out, json.loads((out / "job.json").read_text())

    def refuse(self, code, document, *more, **options):
        """Prints in vain: nothing is left behind."""
        before = sorted(self.jobs.iterdir())
        done = self.run_heron("print", "-p", "Office", *more, document, "--out", self.jobs / "refused", **options)
        self.assertEqual((done.returncode, done.stdout), (code, b""), done.stderr)
        self.assertRegex(done.stderr.decode(), r"(?m)^heron: \S", "a question may stand before the reason")
        self.assertEqual(sorted(self.jobs.iterdir()), before)

    def pages(self, folder):
        info = subprocess.run(["pdfinfo", folder / "pages.pdf"], capture_output=True, check=True, text=True).stdout
        return int(info.split("Pages:")[1].split()[0])

    def secure_record(self, password="Tulpe7", **changes):
        record = self.default_record()
        record[OUTPUT_METHOD] = 2
        scrambled = b"".join(struct.pack("<H", ord(c) ^ MASK) for c in password)
        record[SECURE_PASSWORD:SECURE_PASSWORD + len(scrambled)] = scrambled
        record[SECURE_ID:SECURE_ID + 6] = "Eve".encode("utf-16-le")
        return self.write("secure.bin", record), scrambled

    def test_a_text_becomes_pages_and_a_ticket(self):
        text = "first line\n" + "long " * 60 + "\n\tä €\n\fsecond page\n"
        document = self.write("note.txt", text.encode())
        out, ticket = self.print(document, "-o", "lpOrientation=2")
        self.assertEqual(self.pages(out), 2)
        words = subprocess.run(["pdftotext", "-layout", out / "pages.pdf", "-"], capture_output=True, check=True).stdout
        first, second = words.decode().split("\f")[:2]
        self.assertEqual(first.count("long"), 60)
        self.assertIn("ä €", first)
        self.assertIn("second page", second)
        page = Page(out / "pages.pdf", 1)
        self.assertGreater(page.width, page.height)
        self.assertEqual(page.ink(0, 0, 1, 0.012), 0, "nothing stands in the margin")
        self.assertEqual([ticket[k] for k in ("schema", "pages", "document", "refused")], ["heron.job", 2, "note.txt", 0])
        self.assertEqual(ticket["settings"]["dmOrientation"], 2)
        events = list(dict.fromkeys(row["event"] for row in ticket["escapes"]))
        self.assertEqual(events, ["STARTDOC", "STARTDOCPOST", "STARTPAGE", "ENDPAGE", "ENDDOC", "ENDDOCPOST"])
        self.assertEqual(out.stat().st_mode & 0o777, 0o700)
        self.assertEqual({file.name: file.stat().st_mode & 0o777 for file in out.iterdir()},
                         {"pages.pdf": 0o600, "job.json": 0o600})
        answer = self.json("print", "-p", "Office", "-", "--out", self.jobs / "again", stdin=b"from a pipe")
        self.assertEqual(answer["pages"], 1)

    def test_a_picture_fills_the_page(self):
        out, _ = self.print(self.write("black.png", png(20, 10, (0, 0, 0))))
        page = Page(out / "pages.pdf", 1)
        self.assertEqual(page.ink(0.1, 0.4, 0.9, 0.6), 1)
        self.assertEqual(page.ink(0, 0, 1, 0.25), 0)

    def test_the_watermark_stands_on_the_pages_that_the_settings_name(self):
        plain, _ = self.print(THREE_PAGES, name="plain")
        self.assertEqual(self.pages(plain), 3)
        bare = [Page(plain / "pages.pdf", n).middle() for n in (1, 2, 3)]
        for path in ("488", "556"):
            for order in ("1", "2"):
                out, ticket = self.print(THREE_PAGES, "-o", "Watermark_Use=1", "-o", f"lpWatermarkOrder={order}",
                                         "--path", path, name=path + order)
                self.assertEqual(ticket["refused"], 0)
                for n in (1, 2, 3):
                    self.assertGreater(Page(out / "pages.pdf", n).middle(), bare[n - 1] + 0.1, f"{path} {order} {n}")
            out, _ = self.print(THREE_PAGES, "-o", "Watermark_Use=1", "-o", "FirstPageOnly=1", "--path", path,
                                name=path + "first")
            marked = [Page(out / "pages.pdf", n).middle() > bare[n - 1] + 0.1 for n in (1, 2, 3)]
            self.assertEqual(marked, [True, False, False])

    def test_a_secure_print_asks_and_leaves_no_trace_of_its_password(self):
        record, scrambled = self.secure_record()
        out, ticket = self.print(LETTER, "--in", record, "--yes")
        self.assertIn("Eve", self.last_errors)
        self.assertIn("******", self.last_errors)
        self.assertNotIn("Tulpe7", self.last_errors)
        self.assertEqual(ticket["settings"]["securePassword"], "***")
        clear = "Tulpe7".encode("utf-16-le")
        traces = [b"Tulpe7", clear, scrambled, scrambled.hex().encode(), clear.hex().encode()]
        for file in out.iterdir():
            for trace in traces:
                self.assertNotIn(trace, file.read_bytes(), file)
        self.refuse(3, LETTER, "--in", record, "--no")
        self.refuse(3, LETTER, "--in", record)  # nobody can be asked

    def test_a_fax_without_recipients_is_never_printed(self):
        self.heron("settings", "-p", "Office", "--device", "-o", "lpFAXUnit=2", "--yes")
        self.refuse(4, LETTER, "-o", "lpOutput=1")

    def test_what_cannot_be_printed_leaves_nothing(self):
        whole = png(20, 10, (0, 0, 0))
        for name, data in {"binary": b"\x00\x01\x02", "latin1.txt": b"caf\xe9", "cut.png": whole[:40],
                           "broken.jpg": b"\xff\xd8\xff\xe0 no picture", "broken.pdf": b"%PDF-1.7 no pages"}.items():
            self.refuse(1, self.write(name, data))
        self.refuse(1, self.folder)  # no file
        self.refuse(5, self.folder / "missing.txt")
        self.refuse(2, "-", "--in", "-")
        self.refuse(4, LETTER, "-o", "bWatermarkCurrent=60")
        full = self.jobs / "full"
        full.mkdir()
        (full / "precious").touch()
        self.heron("print", "-p", "Office", LETTER, "--out", full, code=1)
        self.assertEqual([p.name for p in full.iterdir()], ["precious"])
        self.heron("print", "-p", "Office", LETTER, "--out", self.folder / "none" / "job", code=5)


if __name__ == "__main__":
    unittest.main()
