#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

// The line of text under the panel. Each message has a priority: one of the
// same or higher replaces the current message, a lower one is dropped, and a
// timed one clears itself. In use: 4 panel hints, 5 a value moved by MIDI,
// 6 a value moved by the mouse, 7 MIDI learn. Message thread.
class StatusBar : public juce::Component, private juce::Timer
{
public:
    static constexpr int anyPriority = -1;

    StatusBar();

    void setMessage(const juce::String& text, int newPriority, bool clearFirst = false);
    void setTimedMessage(const juce::String& text, int newPriority, int milliseconds);
    // Ignored below the current priority, unless priority is -1.
    void clear(int clearPriority);

    const juce::String& getMessage() const { return message; }
    int getPriority() const { return priority; }

    void paint(juce::Graphics& g) override;
    void lookAndFeelChanged() override;

private:
    void timerCallback() override { clear(anyPriority); }

    juce::Font font;
    int priority = 0;
    juce::String message;
};
