#!/usr/bin/env python3
"""Renders each factory kit through quindrel-render and measures it, as the kits were chosen.

For every kit: each instrument struck once at full velocity (peak, time to fall 40 dB, and
brightness as the spectral centroid estimated from the first difference), then the peak of the
twelve factory basic patterns and of a deliberately overloaded groove (every instrument busy,
accents on every beat, all on the main output) at the default Main Volume.

Usage: tools/factory-presets/measure.py [path to quindrel-render] [kit numbers...]
"""

import array
import math
import pathlib
import struct
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ET

sys.dont_write_bytecode = True
HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE))
sys.path.append(str(HERE.parent / "factory-banks"))

import generate  # noqa: E402
from presetlib import ROOT  # noqa: E402
from banklib import host, empty_host, write_host_bank  # noqa: E402

RATE = 48000
CODES = ["BD", "SD", "LC", "MC", "HC", "LT", "MT", "HT", "CL", "RS", "MA", "CP", "CB", "LG", "CY", "OH", "CH"]
HIT_SPACING = 2.5

# Far busier than music: the worst a user might program, with accents on every beat.
STRESS = host("Stress", 128,
              BD="O..o O.o. O..o O.o.",
              SD="..o. O..o ..o. O.oo",
              LC="o... ..o. .o.. o...",
              MC="..o. o... o..o ..o.",
              HC=".o.o .o.o .o.o .o.o",
              LT="..o. ..o. .... oo..",
              MT=".o.. .o.. ..o. ..o.",
              HT="o... o... .o.. ...o",
              CL="o..o ..o. o..o ..o.",
              RS="...o ...o ...o ...o",
              MA="oooo oooo oooo oooo",
              CP=".... O... .... O...",
              CB=".o.o .o.o .o.o .o.o",
              LG="o... .... .... ....",
              CY="O... .... O... ....",
              OH="..o. ..o. ..o. ..o.",
              CH="oo.o oo.o oo.o oo.o",
              AC="O... O... O... O...")


def drum_keys():
    root = ET.parse(ROOT / "resources" / "drummaps" / "default.qddrmap").getroot()
    keys = {}
    for assign in root.iter("assign"):
        keys.setdefault(assign.get("instrument"), int(assign.get("midiKey")))
    return [keys[c] for c in CODES]


def write_midi(path, notes):
    """notes: (seconds, key, velocity); one track at 120 BPM, 480 ticks a beat."""
    events = []
    for seconds, key, velocity in notes:
        tick = round(seconds * 960)
        events.append((tick, bytes([0x99, key, velocity])))
        events.append((tick + 96, bytes([0x89, key, 0])))
    events.sort(key=lambda e: e[0])
    data, last = bytearray(), 0
    for tick, message in events:
        delta, chunk = tick - last, [tick - last & 0x7F]
        delta >>= 7
        while delta:
            chunk.insert(0, delta & 0x7F | 0x80)
            delta >>= 7
        data += bytes(chunk) + message
        last = tick
    data += b"\x00\xff\x2f\x00"
    path.write_bytes(b"MThd" + struct.pack(">IHHH", 6, 0, 1, 480) + b"MTrk" + struct.pack(">I", len(data)) + data)


def read_wav(path):
    raw = path.read_bytes()
    position, channels, samples = 12, 1, None
    while position < len(raw):
        tag, size = raw[position:position + 4], struct.unpack("<I", raw[position + 4:position + 8])[0]
        body = raw[position + 8:position + 8 + size]
        if tag == b"fmt ":
            channels = struct.unpack("<H", body[2:4])[0]
        elif tag == b"data":
            samples = array.array("f", body)
        position += 8 + size + (size & 1)
    return samples[0::channels]


def render(renderer, bank, kit, arguments, out):
    command = [renderer, "--preset-bank", str(bank), "--preset", str(kit), "--rate", str(RATE), "-o", str(out)] + arguments
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
    return read_wav(out)


def measure_hit(x):
    peak = max(map(abs, x)) if x else 0.0
    if peak == 0:
        return 0.0, -200.0, 0.0, 0.0
    # 5 ms RMS frames: the decay ends where the level stays 40 dB below the loudest frame.
    frame = RATE // 200
    levels = [math.sqrt(sum(v * v for v in x[i:i + frame]) / frame) for i in range(0, len(x) - frame, frame)]
    loudest = max(levels)
    end = max(i for i, v in enumerate(levels) if v > loudest * 0.01)
    window = x[:RATE // 5]
    energy = sum(v * v for v in window)
    difference = sum((b - a) ** 2 for a, b in zip(window, window[1:]))
    centroid = RATE / (2 * math.pi) * math.sqrt(difference / energy) if energy > 0 else 0.0
    return peak, 20 * math.log10(peak), (end + 1) * 5, centroid


def main():
    renderer = sys.argv[1] if len(sys.argv) > 1 else str(ROOT / "build" / "tools" / "quindrel-render")
    chosen = [int(a) for a in sys.argv[2:]] or list(range(len(generate.kits.KITS)))
    with tempfile.TemporaryDirectory() as folder:
        folder = pathlib.Path(folder)
        bank = folder / "kits.qdprsb"
        bank.write_text(generate.file_texts()["default.qdprsb"], encoding="utf-8")
        hits = folder / "hits.mid"
        write_midi(hits, [(i * HIT_SPACING, key, 127) for i, key in enumerate(drum_keys())])
        stress = folder / "stress.qdptrbH"
        stress.write_text(write_host_bank([STRESS] + [empty_host()] * 95), encoding="utf-8")
        out = folder / "out.wav"

        summary = []
        for k in chosen:
            kit = generate.kits.KITS[k]
            x = render(renderer, bank, k, ["--midi", str(hits), "--sequencer", "off", "--seconds", str(HIT_SPACING * 17)], out)
            print(f"{k:2} {kit.name} - {kit.character}")
            rows = []
            for i, code in enumerate(CODES):
                start = int(i * HIT_SPACING * RATE)
                peak, db, decay, centroid = measure_hit(x[start:start + int(HIT_SPACING * RATE)])
                rows.append((code, db, decay, centroid))
            for a, b in zip(rows[0::2], rows[1::2] + [None]):
                line = f"   {a[0]} {a[1]:6.1f} dB {a[2]:5d} ms {a[3]:6.0f} Hz"
                if b:
                    line += f"      {b[0]} {b[1]:6.1f} dB {b[2]:5d} ms {b[3]:6.0f} Hz"
                print(line)
            grooves = [max(map(abs, render(renderer, bank, k, ["--native-pattern", str(n), "--seconds", "8"], out)))
                       for n in range(1, 13)]
            worst = max(grooves)
            loudest = grooves.index(worst) + 1
            s = max(map(abs, render(renderer, bank, k, ["--patterns", str(stress), "--host-pattern", "12", "--seconds", "8"], out)))
            print(f"   basic patterns peak {20 * math.log10(worst):6.1f} dBFS (pattern {loudest}),"
                  f" overloaded groove peak {20 * math.log10(s):6.1f} dBFS")
            summary.append((k, kit.name, 20 * math.log10(worst), 20 * math.log10(s)))
        print("\nkit  name                        basic   overloaded (dBFS)")
        for k, name, basic, over in summary:
            print(f"{k:3}  {name:<26} {basic:6.1f}   {over:6.1f}")


if __name__ == "__main__":
    main()
