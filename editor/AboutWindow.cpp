#include "editor/AboutWindow.h"

#include "editor/DefaultLookAndFeel.h"
#include "plugin/Resources.h"

namespace
{
constexpr int margin = 20;
constexpr int nameHeight = 36;
constexpr int factHeight = 20;
constexpr int labelWidth = 110;
constexpr int captionHeight = 24;
} // namespace

AboutWindow::AboutWindow(const juce::StringPairArray& factsToShow)
    : WindowComponent("About")
    , facts(factsToShow)
{
    credits.setName("Credits");
    credits.setMultiLine(true, true);
    credits.setCaretVisible(false);
    credits.setScrollbarsShown(true);
    credits.setFont(DefaultLookAndFeel::getPanelFont(13.5f));
    credits.setColour(juce::TextEditor::backgroundColourId, juce::Colour(DefaultLookAndFeel::grey6).brighter(0.5f));
    credits.setColour(juce::TextEditor::textColourId, juce::Colours::black);
    credits.setColour(juce::TextEditor::outlineColourId, juce::Colour(DefaultLookAndFeel::grey4));
    credits.setColour(juce::TextEditor::focusedOutlineColourId, juce::Colour(DefaultLookAndFeel::grey3));
    credits.setBorder({ 6, 8, 6, 8 });
    for (const auto& credit : makeCredits())
    {
        if (credit.heading.isNotEmpty())
        {
            credits.setFont(DefaultLookAndFeel::getPanelFont(13.5f, true));
            credits.insertTextAtCaret(credit.heading + "\n");
        }
        credits.setFont(DefaultLookAndFeel::getPanelFont(13.5f));
        credits.insertTextAtCaret(credit.text + "\n\n");
    }
    credits.moveCaretToTop(false);
    credits.setReadOnly(true);
    addAndMakeVisible(credits);

    setSize(width, height);
}

std::vector<AboutWindow::Credit> AboutWindow::makeCredits()
{
    std::vector<Credit> credits;
    credits.push_back({ {}, "This program is built with the following free software. Our thanks go to their authors." });

    credits.push_back({ juce::SystemStats::getJUCEVersion().replace("JUCE v", "JUCE "),
                        "Copyright (c) Raw Material Software Limited. https://juce.com\n"
                        "JUCE is dual-licensed under the GNU General Public License, version 3, and the JUCE commercial licence. "
                        "This build uses the JUCE modules as Debian distributes them (package juce-modules-source), under the "
                        "GNU GPL version 3 (https://www.gnu.org/licenses/gpl-3.0.html); the modules juce_core, juce_events, "
                        "juce_audio_basics and juce_audio_devices are under the ISC licence." });

    credits.push_back({ "VST3 SDK, as part of JUCE",
                        "Copyright (c) Steinberg Media Technologies GmbH. Under the GNU GPL version 3; its base library under "
                        "the BSD 3-clause licence. VST is a registered trademark of Steinberg Media Technologies GmbH." });

    credits.push_back({ "LV2, as part of JUCE",
                        "Copyright (c) Steve Harris, David Robillard and the LV2 contributors. Under the ISC licence." });

    credits.push_back({ "FreeType, libpng, zlib and libjpeg, from the system",
                        "Portions of this software are copyright (c) The FreeType Project (https://freetype.org). "
                        "All rights reserved. libpng and zlib are used under their own permissive licences. "
                        "This software is based in part on the work of the Independent JPEG Group." });

    const auto licence = Resources::loadResourceText("LICENSE-DejaVu.txt").trim();
    credits.push_back({ "DejaVu Sans Condensed, the typeface of every text of the panel and its windows",
                        "Derived from the Bitstream Vera fonts; the DejaVu changes are in the public domain. Its licence:\n\n" + (licence.isNotEmpty() ? licence : juce::String("Bitstream Vera Fonts Copyright, with the Arev Fonts Copyright.")) });
    return credits;
}

void AboutWindow::setFacts(const juce::StringPairArray& newFacts)
{
    facts = newFacts;
    resized();
    repaint();
}

juce::Rectangle<int> AboutWindow::getCreditsArea() const
{
    const int factRows = juce::jmax(0, facts.size() - 1);
    return getClientArea().reduced(margin, margin - 6).withTrimmedTop(nameHeight + factRows * factHeight + 8 + captionHeight);
}

void AboutWindow::paint(juce::Graphics& g)
{
    WindowComponent::paint(g);

    auto area = getClientArea().reduced(margin, margin - 6);
    const auto& keys = facts.getAllKeys();
    if (!keys.isEmpty())
    {
        g.setColour(juce::Colours::black);
        g.setFont(DefaultLookAndFeel::getPanelFont(28.0f, true));
        g.drawText(facts[keys[0]], area.removeFromTop(nameHeight), juce::Justification::centredLeft, true);
    }

    for (int i = 1; i < keys.size(); ++i)
    {
        auto row = area.removeFromTop(factHeight);
        g.setColour(juce::Colour(DefaultLookAndFeel::grey1));
        g.setFont(DefaultLookAndFeel::getPanelFont(14.0f, true));
        g.drawText(keys[i], row.removeFromLeft(labelWidth), juce::Justification::centredLeft, true);
        g.setColour(juce::Colours::black);
        g.setFont(DefaultLookAndFeel::getPanelFont(14.0f));
        g.drawText(facts[keys[i]], row, juce::Justification::centredLeft, true);
    }

    area.removeFromTop(8);
    g.setColour(juce::Colour(DefaultLookAndFeel::grey1));
    g.setFont(DefaultLookAndFeel::getPanelFont(15.0f, true));
    g.drawText("Credits and licences", area.removeFromTop(captionHeight), juce::Justification::centredLeft, true);
}

void AboutWindow::resized()
{
    WindowComponent::resized();
    credits.setBounds(getCreditsArea());
}
