#!/usr/bin/env python3
"""Writes the default preset and the factory preset bank into resources/presets/.

Usage: tools/factory-presets/generate.py [output-folder]
"""

import pathlib
import sys

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))

from presetlib import ROOT, table, write_bank, write_preset  # noqa: E402
import kits  # noqa: E402

BANK_NAME = "Quindrel Factory Presets"
GROUP_NAME = "All presets"
DEFAULT_NAME = "empty"


def default_values():
    return [start for _, start in table()]


def file_texts():
    return {
        "default.qdprs": write_preset(DEFAULT_NAME, default_values()),
        "default.qdprsb": write_bank(BANK_NAME, [(GROUP_NAME, [(k.name, k.values()) for k in kits.KITS])],
                                     default_values()),
    }


def main():
    out = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else ROOT / "resources" / "presets"
    out.mkdir(parents=True, exist_ok=True)
    for name, text in file_texts().items():
        (out / name).write_text(text, encoding="utf-8")
        print(f"wrote {out / name}")


if __name__ == "__main__":
    main()
