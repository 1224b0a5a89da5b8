#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

// The one flat grey style of everything on the panel that is not a bitmap:
// windows, tabs, menus, buttons, the status bar and the no-image drawings of
// the controls. Its text is DejaVu Sans Condensed, carried inside the
// plug-in, so that every machine draws the same letters whatever fonts it
// has. One instance per editor, set on the editor so that all its children
// inherit it. Message thread.
class DefaultLookAndFeel : public juce::LookAndFeel_V4
{
public:
    // The colour ids of this program's own components.
    enum ColourIds
    {
        displayBackgroundColourId = 0x1000200,
        displayCaretColourId = 0x1000204,
        windowBackgroundColourId = 0xF001000,
        windowTitleBarColourId = 0xF001001,
        windowTitleTextColourId = 0xF001002,
        windowOutlineColourId = 0xF001003,
        statusBarBackgroundColourId = 0xF004001,
        statusBarTextColourId = 0xF004002
    };

    // The grey levels of the palette, darkest first.
    static constexpr juce::uint32 grey1 = 0xFF444444, grey2 = 0xFF5B5B5B, grey3 = 0xFF6E6E6E, grey4 = 0xFFADADAD,
                                  grey5 = 0xFFC5C5C5, grey6 = 0xFFCCCCCC;

    DefaultLookAndFeel();

    // The panel's font at a height in pixels, from the embedded typeface.
    static juce::Font getPanelFont(float height, bool bold = false);

    virtual juce::Font getStatusBarFont() { return getPanelFont(14.0f); }
    virtual int getStatusBarHeight() { return 20; }

    juce::Typeface::Ptr getTypefaceForFont(const juce::Font& font) override;
    juce::Font getTextButtonFont(juce::TextButton&, int buttonHeight) override;
    juce::Font getLabelFont(juce::Label& label) override;
    juce::Font getComboBoxFont(juce::ComboBox&) override;
    juce::Font getPopupMenuFont() override;
    juce::Font getTabButtonFont(juce::TabBarButton&, float height) override;
    juce::Font getAlertWindowTitleFont() override;
    juce::Font getAlertWindowMessageFont() override;
    juce::Font getAlertWindowFont() override;
    juce::Rectangle<int> getTooltipBounds(const juce::String& tipText, juce::Point<int> screenPos, juce::Rectangle<int> parentArea) override;
    void drawTooltip(juce::Graphics&, const juce::String& text, int width, int height) override;

    // Linear sliders (the bitmap switches) take their whole width or height
    // as the track, so that a click maps straight onto the picture.
    juce::Slider::SliderLayout getSliderLayout(juce::Slider& slider) override;
};
