#!/usr/bin/env python3
"""Checks the factory presets: the files in resources/presets/ are what generate.py writes from
kits.py, the kits are sixteen distinct sounds, and the files read as the plug-in reads them.

Usage: tools/factory-presets/check.py [folder holding default.qdprs and default.qdprsb]
Exits with 1 and lists every problem found.
"""

import itertools
import pathlib
import sys
import xml.etree.ElementTree as ET

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))

import generate  # noqa: E402
from presetlib import BANK_SIZE, PRESET_PARAMETERS, table  # noqa: E402

KIT_COUNT = 16
# What the panel's preset display shows without cutting.
LONGEST_NAME = 24
# Two kits are distinct sounds if they differ clearly on several knobs.
DISTINCT_KNOBS = 8
CLEAR_DIFFERENCE = 0.1


def main():
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else generate.ROOT / "resources" / "presets"
    errors = []
    kits = generate.kits.KITS

    for name, text in generate.file_texts().items():
        path = folder / name
        if not path.exists() or path.read_bytes() != text.encode("utf-8"):
            errors.append(f"{name}: differs from what tools/factory-presets/generate.py writes: run it")

    if len(kits) != KIT_COUNT:
        errors.append(f"{len(kits)} kits instead of {KIT_COUNT}")
    names = [k.name for k in kits]
    for name in set(n for n in names if names.count(n) > 1):
        errors.append(f"two kits are called {name!r}")
    for kit in kits:
        if not kit.name or len(kit.name) > LONGEST_NAME:
            errors.append(f"{kit.name!r}: a name of 1 to {LONGEST_NAME} characters")
        if not kit.character:
            errors.append(f"{kit.name}: say what the kit is for")
    for a, b in itertools.combinations(kits, 2):
        differing = sum(abs(x - y) >= CLEAR_DIFFERENCE for x, y in zip(a.values(), b.values()))
        if differing < DISTINCT_KNOBS:
            errors.append(f"{a.name} and {b.name} differ clearly on only {differing} knobs")

    # The bank as the plug-in reads it: groups by tag, presets by tag and application, params by name.
    parameter_names = [n for n, _ in table()]
    bank = ET.parse(folder / "default.qdprsb").getroot()
    groups = [(g.get("name"), [p for p in g if p.tag == "Preset"]) for g in bank if g.tag == "PresetGroup"]
    if bank.tag != "PresetBank" or bank.get("name") != generate.BANK_NAME:
        errors.append(f"bank root {bank.tag} {bank.get('name')!r}")
    if [(g, len(p)) for g, p in groups] != [(generate.GROUP_NAME, KIT_COUNT), ("Not used", BANK_SIZE - KIT_COUNT)]:
        errors.append(f"groups {[(g, len(p)) for g, p in groups]}")
    for _, presets in groups:
        for p in presets:
            params = [q.get("name") for q in p if q.tag == "param"]
            if p.get("application") != "Quindrel" or params != parameter_names:
                errors.append(f"preset {p.get('name')!r} is not read whole by the plug-in")
    unused = [p.get("name") for p in groups[-1][1]] if groups else []
    if unused != [f"Preset {n}" for n in range(KIT_COUNT, BANK_SIZE)]:
        errors.append("the unused presets are not 'Preset 16' to 'Preset 127'")
    default = ET.parse(folder / "default.qdprs").getroot()
    if default.tag != "Preset" or default.get("name") != generate.DEFAULT_NAME or len(default) != PRESET_PARAMETERS:
        errors.append("default.qdprs is not the preset 'empty' with every sound parameter")

    for kit in kits:
        print(f"{kit.name:<{LONGEST_NAME}}  {kit.character}")
    if errors:
        print(f"\n{len(errors)} problem(s):")
        for e in errors:
            print("  " + e)
        return 1
    print(f"\nThe default preset and the bank of {KIT_COUNT} kits are up to date and well formed.")
    return 0


if __name__ == "__main__":
    sys.exit(main())
