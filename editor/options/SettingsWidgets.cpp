#include "editor/options/SettingsWidgets.h"

#include "editor/DefaultLookAndFeel.h"

namespace SettingsLayout
{
juce::Font textFont()
{
    return DefaultLookAndFeel::getPanelFont(15.0f);
}

juce::Font titleFont()
{
    return DefaultLookAndFeel::getPanelFont(15.0f, true);
}

juce::Font noteFont()
{
    return DefaultLookAndFeel::getPanelFont(13.5f);
}
} // namespace SettingsLayout

using namespace SettingsLayout;

namespace
{
constexpr int markSize = 13;
constexpr int indent = 22;

// The tail of a path that fits the width, behind "...".
juce::String fitPath(const juce::String& path, const juce::Font& font, int width)
{
    if (font.getStringWidth(path) <= width)
        return path;
    for (int start = 1; start < path.length(); ++start)
    {
        const auto tail = "..." + path.substring(start);
        if (font.getStringWidth(tail) <= width)
            return tail;
    }
    return "...";
}
} // namespace

//==============================================================================
ChoiceButton::ChoiceButton(const juce::String& text)
    : juce::ToggleButton(text)
{
    setWantsKeyboardFocus(false);
}

void ChoiceButton::paintButton(juce::Graphics& g, bool highlighted, bool)
{
    const float alpha = isEnabled() ? 1.0f : 0.45f;
    const auto mark = juce::Rectangle<float>(2.0f, ((float) getHeight() - markSize) * 0.5f, (float) markSize, (float) markSize);
    const bool round = getRadioGroupId() != 0;

    g.setColour(juce::Colours::white.withMultipliedAlpha(alpha));
    if (round)
        g.fillEllipse(mark);
    else
        g.fillRect(mark);
    g.setColour(juce::Colour(highlighted && isEnabled() ? DefaultLookAndFeel::grey1 : DefaultLookAndFeel::grey3).withMultipliedAlpha(alpha));
    if (round)
        g.drawEllipse(mark.reduced(0.5f), 1.0f);
    else
        g.drawRect(mark, 1.0f);

    if (getToggleState())
    {
        g.setColour(juce::Colour(DefaultLookAndFeel::grey1).withMultipliedAlpha(alpha));
        if (round)
        {
            g.fillEllipse(mark.reduced(3.5f));
        }
        else
        {
            juce::Path tick;
            tick.startNewSubPath(mark.getX() + 3.0f, mark.getCentreY());
            tick.lineTo(mark.getX() + 5.5f, mark.getBottom() - 3.0f);
            tick.lineTo(mark.getRight() - 2.5f, mark.getY() + 3.0f);
            g.strokePath(tick, juce::PathStrokeType(2.0f));
        }
    }

    g.setColour(juce::Colours::black.withMultipliedAlpha(alpha));
    g.setFont(textFont());
    g.drawText(getButtonText(), getLocalBounds().withTrimmedLeft(markSize + 8), juce::Justification::centredLeft, true);
}

//==============================================================================
PanelComponent::PanelComponent(const juce::String& titleToShow)
    : title(titleToShow)
{
}

void PanelComponent::paintFrame(juce::Graphics& g, const juce::Component& component, const juce::String& title)
{
    const float alpha = component.isEnabled() ? 1.0f : 0.5f;
    const auto frame = component.getLocalBounds().toFloat().reduced(0.5f).withTrimmedTop((float) titleHeight * 0.5f);
    g.setColour(juce::Colour(DefaultLookAndFeel::grey4).withMultipliedAlpha(alpha));
    g.drawRoundedRectangle(frame, 4.0f, 1.0f);

    if (title.isEmpty())
        return;

    // The title sits on the frame's top line, with the window's colour behind it.
    const auto font = titleFont();
    const int width = juce::jmin(component.getWidth() - 24, font.getStringWidth(title) + 10);
    const juce::Rectangle<int> label(8, 0, width, titleHeight);
    g.setColour(component.findColour(DefaultLookAndFeel::windowBackgroundColourId));
    g.fillRect(label);
    g.setColour(juce::Colour(DefaultLookAndFeel::grey1).withMultipliedAlpha(alpha));
    g.setFont(font);
    g.drawText(title, label, juce::Justification::centred, true);
}

juce::Rectangle<int> PanelComponent::contentAreaOf(juce::Rectangle<int> bounds)
{
    return bounds.withTrimmedTop(titleHeight + 2).reduced(margin, 0).withTrimmedBottom(margin - 2);
}

int PanelComponent::heightFor(int contentHeight)
{
    return titleHeight + 2 + contentHeight + margin - 2;
}

void PanelComponent::paint(juce::Graphics& g)
{
    paintFrame(g, *this, title);
}

//==============================================================================
ComponentRow::ComponentRow(int gapToUse)
    : gap(gapToUse)
{
}

void ComponentRow::addItem(juce::Component& item, int width)
{
    items.add({ &item, width });
    addAndMakeVisible(item);
    resized();
}

void ComponentRow::resized()
{
    int fixed = 0, shared = 0;
    for (const auto& item : items)
    {
        fixed += item.width;
        shared += item.width == 0 ? 1 : 0;
    }
    const int spare = juce::jmax(0, getWidth() - fixed - gap * juce::jmax(0, items.size() - 1));

    int x = 0;
    for (const auto& item : items)
    {
        const int width = item.width > 0 ? item.width : spare / juce::jmax(1, shared);
        item.component->setBounds(x, 0, width, getHeight());
        x += width + gap;
    }
}

//==============================================================================
SettingsLabel::SettingsLabel(const juce::String& text, bool note)
    : juce::Label({}, text)
{
    setFont(note ? noteFont() : textFont());
    setColour(juce::Label::textColourId, note ? juce::Colour(DefaultLookAndFeel::grey1) : juce::Colours::black);
    setBorderSize({ 0, 2, 0, 2 });
    setJustificationType(note ? juce::Justification::topLeft : juce::Justification::centredLeft);
    setMinimumHorizontalScale(1.0f);
    setInterceptsMouseClicks(false, false);
}

//==============================================================================
RadioButtons::RadioButtons(const juce::String& titleToShow, const juce::StringArray& choices)
    : title(titleToShow)
{
    for (const auto& choice : choices)
    {
        auto* button = buttons.add(new ChoiceButton(choice));
        button->setRadioGroupId(1);
        button->setClickingTogglesState(true);
        button->addListener(this);
        addAndMakeVisible(button);
    }
}

void RadioButtons::setSelectedIndex(int index, bool notify)
{
    if (!juce::isPositiveAndBelow(index, buttons.size()))
        index = -1;

    for (int i = 0; i < buttons.size(); ++i)
        buttons[i]->setToggleState(i == index, juce::dontSendNotification);

    if (index != selected)
    {
        selected = index;
        selectionChanged(notify);
    }
}

void RadioButtons::selectionChanged(bool notify)
{
    if (notify)
        listeners.call([this](Listener& l)
                       { l.radioButtonsChanged(*this, selected); });
}

void RadioButtons::buttonClicked(juce::Button* button)
{
    const int index = buttons.indexOf(static_cast<ChoiceButton*>(button));
    if (index >= 0 && button->getToggleState())
        setSelectedIndex(index, true);
}

int RadioButtons::getPreferredHeight() const
{
    return PanelComponent::heightFor(buttons.size() * rowHeight);
}

void RadioButtons::paint(juce::Graphics& g)
{
    PanelComponent::paintFrame(g, *this, title);
}

void RadioButtons::resized()
{
    auto area = PanelComponent::contentAreaOf(getLocalBounds());
    for (auto* button : buttons)
        button->setBounds(area.removeFromTop(rowHeight));
}

//==============================================================================
CheckBox::CheckBox(const juce::String& text)
    : button(text)
{
    button.setClickingTogglesState(true);
    button.addListener(this);
    addAndMakeVisible(button);
}

void CheckBox::setChecked(bool shouldBeChecked, bool notify)
{
    if (shouldBeChecked == isChecked())
        return;
    button.setToggleState(shouldBeChecked, juce::dontSendNotification);
    if (notify)
        listeners.call([this](Listener& l)
                       { l.checkBoxChanged(*this); });
}

void CheckBox::buttonClicked(juce::Button*)
{
    listeners.call([this](Listener& l)
                   { l.checkBoxChanged(*this); });
}

void CheckBox::resized()
{
    button.setBounds(getLocalBounds());
}

//==============================================================================
PathComponent::PathComponent(const juce::String& wildcardToUse)
    : wildcard(wildcardToUse)
{
    browseButton.setName("Browse");
    browseButton.onClick = [this]
    { buttonClicked(&browseButton); };
    addAndMakeVisible(browseButton);
}

void PathComponent::setPath(const juce::String& newPath, bool notify)
{
    if (newPath == path)
        return;
    path = newPath;
    repaint();
    if (notify)
        listeners.call([this](Listener& l)
                       { l.pathChanged(*this); });
}

void PathComponent::browse()
{
    const juce::File current(juce::File::isAbsolutePath(path) ? path : juce::String());
    const auto start = current.existsAsFile() ? current : juce::File::getSpecialLocation(juce::File::userHomeDirectory);
    FileChoosers::launch(chooser, *this, FileChoosers::Mode::load, "Browse", start, wildcard,
                         [this](const juce::File& file)
                         { choose(file); });
}

void PathComponent::choose(const juce::File& file)
{
    if (file != juce::File())
        setPath(file.getFullPathName(), true);
}

void PathComponent::buttonClicked(juce::Button* button)
{
    if (button == &browseButton && isEnabled())
        browse();
}

void PathComponent::paint(juce::Graphics& g)
{
    const auto field = getLocalBounds().withTrimmedRight(browseButton.getWidth() + 4);
    const float alpha = isEnabled() ? 1.0f : 0.5f;
    g.setColour(juce::Colour(DefaultLookAndFeel::grey6).brighter(0.4f).withMultipliedAlpha(alpha));
    g.fillRect(field);
    g.setColour(juce::Colour(DefaultLookAndFeel::grey4).withMultipliedAlpha(alpha));
    g.drawRect(field);

    const auto font = noteFont();
    g.setFont(font);
    const auto text = field.reduced(5, 0);
    if (path.isEmpty())
    {
        g.setColour(juce::Colour(DefaultLookAndFeel::grey3).withMultipliedAlpha(alpha));
        g.drawText("no file chosen", text, juce::Justification::centredLeft, true);
    }
    else
    {
        g.setColour(juce::Colours::black.withMultipliedAlpha(alpha));
        g.drawText(fitPath(path, font, text.getWidth()), text, juce::Justification::centredLeft, false);
    }
}

void PathComponent::resized()
{
    browseButton.setBounds(getWidth() - 40, 0, 40, getHeight());
}

//==============================================================================
DefaultResourcesRadioButtons::DefaultResourcesRadioButtons(const juce::String& title, const juce::StringArray& choices,
                                                           const juce::String& wildcard, const juce::String& hintNameToUse)
    : RadioButtons(title, choices)
    , pathComponent(wildcard)
    , hintName(hintNameToUse)
{
    pathComponent.addListener(this);
    pathComponent.setEnabled(false);
    addAndMakeVisible(pathComponent);
}

void DefaultResourcesRadioButtons::setResource(int index, const juce::String& path)
{
    pathComponent.setPath(path, false);
    setSelectedIndex(index, false);
    pathComponent.setEnabled(isUserDefined());
}

void DefaultResourcesRadioButtons::selectionChanged(bool notify)
{
    pathComponent.setEnabled(isUserDefined());
    RadioButtons::selectionChanged(notify);
    if (notify)
        resourceListeners.call([this](Listener& l)
                               { l.defaultResourcesChanged(*this); });
}

void DefaultResourcesRadioButtons::pathChanged(PathComponent&)
{
    resourceListeners.call([this](Listener& l)
                           { l.defaultResourcesChanged(*this); });
}

int DefaultResourcesRadioButtons::getPreferredHeight() const
{
    return RadioButtons::getPreferredHeight() + rowHeight + 2;
}

void DefaultResourcesRadioButtons::resized()
{
    RadioButtons::resized();
    auto area = PanelComponent::contentAreaOf(getLocalBounds());
    pathComponent.setBounds(area.removeFromBottom(rowHeight).withTrimmedLeft(indent));
}

//==============================================================================
DefaultResourceCheckBox::DefaultResourceCheckBox(const juce::String& text, const juce::String& wildcard, const juce::String& hintNameToUse)
    : checkBox(text)
    , pathComponent(wildcard)
    , hintName(hintNameToUse)
{
    checkBox.addListener(this);
    pathComponent.addListener(this);
    pathComponent.setEnabled(false);
    addAndMakeVisible(checkBox);
    addAndMakeVisible(pathComponent);
}

void DefaultResourceCheckBox::setResource(bool checked, const juce::String& path)
{
    checkBox.setChecked(checked, false);
    pathComponent.setPath(path, false);
    pathComponent.setEnabled(checked);
}

void DefaultResourceCheckBox::checkBoxChanged(CheckBox&)
{
    pathComponent.setEnabled(isChecked());
    listeners.call([this](Listener& l)
                   { l.defaultResourceChanged(*this); });
}

void DefaultResourceCheckBox::pathChanged(PathComponent&)
{
    listeners.call([this](Listener& l)
                   { l.defaultResourceChanged(*this); });
}

void DefaultResourceCheckBox::resized()
{
    auto area = getLocalBounds();
    checkBox.setBounds(area.removeFromTop(rowHeight));
    area.removeFromTop(gap);
    pathComponent.setBounds(area.removeFromTop(rowHeight).withTrimmedLeft(indent));
}
