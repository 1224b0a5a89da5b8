#include "PanelLayout.h"

#include "parameters/InstrumentNames.h"

#include <deque>

namespace PanelArt
{
juce::Colour displayBackground() { return juce::Colour(0xff120e0a); }
juce::Colour displayInk() { return juce::Colour(0xffffa640); }

float switchAngle(int position, int positions)
{
    constexpr float span = 4.18879f; // 240 degrees
    return positions < 2 ? 0.0f : -span / 2 + span * (float) position / (float) (positions - 1);
}

namespace
{
// The state colours: the only saturated colours of the panel.
const juce::Colour muteRed(0xffe5483b);
const juce::Colour soloYellow(0xffe8c33a);
const juce::Colour selectBlue(0xff5cb6f0);
const juce::Colour triggerGreen(0xff63e06a);
const juce::Colour modeAmber(0xffffa23a);
const juce::Colour stepColours[4] = { juce::Colour(0xffe8613c), juce::Colour(0xffeda23a), juce::Colour(0xffe8d25a), juce::Colour(0xff8fc8e8) };

// The grid of the instrument strips.
constexpr int stripPitch = 48;
constexpr int stripLeft = 12;
constexpr int accentGap = 12;
constexpr int stripTop = 54;
constexpr int nameTop = 56;
constexpr int knobTop = 84;
constexpr int knobPitch = 45;
constexpr int levelTop = 222;
constexpr int outTop = 269;
constexpr int muteTop = 289;
constexpr int selectTop = 309;
constexpr int stripBottom = 328;
constexpr int accentTop = levelTop - 32;
constexpr int knobSize = 36;
constexpr int closedHiHat = 16; // the hi-hat filter stands between it and the open hat

// The pattern section and the row of steps.
constexpr int patternTop = 332;
constexpr int rowBTop = 406;
constexpr int patternBottom = 464;
constexpr int stepTop = 468;

int stripX(int track)
{
    return stripLeft + stripPitch * track + (track == accentTrack ? accentGap : 0);
}

// The name plate: two short lines fit a strip where one long line would not.
const char* const plateLines[trackCount][2] = {
    { "BASS", "DRUM" }, { "SNARE", "DRUM" }, { "LOW", "CONGA" }, { "MID", "CONGA" }, { "HI", "CONGA" }, { "LOW", "TOM" }, { "MID", "TOM" }, { "HI", "TOM" }, { "CLAVES", "" }, { "RIM", "SHOT" }, { "MARACAS", "" }, { "HAND", "CLAP" }, { "COW", "BELL" }, { "LASER", "GUN" }, { "CYMBAL", "" }, { "OPEN", "HI HAT" }, { "CLOSED", "HI HAT" }, { "ACCENT", "" }
};

// The sound knobs of each instrument. A word's row is its role, so that
// pitch, decay and the third control line up across the strips.
const char* const soundKnobs[instrumentCount][3] = {
    { "Tone", "Decay", "Sweep" }, { "Tone", "Decay", "Snappy" }, { "Tunning", "Decay", nullptr }, { "Tunning", "Decay", nullptr }, { "Tunning", "Decay", nullptr }, { "Tunning", "Decay", "Snappy" }, { "Tunning", "Decay", "Snappy" }, { "Tunning", "Decay", "Snappy" }, { "Tunning", "Decay", nullptr }, { "Tunning", "Decay", nullptr }, { "Tone", nullptr, nullptr }, { "Tone", "Reverb", nullptr }, { "Tunning", "Decay", nullptr }, { "Depth", "Decay", "Sweep" }, { "Tone", "Decay", nullptr }, { "Tone", "Decay", nullptr }, { "Tone", "Decay", nullptr }
};

// The instrument families share a plate.
const int familyStarts[] = { 0, 1, 2, 5, 8, 9, 10, 11, 12, 13, 14, 15, 17, 18 };

juce::String knobCaption(const juce::String& word)
{
    return word == "Tunning" ? juce::String("TUNING") : word.toUpperCase();
}

class Builder
{
public:
    Layout layout;
    std::deque<Control> controls; // references stay valid while the table grows

    Control& add(const juce::String& type, const juce::String& name, juce::Rectangle<int> bounds, Look look, int frames)
    {
        Control c;
        c.type = type;
        c.name = name;
        c.bounds = bounds;
        c.look = look;
        c.frames = frames;
        // The repository keeps "part" and a digit apart in file names: PartOneButton.png.
        c.resource = name.replace("Part1", "PartOne").replace("Part2", "PartTwo") + ".png";
        controls.push_back(c);
        return controls.back();
    }

    Control& knob(const juce::String& name, juce::Point<int> at, const juce::String& link, Look look = Look::SoundKnob)
    {
        const int size = look == Look::BigKnob ? 40 : knobSize;
        auto& c = add("Knob", name, { at.x, at.y, size, size }, look, 31);
        c.link = link;
        return c;
    }

    // A two-state button that fires on press: mute, solo, select, modes.
    Control& toggle(const juce::String& name, juce::Rectangle<int> bounds, Look look, const juce::String& link, const juce::String& onClick, juce::Colour colour, const juce::String& caption)
    {
        auto& c = add("MultiStateButton", name, bounds, look, 2);
        c.attributes = { { "states", "2" }, { "style", "2D" }, { "clickEvent", "onPress" } };
        c.link = link;
        c.onClick = onClick;
        c.colour = colour;
        c.caption = caption;
        return c;
    }

    // A two-state button in 3D: it sinks while held.
    Control& latch(const juce::String& name, juce::Rectangle<int> bounds, const juce::String& link, const juce::String& onClick, const juce::String& clickEvent, const juce::String& caption)
    {
        auto& c = add("MultiStateButton", name, bounds, Look::LatchButton, 4);
        c.attributes = { { "states", "2" }, { "style", "3D" }, { "clickEvent", clickEvent } };
        c.link = link;
        c.onClick = onClick;
        c.colour = modeAmber;
        c.caption = caption;
        return c;
    }

    Control& push(const juce::String& name, juce::Rectangle<int> bounds, const juce::String& onClick, const juce::String& onCtrl, const juce::String& caption, bool onPress = false, bool repeat = false)
    {
        auto& c = add("Button", name, bounds, Look::PushButton, 2);
        if (onPress)
            c.attributes.push_back({ "clickEvent", "onPress" });
        if (repeat)
            c.attributes.push_back({ "autorepeat", "yes" });
        c.onClick = onClick;
        c.onClickWithCtrl = onCtrl;
        c.caption = caption;
        return c;
    }

    Control& lamp(const juce::String& name, juce::Rectangle<int> bounds, const juce::String& link, juce::Colour colour)
    {
        auto& c = add("Animation", name, bounds, Look::Led, 2);
        c.link = link;
        c.colour = colour;
        return c;
    }

    void label(const juce::String& text, int x, int baseline, Label::Style style = Label::knob, juce::Justification j = juce::Justification::horizontallyCentred)
    {
        layout.labels.push_back({ text, x, baseline, j, style });
    }

    // A label centred under a control.
    void labelUnder(const Control& c, const juce::String& text, int gap = 7)
    {
        label(text, c.bounds.getCentreX(), c.bounds.getBottom() + gap);
    }

    void plate(juce::Rectangle<int> area, const juce::String& title = {}, int headerHeight = 0)
    {
        layout.plates.push_back({ area, title, headerHeight });
    }

    void window(juce::Rectangle<int> area) { layout.windows.push_back({ area }); }
};

void addStrips(Builder& b)
{
    for (int f = 0; f + 1 < (int) std::size(familyStarts); ++f)
    {
        const int first = familyStarts[f], last = familyStarts[f + 1] - 1;
        const int left = stripX(first);
        const int right = stripX(last) + stripPitch;
        // The accent plate starts lower: the master section stands above it.
        const int top = first == accentTrack ? accentTop : stripTop;
        b.plate({ left + 1, top, right - left - 2, stripBottom - top }, {}, first == accentTrack ? 32 : knobTop - 1 - stripTop);

        for (int t = first + 1; t <= last; ++t)
        {
            const auto x = (float) stripX(t) - 0.5f;
            // The hi-hat filter knob bridges its two strips: no line through it.
            const float gapTop = t == closedHiHat ? (float) (knobTop + 2 * knobPitch - 2) : 0.0f;
            const float gapBottom = t == closedHiHat ? (float) (levelTop - 4) : 0.0f;
            if (gapTop > 0)
            {
                b.layout.dividers.push_back({ { x, (float) stripTop + 6, x, gapTop } });
                b.layout.dividers.push_back({ { x, gapBottom, x, (float) stripBottom - 6 } });
            }
            else
                b.layout.dividers.push_back({ { x, (float) stripTop + 6, x, (float) stripBottom - 6 } });
        }
    }

    const int master = stripX(accentTrack);
    b.plate({ master + 1, stripTop, stripPitch - 2, accentTop - 4 - stripTop });
    b.label("MASTER", master + stripPitch / 2, stripTop + 14, Label::title);
    auto& volume = b.knob("MainVolumeKnob", { master + 4, stripTop + 22 }, "Main Volume", Look::BigKnob);
    b.labelUnder(volume, "VOLUME");

    for (int t = 0; t < trackCount; ++t)
    {
        const int x = stripX(t);
        const juce::String name = instrumentNames[t];
        const auto token = name.removeCharacters(" "); // "Bass Drum" is BassDrum on the panel
        const int plateTop = t == accentTrack ? accentTop + 2 : nameTop;

        auto& plate = b.toggle(token + "ActivityLed", { x + 3, plateTop, 42, 26 }, Look::NameLight, {}, "Select " + name, triggerGreen, plateLines[t][0]);
        plate.subCaption = plateLines[t][1];

        if (t < instrumentCount)
        {
            for (int row = 0; row < 3; ++row)
            {
                if (soundKnobs[t][row] == nullptr)
                    continue;
                const juce::String word = soundKnobs[t][row];
                auto& k = b.knob(token + word + "Knob", { x + 6, knobTop + knobPitch * row }, name + " " + word);
                b.labelUnder(k, knobCaption(word));
            }
        }

        // Level and randomizer threshold share one image and one place; the
        // lamp beside the caption tells which of them the knob is.
        auto& level = b.knob(token + "LevelKnob", { x + 6, levelTop }, name + " Level", Look::LevelKnob);
        b.label("LEVEL", x + 20, levelTop + knobSize + 7);
        auto& threshold = b.knob(token + "RandThresholdKnob", { x + 6, levelTop }, name + " Rand Threshold", Look::LevelKnob);
        threshold.resource = level.resource;
        b.lamp(token + "LevelModeLed", { x + 35, levelTop + knobSize - 1, 9, 9 }, name + " Rand State", modeAmber);

        if (t < instrumentCount)
        {
            auto& out = b.add("NumericDisplay", token + "OutNumDisplay", { x + 26, outTop + 2, 18, 13 }, Look::Digits, 11);
            out.attributes = { { "digitsNum", "2" }, { "firstDigitOrder", "10" }, { "minValue", "1" }, { "maxValue", "12" }, { "control", "continous" } };
            out.link = name + " Output Number";
            out.digits = { { "OutputDigits.png", 9, 13, 11, 0, false } };
            out.resource = {};
            b.window({ x + 24, outTop, 22, 17 });
            b.label("OUT", x + 4, outTop + 12, Label::knob, juce::Justification::left);

            b.toggle(token + "MuteButton", { x + 3, muteTop, 20, 17 }, Look::StripButton, name + " Mute", "Toggle " + name + " Mute", muteRed, "M")
                .onClickWithCtrl = "Inverse " + name + " Mute";
            b.toggle(token + "SoloButton", { x + 25, muteTop, 20, 17 }, Look::StripButton, name + " Solo", "Toggle " + name + " Solo", soloYellow, "S")
                .onClickWithCtrl = "Inverse " + name + " Solo";
        }

        b.toggle(token + "SelectButton", { x + 3, selectTop, 42, 17 }, Look::StripButton, name + " Selection", "Select " + name, selectBlue, "SELECT")
            .onClickWithCtrl = "Toggle " + name + " Selection";
    }

    // The hi-hat filter acts on both hats: it sits across their two strips.
    auto& hh = b.knob("HHFiltersFreqKnob", { stripX(closedHiHat) - knobSize / 2, knobTop + 2 * knobPitch }, "Hi Hat Filters Freq");
    b.labelUnder(hh, "HH FILTER");
}

void addTopBar(Builder& b)
{
    b.label("QUINDREL", 18, 29, Label::logo, juce::Justification::left);
    b.label("ANALOGUE DRUM SYNTHESIZER", 19, 42, Label::tagline, juce::Justification::left);

    constexpr int y = 17, h = 22;
    // Groups spread along the bar; the options sit over the master column.
    constexpr int presetX = 188, sequencerX = 516, midiX = 720;
    b.label("PRESET", presetX, 12, Label::title, juce::Justification::left);
    b.push("PrevPresetButton", { presetX, y, 22, h }, "Select previous preset", "Copy current preset", "<", false, true);
    b.window({ presetX + 26, y, 180, h });
    auto& preset = b.add("Display", "PresetNameDisplay", { presetX + 29, y + 3, 174, 16 }, Look::TextDisplay, 0);
    preset.link = "Current Preset Name";
    preset.resource = "Fonts.png";
    b.push("NextPresetButton", { presetX + 210, y, 22, h }, "Select next preset", "Paste copied preset", ">", false, true);
    b.push("BrowsePresetButton", { presetX + 236, y, 52, h }, "Browse presets", "Store current preset", "BROWSE");

    b.label("SEQUENCER", sequencerX, 12, Label::title, juce::Justification::left);
    b.toggle("IntSeqButton", { sequencerX, y, 52, h }, Look::LedButton, "Internal Sequencer State", "Toggle Internal Sequencer", modeAmber, "INT SEQ");
    b.toggle("IntSyncButton", { sequencerX + 56, y, 52, h }, Look::LedButton, "Internal Sync State", "Toggle Internal Sync", modeAmber, "SYNC");
    b.toggle("HostModeButton", { sequencerX + 112, y, 52, h }, Look::LedButton, "Host Mode State", "Toggle Host Mode", modeAmber, "HOST");

    b.label("MIDI", midiX, 12, Label::title, juce::Justification::left);
    b.toggle("MidiLearnButton", { midiX, y, 52, h }, Look::LedButton, {}, "Toggle Midi Learn", muteRed, "LEARN");
    b.lamp("MidiActivityLed", { midiX + 57, y + 6, 10, 10 }, {}, triggerGreen);

    b.push("OptionsButton", { stripX(accentTrack), y, 48, h }, "Options", "About", "OPTIONS");
}

void addPatternSection(Builder& b)
{
    // Row A: what plays, how fast, and which variation.
    constexpr int top = patternTop;
    constexpr int height = rowBTop - 4 - patternTop;

    b.plate({ 13, top, 262, height }, "PATTERN");
    b.window({ 20, top + 16, 246, 44 });
    auto& number = b.add("PatternNumberDisplay", "PatternNumberDisplay", { 26, top + 21, 110, 34 }, Look::PatternDigits, 0);
    number.link = "Pattern Number";
    number.resource = {};
    number.digits = { { "PatternDigit1.png", 27, 34, 12, 1, false },
                      { "PatternDigit2.png", 29, 34, 19, 2, false },
                      { "PatternDigit3.png", 28, 34, 13, 3, false },
                      { "PatternDigit4.png", 26, 34, 11, 0, false } };
    auto& name = b.add("Display", "PatternNameDisplay", { 142, top + 30, 118, 16 }, Look::TextDisplay, 0);
    name.link = "Pattern Name";
    name.resource = "Fonts.png";

    b.plate({ 279, top, 222, height }, "TEMPO");
    b.window({ 286, top + 16, 108, 44 });
    auto& tempo = b.add("NumericDisplay", "TempoDisplay", { 292, top + 21, 96, 34 }, Look::Digits, 11);
    tempo.attributes = { { "digitsNum", "4" }, { "firstDigitOrder", "100" }, { "minValue", "30" }, { "maxValue", "300" } };
    tempo.link = "Pattern Tempo";
    tempo.resource = {};
    for (int i = 0; i < 4; ++i)
        tempo.digits.push_back({ "TempoDigit" + juce::String(i + 1) + ".png", 24, 34, 11, 0, i == 2 });
    auto& tk = b.knob("TempoKnob", { 404, top + 14 }, "Pattern Tempo", Look::BigKnob);
    b.labelUnder(tk, "BPM", 8);
    auto& sk = b.knob("ShuffleKnob", { 452, top + 14 }, "Pattern Shuffle", Look::BigKnob);
    b.labelUnder(sk, "SHUFFLE", 8);

    // Variations and parts, what they play and how a run moves through them.
    b.plate({ 505, top, 382, height });
    constexpr int titleLine = top + 12;
    constexpr int lampTop = top + 18;
    constexpr int by = top + 32;
    auto pair = [&](const char* title, int x, const char* first, const char* second, const juce::String& stem, const juce::String& word, const char* lampStem)
    {
        b.label(title, x + 35, titleLine, Label::title);
        const juce::String names[2] = { first, second };
        for (int i = 0; i < 2; ++i)
        {
            const auto id = word + " " + names[i];
            auto& button = b.latch(stem + names[i] + "Button", { x + 38 * i, by, 32, 22 }, id + " Edition State", "Select " + id, "onPress", names[i]);
            b.lamp(lampStem + names[i] + "Led", { button.bounds.getCentreX() - 5, lampTop, 10, 10 }, id + " Playing State", triggerGreen);
        }
    };
    pair("VARIATION", 516, "A", "B", "Variation", "Variation", "BasicVariation");
    pair("PART", 608, "1", "2", "Part", "Part", "PattPart");

    auto& basic = b.add("Switch", "BasicVariationSwitch", { 700, by + 4, 54, 16 }, Look::SlideSwitch, 3);
    basic.attributes = { { "style", "Horizontal" } };
    basic.link = "Basic Variation Mode";
    b.label("BASIC", basic.bounds.getCentreX(), titleLine, Label::title);
    b.label("A", basic.bounds.getX() + 8, by - 1, Label::small);
    b.label("AB", basic.bounds.getCentreX(), by - 1, Label::small);
    b.label("B", basic.bounds.getRight() - 8, by - 1, Label::small);

    auto& fill = b.add("Switch", "IntroFillInVariationSwitch", { 776, by + 4, 36, 16 }, Look::SlideSwitch, 2);
    fill.attributes = { { "style", "Horizontal" } };
    fill.link = "Intro/Fill In Variation Mode";
    b.label("FILL", fill.bounds.getCentreX(), titleLine, Label::title);
    b.label("A", fill.bounds.getX() + 8, by - 1, Label::small);
    b.label("B", fill.bounds.getRight() - 8, by - 1, Label::small);

    auto& autoFill = b.add("Switch", "MeasuresAutoFillInKnob", { 834, top + 26, 36, 36 }, Look::FillSwitch, 6);
    autoFill.attributes = { { "style", "Rotary" } };
    autoFill.link = "Auto Fill In";
    b.label("AUTO FILL", autoFill.bounds.getCentreX(), titleLine, Label::title);
    const char* const fillCaptions[] = { "MAN", "16", "12", "8", "4", "2" };
    const auto centre = autoFill.bounds.getCentre().toFloat();
    for (int p = 0; p < 6; ++p)
    {
        const float a = switchAngle(p, 6);
        const float r = p == 0 ? 30.0f : 26.0f;
        b.label(fillCaptions[p], juce::roundToInt(centre.x + r * std::sin(a)), juce::roundToInt(centre.y - r * std::cos(a)) + 4, Label::small);
    }

    // Row B: editing, in the order a pattern is made.
    constexpr int y = rowBTop + 20;
    constexpr int w = 46, h = 26, gap = 4, groupGap = 14;
    int x = 20;
    auto next = [&](int groupStart = 0)
    {
        const int at = x + groupStart;
        x = at + w + gap;
        return juce::Rectangle<int>(at, y, w, h);
    };

    b.plate({ 13, rowBTop, 874, patternBottom - rowBTop });
    b.label("PREV / NEXT", 20 + w + gap / 2, rowBTop + 12, Label::title);
    b.push("PattPrevButton", next(), "Prev", "Load Patterns", "<", false, true);
    b.push("PattNextButton", next(), "Next", "Save Patterns", ">", false, true);

    b.label("EDIT", x + groupGap + w + w / 2 + gap, rowBTop + 12, Label::title);
    b.latch("PattWriteModeButton", next(groupGap), "Write Mode State", "Toggle Pattern Write Mode", "onRelease", "WRITE");
    b.latch("PattAutoFollowButton", next(), "Auto Follow State", "Toggle Auto Follow Mode", "onRelease", "FOLLOW");
    b.latch("PattLengthButton", next(), "Length Mode State", "Toggle Length Mode", "onRelease", "LENGTH");

    b.label("RANDOMIZER", x + groupGap + w + gap / 2, rowBTop + 12, Label::title);
    b.latch("PattRandModeButton", next(groupGap), "Randomizer State", "Toggle Randomizer", "onRelease", "RANDOM");
    b.push("PattRandUndoButton", next(), "Undo", {}, "UNDO");

    b.label("SHIFT", x + groupGap + w + gap / 2, rowBTop + 12, Label::title);
    b.push("PattShiftLeftButton", next(groupGap), "Shift Left", {}, "<", true, true);
    b.push("PattShiftRightButton", next(), "Shift Right", {}, ">", true, true);

    b.label("TRACKS", x + groupGap + w + w / 2 + gap, rowBTop + 12, Label::title);
    b.push("PattCopyButton", next(groupGap), "Copy Tracks", "Copy Pattern", "COPY");
    b.push("PattPasteButton", next(), "Paste", {}, "PASTE");
    b.push("PattClearButton", next(), "Clear", "Clear All Instruments", "CLEAR");

    b.label("STEP LENGTH", x + groupGap + 2 * w + gap + gap / 2, rowBTop + 12, Label::title);
    const char* const scaleCaptions[] = { "1/8T", "1/16T", "1/16", "1/32" };
    const char* const scaleSteps[] = { "3", "6", "4", "8" };
    for (int i = 0; i < 4; ++i)
    {
        const juce::String spb = juce::String(scaleSteps[i]) + " SPB";
        b.toggle("PattScale" + juce::String(i + 1) + "Button", next(i == 0 ? groupGap : 0), Look::LedButton, "Pattern Scale " + spb + " State", "Select Scale " + spb, modeAmber, scaleCaptions[i]);
    }
}

void addSteps(Builder& b)
{
    constexpr int keyW = 38, keyH = 48, gap = 4, groupGap = 16, transportGap = 18;
    constexpr int keyTop = stepTop + 18;
    constexpr int width = 3 * keyW + 2 * gap + transportGap + 16 * keyW + 12 * gap + 3 * groupGap;
    b.plate({ 13, stepTop, 874, panelHeight - 3 - stepTop });

    int x = 13 + (874 - width) / 2;
    const char* const transport[3][4] = { { "StartButton", "Start", "", "START" },
                                          { "StopButton", "Stop", "", "STOP" },
                                          { "TapButton", "Tap/IntroSet/FillInTrigger/Accept", "Tap Accented", "TAP" } };
    for (auto& t : transport)
    {
        b.push(t[0], { x, keyTop, keyW, keyH }, t[1], t[2], t[3]).look = Look::TransportKey;
        x += keyW + gap;
    }

    x += transportGap - gap;
    int groupLeft[4] = {};
    for (int s = 0; s < 16; ++s)
    {
        if (s > 0 && s % 4 == 0)
            x += groupGap - gap;
        if (s % 4 == 0)
            groupLeft[s / 4] = x;
        const auto nn = juce::String(s + 1).paddedLeft('0', 2);
        auto& key = b.add("MultiStateButton", "Step" + nn + "Button", { x, keyTop, keyW, keyH }, Look::StepKey, 6);
        key.attributes = { { "states", "3" }, { "style", "3D" }, { "clickEvent", "onRelease" } };
        key.link = "Step " + nn + " State";
        key.onClick = "Press Step " + nn;
        key.colour = stepColours[s / 4];
        b.lamp("Step" + nn + "Led", { x + keyW / 2 - 4, stepTop + 6, 8, 8 }, "Step " + nn + " Length State", stepColours[s / 4]);
        b.label(juce::String(s + 1), x + keyW / 2, keyTop + keyH + 11, Label::small);
        x += keyW + gap;
    }

    // In native play the keys choose the basic pattern and the intro or fill-in.
    const int ruleY = keyTop + keyH + 15;
    const int basicRight = groupLeft[3] - groupGap;
    auto bracket = [&](int left, int right)
    {
        const auto l = (float) left + 0.5f, r = (float) right - 0.5f, y = (float) ruleY + 0.5f;
        b.layout.rules.push_back({ { l, y, r, y } });
        b.layout.rules.push_back({ { l, y - 3.0f, l, y } });
        b.layout.rules.push_back({ { r, y - 3.0f, r, y } });
    };
    bracket(groupLeft[0], basicRight);
    bracket(groupLeft[3], x - gap);
    b.label("BASIC PATTERN", (groupLeft[0] + basicRight) / 2, ruleY + 11, Label::title);
    b.label("INTRO / FILL IN", (groupLeft[3] + x - gap) / 2, ruleY + 11, Label::title);
}
} // namespace

Layout buildLayout()
{
    Builder b;
    addTopBar(b);
    addStrips(b);
    addPatternSection(b);
    addSteps(b);
    b.layout.controls.assign(b.controls.begin(), b.controls.end());
    return std::move(b.layout);
}
} // namespace PanelArt
