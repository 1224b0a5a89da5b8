#pragma once

#include "editor/PseudoModalComponent.h"

#include <vector>

// What the program is, which build and formats, and the free software it is
// built with, each with its licence: a window of 640 by 480 inside the panel.
// Message thread.
class AboutWindow : public WindowComponent
{
public:
    static constexpr int width = 640, height = 480;

    // Each line a label and its value; the first value is the product's name.
    explicit AboutWindow(const juce::StringPairArray& facts = {});

    void setFacts(const juce::StringPairArray& newFacts);
    const juce::StringPairArray& getFacts() const { return facts; }
    // One piece of free software this program is built with, and its licence.
    struct Credit
    {
        juce::String heading, text;
    };
    static std::vector<Credit> makeCredits();
    // The credits and licences, as the window shows them.
    juce::String getCredits() const { return credits.getText(); }

    void paint(juce::Graphics& g) override;
    void resized() override;

private:
    juce::Rectangle<int> getCreditsArea() const;

    juce::StringPairArray facts;
    juce::TextEditor credits;
};
