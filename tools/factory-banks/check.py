#!/usr/bin/env python3
"""Checks the factory pattern banks as the plug-in will read them, and prints a summary.

Usage: tools/factory-banks/check.py [folder holding default.qdptrbH and default.qdptrbN]
Exits with 1 and lists every problem found.
"""

import pathlib
import re
import sys
import xml.etree.ElementTree as ET

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))

import generate  # noqa: E402

TRACKS = ["BD", "SD", "LC", "MC", "HC", "LT", "MT", "HT", "CL", "RS",
          "MA", "CP", "CB", "LG", "CY", "OH", "CH", "AC"]
DECLARATION = '<?xml version="1.0" encoding="UTF-8"?>'
HOST_ATTRIBUTES = ["application", "name", "type", "length", "scale", "shuffle", "tempo"]
GROOVES = 40
TEMPO = re.compile(r"^\d+(\.\d)?$")


class Checker:
    def __init__(self):
        self.errors = []

    def fail(self, where, message):
        self.errors.append(f"{where}: {message}")

    def expect(self, condition, where, message):
        if not condition:
            self.fail(where, message)
        return condition

    # -- values -------------------------------------------------------------------------------

    def integer(self, element, attribute, low, high, where):
        text = element.get(attribute)
        if not self.expect(text is not None and re.fullmatch(r"\d+", text), where, f"{attribute}={text!r} is not an integer"):
            return None
        value = int(text)
        self.expect(low <= value <= high, where, f"{attribute} {value} outside {low}..{high}")
        return value

    def shuffle_and_tempo(self, element, where):
        shuffle, tempo = element.get("shuffle"), element.get("tempo")
        try:
            self.expect(0 <= float(shuffle) <= 0.8, where, f"shuffle {shuffle} outside 0..0.8")
        except (TypeError, ValueError):
            self.fail(where, f"shuffle {shuffle!r} is not a number")
        if self.expect(tempo is not None and TEMPO.match(tempo), where, f"tempo {tempo!r} is not a number with at most one decimal"):
            self.expect(30 <= float(tempo) <= 300, where, f"tempo {tempo} outside 30..300")
        return shuffle, tempo

    # -- steps --------------------------------------------------------------------------------

    def tracks(self, element, length, scale, where):
        """Returns the step strings by track code, after checking them."""
        codes = [child.tag for child in element]
        if not self.expect(codes == TRACKS, where, f"tracks {codes} instead of {TRACKS}"):
            return None
        steps = {}
        for child in element:
            text = child.text or ""
            track = f"{where} {child.tag}"
            if length is not None:
                self.expect(len(text) == length, track, f"{len(text)} steps in a part of length {length}")
            self.expect(set(text) <= set(".oO"), track, f"characters other than '.', 'o', 'O' in {text!r}")
            if child.tag == "AC":
                self.expect("o" not in text, track, "accent track written with 'o' (write 'O')")
            steps[child.tag] = text
        if length is None or any(len(s) != length for s in steps.values()):
            return steps
        if scale in (3, 4, 6, 8) and length:
            # A part that stops mid-beat drags every following bar out of time.
            self.expect(length % scale == 0, where,
                        f"length {length} at scale {scale} is not a whole number of beats")
        self.musical(steps, where)
        return steps

    def musical(self, steps, where):
        for i in range(len(steps["AC"])):
            column = [steps[code][i] for code in TRACKS]
            if steps["OH"][i] != "." and steps["CH"][i] != ".":
                self.fail(where, f"open and closed hi hat together on step {i + 1} (the closed one chokes the open one)")
            if steps["AC"][i] == "O" and all(c == "." for c in column[:-1]):
                self.fail(where, f"accent on step {i + 1} where nothing plays")

    # -- banks --------------------------------------------------------------------------------

    def root(self, path, bank_type, count):
        raw = path.read_bytes()
        try:
            text = raw.decode("utf-8")
        except UnicodeDecodeError as e:
            self.fail(path.name, f"not UTF-8: {e}")
            return []
        self.expect(text.startswith(DECLARATION), path.name, "does not start with the UTF-8 XML declaration")
        root = ET.fromstring(raw)
        self.expect(root.tag == "PatternBank", path.name, f"root is {root.tag}")
        self.expect(dict(root.attrib) == {"type": bank_type}, path.name, f"root attributes {dict(root.attrib)}")
        patterns = list(root)
        self.expect(len(patterns) == count, path.name, f"{len(patterns)} patterns instead of {count}")
        for p in patterns:
            self.expect(p.tag == "Pattern", path.name, f"child {p.tag}")
        return patterns

    def host_bank(self, path):
        summary = []
        names = set()
        for index, p in enumerate(self.root(path, "hostPattern", 96)):
            where = f"host {index + 1} ({p.get('name')}, key {index + 12})"
            self.expect(list(p.attrib) == HOST_ATTRIBUTES, where, f"attributes {list(p.attrib)} instead of {HOST_ATTRIBUTES}")
            self.expect(p.get("application") == "Quindrel", where, f"application {p.get('application')!r}")
            self.expect(p.get("type") == "hostPattern", where, f"type {p.get('type')!r}")
            length = self.integer(p, "length", 1, 16, where)
            scale = self.integer(p, "scale", 3, 8, where)
            self.expect(scale in (3, 4, 6, 8), where, f"scale {scale}")
            shuffle, tempo = self.shuffle_and_tempo(p, where)
            steps = self.tracks(p, length, scale, where)
            name = p.get("name") or ""
            if index < GROOVES:
                self.expect(name and name != "Empty", where, "a groove needs a name")
                self.expect(name not in names, where, "name used twice")
                names.add(name)
                if steps:
                    self.expect(any(set(s) - {"."} for c, s in steps.items() if c != "AC"), where, "nothing plays")
            else:
                self.expect(name == "Empty" and (length, scale, shuffle, tempo) == (16, 4, "0", "120"), where,
                            "an unused slot must be 'Empty', length 16, scale 4, shuffle 0, tempo 120")
                if steps:
                    self.expect(all(s == "." * 16 for s in steps.values()), where, "an unused slot must be silent")
            summary.append((index + 12, name, tempo, shuffle, scale, length))
        return summary

    def native_bank(self, path):
        summary = []
        for index, p in enumerate(self.root(path, "nativePattern", 16)):
            where = f"native {index + 1} ({p.get('name')})"
            self.expect(list(p.attrib) == ["application", "name", "type"], where, f"attributes {list(p.attrib)}")
            self.expect(p.get("application") == "Quindrel", where, f"application {p.get('application')!r}")
            self.expect(p.get("type") == "nativePattern", where, f"type {p.get('type')!r}")
            self.expect(p.get("name"), where, "no name")
            variations = list(p)
            if not self.expect([v.tag for v in variations] == ["VariationA", "VariationB"], where,
                               f"children {[v.tag for v in variations]}"):
                continue
            contents = []
            row = [index + 1, p.get("name")]
            for v in variations:
                vwhere = f"{where} {v.tag}"
                self.expect(list(v.attrib) == ["shuffle", "tempo"], vwhere, f"attributes {list(v.attrib)}")
                shuffle, tempo = self.shuffle_and_tempo(v, vwhere)
                parts = list(v)
                if not self.expect([q.tag for q in parts] == ["Part1", "Part2"], vwhere, f"children {[q.tag for q in parts]}"):
                    continue
                beats = 0.0
                shape = []
                content = []
                for q, low in zip(parts, (1, 0)):
                    qwhere = f"{vwhere} {q.tag}"
                    self.expect(list(q.attrib) == ["length", "scale"], qwhere, f"attributes {list(q.attrib)}")
                    length = self.integer(q, "length", low, 16, qwhere)
                    scale = self.integer(q, "scale", 3, 8, qwhere)
                    self.expect(scale in (3, 4, 6, 8), qwhere, f"scale {scale}")
                    steps = self.tracks(q, length, scale, qwhere)
                    content.append(steps)
                    if length:
                        beats += length / scale
                        shape.append(f"{length}/{scale}")
                if index >= 12:
                    # A fill-in stands in for a pass; whole bars keep the groove after it on the bar line.
                    self.expect(beats > 0 and abs(beats / 4 - round(beats / 4)) < 1e-9, vwhere,
                                f"a fill-in lasts {beats:g} beats, not a whole number of 4/4 bars")
                contents.append(content)
                row.append(f"{tempo:>5} sh {shuffle:<5} {'+'.join(shape)}")
            if len(contents) == 2:
                self.expect(contents[0] != contents[1], where, "variations A and B are the same")
            summary.append(row)
        return summary

    def up_to_date(self, folder):
        for name, text in generate.bank_texts().items():
            path = folder / name
            self.expect(path.exists() and path.read_text(encoding="utf-8") == text, name,
                        "differs from what tools/factory-banks/generate.py writes: run it")


def main():
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else generate.ROOT / "resources" / "patterns"
    checker = Checker()
    host = checker.host_bank(folder / "default.qdptrbH")
    native = checker.native_bank(folder / "default.qdptrbN")
    checker.up_to_date(folder)

    print("Host bank (key, name, tempo, shuffle, scale, length):")
    for key, name, tempo, shuffle, scale, length in host[:GROOVES]:
        print(f"  {key:3}  {name:<16} {tempo:>5}  sh {shuffle:<5} scale {scale}  length {length}")
    print(f"  {len(host) - GROOVES} slots 'Empty'")
    print("Native bank (number, name, A: tempo shuffle parts as length/scale, B: likewise):")
    for row in native:
        print(f"  {row[0]:3}  {row[1]:<11} A {row[2]:<28} B {row[3] if len(row) > 3 else ''}")

    if checker.errors:
        print(f"\n{len(checker.errors)} problem(s):")
        for e in checker.errors:
            print("  " + e)
        return 1
    print("\nBoth banks are well formed.")
    return 0


if __name__ == "__main__":
    sys.exit(main())
