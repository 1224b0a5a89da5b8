#include "editor/DefaultLookAndFeel.h"

#include "plugin/Resources.h"

namespace
{
// The two embedded faces, made once for the process and kept until JUCE
// shuts down.
class PanelTypefaces : private juce::DeletedAtShutdown
{
public:
    PanelTypefaces()
    {
        regular = load("DejaVuSansCondensed.ttf");
        bold = load("DejaVuSansCondensed-Bold.ttf");
        if (bold == nullptr)
            bold = regular;
    }

    ~PanelTypefaces() override { clearSingletonInstance(); }

    juce::Typeface::Ptr regular, bold;

    JUCE_DECLARE_SINGLETON_SINGLETHREADED_MINIMAL(PanelTypefaces)

private:
    static juce::Typeface::Ptr load(const juce::String& name)
    {
        if (auto data = Resources::loadResourceData(name))
            return juce::Typeface::createSystemTypefaceFor(data->getData(), data->getSize());
        return nullptr;
    }
};

JUCE_IMPLEMENT_SINGLETON(PanelTypefaces)

constexpr float tooltipFontHeight = 13.0f;
constexpr int tooltipMaxWidth = 400;

juce::TextLayout layoutTooltip(const juce::String& text, juce::Colour colour)
{
    juce::AttributedString s;
    s.setJustification(juce::Justification::centred);
    s.append(text, DefaultLookAndFeel::getPanelFont(tooltipFontHeight), colour);

    juce::TextLayout layout;
    layout.createLayoutWithBalancedLineLengths(s, (float) tooltipMaxWidth);
    return layout;
}
} // namespace

DefaultLookAndFeel::DefaultLookAndFeel()
    : juce::LookAndFeel_V4(juce::LookAndFeel_V4::ColourScheme(
          grey5,                 // window background
          grey6,                 // widget background
          grey6,                 // menu background
          grey3,                 // outline
          juce::Colours::black,  // text
          grey4,                 // fill
          juce::Colours::white,  // highlighted text
          grey3,                 // highlighted fill
          juce::Colours::black)) // menu text
{
    setColour(displayBackgroundColourId, juce::Colour(0x00000000));
    setColour(displayCaretColourId, juce::Colour(0x00000000));
    setColour(windowBackgroundColourId, juce::Colour(grey5));
    setColour(windowTitleBarColourId, juce::Colour(grey2));
    setColour(windowTitleTextColourId, juce::Colours::white);
    setColour(windowOutlineColourId, juce::Colour(grey1));
    setColour(statusBarBackgroundColourId, juce::Colour(grey1));
    setColour(statusBarTextColourId, juce::Colours::white);

    setColour(juce::TooltipWindow::backgroundColourId, juce::Colour(grey6));
    setColour(juce::TooltipWindow::textColourId, juce::Colours::black);
    setColour(juce::TooltipWindow::outlineColourId, juce::Colour(grey3));
    setColour(juce::TabbedButtonBar::tabOutlineColourId, juce::Colour(grey3));
    setColour(juce::TabbedButtonBar::frontOutlineColourId, juce::Colour(grey1));
    setColour(juce::TabbedComponent::outlineColourId, juce::Colour(grey3));
    setColour(juce::TextButton::buttonColourId, juce::Colour(grey4));
    setColour(juce::TextButton::buttonOnColourId, juce::Colour(grey3));
    setColour(juce::TextButton::textColourOffId, juce::Colours::black);
    setColour(juce::TextButton::textColourOnId, juce::Colours::white);
    setColour(juce::ScrollBar::thumbColourId, juce::Colour(grey3));
    setColour(juce::ListBox::backgroundColourId, juce::Colours::white);
    setColour(juce::Slider::rotarySliderFillColourId, juce::Colour(grey1));
    setColour(juce::Slider::rotarySliderOutlineColourId, juce::Colour(grey4));
    setColour(juce::Slider::thumbColourId, juce::Colour(grey1));
    setColour(juce::Slider::trackColourId, juce::Colour(grey2));
    setColour(juce::Slider::backgroundColourId, juce::Colour(grey4));
}

juce::Font DefaultLookAndFeel::getPanelFont(float height, bool bold)
{
    auto* faces = PanelTypefaces::getInstance();
    const auto& face = bold ? faces->bold : faces->regular;
    if (face == nullptr)
        return juce::Font(height, bold ? juce::Font::bold : juce::Font::plain);
    return juce::Font(face).withHeight(height);
}

juce::Typeface::Ptr DefaultLookAndFeel::getTypefaceForFont(const juce::Font& font)
{
    const auto name = font.getTypefaceName();
    if (name == juce::Font::getDefaultSansSerifFontName() || name == "Tahoma")
    {
        auto* faces = PanelTypefaces::getInstance();
        if (auto face = font.isBold() ? faces->bold : faces->regular)
            return face;
    }
    return juce::LookAndFeel_V4::getTypefaceForFont(font);
}

juce::Font DefaultLookAndFeel::getTextButtonFont(juce::TextButton&, int buttonHeight)
{
    return getPanelFont(juce::jmin(15.0f, (float) buttonHeight * 0.6f));
}

juce::Font DefaultLookAndFeel::getLabelFont(juce::Label& label)
{
    return getPanelFont(label.getFont().getHeight(), label.getFont().isBold());
}

juce::Font DefaultLookAndFeel::getComboBoxFont(juce::ComboBox& box)
{
    return getPanelFont(juce::jmin(15.0f, (float) box.getHeight() * 0.85f));
}

juce::Font DefaultLookAndFeel::getPopupMenuFont()
{
    return getPanelFont(15.0f);
}

juce::Font DefaultLookAndFeel::getTabButtonFont(juce::TabBarButton&, float height)
{
    return getPanelFont(height * 0.6f);
}

juce::Font DefaultLookAndFeel::getAlertWindowTitleFont()
{
    return getPanelFont(17.0f, true);
}

juce::Font DefaultLookAndFeel::getAlertWindowMessageFont()
{
    return getPanelFont(15.0f);
}

juce::Font DefaultLookAndFeel::getAlertWindowFont()
{
    return getPanelFont(14.0f);
}

juce::Rectangle<int> DefaultLookAndFeel::getTooltipBounds(const juce::String& tipText, juce::Point<int> screenPos, juce::Rectangle<int> parentArea)
{
    const auto layout = layoutTooltip(tipText, juce::Colours::black);
    const int w = (int) (layout.getWidth() + 14.0f);
    const int h = (int) (layout.getHeight() + 6.0f);

    return juce::Rectangle<int>(screenPos.x > parentArea.getCentreX() ? screenPos.x - (w + 12) : screenPos.x + 24,
                                screenPos.y > parentArea.getCentreY() ? screenPos.y - (h + 6) : screenPos.y + 6,
                                w, h)
        .constrainedWithin(parentArea);
}

void DefaultLookAndFeel::drawTooltip(juce::Graphics& g, const juce::String& text, int width, int height)
{
    const juce::Rectangle<int> bounds(width, height);
    g.setColour(findColour(juce::TooltipWindow::backgroundColourId));
    g.fillRect(bounds);
    g.setColour(findColour(juce::TooltipWindow::outlineColourId));
    g.drawRect(bounds);

    layoutTooltip(text, findColour(juce::TooltipWindow::textColourId)).draw(g, bounds.toFloat());
}

juce::Slider::SliderLayout DefaultLookAndFeel::getSliderLayout(juce::Slider& slider)
{
    auto layout = juce::LookAndFeel_V4::getSliderLayout(slider);
    if (slider.getSliderStyle() == juce::Slider::LinearHorizontal || slider.getSliderStyle() == juce::Slider::LinearVertical)
        layout.sliderBounds = slider.getLocalBounds();
    return layout;
}
