"""Per-page lists and chapter starts from the command line; every command is a process of its own."""

import json
import unittest

import support


class Pages(support.Journey):
    def setUp(self):
        super().setUp()
        self.add_printer()
        self.heron("settings", "-p", "Office", "-o", "InterSheet_Check=1")

    def pages(self, command, *arguments, **options):
        return self.heron("pages", command, "-p", "Office", *arguments, **options)

    def rows(self, *which):
        answer = self.json("pages", "show", "-p", "Office", *which)
        self.assertEqual([row["row"] for row in answer["rows"]], list(range(1, len(answer["rows"]) + 1)))
        return [(row["pages"], row["type"]["value"], row["tray"]["value"]) for row in answer["rows"]]

    def refused(self, code, command, *arguments):
        self.pages(command, *arguments, code=code)
        return self.last_errors

    def test_a_life_of_rows(self):
        self.assertEqual(self.rows(), [])
        self.pages("add", "10-6,3", "--type", "2", "--tray", "2")
        self.pages("add", "1-2", "--type", "Two-sided")
        answer = self.json("pages", "add", "3,9", "--type", "0", "--tray", "Tray 1", "-p", "Office")
        self.assertEqual((answer["applied"], answer["list"], len(answer["rows"])), (True, 1, 3))
        self.assertEqual([row[:2] for row in self.rows()], [("3,6-10", 2), ("1-2", 3), ("3,9", 0)])
        self.assertEqual((self.rows()[0][2], self.rows()[2][2]), (2, 1))
        self.pages("move", "3", "up")
        self.assertEqual([row[0] for row in self.rows()], ["3,6-10", "3,9", "1-2"])
        self.pages("sort", "pages")
        self.assertEqual([row[0] for row in self.rows()], ["1-2", "3,6-10", "3,9"])
        self.pages("sort", "0", "--reverse")
        self.assertEqual([row[0] for row in self.rows()], ["3,9", "3,6-10", "1-2"])
        self.pages("sort", "type")
        self.assertEqual([row[1] for row in self.rows()], [0, 2, 3])
        before = self.rows()
        self.pages("edit", "2", "--pages", "3,6-10,12")
        self.assertEqual(self.rows()[1], ("3,6-10,12",) + before[1][1:])
        self.pages("edit", "2", "--tray", "1")
        self.assertEqual(self.rows()[1], ("3,6-10,12", 2, 1))
        self.pages("remove", "3", "1", "3")
        self.assertEqual(self.rows(), [("3,6-10,12", 2, 1)])
        self.pages("remove", "1", "--dry-run")
        self.assertEqual(len(self.rows()), 1)

    def test_what_is_refused_changes_nothing(self):
        self.pages("add", "1-4", "--type", "2")
        before = self.rows()
        self.assertIn("comma", self.refused(2, "add", "1,,2"))
        self.assertIn("digit 0", self.refused(2, "add", "1,0"))
        self.assertIn("hyphen", self.refused(2, "add", "1--2"))
        self.assertIn("at most 4 digits", self.refused(2, "add", "12345"))
        self.assertIn("at most 4 digits", self.refused(2, "add", "5-"))
        self.assertIn("more than once", self.refused(2, "add", "7,7"))
        self.assertIn("20 characters", self.refused(2, "add", "1001,1003,1005,1007,1009"))
        self.assertIn("too many pages", self.refused(2, "add", "5-9999,1-9", "--type", "3"))
        self.assertIn("Row 1", self.refused(4, "add", "9,4", "--type", "3"))
        self.assertIn("first set", self.refused(4, "add", "9", "--tray", "258"))
        self.refused(2, "add", "9", "--tray", "no such tray")
        for command in (["edit", "2"], ["remove", "2"], ["remove", "0"], ["move", "2", "up"], ["move", "1", "down"]):
            self.refused(5, *command)
        self.refused(2, "sort", "colour")
        self.refused(2, "move", "1", "sideways")
        self.assertEqual(self.rows(), before)
        self.pages("add", "4", "--type", "0")  # inserted sheets may go with printed pages
        self.pages("edit", "1", "--pages", "1-4")  # a row isn't its own partner

    def test_a_list_that_is_not_in_use(self):
        self.pages("add", "1")
        self.heron("settings", "-p", "Office", "-o", "InterSheet_Check=0")
        self.assertIn("InterSheet_Check=1", self.refused(4, "add", "2"))
        self.refused(4, "remove", "1")
        self.assertEqual(len(self.rows()), 1)

    def test_thirty_rows(self):
        for page in range(30, 0, -1):
            self.pages("add", str(page))
        self.assertIn("full", self.refused(4, "add", "31"))
        self.pages("edit", "30", "--pages", "31")
        self.pages("sort", "0")
        self.assertEqual([row[0] for row in self.rows()], [str(page) for page in range(2, 32)])

    def test_ten_lists(self):
        self.pages("add", "1")
        self.pages("rename", "2", "Board")
        self.heron("settings", "-p", "Office", "-o", "lpInterSheetList=2")
        self.pages("add", "2-3")
        answer = self.json("pages", "list", "-p", "Office")
        self.assertEqual(answer["current"], 2)
        self.assertEqual([(row["number"], row["name"], row["rows"]) for row in answer["lists"][:3]],
                         [(1, "List 1", 1), (2, "Board", 1), (3, "List 3", 0)])
        self.assertEqual(([row[0] for row in self.rows("1")], [row[0] for row in self.rows("Board")]), (["1"], ["2-3"]))
        self.assertIn("another", self.refused(4, "rename", "3", "Board").lower())
        self.refused(2, "rename", "3", "")
        self.refused(2, "rename", "3", " x")
        self.refused(2, "rename", "3", "seventeen letters")
        self.refused(5, "rename", "11", "x")
        self.refused(5, "show", "Bord")
        self.assertIn("Board", self.last_errors)

    def test_rows_in_conflict_are_told(self):
        self.heron("settings", "-p", "Office", "--device", "-o", "lpSourceUnit=2", "--yes")
        self.pages("add", "1", "--tray", "258")
        self.heron("settings", "-p", "Office", "--device", "-o", "lpSourceUnit=1", "--yes")
        conflicts = [row["conflict"] for row in self.json("pages", "show", "-p", "Office")["rows"]]
        self.assertEqual(conflicts, [True])
        self.refused(4, "add", "2", "--tray", "258")
        self.assertIn("heron settings --device", self.last_errors)
        self.pages("edit", "1", "--tray", "1")
        conflicts = [row["conflict"] for row in self.json("pages", "show", "-p", "Office")["rows"]]
        self.assertEqual(conflicts, [False])

    def test_chapters(self):
        self.assertEqual(self.json("pages", "chapters", "-p", "Office")["pages"], [])
        self.pages("chapters", "10-6,2,4")
        answer = self.json("pages", "chapters", "-p", "Office")
        self.assertEqual((answer["pages"], answer["text"]), ([2, 4, 6, 7, 8, 9, 10], "2,4,6-10"))
        self.pages("chapters", "1-30")
        self.assertIn("30", self.refused(2, "chapters", "1-31"))
        self.refused(2, "chapters", "2,2")
        self.refused(2, "chapters", "2;3")
        self.assertEqual(len(self.json("pages", "chapters", "-p", "Office")["pages"]), 30)
        self.pages("chapters", "")
        self.assertEqual(self.json("pages", "chapters", "-p", "Office")["pages"], [])

    def test_explain(self):
        def explained(text, code=0):
            done = self.run_heron("pages", "explain", "-p", "Office", "--json", "--", text)
            self.assertEqual(done.returncode, code, done.stderr)
            answer = json.loads(done.stdout)
            return answer["code"], answer["numbers"], answer["text"], answer["repeated"]

        self.assertEqual(explained("10-6,3"), (0, [6, 7, 8, 9, 10, 3], "3,6-10", []))
        self.assertEqual(explained("1,1,2,1"), (0, [1, 1, 2, 1], "1,1,1-2", [1]))
        self.assertEqual(explained("3,5-"), (0, [3], "3", []))
        self.assertEqual(explained(""), (0, [], "", []))
        self.assertEqual(explained("1-9999,1"), (0, None, "", []))
        for text, code in (("1--2", 4), (",1", 2), ("0", 3), ("-3", 4), ("1 2", 1), ("12345", 1)):
            self.assertEqual(explained(text, 2), (code, None, "", []))


if __name__ == "__main__":
    unittest.main()
