"""Pattern data types and the XML writer shared by the factory bank generator and its checker.

Patterns are written in a drummer's shorthand: one string per track, one character per step
("." off, "o" on, "O" strong), with spaces allowed between beats for readability.
"""

from xml.sax.saxutils import escape

APPLICATION = "Quindrel"
TRACKS = ("BD", "SD", "LC", "MC", "HC", "LT", "MT", "HT", "CL", "RS",
          "MA", "CP", "CB", "LG", "CY", "OH", "CH", "AC")
VALID_SCALES = (3, 4, 6, 8)
HOST_COUNT = 96
NATIVE_COUNT = 16


class PatternError(ValueError):
    pass


def _steps(code, text):
    steps = text.replace(" ", "")
    if any(c not in ".oO" for c in steps):
        raise PatternError(f"{code}: unexpected character in {text!r}")
    if code == "AC" and "o" in steps:
        raise PatternError("AC: write accents as 'O'")
    return steps


class Part:
    """One bar (or part of a bar) of steps: what a host pattern or a native part holds."""

    def __init__(self, scale=4, length=None, **tracks):
        unknown = set(tracks) - set(TRACKS)
        if unknown:
            raise PatternError(f"unknown tracks {sorted(unknown)}")
        steps = {code: _steps(code, text) for code, text in tracks.items()}
        lengths = {len(s) for s in steps.values()}
        if length is None:
            if len(lengths) != 1:
                raise PatternError(f"tracks of different lengths {sorted(lengths)}")
            length = lengths.pop()
        elif lengths and lengths != {length}:
            raise PatternError(f"tracks of lengths {sorted(lengths)} in a part of length {length}")
        if scale not in VALID_SCALES:
            raise PatternError(f"scale {scale}")
        self.scale = scale
        self.length = length
        self.tracks = {code: steps.get(code, "." * length) for code in TRACKS}
        self._check_hats()

    def _check_hats(self):
        # A closed hat chokes an open one struck with it, so the open one would never be heard.
        for i, (oh, ch) in enumerate(zip(self.tracks["OH"], self.tracks["CH"])):
            if oh != "." and ch != ".":
                raise PatternError(f"open and closed hi hat together on step {i + 1}")

    @staticmethod
    def empty():
        return Part(scale=4, length=0)


class HostPattern:
    def __init__(self, name, tempo, part, shuffle=0):
        self.name, self.tempo, self.shuffle, self.part = name, tempo, shuffle, part


def host(name, tempo, scale=4, shuffle=0, **tracks):
    return HostPattern(name, tempo, Part(scale=scale, **tracks), shuffle)


def empty_host():
    return HostPattern("Empty", 120, Part(scale=4, length=16), 0)


class Variation:
    def __init__(self, tempo, part1, part2=None, shuffle=0):
        self.tempo, self.shuffle = tempo, shuffle
        self.parts = (part1, part2 if part2 is not None else Part.empty())


class NativePattern:
    def __init__(self, name, a, b):
        self.name, self.variations = name, (a, b)


def attr(text):
    return escape(text, {'"': "&quot;"})


def number(x):
    """Tempo and shuffle as a person would write them: "120", "96.5", "0.333"."""
    return "%g" % x


def _track_lines(part, indent):
    lines = []
    for code in TRACKS:
        text = part.tracks[code]
        lines.append(f"{indent}<{code}>{text}</{code}>" if text else f"{indent}<{code}/>")
    return lines


def write_host_bank(patterns):
    lines = ['<?xml version="1.0" encoding="UTF-8"?>', "", '<PatternBank type="hostPattern">']
    for p in patterns:
        lines.append(f'  <Pattern application="{APPLICATION}" name="{attr(p.name)}" type="hostPattern"'
                     f' length="{p.part.length}" scale="{p.part.scale}"'
                     f' shuffle="{number(p.shuffle)}" tempo="{number(p.tempo)}">')
        lines += _track_lines(p.part, "    ")
        lines.append("  </Pattern>")
    lines.append("</PatternBank>")
    return "\n".join(lines) + "\n"


def write_native_bank(patterns):
    lines = ['<?xml version="1.0" encoding="UTF-8"?>', "", '<PatternBank type="nativePattern">']
    for p in patterns:
        lines.append(f'  <Pattern application="{APPLICATION}" name="{attr(p.name)}" type="nativePattern">')
        for tag, v in zip(("VariationA", "VariationB"), p.variations):
            lines.append(f'    <{tag} shuffle="{number(v.shuffle)}" tempo="{number(v.tempo)}">')
            for ptag, part in zip(("Part1", "Part2"), v.parts):
                lines.append(f'      <{ptag} length="{part.length}" scale="{part.scale}">')
                lines += _track_lines(part, "        ")
                lines.append(f"      </{ptag}>")
            lines.append(f"    </{tag}>")
        lines.append("  </Pattern>")
    lines.append("</PatternBank>")
    return "\n".join(lines) + "\n"

