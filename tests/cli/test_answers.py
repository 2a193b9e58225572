"""The catalogue and the capabilities as answers."""

import unittest

import support


class Catalog(support.Journey):
    def test_every_feature_for_three_destinations(self):
        papers = {}
        for country in (1, 86, 81):
            features = {row["feature"]: row for row in self.json("catalog", "--country", country)["features"]}
            kinds = [row["kind"] for row in features.values()]
            self.assertEqual((kinds.count("list"), kinds.count("range")), (153, 21))
            self.assertEqual(sum(len(row["options"]) for row in features.values()), 486)
            for row in features.values():
                if row["kind"] == "list":
                    chosen = [option["value"] for option in row["options"] if option["default"]]
                    self.assertEqual(chosen, [row["default"]], row["name"])
            papers[country] = features[0]["default"]
            self.assertEqual([features[26][key] for key in ("min", "max", "step", "default")], [25, 400, 1, 100])
            self.assertEqual([features[170][key] for key in ("min", "max", "default")], [-5, 1, 0])
            self.assertEqual(features[530]["default"], "1025" if country == 1 else "1033")
        self.assertEqual(papers, {1: 1, 86: 9, 81: 9})

    def test_labels_names_and_country(self):
        self.country = 1
        self.assertEqual(self.json("catalog", 0)["features"][0]["default"], 1)
        self.assertEqual(self.json("catalog", 0, "--country", 49)["features"][0]["default"], 9)
        by_name = self.json("catalog", "orientation")["features"]
        self.assertEqual([(row["feature"], len(row["options"])) for row in by_name], [(3, 2)])
        self.assertTrue(all(option["label"] for option in by_name[0]["options"]), "the texts weren't found")
        self.assertRegex(self.heron("catalog", "Orientation"), r"(?m)^\* 1 ")
        self.assertIn("153 lists with 486 options, 21 ranges", self.heron("catalog"))

    def test_unknown_feature_names_the_nearest(self):
        self.heron("catalog", "Orientatoin", code=5)
        self.assertIn('"Orientation"', self.last_errors)
        self.heron("catalog", "7", code=5)


class Capabilities(support.Journey):
    def test_answers_fit_together(self):
        self.add_printer()
        answers = self.json("capabilities", "-p", "Office")
        papers, sizes, names = (answers[name]["output"] for name in ("DC_PAPERS", "DC_PAPERSIZE", "DC_PAPERNAMES"))
        self.assertEqual([len(papers), len(sizes), len(names)], 3 * [answers["DC_PAPERS"]["result"]])
        self.assertEqual(dict(zip(papers, map(tuple, sizes)))[9], (2100, 2970))
        self.assertEqual(answers["DC_BINS"]["output"], [7, 1, 2, 4])  # the rest needs another feed unit
        self.assertEqual(answers["DC_NUP"], {"result": 6, "output": [1, 2, 4, 6, 9, 16]})
        self.assertEqual(answers["DC_PERSONALITY"], {"result": 1, "output": "PCL"})
        self.assertEqual(answers["DC_ENUMRESOLUTIONS"], {"result": 1, "output": [[600, 600]]})
        self.assertEqual([answers[name]["result"] for name in ("DC_SIZE", "DC_EXTRA", "DC_COPIES", "DC_BINADJUST")],
                         [220, 3108, 999, -1])
        self.assertIsNone(answers["DC_BINADJUST"]["output"])
        self.assertRegex(self.heron("capabilities", "-p", "Office"), r"(?m)^  9 +A4 +210\.0 x 297\.0 mm$")

    def test_a_record_given_is_merged_first(self):
        self.add_printer()
        record = self.default_record()
        record[2774] = 4  # the feed unit that has every tray
        path = self.write("unit.bin", record)
        answers = self.json("capabilities", "-p", "Office", "--in", path)
        self.assertEqual(answers["DC_BINS"]["output"], [7, 1, 2, 258, 259, 270, 4])


if __name__ == "__main__":
    unittest.main()
