"""Faxes from the command: recipients that several programs change, cover sheets, and the job that a fax server takes."""

import json
import subprocess
import threading
import unittest

import support

LETTER = support.SAMPLES / "letter.txt"


class FaxJourney(support.Journey):
    def setUp(self):
        super().setUp()
        self.add_printer()
        self.heron("settings", "-p", "Office", "--device", "-o", "lpFAXUnit=2", "--yes")

    def fax(self, *arguments, **options):
        return self.json("fax", *arguments, "-p", "Office", **options)

    def add(self, number, *more, code=0):
        return self.heron("fax", "recipients", "add", "-p", "Office", *more, "--", number, code=code)

    def numbers(self):
        return [row["number"] for row in self.fax("recipients", "list")["recipients"]]

    def send(self, *arguments, name="job"):
        folder = self.folder / name
        self.heron("print", "-p", "Office", *arguments, LETTER, "--out", folder, "--yes")
        return folder, json.loads((folder / "job.json").read_text())


class RecipientsTest(FaxJourney):
    def test_recipients_read_back_and_stay_as_they_were_after_a_refusal(self):
        self.add("0211-5551", "--name", "Anna", "--company", "Ltd", "--v34")
        self.add("22", "--name", "Bob")
        rows = self.fax("recipients", "list")["recipients"]
        self.assertEqual(rows[0], {"name": "Anna", "number": "0211-5551", "company": "Ltd", "department": "",
                                   "ecm": True, "overseas": False, "v34": True})
        self.add("12a", code=2)
        self.add("22", code=4)
        self.add("33", "--name", "x" * 45, code=4)
        self.add("33", "--name", "字" * 15, code=4)  # 45 bytes of UTF-8
        self.assertEqual(self.fax("recipients", "list")["recipients"], rows)
        self.fax("recipients", "sort", "number", "--descending")
        self.assertEqual(self.numbers(), ["22", "0211-5551"])
        self.heron("fax", "recipients", "remove", "-p", "Office", "44", code=5)
        self.heron("fax", "recipients", "remove", "-p", "Office", "22")
        self.assertEqual(self.numbers(), ["0211-5551"])
        self.fax("recipients", "clear")
        self.assertEqual(list(self.home.rglob("vpb*")), [])

    def test_a_table_comes_whole_or_not_at_all(self):
        table = "Anna\t11\r\n\"Miller; Bob\";22\nZoe,33\n44\n"
        self.heron("fax", "recipients", "add", "-p", "Office", "--from", "-", stdin=table.encode())
        self.assertEqual(self.numbers(), ["11", "22", "33", "44"])
        self.assertEqual(self.fax("recipients", "list")["recipients"][1]["name"], "Miller; Bob")
        self.heron("fax", "recipients", "add", "-p", "Office", "--from", "-", stdin=b"A,55\nB,x\nC,11\n", code=2)
        self.assertIn("line 2", self.last_errors)
        self.assertIn("line 3", self.last_errors)
        many = "".join(f"{n}\n" for n in range(1000, 1097))
        self.heron("fax", "recipients", "add", "-p", "Office", "--from", "-", stdin=many.encode(), code=4)
        self.assertEqual(len(self.numbers()), 4)
        self.heron("fax", "recipients", "add", "-p", "Office", "--from", "-", stdin=many[:96 * 5].encode())
        self.assertEqual(len(self.numbers()), 100)

    def test_programs_that_add_at_once_lose_nothing(self):
        def add(first):
            for number in range(first, first + 5):
                done = self.run_heron("fax", "recipients", "add", "-p", "Office", "--", str(number))
                if done.returncode != 0:
                    failed.append(done.stderr)
                self.run_heron("settings", "-p", "Office", "-o", f"Copies={number % 90 + 2}", "--yes")

        failed = []
        threads = [threading.Thread(target=add, args=(first,)) for first in (100, 200, 300)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual(failed, [])
        self.assertEqual(sorted(self.numbers()), sorted(str(f + i) for f in (100, 200, 300) for i in range(5)))


class JobTest(FaxJourney):
    def tiff(self, folder):
        text = subprocess.run(["tiffinfo", folder / "fax.tif"], capture_output=True, check=True).stdout.decode()
        return text.split("=== TIFF directory")[1:] or text.split("TIFF Directory at")[1:]

    def test_a_fax_to_two_numbers_keeps_nothing_of_them_behind(self):
        folder, ticket = self.send("-o", "lpOutput=Fax", "--to", "111=Anna", "--to", "222")
        self.assertEqual([(r["number"], r["name"]) for r in ticket["fax"]["recipients"]], [("111", "Anna"), ("222", "")])
        self.assertEqual(ticket["refused"], 0)
        pages = self.tiff(folder)
        self.assertEqual(len(pages), ticket["pages"])
        self.assertIn("Image Width: 1728", pages[0])
        self.assertRegex(pages[0], "CCITT Group 4")
        self.assertEqual(oct((folder / "fax.tif").stat().st_mode & 0o777), "0o600")
        self.assertEqual(self.numbers(), [])
        self.assertEqual(list(self.home.rglob("vpb*")), [])
        self.heron("print", "-p", "Office", "-o", "lpOutput=Fax", LETTER, "--out", self.folder / "none", "--yes", code=4)
        self.heron("print", "-p", "Office", "-o", "lpOutput=Fax", "--to", "x", LETTER, "--out", self.folder / "none",
                   "--yes", code=2)
        self.heron("print", "-p", "Office", "--to", "1", LETTER, "--out", self.folder / "none", "--yes", code=2)

    def test_the_users_own_recipients_serve_every_job(self):
        self.add("11")
        self.heron("settings", "-p", "Office", "-o", "lpOutput=Fax", "--yes")
        for name in ("one", "two"):
            _, ticket = self.send(name=name)
            self.assertEqual([r["number"] for r in ticket["fax"]["recipients"]], ["11"])
        self.assertEqual(self.numbers(), ["11"])

    def test_a_cover_sheet_for_each(self):
        self.heron("fax", "cover", "set", "-p", "Office", "--", "Subject=Quote", "Text=One\nTwo\n", "FCSPaper=1",
                   "Sender Name=Zoe")
        cover = ["CoverSheet=1", "lpFaxCover_ReceiveSetup=1", "lpFaxCover_ReceivePersonal=1", "FaxCover_ReceiveName=1",
                 "FaxCover_Subject=1", "FaxCover_SenderName=1"]
        folder, ticket = self.send(*(word for o in ["lpOutput=Fax", *cover] for word in ("-o", o)), "--to", "1=Anna",
                                   "--to", "2=Bob")
        pages = ticket["pages"]
        self.assertEqual(ticket["refused"], 0)
        self.assertEqual([(t["first"], t["end"], t["covers"], t["page"], t["pages"]) for t in
                          ticket["fax"]["transmissions"]], [(0, 1, 1, 0, 1 + pages), (1, 2, 1, 1 + pages, 1 + pages)])
        self.assertEqual(len(self.tiff(folder)), 2 * (1 + pages))
        text = subprocess.run(["pdftotext", "-layout", folder / "pages.pdf", "-"], capture_output=True, check=True)
        sheets = text.stdout.decode().split("\f")
        self.assertIn("Anna", sheets[0])
        self.assertNotIn("Bob", sheets[0])
        self.assertIn("Quote", sheets[1])
        self.assertIn("Bob", sheets[1])
        size = subprocess.run(["pdfinfo", folder / "pages.pdf"], capture_output=True, check=True).stdout.decode()
        self.assertRegex(size, r"Page size: +419\.\d+ x 595\.\d+")
        self.assertEqual([p.name for p in self.home.rglob("vf?*.tmp")], [])


class CoverTest(FaxJourney):
    def test_fields_read_back_and_bad_ones_change_nothing(self):
        self.fax("cover", "set", "Subject=Hello", "Zoom=200", "X position=2500", "Text=a\nb\n", "FCSPaper=2")
        shown = self.fax("cover", "show")
        self.assertEqual([shown["fields"][k] for k in ("Subject", "Zoom", "X position", "Text", "LineNum")],
                         ["Hello", 200, 2500, "a\r\nb\r\n", 2])
        self.assertEqual(shown["flags"]["FaxCover_A4PFix"], 1)
        for wrong in ("Zoom=801", "Style=5", "Subject=" + "x" * 65, "LineNum=1", "Nothing=1", "Fixedform="):
            self.heron("fax", "cover", "set", "-p", "Office", "--", "Pagenum=7", wrong, code=2)
        self.heron("fax", "cover", "set", "-p", "Office", "--", "Filename=/none.bmp", code=5)
        self.assertEqual(self.fax("cover", "show"), shown)
        fields = self.fax("cover", "reset")["fields"]
        self.assertEqual([fields[k] for k in ("Subject", "Text", "Zoom", "FCSPaper")], ["Hello", "a\r\nb\r\n", 100, 5])


class PhoneBookTest(support.Journey):
    def book(self, *arguments, **options):
        return self.json("fax", "phonebook", *arguments, **options)["entries"]

    def test_entries_come_and_go_by_file(self):
        self.book("add", "--name", "Anna", "--group", "Board", "0211-5")
        cards = ("BEGIN:VCARD\r\nVERSION:3.0\r\nFN:Bob \\, Jr\r\nORG:Ltd;Sales\r\nTEL;TYPE=work,fax:+49 (211)\r\n  77\r\n"
                 "END:VCARD\r\nBEGIN:VCARD\r\nFN:No fax\r\nTEL;TYPE=CELL:1\r\nEND:VCARD\r\n")
        self.heron("fax", "phonebook", "import", "-", stdin=cards.encode())
        self.assertIn("1 entries were left out", self.last_errors)
        bob = self.book("list", "--search", "bob")[0]
        self.assertEqual((bob["name"], bob["number"], bob["company"], bob["department"]),
                         ("Bob , Jr", "004921177", "Ltd", "Sales"))
        for file in ("book.csv", "book.vcf"):
            self.heron("fax", "phonebook", "export", self.folder / file)
            before = [{k: v for k, v in e.items() if k != "id"} for e in self.book("list")]
            self.book("remove", *[str(e["id"]) for e in self.book("list")])
            self.book("import", self.folder / file)
            self.assertEqual([{k: v for k, v in e.items() if k != "id"} for e in self.book("list")], before, file)
        self.heron("fax", "phonebook", "add", "--", "abc", code=2)
        self.heron("fax", "phonebook", "edit", "999", "--name", "X", code=5)
        self.heron("fax", "phonebook", "remove", "1", "999", code=5)
        for junk in (b"\x00\xff" * 500, b"BEGIN:VCARD\r\n" * 3000, b'"' * 5000, b"a,b,c\n" * 9):
            self.heron("fax", "phonebook", "import", "-", stdin=junk, code=1)


if __name__ == "__main__":
    unittest.main()
