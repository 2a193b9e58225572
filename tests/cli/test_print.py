"""Journeys of printing: pages as pixels and text, the job's folder, questions, and what can't be printed."""

import json
import os
import pathlib
import random
import re
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
SECURE_PASSWORD, SECURE_ID, OUTPUT_METHOD, UNDISPLAY_PASSWORD = 1481, 1545, 1968, 1458
OVERLAY, OVERLAY_INDEX, OVERLAY_NAME = 879, 880, 882


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


def pdf(*pages, catalogue=b"", objects=()):
    """A PDF of `pages`: entries of the page and its drawing, both as bytes. Other objects begin at number 10."""
    numbers = [20 + 2 * n for n in range(len(pages))]
    parts = {1: b"<</Type/Catalog/Pages 2 0 R" + catalogue + b">>",
             2: b"<</Type/Pages/Count %d/Kids[%s]>>" % (len(pages), b" ".join(b"%d 0 R" % n for n in numbers)),
             3: b"<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>"}
    for number, (entries, drawing) in zip(numbers, pages):
        if b"/MediaBox" not in entries:
            entries += b"/MediaBox[0 0 595 841]"
        if b"/Resources" not in entries:
            entries += b"/Resources<</Font<</F 3 0 R>>>>"
        parts[number] = b"<</Type/Page/Parent 2 0 R/Contents %d 0 R%s>>" % (number + 1, entries)
        parts[number + 1] = drawing if drawing.startswith(b"<<") else stream(drawing)
    parts.update(enumerate(objects, 10))
    data = b"%PDF-1.6\n"
    for number, part in parts.items():
        data += b"%d 0 obj\n%s\nendobj\n" % (number, part)
    return data + b"trailer<</Root 1 0 R>>\n%%EOF\n"  # without a table, which the reader builds anew


def stream(data, entries=b""):
    return b"<</Length %d%s>>stream\n%s\nendstream" % (len(data), entries, data)


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
        self.last_errors = done.stderr.decode()
        self.assertRegex(self.last_errors, r"(?m)^heron: \S", "a question may come before the reason")
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
        self.assertEqual(page.ink(0, 0, 1, 0.012), 0, "the margin is empty")
        self.assertEqual([ticket[k] for k in ("schema", "pages", "document", "refused")], ["heron.job", 2, "note.txt", 0])
        self.assertEqual(ticket["settings"]["dmOrientation"], 2)
        events = list(dict.fromkeys(row["event"] for row in ticket["escapes"]))
        self.assertEqual(events, ["STARTDOC", "STARTDOCPOST", "STARTPAGE", "ENDPAGE", "ENDDOC", "ENDDOCPOST"])
        self.assertEqual(out.stat().st_mode & 0o777, 0o700)
        self.assertEqual({file.name: file.stat().st_mode & 0o777 for file in out.iterdir()},
                         {"pages.pdf": 0o600, "job.json": 0o600})
        answer = self.json("print", "-p", "Office", "-", "--out", self.jobs / "again", stdin=b"from a pipe")
        self.assertEqual(answer["pages"], 1)

    def words(self, folder):
        return subprocess.run(["pdftotext", "-layout", folder / "pages.pdf", "-"], capture_output=True, check=True,
                              text=True).stdout

    def test_pages_of_a_pdf_keep_their_text_and_share_their_fonts(self):
        text = b"BT /F 24 Tf 100 400 Td (needle %d) Tj ET"
        shared = pdf(*[(b"", text % n) for n in range(40)])
        marked, _ = self.print(self.write("text.pdf", shared), "-o", "Watermark_Use=1", name="marked")
        self.assertEqual(len(re.findall(r"needle \d+", self.words(marked))), 40)
        self.assertLess(marked.joinpath("pages.pdf").stat().st_size, 20000, "the watermark is in the file once")
        out, _ = self.print(self.folder / "text.pdf")
        self.assertEqual(re.findall(r"needle (\d+)", self.words(out)), [str(n) for n in range(40)])
        self.assertEqual(out.joinpath("pages.pdf").read_bytes().count(b"/Image"), 0)
        self.assertLess(out.joinpath("pages.pdf").stat().st_size, 15000)
        subprocess.run(["qpdf", "--check", out / "pages.pdf"], check=True, capture_output=True)

    def test_a_page_of_a_pdf_is_printed_as_a_viewer_shows_it(self):
        black = b"0 g 0 741 100 100 re f"  # in the upper left corner of A4
        hidden = b"/OC/L BDC 0 g 0 0 595 841 re f EMC"
        layer = (b"/Resources<</Properties<</L 10 0 R>>>>", hidden)
        layers = b"/OCProperties<</OCGs[10 0 R]/D<</OFF[10 0 R]/BaseState/ON>>>>"
        field = b"<</Type/Annot/Subtype/Stamp/F 4/Rect[0 0 100 100]/AP<</N 12 0 R>>>>"
        dark = stream(b"0 g 0 0 100 100 re f", b"/Type/XObject/Subtype/Form/BBox[0 0 100 100]")
        corners = {"above left": (0, 0), "above right": (0.9, 0), "below left": (0, 0.92), "below right": (0.9, 0.92)}
        for number, (pages, catalogue, expected) in enumerate([
                ((b"", black), b"", {"above left"}),
                ((b"/Rotate 180", black), b"", {"below right"}),
                ((b"/Rotate 90/MediaBox[0 0 841 595]", b"0 g 0 495 100 100 re f"), b"", {"above right"}),
                # What is cut off isn't printed, and the trim box cuts nothing.
                ((b"/CropBox[0 0 595 841]/MediaBox[-600 0 595 841]", b"0 g -600 741 600 100 re f"), b"", set()),
                ((b"/TrimBox[200 200 300 300]", black), b"", {"above left"}),
                (layer, layers, set()),
                ((b"/Annots[11 0 R]", b"%"), b"", {"below left"})]):
            document = pdf(pages, catalogue=catalogue, objects=[b"<</Type/OCG/Name(Hidden)>>", field, dark])
            out, _ = self.print(self.write(f"{number}.pdf", document), name=f"seen{number}")
            page = Page(out / "pages.pdf", 1)
            dark_corners = {name for name, (x, y) in corners.items() if page.ink(x, y, x + 0.08, y + 0.06) > 0.9}
            self.assertEqual(dark_corners, expected, number)
            self.assertEqual(page.ink(0.3, 0.3, 0.7, 0.7), 0, number)

    def test_a_pdf_that_wants_a_password_says_so_and_one_that_only_forbids_changes_prints(self):
        for user, name in (("", "open.pdf"), ("secret", "closed.pdf")):
            subprocess.run(["qpdf", "--encrypt", user, "owner", "256", "--modify=none", "--", THREE_PAGES, self.folder / name],
                           check=True, capture_output=True)
        self.refuse(1, self.folder / "closed.pdf")
        self.assertIn("wants a password", self.last_errors)
        out, _ = self.print(self.folder / "open.pdf")
        plain, _ = self.print(THREE_PAGES, name="plain")
        self.assertEqual(self.words(out), self.words(plain))
        self.assertGreater(len(self.words(plain).split()), 3)

    def test_a_line_without_an_end_is_wrapped_to_its_last_character(self):
        line = "x" * 30000 + "é" * 3000 + "\t" * 300 + "y" * 3000
        out, _ = self.print(self.write("line.txt", line.encode()))
        words = self.words(out)
        self.assertEqual([words.count(c) for c in "xéy"], [30000, 3000, 3000])

    def test_a_long_print_shows_how_far_it_is_and_can_be_interrupted(self):
        long = self.write("long.txt", "\f".join(["page"] * 1500).encode())
        print_it = ("print", "-p", "Office", "-o", "Watermark_Use=1", long, "--out", self.jobs / "long")
        for progress in (b" of 1500", b"Writing the pages: "):
            code, seen = self.on_terminal(print_it, [(progress, b"\x03")])
            self.assertEqual((code, list(self.jobs.iterdir())), (130, []))
            self.assertRegex(seen, rb"\rPrinting page \d+ of 1500")
            self.assertIn(b"\r \r", re.sub(b" +", b" ", seen), "the line is emptied")
            self.assertTrue(seen.endswith(b"heron: interrupted; nothing was printed\r\n"), seen[-200:])
        done = self.run_heron("print", "-p", "Office", long, "--out", self.jobs / "piped")
        self.assertEqual((done.returncode, done.stderr), (0, b""), "nothing shows where there is no terminal")

    def test_an_interrupt_ends_the_wait_for_a_document(self):
        reader, writer = os.pipe()
        program = subprocess.Popen([support.BIN, "print", "-p", "Office", "-", "--out", str(self.jobs / "waiting")],
                                   stdin=reader, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, env=self.environment())
        os.write(writer, b"half a document")
        while not list(self.jobs.iterdir()):  # its folder is made before the document is read
            self.assertIsNone(program.poll())
        program.terminate()
        _, errors = program.communicate(timeout=60)
        os.close(reader)
        os.close(writer)
        self.assertEqual((program.returncode, errors), (143, b"heron: interrupted; nothing was printed\n"))
        self.assertEqual(list(self.jobs.iterdir()), [])

    def test_a_picture_fills_the_page_and_one_that_is_too_large_is_not_called_damaged(self):
        whole = png(20, 10, (0, 0, 0))
        out, _ = self.print(self.write("black.png", whole))
        page = Page(out / "pages.pdf", 1)
        self.assertEqual(page.ink(0.1, 0.4, 0.9, 0.6), 1)
        self.assertEqual(page.ink(0, 0, 1, 0.25), 0)
        head = struct.pack(">IIBBBBB", 60000, 50000, 8, 2, 0, 0, 0)
        large = whole[:16] + head + struct.pack(">I", zlib.crc32(b"IHDR" + head)) + whole[33:]
        self.refuse(1, self.write("large.png", large))
        self.assertIn("60000 x 50000 pixels take 11444 MiB", self.last_errors)
        self.assertNotIn("damaged", self.last_errors)

    def test_the_watermark_is_on_the_pages_that_the_settings_name(self):
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
        self.assertEqual(self.last_errors.count("***"), 2)
        self.assertNotIn("******", self.last_errors, "the length isn't shown either")
        shown = bytearray(record.read_bytes())
        shown[UNDISPLAY_PASSWORD] = 0
        _, _ = self.print(LETTER, "--in", self.write("shown.bin", shown), "--yes", name="shown")
        for secret in ("Tulpe7", "Eve"):
            self.assertNotIn(secret, self.last_errors)
        self.assertEqual(ticket["settings"]["securePassword"], "***")
        clear = "Tulpe7".encode("utf-16-le")
        traces = [b"Tulpe7", clear, scrambled, scrambled.hex().encode(), clear.hex().encode()]
        for file in out.iterdir():
            for trace in traces:
                self.assertNotIn(trace, file.read_bytes(), file)
        self.refuse(3, LETTER, "--in", record, "--no")
        self.refuse(3, LETTER, "--in", record)  # without a terminal no question can be answered

    def odd_records(self, count):
        """The default record with random bytes behind its sizes, and with the settings that a job may lose on its way."""
        dice = random.Random(12)
        for number in range(count):
            record = self.default_record()
            for _ in range(dice.randrange(1, 40)):
                record[dice.randrange(72, len(record))] = dice.randrange(256)
            yield self.write(f"odd{number}.bin", record)
        record = self.default_record()
        record[OVERLAY] = 3
        record[OVERLAY_INDEX] = 7
        name = "/forms/none of the list.vxf".encode("utf-16-le")
        record[OVERLAY_NAME:OVERLAY_NAME + len(name)] = name
        yield self.write("form.bin", record)
        record = self.default_record()
        for part in (0, 220):  # an application's own size of custom paper 10, in the public part and its copy
            fields = struct.unpack_from("<I", record, part + 72)[0]
            struct.pack_into("<I", record, part + 72, fields | 0xE)
            struct.pack_into("<hhh", record, part + 78, 256, 1800, 1200)
        yield self.write("own-size.bin", record)

    def test_a_record_is_printed_as_the_driver_takes_it(self):
        """Field by field what `record merge` makes of it; a change for the job touches nothing but its own fields."""
        count = 0
        for number, record in enumerate(self.odd_records(12)):
            expected = self.merged(record)[1]["fields"]
            done = self.run_heron("print", "-p", "Office", "--in", record, "--yes", LETTER, "--out", self.jobs / f"a{number}")
            if expected["lpOverlay"] == 3:
                self.assertEqual(done.returncode, 3, "the form isn't there")
                self.assertIn(b"/forms/none of the list.vxf", done.stderr)
                continue
            if done.returncode != 0:  # a record may ask for a sheet that can't be
                self.assertRegex(done.stderr, rb"paper size|fax|built")
                continue
            count += 1
            settings = json.loads((self.jobs / f"a{number}" / "job.json").read_text())["settings"]
            self.assertEqual({k: v for k, v in settings.items() if v != expected[k]}, {}, record)
            out = self.jobs / f"b{number}"
            copies = 5 if expected["dmCopies"] != 5 else 6
            self.heron("print", "-p", "Office", "--in", record, "-o", f"Copies={copies}", LETTER, "--out", out)
            settings = json.loads((out / "job.json").read_text())["settings"]
            again = self.merged(self.folder / "merged.bin")[1]["fields"]
            self.assertEqual({k for k, v in settings.items() if v != again[k]}, {"dmCopies"}, record)
        self.assertGreater(count, 6)

    def test_what_was_asked_for_and_cannot_be_is_said(self):
        for change in ("lpOverlay=3", "lpOverlay=2", "bWatermarkCurrent=60"):
            self.refuse(4, LETTER, "-o", change)
        record = self.default_record()
        record[OVERLAY] = 3
        self.print(LETTER, "--in", self.write("nameless.bin", record))
        self.assertIn("without a form", self.last_errors)
        self.heron("settings", "-p", "Office", "--device", "-o", "lpFAXUnit=2", "--yes")
        self.refuse(4, LETTER, "-o", "lpOutput=1")

    def test_what_cannot_be_printed_leaves_nothing(self):
        whole = png(20, 10, (0, 0, 0))
        for name, data in {"binary": b"\x00\x01\x02", "latin1.txt": b"caf\xe9", "cut.png": whole[:40],
                           "broken.jpg": b"\xff\xd8\xff\xe0 no picture", "broken.pdf": b"%PDF-1.7 no pages",
                           "no-box.pdf": pdf((b"/MediaBox(none)", b"")),
                           "huge.pdf": pdf((b"/MediaBox[0 0 " + b"9" * 400 + b" 1]", b"")),
                           "second-page.pdf": pdf((b"", b""), (b"", stream(b"no deflate", b"/Filter/FlateDecode")))}.items():
            self.refuse(1, self.write(name, data))
        self.assertIn("its page 2 is damaged", self.last_errors)
        packed = zlib.compressobj(1)
        white = b"".join([packed.compress(b" " * (1 << 20)) for _ in range(300)] + [packed.flush()])
        endless = pdf((b"", stream(zlib.compress(white), b"/Filter[/FlateDecode/FlateDecode]")))
        self.refuse(1, self.write("endless.pdf", endless))
        self.assertIn("its page 1 is too large", self.last_errors)
        self.refuse(1, self.folder)  # no file
        self.refuse(5, self.folder / "missing.txt")
        self.refuse(2, "-", "--in", "-")
        full = self.jobs / "full"
        full.mkdir()
        (full / "precious").touch()
        self.heron("print", "-p", "Office", LETTER, "--out", full, code=1)
        self.assertEqual([p.name for p in full.iterdir()], ["precious"])
        self.heron("print", "-p", "Office", LETTER, "--out", self.folder / "none" / "job", code=5)


if __name__ == "__main__":
    unittest.main()
