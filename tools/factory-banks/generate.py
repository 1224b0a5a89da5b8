#!/usr/bin/env python3
"""Writes the factory pattern banks into resources/patterns/.

Usage: tools/factory-banks/generate.py [output-folder]
"""

import pathlib
import sys

from banklib import write_host_bank, write_native_bank
import host_patterns
import native_patterns

ROOT = pathlib.Path(__file__).resolve().parents[2]


def bank_texts():
    return {
        "default.qdptrbH": write_host_bank(host_patterns.PATTERNS),
        "default.qdptrbN": write_native_bank(native_patterns.PATTERNS),
    }


def main():
    out = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else ROOT / "resources" / "patterns"
    out.mkdir(parents=True, exist_ok=True)
    for name, text in bank_texts().items():
        (out / name).write_text(text, encoding="utf-8")
        print(f"wrote {out / name}")


if __name__ == "__main__":
    main()
