"""Kit data types and the XML writer shared by the factory preset generator and its checker.

A kit is written as the knobs that differ from the panel's start position, grouped by
instrument code: Kit("Name", BD=dict(Level=0.8, Decay=0.9), HH={"Filters Freq": 0.4}).
Names and start values of the 58 sound parameters come from resources/parameters.xml,
so the files always name the parameters as the plug-in does.
"""

import pathlib
import xml.etree.ElementTree as ET
from xml.sax.saxutils import escape

ROOT = pathlib.Path(__file__).resolve().parents[2]
APPLICATION = "Quindrel"
PRESET_PARAMETERS = 58
BANK_SIZE = 128
NAMES = {"BD": "Bass Drum", "SD": "Snare Drum", "LC": "Low Conga", "MC": "Mid Conga",
         "HC": "Hi Conga", "LT": "Low Tom", "MT": "Mid Tom", "HT": "Hi Tom", "CL": "Claves",
         "RS": "Rim Shot", "MA": "Maracas", "CP": "Hand Clap", "CB": "Cow Bell",
         "LG": "Laser Gun", "CY": "Cymbal", "OH": "Open Hi Hat", "CH": "Closed Hi Hat",
         "AC": "Accent", "HH": "Hi Hat"}


class KitError(ValueError):
    pass


def table():
    """(name, start value) of parameters 0 to 57, in order of id."""
    root = ET.parse(ROOT / "resources" / "parameters.xml").getroot()
    rows = {int(p.get("index")): (p.get("name"), float(p.get("value"))) for p in root.iter("param")}
    return [rows[i] for i in range(PRESET_PARAMETERS)]


class Kit:
    def __init__(self, name, character="", **instruments):
        self.name, self.character = name, character
        names = [n for n, _ in table()]
        self.settings = {}
        for code, knobs in instruments.items():
            if code not in NAMES:
                raise KitError(f"{name}: unknown instrument {code}")
            for knob, value in knobs.items():
                parameter = f"{NAMES[code]} {knob}"
                if parameter not in names:
                    raise KitError(f"{name}: no parameter {parameter!r}")
                if not 0 <= value <= 1:
                    raise KitError(f"{name}: {parameter} = {value} is outside 0 to 1")
                self.settings[parameter] = value

    def values(self):
        return [self.settings.get(n, start) for n, start in table()]


def number(x):
    """A value as the plug-in writes it: rounded to six decimals with ties to even, and
    written with just those digits, at least one after the point."""
    text = "%.6f" % (round(x * 1000000) / 1000000)
    while text.endswith("0") and not text.endswith(".0"):
        text = text[:-1]
    return text


def attr(text):
    return escape(text, {'"': "&quot;"})


def _preset_lines(name, values, indent):
    lines = [f'{indent}<Preset application="{APPLICATION}" name="{attr(name)}">']
    for (parameter, _), value in zip(table(), values):
        lines.append(f'{indent}  <param name="{attr(parameter)}" value="{number(value)}"/>')
    lines.append(f"{indent}</Preset>")
    return lines


HEADER = '<?xml version="1.0" encoding="UTF-8"?>\n\n'


def write_preset(name, values):
    return HEADER + "\n".join(_preset_lines(name, values, "")) + "\n"


def write_bank(bank_name, groups, default_values):
    """groups: (group name, [(preset name, values)]); the bank is filled up to 128 with
    presets "Preset n" of the default values in a last group "Not used"."""
    lines = [f'<PresetBank name="{attr(bank_name)}">']
    used = 0
    for group_name, presets in groups:
        lines.append(f'  <PresetGroup name="{attr(group_name)}">')
        for name, values in presets:
            lines += _preset_lines(name, values, "    ")
        lines.append("  </PresetGroup>")
        used += len(presets)
    if used > BANK_SIZE:
        raise KitError(f"{used} presets in a bank of {BANK_SIZE}")
    if used < BANK_SIZE:
        lines.append('  <PresetGroup name="Not used">')
        for n in range(used, BANK_SIZE):
            lines += _preset_lines(f"Preset {n}", default_values, "    ")
        lines.append("  </PresetGroup>")
    lines.append("</PresetBank>")
    return HEADER + "\n".join(lines) + "\n"
