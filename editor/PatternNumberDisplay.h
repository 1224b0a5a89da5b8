#pragma once

#include "editor/GFXAnimation.h"

// One of the four digits of the pattern number: an animation strip whose
// frames are blank, 0 to 9 and, by digit, a few signs. Message thread.
class PatternNumberDisplayDigit : public GFXAnimation
{
public:
    PatternNumberDisplayDigit(const juce::String& name, int frames);

    int getDigitFrames() const { return digitFrames; }
    // What frame n shows, for the drawing without an image.
    virtual juce::String getFrameText(int frame) const;

protected:
    void paintSubstitute(juce::Graphics& g) override;

private:
    const int digitFrames;
};

// "P." after the digits.
class PatternNumberDisplayFirstDigit : public PatternNumberDisplayDigit
{
public:
    PatternNumberDisplayFirstDigit();
    juce::String getFrameText(int frame) const override;
};

// The note letters C D E F G A B and "-" after the digits.
class PatternNumberDisplaySecondDigit : public PatternNumberDisplayDigit
{
public:
    PatternNumberDisplaySecondDigit();
    juce::String getFrameText(int frame) const override;
};

// "#" and "-" after the digits.
class PatternNumberDisplayThirdDigit : public PatternNumberDisplayDigit
{
public:
    PatternNumberDisplayThirdDigit();
    juce::String getFrameText(int frame) const override;
};

// The digits only.
class PatternNumberDisplayFourthDigit : public PatternNumberDisplayDigit
{
public:
    PatternNumberDisplayFourthDigit();
};

// The pattern number in four digits, read three ways: as a MIDI note ("P.",
// "C", "-", "5" for 60: host patterns), as a number (native patterns), or as
// bank and slot ("2", "-", "0", "2" for 14 with 12 slots). Disabled, it shows
// four blanks. Message thread.
class PatternNumberDisplay : public GUIController, public juce::Component
{
public:
    static constexpr int noteMode = 0, numericMode = 1, bankAndSlotMode = 2;

    explicit PatternNumberDisplay(const juce::String& name = {});
    ~PatternNumberDisplay() override;

    juce::Component& getComponent() override { return *this; }
    void loadFromXml(const juce::XmlElement& xml, ParameterManager& parameters, EventMap& events, BasePluginEditor* editor) override;
    void updateFromParameter(Parameter& changed) override;

    void setMode(int newMode);
    int getMode() const { return mode; }
    void setPattern(int newPattern);
    int getPattern() const { return pattern; }
    int getSlotMax() const { return slotMax; }

    PatternNumberDisplayDigit& getDigit(int index) const { return *digits[index]; }

    void enablementChanged() override { refresh(); }

private:
    int clampToMode(int value) const;
    void refresh();

    juce::OwnedArray<PatternNumberDisplayDigit> digits;
    int pattern = 0;
    int notePatternMin = 0, notePatternMax = 127;
    int numericPatternMin = 1, numericPatternMax = 16;
    int bankAndSlotPatternMin = 1, bankAndSlotPatternMax = 96;
    int slotMax = 12;
    int mode = noteMode;
};
