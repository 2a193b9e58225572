"""Records in, valid records out; defaults by country; conversion; what is shown of them, and what never is."""

import pathlib
import random
import runpy
import struct
import unittest

import support

PRIVATE_TRAYS = [7, 1, 2, 258, 259, 270, 4, 7, 7, 7]
SECRETS = {1459: 11, 1481: 11, 1503: 11, 1545: 17, 1789: 65, 1919: 9}  # offset: characters


class Merge(support.Journey):
    def setUp(self):
        super().setUp()
        self.add_printer()

    def check_valid(self, data, shown):
        fields = shown["fields"]
        self.assertEqual((len(data), shown["size"], shown["own"]), (3328, 3328, True))
        self.assertEqual(data[:220], data[220:440], "the mirror differs from the public part")
        self.assertEqual(fields["dmDeviceName"], "Office")
        self.assertEqual(fields["dmDefaultSource"], fields["lpMediaSource"])
        self.assertEqual(fields["lpResolution"], 600)
        width, length = fields["dmPaperWidth"] * 10, fields["dmPaperLength"] * 10
        self.assertEqual(fields["paperMargins"], [424, 424, width - 424, length - 424])
        self.assertEqual(fields["paperSizeDots"], [2 * (width * 300 // 2540), 2 * (length * 300 // 2540)])
        self.assertEqual(fields["outputMargins"], fields["paperMargins"])

    def test_samples(self):
        expected = {
            "bare-220.bin": {"dmOrientation": 2, "dmPaperSize": 9, "dmPaperWidth": 2100, "dmPaperLength": 2970,
                             "dmCopies": 3, "dmDuplex": 2, "lpPRNType": 2, "dmPrintQuality": 600},
            "foreign-driver.bin": {"dmOrientation": 1, "dmPaperSize": 9, "dmPaperWidth": 2100, "dmPaperLength": 2970,
                                   "dmCopies": 999, "dmDefaultSource": 7, "dmPrintQuality": 600, "dmDuplex": 1},
            "older-212.bin": {"dmOrientation": 1, "dmPaperSize": 8, "dmPaperWidth": 2970, "dmPaperLength": 4200,
                              "dmCopies": 2, "dmDuplex": 1, "lpPRNType": 1, "lpOutputPaper": 8},
        }
        for self.country in (1, 49):  # a country whose own default paper differs must not matter
            for name, values in expected.items():
                with self.subTest(sample=name, country=self.country):
                    data, shown = self.merged(support.SAMPLES / name)
                    self.check_valid(data, shown)
                    self.assertEqual({key: shown["fields"][key] for key in values}, values)

    def test_own_record_keeps_its_choices_but_not_the_device_options(self):
        record = self.default_record()
        record[1439:1441] = 1, 3      # Staple_Check, lpStaple
        record[2774] = 3              # lpSourceUnit, which is the printer's own
        struct.pack_into("<h", record, 874, 1000)  # Zoom
        record[873] = 1
        data, shown = self.merged(self.write("own.bin", record))
        self.check_valid(data, shown)
        fields = shown["fields"]
        self.assertEqual((fields["Staple_Check"], fields["lpStaple"], fields["lpSourceUnit"]), (1, 3, 1))
        self.assertEqual((fields["ZoomCheck"], fields["Zoom"]), (1, 100))
        again, _ = self.merged(self.write("again.bin", data))
        self.assertEqual(again, data, "a valid record doesn't come out as it went in")

    def test_through_streams_and_files(self):
        sample = support.SAMPLES / "bare-220.bin"
        done = self.run_heron("record", "merge", "-p", "Office", "--in", "-", "--out", "-", stdin=sample.read_bytes())
        self.assertEqual((done.returncode, done.stdout), (0, self.merged(sample)[0]))
        self.heron("record", "default", "-p", "Office", "--json", "--out", "-", code=2)
        out = self.write("out.bin", b"older")
        link = self.folder / "link.bin"
        link.symlink_to(out)
        self.heron("record", "default", "-p", "Office", "--out", link)
        self.assertTrue(link.is_symlink())
        self.assertEqual(out.stat().st_size, 3328)
        self.assertEqual(out.stat().st_mode & 0o077, 0, "others can read what may hold a password")
        self.heron("record", "default", "-p", "Office", "--out", "/dev/null")
        self.assertTrue(pathlib.Path("/dev/null").is_char_device())
        self.heron("record", "default", "-p", "Office", "--out", self.folder / "no" / "folder.bin", code=5)


class Defaults(support.Journey):
    def test_by_country(self):
        self.add_printer()
        records = {}
        for self.country in (1, 67, 49, 61, 66, 81, 86, 972):
            with self.subTest(country=self.country):
                record = bytes(self.default_record())
                letter = self.country in (1, 67)
                self.assertEqual(records.setdefault(letter, record), record)
                paper, width, length = (1, 2159, 2794) if letter else (9, 2100, 2970)
                expected = {"dmPaperSize": paper, "dmPaperWidth": width, "dmPaperLength": length, "lpOutputPaper": paper,
                            "documentPaperSnapshot": paper, **self.EXPECTED}
                fields = self.json("record", "show", self.folder / "default.bin")["fields"]
                self.assertEqual({key: fields[key] for key in expected}, expected)

    EXPECTED = {
        "dmDeviceName": "Office", "dmSpecVersion": 0x401, "dmDriverVersion": 0x4200, "dmSize": 220, "dmDriverExtra": 3108,
        "dmFields": 0x3703, "dmOrientation": 1, "dmScale": 100, "dmCopies": 1, "dmDefaultSource": 7, "lpMediaSource": 7,
        "dmPrintQuality": 600, "dmYResolution": 600, "lpResolution": 600, "dmColor": 1, "dmDuplex": 1, "dmTTOption": 2,
        "QXOutputPaperSize": 257, "ZoomCheck": 0, "Zoom": 100, "maxCopies": 999, "bindingSide": 2, "lpLayout": 8,
        "lpOrder": 1, "lpPDLType": 4, "lpGraphicsMode": 2, "lpOutput": 2, "lpQuality": 200, "lpColorMode": 2, "lpDither": 3,
        "lpPunchHoles": 2, "lpFrontCover": 1, "lpBackCover": 1, "lpCoverSource": 1, "EnableBPPChange_Check": 1,
        "fMargin": 10, "bMargin": 10, "UDPaperWidth": 2100, "UDMediaLength": 2100, "lpDuplex": 0, "CopyNo_WM_StartC": 1,
        "Sort_Check": 1, "OverlayOrder_Check": 0, "Layout_Check2": 1, "renderConstant": 5, "extraGuard": "34333231",
        "endGuard": "31323334", "overlayName": "", "publicMirror": "00" * 220, "paperMargins": [0, 0, 0, 0],
        "trayTable.lpMediaSource": PRIVATE_TRAYS, "trayTable.lpMediaType": [1] * 10,
    }


class Convert(support.Journey):
    def test_there_and_back(self):
        self.add_printer()
        record = self.default_record()
        struct.pack_into("<h", record, 86, 7)
        record[1000] = 0x55  # inside the part that both formats share
        own = self.write("own.bin", record)
        legacy, back = self.folder / "legacy.bin", self.folder / "back.bin"
        self.heron("record", "convert", "-p", "Office", "--in", own, "--to", "legacy", "--out", legacy)
        data = legacy.read_bytes()
        self.assertEqual(struct.unpack_from("<4H", data, 64), (0x320, 0, 188, 849))
        self.assertEqual((len(data), data[86], data[188 + 780]), (1037, 7, 0x55))
        self.assertFalse(self.json("record", "show", legacy)["own"])
        self.heron("record", "convert", "-p", "Office", "--in", legacy, "--to", "current", "--out", back)
        self.assertEqual(back.read_bytes(), bytes(record))

    def test_a_record_without_version(self):
        self.add_printer()
        record = bytearray((support.SAMPLES / "bare-220.bin").read_bytes())
        struct.pack_into("<HHH", record, 64, 0, 0, 200)
        out = self.folder / "out.bin"
        versionless = self.write("none.bin", record[:200])
        self.heron("record", "convert", "-p", "Office", "--in", versionless, "--to", "legacy", "--out", out, code=1)
        self.assertFalse(out.exists())


class Show(support.Journey):
    def setUp(self):
        super().setUp()
        self.add_printer()

    def test_secrets_are_never_shown(self):
        record = self.default_record()
        self.write("empty.bin", record)
        for offset, characters in SECRETS.items():
            text = ("hunter2" + "x" * 60)[:characters]  # fills its field to the last character
            record[offset:offset + 2 * characters] = text.encode("utf-16-le")
        full, empty = self.write("full.bin", record), self.folder / "empty.bin"
        for arguments in (["show", full], ["show", full, "--all"], ["show", full, "--json"], ["diff", full, empty],
                          ["diff", full, empty, "--json"], ["merge", "-p", "Office", "--in", full, "--all"],
                          ["merge", "-p", "Office", "--in", full, "--json"]):
            answer = self.heron("record", *arguments)
            self.assertNotIn("hunter", answer)
            self.assertNotIn("hunter".encode("utf-16-le").hex(), answer)
            self.assertEqual(answer.count("***"), len(SECRETS), arguments)

    def test_a_persons_view_shows_what_was_chosen(self):
        record = self.default_record()
        record[1439:1441] = 1, 3
        shown = self.heron("record", "show", self.write("own.bin", record))
        self.assertRegex(shown, r"dmPaperSize +9 \(\S")  # with the paper's name
        self.assertRegex(shown, r"Staple_Check +on\n")
        self.assertNotIn("lpPunchHoles", shown)
        self.assertIn("lpPunchHoles", self.heron("record", "show", "--all", self.folder / "own.bin"))

    def test_a_text_cant_steer_the_terminal(self):
        record = self.default_record()
        record[102:112] = "\x1b[2Ja".encode("utf-16-le")  # dmFormName
        record[0:8] = "\x1b[2J".encode("utf-16-le")
        self.assertNotIn("\x1b", self.heron("record", "show", "--all", self.write("own.bin", record)))

    def test_a_record_of_another_driver_gives_its_public_part_only(self):
        fields = self.json("record", "show", support.SAMPLES / "older-212.bin")["fields"]
        self.assertEqual((fields["dmPaperSize"], fields["dmCopies"]), (8, 2))
        self.assertNotIn("signature", fields)
        short = bytearray((support.SAMPLES / "bare-220.bin").read_bytes()[:88])
        struct.pack_into("<H", short, 68, 88)
        self.assertEqual(list(self.json("record", "show", self.write("short.bin", short))["fields"])[-1], "dmCopies")

    def test_diff(self):
        a = self.default_record()
        b = bytearray(a)
        self.write("a.bin", a)
        self.assertEqual(self.heron("record", "diff", self.folder / "a.bin", self.folder / "a.bin"), "no differences\n")
        struct.pack_into("<h", b, 86, 12)
        b[3176 + 2 * 6] = 9  # third row of the tray table
        b[500] = 1           # in no field
        answer = self.json("record", "diff", self.folder / "a.bin", self.write("b.bin", b))
        self.assertEqual([row["field"] for row in answer["differences"]], ["dmCopies", "trayTable.lpMediaType[2]"])
        self.assertEqual(answer["unnamedBytes"], 1)
        other = self.json("record", "diff", self.folder / "a.bin", support.SAMPLES / "bare-220.bin")
        self.assertIn({"field": "Zoom", "a": "100 %", "b": "-"}, other["differences"])


class BadFiles(support.Journey):
    def test_refused_with_nothing_written(self):
        self.add_printer()
        own = bytes(self.default_record())
        bare = (support.SAMPLES / "bare-220.bin").read_bytes()
        tiny = bytearray(bare[:72])
        struct.pack_into("<HH", tiny, 68, 10, 62)
        files = {"empty": b"", "below the header": own[:71], "cut": own[:-1], "bytes behind": own + b"\0",
                 "declares too much": bare[:70] + b"\xff\xff" + bare[72:], "text": b"These are words. " * 200,
                 "random": random.Random(1).randbytes(3328), "public part too small": bytes(tiny),
                 "over 64 KiB": bare + bytes(70000)}
        out = self.write("out.bin", b"as it was")
        for what, data in files.items():
            path = self.write("bad.bin", data)
            for arguments in (["record", "merge", "-p", "Office", "--out", out], ["record", "show"],
                              ["capabilities", "-p", "Office"],
                              ["record", "convert", "-p", "Office", "--to", "current", "--out", out]):
                with self.subTest(file=what, command=arguments[:2]):
                    self.heron(*arguments, "--in", path, code=1)
                    self.heron(*arguments, "--in", "-", stdin=data, code=1)
            self.heron("record", "diff", path, support.SAMPLES / "bare-220.bin", code=1)
            self.heron("printer", "add", "Other", "--dev-mode", path, code=1)
        self.assertEqual(out.read_bytes(), b"as it was")
        left = sorted(path.name for path in self.folder.iterdir())
        self.assertEqual(left, ["bad.bin", "default.bin", "home", "out.bin"])
        self.assertEqual(self.heron("printer", "list"), "Office\n")
        self.heron("record", "show", self.folder / "missing.bin", code=5)
        self.heron("record", "show", self.folder, code=1)

    def test_samples_are_what_their_script_makes(self):
        script = runpy.run_path(str(support.SAMPLES / "make_records.py"))
        for name, data in script["records"]():
            self.assertEqual((support.SAMPLES / name).read_bytes(), data, name)


if __name__ == "__main__":
    unittest.main()
