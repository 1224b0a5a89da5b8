// quindrel-render: renders a list of drum hits through the Quindrel engine to a
// 32-bit float WAV file, without a host.

#include "EngineRender.h"

#include <juce_audio_formats/juce_audio_formats.h>
#include <juce_core/juce_core.h>

#include <cmath>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <stdexcept>

namespace
{
constexpr int exitBadInput = 2;
constexpr int exitFailure = 1;

const char* const usage = R"(usage: quindrel-render --output FILE [options] HIT...

  HIT                  INSTRUMENT@SECONDS[:VELOCITY], e.g. BD@0 SD@0.5:0.8
                       INSTRUMENT is a short code (BD SD LC MC HC LT MT HT CL RS
                       MA CP CB LG CY OH CH AC) or an index 0-17; VELOCITY is 0-2,
                       1 by default (a MIDI velocity of 127)
  -o, --output FILE    the WAV file to write (32-bit float, stereo)
  -r, --rate HZ        sample rate, 8000-384000, 44100 by default
  -l, --length SEC     length of the file; by default two seconds after the last hit
  -s, --set ID=VALUE   a parameter of the sound (0-58) to a value 0-1, e.g. 19=0.8;
                       the others keep the plug-in's start values
  -h, --help           this text
)";

struct BadInput : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

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
    return (int)value;
}

quindrelrender::Hit parseHit(const juce::String& text)
{
    if (!text.contains("@"))
        throw BadInput(("a hit needs INSTRUMENT@SECONDS: \"" + text + "\"").toStdString());

    quindrelrender::Hit hit;
    const auto instrument = text.upToFirstOccurrenceOf("@", false, false).trim();
    hit.instrument = quindrelrender::instrumentFromCode(instrument.toUpperCase().toStdString());
    if (hit.instrument < 0 && !instrument.containsOnly("0123456789"))
        throw BadInput(("unknown instrument \"" + instrument + "\" in \"" + text + "\"").toStdString());
    if (hit.instrument < 0)
        hit.instrument = parseWhole(instrument, "instrument", 0, 17);

    const auto timing = text.fromFirstOccurrenceOf("@", false, false);
    hit.seconds = parseNumber(timing.upToFirstOccurrenceOf(":", false, false), "hit time", 0.0, 3600.0);
    if (timing.contains(":"))
        hit.velocity = (float)parseNumber(timing.fromFirstOccurrenceOf(":", false, false), "velocity", 0.0, 2.0);
    return hit;
}

std::pair<int, float> parseSetting(const juce::String& text)
{
    if (!text.contains("="))
        throw BadInput(("a setting needs ID=VALUE: \"" + text + "\"").toStdString());
    return {parseWhole(text.upToFirstOccurrenceOf("=", false, false), "parameter id", 0, quindrelrender::lastEngineParameter),
            (float)parseNumber(text.fromFirstOccurrenceOf("=", false, false), "parameter value", 0.0, 1.0)};
}

struct Options
{
    quindrelrender::Job job;
    juce::File output;
    bool help = false;
};

Options parseArguments(const juce::ArgumentList& args)
{
    Options options;
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
            options.output = juce::File::getCurrentWorkingDirectory().getChildFile(value());
            haveOutput = true;
        }
        else if (name == "--rate" || name == "-r")
            options.job.sampleRate = parseNumber(value(), "sample rate", 8000.0, 384000.0);
        else if (name == "--length" || name == "-l")
            options.job.seconds = parseNumber(value(), "length", 0.001, 3600.0);
        else if (name == "--set" || name == "-s")
            options.job.knobs.push_back(parseSetting(value()));
        else if (arg.isOption())
            throw BadInput(("unknown option " + arg.text).toStdString());
        else
            options.job.hits.push_back(parseHit(arg.text));
    }

    if (options.help)
        return options;
    if (!haveOutput)
        throw BadInput("no output file given (--output FILE)");
    if (options.output.isDirectory() || !options.output.getParentDirectory().isDirectory())
        throw BadInput(("cannot write a file at " + options.output.getFullPathName()).toStdString());
    if (options.job.hits.empty())
        throw BadInput("no hits given");
    return options;
}

// Writes through a temporary file, so that a failed write leaves no partial output.
bool writeWav(const juce::File& file, const std::vector<float>& mix, double sampleRate)
{
    juce::TemporaryFile temporary(file);
    {
        auto stream = temporary.getFile().createOutputStream();
        if (stream == nullptr)
            return false;
        std::unique_ptr<juce::AudioFormatWriter> writer(juce::WavAudioFormat().createWriterFor(stream.get(), sampleRate, 2, 32, {}, 0));
        if (writer == nullptr)
            return false;
        stream.release(); // the writer owns it now

        const float* channels[] = {mix.data(), mix.data()};
        if (!writer->writeFromFloatArrays(channels, 2, (int)mix.size()))
            return false;
    }
    return temporary.overwriteTargetFileWithTemporary();
}
} // namespace

int main(int argc, char* argv[])
{
    Options options;
    try
    {
        options = parseArguments(juce::ArgumentList(argc, argv));
    }
    catch (const BadInput& error)
    {
        std::cerr << "quindrel-render: " << error.what() << "\n\n"
                  << usage;
        return exitBadInput;
    }

    if (options.help)
    {
        std::cout << usage;
        return 0;
    }

    const auto mix = quindrelrender::render(options.job);
    if (!writeWav(options.output, mix, options.job.sampleRate))
    {
        std::cerr << "quindrel-render: could not write " << options.output.getFullPathName() << "\n";
        return exitFailure;
    }

    std::cout << options.output.getFullPathName() << ": " << mix.size() << " frames at " << options.job.sampleRate << " Hz\n";
    return 0;
}
