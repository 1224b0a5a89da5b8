"""The native bank: twelve basic patterns (A, and a busier or contrasting B for a chorus) and
four intro / fill-in patterns.

A fill-in replaces one whole pass of the basic pattern, so the fills last whole 4/4 bars:
sixteen sixteenths, twelve triplet eighths, or half a bar of groove followed by a half-bar
thirty-second roll (a part at scale 8); only the long intro takes two bars. Fills keep a middle
tempo because under internal sync a fill plays at its own tempo.
"""

from banklib import NativePattern, Part, Variation

FILL_TEMPO = 120

BASIC = [
    NativePattern(
        "Rock",
        Variation(120, Part(
            BD="O... .... o.o. ....",
            SD=".... O... .... O...",
            CH="O.o. O.o. O.o. O.o.")),
        # Chorus: loose open hat on the beat, crash into the first bar of the phrase.
        Variation(120, Part(
            BD="O... ..o. O.o. ....",
            SD=".... O... .... O...",
            CY="o... .... .... ....",
            OH="O... o... o... o...",
            CH="..o. ..o. ..o. ..o.",
            AC="O... .... .... ...."), Part(
            BD="O... ..o. O.o. ...o",
            SD=".... O... .... O.o.",
            OH="o... o... o... o...",
            CH="..o. ..o. ..o. ..o."))),
    NativePattern(
        "Pop",
        Variation(116, Part(
            BD="O... .... O.o. ....",
            SD=".... O... .... O...",
            CH="o.o. o.o. o.o. o.o."), Part(
            BD="O... .... O.o. ..o.",
            SD=".... O... .... O...",
            OH=".... .... .... ..o.",
            CH="o.o. o.o. o.o. o...")),
        Variation(116, Part(
            BD="O... ..o. O.o. ....",
            SD=".... O... .... O...",
            CP=".... o... .... o...",
            CH="o.oo o.oo o.oo o.oo"), Part(
            BD="O... ..o. O.o. ..o.",
            SD=".... O... .... O..o",
            CP=".... o... .... o...",
            OH=".... .... .... ..o.",
            CH="o.oo o.oo o.oo o..."))),
    NativePattern(
        "Disco",
        Variation(120, Part(
            BD="O... o... O... o...",
            SD=".... O... .... O...",
            OH="..o. ..o. ..o. ..o.",
            CH="o... o... o... o...")),
        Variation(120, Part(
            BD="O... o... O... o...",
            SD=".... O... .... O...",
            CP=".... o... .... o...",
            OH="..o. ..o. ..o. ..o.",
            CH="oo.o oo.o oo.o oo.o"), Part(
            BD="O... o... O... o...",
            SD=".... O... .... O...",
            MT=".... .... .... ..o.",
            LT=".... .... .... ...o",
            CP=".... o... .... o...",
            OH="..o. ..o. ..o. ....",
            CH="oo.o oo.o oo.o oo.o"))),
    NativePattern(
        "Funk",
        Variation(104, Part(
            BD="O.o. ...o ..o. ....",
            SD=".... O... .o.o O..o",
            OH=".... .... .... ..o.",
            CH="OoOo OoOo OoOo Oo.o"), Part(
            BD="O.o. ...o ..o. .o..",
            SD=".... O... .o.. O...",
            CH="OoOo OoOo OoOo OoOo")),
        # More ghost notes, an open hat on the "and" of two and a push onto its last sixteenth.
        Variation(104, Part(
            BD="O.o. ...o ..o. ..o.",
            SD=".o.. O..o .o.o O..o",
            OH=".... ..o. .... ..o.",
            CH="OoOo Oo.o OoOo Oo.o",
            AC=".... ...O .... ...."), Part(
            BD="O.o. ...o ..o. ...o",
            SD=".o.. O..o .o.o O.oO",
            OH=".... ..o. .... ....",
            CH="OoOo Oo.o OoOo Oo.."))),
    NativePattern(
        "Hip-Hop",
        Variation(92, Part(
            BD="O..o .... ..o. ....",
            SD=".... O... .... O...",
            CH="o.o. o.oo o.o. o.oo"), shuffle=0.25),
        Variation(92, Part(
            BD="O..o .... ..o. .o..",
            SD=".... O... .... O...",
            RS=".... .... ...o ....",
            CP=".... O... .... O...",
            CH="o.oo o.oo o.oo o.oo"), Part(
            BD="O..o .... o.o. ..o.",
            SD=".... O... .... O...",
            CP=".... O... .... O...",
            OH=".... .... .... ..o.",
            CH="o.oo o.oo o.oo o..."), shuffle=0.25)),
    NativePattern(
        "Electro",
        Variation(124, Part(
            BD="O... ..o. ..o. ....",
            CP=".... O... .... O...",
            CH="o.oo o.oo o.oo o.oo")),
        Variation(124, Part(
            BD="O... ..o. ..o. ....",
            SD=".... O... .... O...",
            LC=".... .... .... .o..",
            HC="..o. .... .o.. ....",
            CP=".... O... .... O...",
            CB="..o. ..o. ..o. ....",
            CH="o.oo o.oo o.oo o.oo"), Part(
            BD="O... ..o. ..o. ..o.",
            SD=".... O... .... O..o",
            CP=".... O... .... O...",
            LG=".... .... .... .o..",
            OH=".... .... .... ..o.",
            CH="o.oo o.oo o.oo o..."))),
    NativePattern(
        "House",
        Variation(124, Part(
            BD="O... o... O... o...",
            CP=".... O... .... O...",
            OH="..o. ..o. ..o. ..o.",
            CH="o..o o..o o..o o..o")),
        Variation(124, Part(
            BD="O... o... O... o...",
            HC=".... ...o .... ..o.",
            RS="...o ..o. .... .o..",
            CP=".... O... .... O...",
            OH="..o. ..o. ..o. ..o.",
            CH="oo.o oo.o oo.o oo.o"))),
    NativePattern(
        "Reggae",
        # One drop: nothing on one, kick and rim shot together on three.
        Variation(76, Part(scale=3,
            BD="... ... O.. ...",
            RS="... ... O.. ...",
            CH="o.o o.o o.o o.o",
            AC="... ... O.. ...")),
        # Steppers: the kick on every beat, a triplet tom run closing the second bar.
        Variation(76, Part(scale=3,
            BD="O.. O.. O.. O..",
            RS="... ... O.. ...",
            CH="o.o o.o o.o ooo",
            AC="... ... O.. ..."), Part(scale=3,
            BD="O.. O.. O.. O..",
            LT="... ... ... ..o",
            MT="... ... ... .o.",
            HT="... ... ... o..",
            RS="... ... O.. ...",
            CH="o.o o.o o.o ...",
            AC="... ... O.. ..."))),
    NativePattern(
        "Shuffle",
        Variation(120, Part(scale=3,
            BD="O.. ... O.. ..o",
            SD="... O.. ..o O..",
            CH="O.o O.o O.o O.o")),
        # Both hands shuffle, snare under the hat, and the kick on all four beats.
        Variation(120, Part(scale=3,
            BD="O.. o.. O.. o..",
            SD="..o O.o ..o O.o",
            OH="O.. ... ... ...",
            CH="..o O.o O.o O.o"))),
    NativePattern(
        "Swing",
        Variation(144, Part(scale=3,
            BD="o.. o.. o.. o..",
            CY="O.. o.o O.. o.o",
            CH="... o.. ... o..")),
        # Snare comping over two bars, a dropped bomb at the end of the phrase.
        Variation(144, Part(scale=3,
            BD="o.. o.. o.. o..",
            SD="... ..o ... ..o",
            CY="O.. o.o O.. o.o",
            CH="... o.. ... o.."), Part(scale=3,
            BD="o.. o.. o.. o.O",
            SD="..o ... ..o ...",
            CY="O.. o.o O.. o.o",
            CH="... o.. ... o..",
            AC="... ... ... ..O"))),
    NativePattern(
        "Bossa Nova",
        # Sixteen eighth notes of cut time: the tempo is the half-note pulse.
        Variation(68, Part(
            BD="O..o o..o O..o o..o",
            RS="O..o ..o. ..o. .o..",
            CH="oooo oooo oooo oooo")),
        Variation(68, Part(
            BD="O..o o..o O..o o..o",
            LC=".... ...o .... ...o",
            MC=".... ..o. .... ..o.",
            RS="O..o ..o. ..o. .o..",
            MA="oooo oooo oooo oooo",
            CH="O.o. O.o. O.o. O.o."))),
    NativePattern(
        "Salsa",
        # Three-two son clave over sixteen eighth notes, conga tumbao and anticipated bass.
        Variation(96, Part(
            BD="...o ..o. ...o ..o.",
            LC=".... ...o .... ...o",
            MC=".... ..o. .... ..o.",
            HC="..O. .... ..O. ....",
            CL="O..o ..o. ..o. o...",
            MA="o.oo o.oo o.oo o.oo")),
        # Mambo section: the big bell takes over from the guiro.
        Variation(96, Part(
            BD="...o ..o. ...o ..o.",
            LC=".... ...o .... ...o",
            MC=".... ..o. .... ..o.",
            HC="..O. .... ..O. ....",
            CL="O..o ..o. ..o. o...",
            CB="O.oo O.o. O.oo O.o."))),
]

FILLS = [
    NativePattern(
        "Intro",
        # Count-in on the sticks.
        Variation(FILL_TEMPO, Part(
            CL="O... o... o... o...")),
        # Count-in, then a bar that builds from eighths to sixteenths on the snare.
        Variation(FILL_TEMPO, Part(
            CL="O... o... o... o..."), Part(
            BD="o... o... o... o...",
            SD="o.o. o.o. oooo OOOO",
            AC=".... .... .... O.O."))),
    NativePattern(
        "Tom Fill",
        Variation(FILL_TEMPO, Part(
            BD="O... .... o... ....",
            SD=".... O... .... ....",
            LT=".... .... .... ..Oo",
            MT=".... .... .... Oo..",
            HT=".... .... OoOo ....",
            CH="o.o. o.o. .... ....")),
        # A whole bar of triplets round the kit, for the shuffles and swing as well.
        Variation(FILL_TEMPO, Part(scale=3,
            BD="O.. ... O.. ..o",
            SD="Ooo ... ... ...",
            LT="... ... ... Ooo",
            MT="... ... Ooo ...",
            HT="... Ooo ... ...",
            AC="... ... ... O.."))),
    NativePattern(
        "Snare Fill",
        Variation(FILL_TEMPO, Part(
            BD="O... .... O... ....",
            SD=".... O... oooo OOOO",
            CH="o.o. o.o. .... ....",
            AC=".... .... .... O...")),
        # Two beats of time, then two beats of thirty-seconds.
        Variation(FILL_TEMPO, Part(
            BD="O... o...",
            SD=".... O...",
            CH="o.o. o.o."), Part(scale=8,
            BD="o... .... o... ....",
            SD="oooo oooo OOOO OOOO",
            AC=".... .... .... O..."))),
    NativePattern(
        "Break",
        # Band stop: one hit on the downbeat, silence, a pickup back in.
        Variation(FILL_TEMPO, Part(
            BD="O... .... .... ....",
            SD=".... .... .... .ooO",
            CY="O... .... .... ....",
            AC="O... .... .... ....")),
        # Three stabs, then the toms down the kit.
        Variation(FILL_TEMPO, Part(
            BD="O..O ..O. .... ..o.",
            LT=".... .... .... Oo..",
            MT=".... .... ..Oo ....",
            HT=".... .... Oo.. ....",
            CP="O..O ..O. .... ....",
            CY="O... .... .... ....",
            AC="O..O ..O. .... ...."))),
]

PATTERNS = BASIC + FILLS
