#pragma once

#include "editor/PseudoModalComponent.h"

// The settings window: 800 by 600 inside the panel, one tabbed page for
// each group of settings. The editor classes that own the settings add their
// pages as they are built; the first tab is current once all are in. A page
// that is an OptionsPage shows the plug-in's values afresh whenever the
// window opens and whenever its tab comes to the front. Message thread.
class OptionsWindow : public WindowComponent, private TabbedComponentEx::Listener
{
public:
    static constexpr int width = 800, height = 600;
    static constexpr juce::uint32 tabColour = 0xFFC5C5C5;

    OptionsWindow();
    ~OptionsWindow() override;

    TabbedComponentEx& getTabs() { return tabs; }
    // Adds a tab; the tabs delete an owned page with the window.
    void addPage(const juce::String& name, juce::Component* page, bool owned);
    juce::Component* getPage(const juce::String& name) const;

    void showStateChanged() override;
    void resized() override;

private:
    void tabChanged(TabbedComponentEx&) override;

    TabbedComponentEx tabs;
};
