"""`heron form` and forms in jobs: one is made of a letterhead, listed, printed under other pages, and told when it can't be."""

import json
import subprocess
import unittest

import support
from support import SAMPLES

THREE_PAGES = SAMPLES / "three-pages.pdf"
BLANK = b"""%%PDF-1.4
1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj
2 0 obj<</Type/Pages/Count 1/Kids[3 0 R]>>endobj
3 0 obj<</Type/Page/Parent 2 0 R/MediaBox[0 0 595 842]/Contents 4 0 R/Resources<</Font<</F 5 0 R>>>>>>endobj
4 0 obj<</Length %d>>stream
%s
endstream endobj
5 0 obj<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>endobj
trailer<</Root 1 0 R>>
%%%%EOF
"""


class Form(support.Journey):
    def setUp(self):
        super().setUp()
        self.add_printer()
        self.count = 0

    def pdf(self, drawing):
        self.count += 1
        return self.write(f"document{self.count}.pdf", BLANK % (len(drawing), drawing))

    def print(self, document, *more, code=0, **options):
        self.count += 1
        out = self.folder / f"job{self.count}"
        done = self.run_heron("print", "-p", "Office", *more, document, "--out", out, **options)
        self.last_errors = done.stderr.decode()
        self.assertEqual(done.returncode, code, self.last_errors)
        self.assertEqual(out.exists(), code == 0)
        return out

    def make(self, name="letterhead.vxf", *more, document=None):
        form = self.folder / name
        self.print(document or self.pdf(b"BT /F 24 Tf 60 780 Td (LETTERHEAD) Tj ET"), "-o", "lpOverlay=2", "--form", form, *more)
        return form

    def form(self, command, *arguments, **options):
        return self.heron("form", command, "-p", "Office", *arguments, **options)

    def list(self, *more):
        return self.json("form", "list", "-p", "Office", *more)

    def words(self, folder, page):
        return subprocess.run(["pdftotext", "-f", str(page), "-l", str(page), folder / "pages.pdf", "-"], check=True,
                              capture_output=True, text=True).stdout

    def test_a_letterhead_from_the_first_page_to_the_last(self):
        form = self.make()
        data = form.read_bytes()
        self.assertTrue(data.startswith(b") HP-PCL XL;"))
        self.assertIn(b"Model=Varnell 70/36MX-2 PCL;System=0;Destination=US;PDL=", data)
        self.assertEqual(self.json("form", "check", form, "-p", "Office")["result"], 1)
        self.form("add", form)
        rows = self.list()["forms"]
        self.assertEqual([(row["index"], row["path"], row["bytes"], row["check"]) for row in rows], [(0, str(form), len(data), 1)])
        self.form("use", "letterhead.vxf")
        self.assertEqual((self.list()["current"], self.list()["used"]), (0, True))
        out = self.print(THREE_PAGES)
        for page in (1, 2, 3):
            self.assertIn("LETTERHEAD", self.words(out, page), "the form's text stays text")
        ticket = json.loads((out / "job.json").read_text())
        self.assertTrue(ticket["overlay"]["merged"])
        self.assertEqual((out / "overlay.vxf").read_bytes(), data)
        first = self.print(THREE_PAGES, "-o", "OverlayOrder_Check=1")
        self.assertEqual(["LETTERHEAD" in self.words(first, page) for page in (1, 2, 3)], [True, False, False])
        self.assertLess((out / "pages.pdf").stat().st_size, (first / "pages.pdf").stat().st_size + 3000, "it is in the file once")
        full = self.print(THREE_PAGES, "--path", "full")
        self.assertIn("LETTERHEAD", self.words(full, 3))
        self.form("use", "none")
        self.assertNotIn("LETTERHEAD", self.words(self.print(THREE_PAGES), 1))

    def test_making_prints_nothing_and_replaces_only_what_it_may(self):
        form = self.folder / "a.vxf"
        out = self.print(THREE_PAGES, "-o", "lpOverlay=2", "--form", self.folder / "a")
        self.assertEqual(sorted(path.name for path in out.iterdir()), ["job.json", "overlay.vxf"])
        self.assertIsNone(json.loads((out / "job.json").read_text())["pagesFile"])
        before = form.read_bytes()
        self.print(THREE_PAGES, "-o", "lpOverlay=2", "--form", form, code=3)
        self.print(THREE_PAGES, "-o", "lpOverlay=2", "--form", form, "--no", code=3)
        self.assertEqual(form.read_bytes(), before)
        self.print(self.pdf(b"0 0 9 9 re f"), "-o", "lpOverlay=2", "--form", form, "--yes")
        self.assertNotEqual(form.read_bytes(), before)
        self.assertEqual(oct(form.stat().st_mode & 0o777), "0o600")
        self.print(THREE_PAGES, "-o", "lpOverlay=2", code=4)
        self.print(THREE_PAGES, "--form", form, code=2)
        self.print(THREE_PAGES, "-o", "lpOverlay=2", "--form", self.folder / "a.txt", code=2)
        self.print(THREE_PAGES, "-o", "lpOverlay=2", "--form", self.folder / "none" / "a.vxf", code=6)
        self.assertEqual(sorted(path.name for path in self.folder.glob("*.vxf*")), ["a.vxf"])

    def test_color_and_monochrome(self):
        color = self.make("color.vxf", "-o", "lpColorMode=1")
        mono = self.make("mono.vxf", "-o", "lpColorMode=2")
        self.print(THREE_PAGES, "-o", "lpOverlay=3", "--form", mono, "-o", "lpColorMode=1")
        self.print(THREE_PAGES, "-o", "lpOverlay=3", "--form", color, "-o", "lpColorMode=2", code=3)
        self.assertIn("made in color", self.last_errors)
        # Asked for, the driver leaves the comparison to the printing half.
        self.print(THREE_PAGES, "-o", "lpOverlay=3", "--form", color, "-o", "lpColorMode=2", "-o", "OverlayPrompt=1", "--yes", code=4)
        self.heron("settings", "-p", "Office", "-o", "lpColorMode=2")
        self.assertEqual(self.json("form", "check", color, "-p", "Office")["result"], 2)
        self.form("add", color)
        self.assertIn("made in color", self.last_errors)
        self.form("use", "0", code=4)

    def test_questions_before_the_form_is_used(self):
        form = self.make()
        ask = ("-o", "lpOverlay=3", "-o", "OverlayPrompt=1", "--form", form)
        self.print(THREE_PAGES, *ask, code=3)
        self.assertIn("LETTERHEAD", self.words(self.print(THREE_PAGES, *ask, "--yes"), 1))
        self.assertIn("letterhead.vxf", self.last_errors)
        for path in ("compact", "full"):
            out = self.print(THREE_PAGES, *ask, "--no", "--path", path)
            self.assertNotIn("LETTERHEAD", self.words(out, 1))
        self.heron("form", "add", form, "-p", "Office")
        self.heron("settings", "-p", "Office", "-o", "lpOverlay=3", "-o", "OverlayPrompt=1")
        self.print(THREE_PAGES, code=3)

    def test_files_that_are_no_forms(self):
        form = self.make()
        data = form.read_bytes()
        stranger = self.write("stranger.vxf", data.replace(b"Model=Varnell", b"Model=Another"))
        short = self.write("short.vxf", data[:150])
        for path in (stranger, short, self.folder / "missing.vxf"):
            self.print(THREE_PAGES, "-o", "lpOverlay=3", "--form", path, code=3)
            self.assertIn(path.name, self.last_errors)
        self.form("add", stranger, code=4)
        self.form("add", self.folder / "missing.vxf", code=5)
        self.form("add", self.write("form.txt", data), code=2)
        self.assertEqual(self.json("form", "check", short, "-p", "Office")["result"], 0)
        # Of another printing half: it fits by its description, and its page isn't known here.
        foreign = self.write("foreign.vxf", data[:data.index(b"HERON")] + bytes(200))
        out = self.print(THREE_PAGES, "-o", "lpOverlay=3", "--form", foreign)
        self.assertIn("isn't merged", self.last_errors)
        self.assertTrue((out / "overlay.vxf").exists())
        damaged = self.write("damaged.vxf", data[:-400] + bytes(400))
        self.print(THREE_PAGES, "-o", "lpOverlay=3", "--form", damaged, code=1)

    def test_the_list_tells_what_is_gone(self):
        forms = [self.make(f"{name}.vxf") for name in "abc"]
        for form in forms:
            self.form("add", form)
        self.assertIn("already", self.form("add", forms[1]))
        self.form("use", "2")
        forms[0].unlink()
        rows = self.list()["forms"]
        self.assertEqual([(row["bytes"] is None, row["missing"], row["check"]) for row in rows],
                         [(True, True, 0), (False, False, 1), (False, False, 1)])
        self.assertIn("gone", self.form("list"))
        self.form("remove", "0", code=3)
        self.form("remove", "0", "--no", code=3)
        self.form("remove", "0", "--yes")
        self.assertEqual((self.list()["current"], len(self.list()["forms"])), (1, 2), "the chosen form stays chosen")
        self.form("remove", "c.vxf", "--yes")
        self.assertIn("without a form", self.last_errors)
        self.assertFalse(forms[2].exists())
        self.assertFalse(self.list()["used"], "no other form takes its place")
        self.form("remove", "7", "--yes", code=5)
        self.form("use", "7", code=5)


if __name__ == "__main__":
    unittest.main()
