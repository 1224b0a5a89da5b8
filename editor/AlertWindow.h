#pragma once

#include "editor/PseudoModalComponent.h"

namespace K44
{
// A question inside the panel: a message and a row of buttons. A click on a
// button closes it and tells the caller which one it was. Message thread.
class AlertWindow : public WindowComponent
{
public:
    class Caller
    {
    public:
        virtual ~Caller() = default;
        virtual void alertWindowClosed(AlertWindow&, int result) = 0;
    };

    AlertWindow(const juce::String& title, const juce::String& message, Caller* caller);

    // Appends a button as wide as its text, and lays out the row again.
    void addButton(const juce::String& text, int result);
    int getNumButtons() const { return buttons.size(); }
    TextButtonEx* getButton(int index) const { return buttons[index]; }
    const juce::String& getMessage() const { return message; }

    void paint(juce::Graphics& g) override;
    void resized() override;

private:
    void buttonPressed(int index);
    juce::Font getFont() const;

    juce::String message;
    Caller* caller;
    juce::OwnedArray<TextButtonEx> buttons;
    juce::Array<int> results;
};
} // namespace K44
