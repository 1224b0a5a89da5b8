#include "RenderOptions.h"

#include "plugin/DrumMachine.h"

#include <cmath>

const char* const renderUsage = R"(usage: quindrel-render [options] -o OUT.wav
       quindrel-render [options] --snapshot PANEL.png

Plays Quindrel as a host would, with no window, and writes what it gives back.

  -o, --output FILE        the WAV file to write (32-bit float)
  --midi IN.mid            MIDI input, each event at its exact sample
  --seconds S              length; by default the MIDI file's length and two
                           seconds, or 8 seconds (four bars at 120 BPM)
  --rate SR                sample rate, 48000 by default
  --block N                block size, 512 by default
  --tempo BPM              the host's tempo, 120 by default
  --no-transport           no play head at all
  --outputs stereo|mono    the twelve outputs as pairs or single channels;
                           by default as the settings say (stereo)
  --all-outputs            write every output channel, not only the first output
  --sequencer on|off       the internal sequencer; off makes MIDI notes play the
                           instruments by the drum map. Off by default with
                           --midi and no pattern option, on otherwise
  --patterns FILE          load a pattern bank (.qdptrbH, .qdptrbN or an older
                           form) into the store its type names; repeatable
  --native-pattern N       choose native pattern N (1-12 basic, 13-16 intro or
                           fill-in) as the panel's step button N does
  --host-pattern KEY       play the host pattern of MIDI key KEY (12-107) from
                           the start, as a note-on at sample 0 would
  --ccmap FILE             load a MIDI control map before rendering
  --settings FILE          read the user settings from FILE (never written);
                           by default the built-in defaults
  --script FILE            timed user actions, one a line, fields separated by
                           tabs: "SECONDS event EVENT NAME", "SECONDS param
                           PARAMETER NAME NORMALISED VALUE" or, with the panel
                           open, "SECONDS click COMPONENT NAME" (a window's
                           button, tab or list row), each applied at the
                           start of the block that holds its time ('#' starts
                           a comment); the length covers the last line
  --random-seed N          seed the randomizer with N (1-4294967295) instead of
                           the clock, so that a scripted render repeats
  --state FILE             give the plug-in a saved state (XML, or the binary
                           block a host stores) before anything else, as a host
                           reopening a song does; the state's sequencer modes
                           hold unless --sequencer is given
  --save-state FILE        write the plug-in's state after rendering, as XML
  --save-settings FILE     write the user settings the plug-in would keep
  --preset-bank FILE       load a preset bank (.qdprsb, or the older .qdb) as
                           the browser's bank "Load" does
  --preset-file FILE       load a preset (.qdprs or .qdp) into the current
                           preset and apply it
  --preset N               choose preset N (0-127) as a program change at
                           sample 0 does
  --save-preset-bank FILE  write the preset bank after rendering
  --list-presets           print the bank's groups and presets and the
                           current preset, and render nothing (no -o needed)
  --midi-out OUT.mid       write the MIDI the plug-in generates
  --events-out OUT.tsv     write each generated MIDI event as a line
                           "sample<TAB>status<TAB>data1<TAB>data2"
  --snapshot FILE.png      open the panel for the whole render, as a host with
                           its window open, and write a picture of it at the
                           end; script events then act as clicks on the panel
  --skin DIR               take skin.xml and its images from DIR instead of
                           the built-in ones
  -h, --help               this text
)";

namespace
{
double parseNumber(const juce::String& text, const juce::String& what, double low, double high)
{
    const auto utf8 = text.trim().toStdString();
    char* end = nullptr;
    const double value = std::strtod(utf8.c_str(), &end);
    if (utf8.empty() || end != utf8.c_str() + utf8.size() || !std::isfinite(value))
        throw BadInput((what + " is not a number: \"" + text + "\"").toStdString());
    if (value < low || value > high)
        throw BadInput((what + " " + text + " is outside " + juce::String(low) + " to " + juce::String(high)).toStdString());
    return value;
}

int parseWhole(const juce::String& text, const juce::String& what, int low, int high)
{
    const double value = parseNumber(text, what, low, high);
    if (value != std::floor(value))
        throw BadInput((what + " must be a whole number: \"" + text + "\"").toStdString());
    return (int) value;
}

juce::File inputFile(const juce::String& path, const juce::String& what)
{
    const auto file = juce::File::getCurrentWorkingDirectory().getChildFile(path);
    if (!file.existsAsFile())
        throw BadFile((what + " not found: " + file.getFullPathName()).toStdString());
    if (file.createInputStream() == nullptr)
        throw BadFile((what + " cannot be read: " + file.getFullPathName()).toStdString());
    return file;
}

juce::File outputFile(const juce::String& path)
{
    const auto file = juce::File::getCurrentWorkingDirectory().getChildFile(path);
    if (file.isDirectory() || !file.getParentDirectory().isDirectory())
        throw BadFile(("cannot write a file at " + file.getFullPathName()).toStdString());
    return file;
}
} // namespace

RenderOptions parseRenderOptions(const juce::ArgumentList& args)
{
    RenderOptions options;
    bool haveOutput = false;

    for (int i = 0; i < args.size(); ++i)
    {
        const auto& arg = args[i];
        const bool inlineValue = arg.isLongOption() && arg.text.contains("=");
        const auto name = inlineValue ? arg.text.upToFirstOccurrenceOf("=", false, false) : arg.text;
        auto value = [&]() -> juce::String
        {
            if (inlineValue)
                return arg.text.fromFirstOccurrenceOf("=", false, false);
            if (i + 1 >= args.size())
                throw BadInput((name + " needs a value").toStdString());
            return args[++i].text;
        };

        if (name == "--help" || name == "-h")
            options.help = true;
        else if (name == "--output" || name == "-o")
        {
            options.output = outputFile(value());
            haveOutput = true;
        }
        else if (name == "--midi")
            options.midiIn = inputFile(value(), "MIDI file");
        else if (name == "--seconds")
            options.seconds = parseNumber(value(), "length in seconds", 0.001, 3600.0);
        else if (name == "--rate")
            options.sampleRate = parseNumber(value(), "sample rate", 8000.0, 384000.0);
        else if (name == "--block")
            options.blockSize = parseWhole(value(), "block size", 1, 65536);
        else if (name == "--tempo")
            options.tempo = parseNumber(value(), "tempo", 1.0, 999.0);
        else if (name == "--no-transport")
            options.transport = false;
        else if (name == "--outputs")
        {
            const auto type = value();
            if (type == "stereo")
                options.outputType = DrumMachine::stereoOutputs;
            else if (type == "mono")
                options.outputType = DrumMachine::monoOutputs;
            else
                throw BadInput(("--outputs takes stereo or mono, not \"" + type + "\"").toStdString());
        }
        else if (name == "--all-outputs")
            options.allOutputs = true;
        else if (name == "--sequencer")
        {
            const auto state = value();
            if (state != "on" && state != "off")
                throw BadInput(("--sequencer takes on or off, not \"" + state + "\"").toStdString());
            options.sequencer = state == "on";
        }
        else if (name == "--patterns")
            options.patternBanks.add(inputFile(value(), "pattern bank"));
        else if (name == "--native-pattern")
            options.nativePattern = parseWhole(value(), "native pattern", 1, 16);
        else if (name == "--host-pattern")
            options.hostPatternKey = parseWhole(value(), "host pattern key", 12, 107);
        else if (name == "--ccmap")
            options.controlMap = inputFile(value(), "MIDI control map");
        else if (name == "--settings")
            options.settings = inputFile(value(), "settings file");
        else if (name == "--script")
            options.script = inputFile(value(), "script");
        else if (name == "--random-seed")
        {
            const auto text = value();
            const double seed = parseNumber(text, "random seed", 1.0, 4294967295.0);
            if (seed != std::floor(seed))
                throw BadInput(("random seed must be a whole number: \"" + text + "\"").toStdString());
            options.randomSeed = (juce::uint32) seed;
        }
        else if (name == "--preset-bank")
            options.presetBank = inputFile(value(), "preset bank");
        else if (name == "--preset-file")
            options.presetFile = inputFile(value(), "preset file");
        else if (name == "--preset")
            options.preset = parseWhole(value(), "preset", 0, 127);
        else if (name == "--save-preset-bank")
            options.savePresetBank = outputFile(value());
        else if (name == "--list-presets")
            options.listPresets = true;
        else if (name == "--state")
            options.state = inputFile(value(), "state file");
        else if (name == "--save-state")
            options.saveState = outputFile(value());
        else if (name == "--save-settings")
            options.saveSettings = outputFile(value());
        else if (name == "--midi-out")
            options.midiOut = outputFile(value());
        else if (name == "--events-out")
            options.eventsOut = outputFile(value());
        else if (name == "--snapshot")
        {
            options.snapshot = outputFile(value());
            if (!options.snapshot.hasFileExtension("png"))
                throw BadInput(("--snapshot writes a .png file, not " + options.snapshot.getFileName()).toStdString());
        }
        else if (name == "--skin")
        {
            options.skinDirectory = juce::File::getCurrentWorkingDirectory().getChildFile(value());
            if (!options.skinDirectory.isDirectory())
                throw BadInput(("skin folder not found: " + options.skinDirectory.getFullPathName()).toStdString());
            const auto skinFile = options.skinDirectory.getChildFile("skin.xml");
            if (!skinFile.existsAsFile())
                throw BadInput(("no skin.xml in " + options.skinDirectory.getFullPathName()).toStdString());
            juce::XmlDocument document(skinFile);
            const auto root = document.getDocumentElement();
            if (root == nullptr)
                throw BadInput((skinFile.getFullPathName() + " is not XML: " + document.getLastParseError()).toStdString());
            if (!root->hasTagName("PluginEditor"))
                throw BadInput((skinFile.getFullPathName() + " has the root " + root->getTagName() + ", not PluginEditor").toStdString());
        }
        else if (arg.isOption())
            throw BadInput(("unknown option " + arg.text).toStdString());
        else
            throw BadInput(("unexpected argument \"" + arg.text + "\"").toStdString());
    }

    if (!options.help && !options.listPresets && !haveOutput && options.snapshot == juce::File())
        throw BadInput("no output file given (-o OUT.wav or --snapshot PANEL.png)");
    return options;
}
