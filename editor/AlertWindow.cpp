#include "editor/AlertWindow.h"

#include "editor/DefaultLookAndFeel.h"

namespace K44
{
namespace
{
constexpr int buttonHeight = 26, buttonGap = 10, margin = 20, minimumWidth = 360, maximumTextWidth = 560;
} // namespace

AlertWindow::AlertWindow(const juce::String& title, const juce::String& messageToShow, Caller* callerToTell)
    : WindowComponent(title)
    , message(messageToShow)
    , caller(callerToTell)
{
    resized();
}

juce::Font AlertWindow::getFont() const
{
    return DefaultLookAndFeel::getPanelFont(15.0f);
}

void AlertWindow::addButton(const juce::String& text, int result)
{
    auto* button = buttons.add(new TextButtonEx(text));
    results.add(result);
    const int index = buttons.size() - 1;
    button->onClick = [this, index]
    { buttonPressed(index); };
    addAndMakeVisible(button);

    // The window grows to the message and the row of buttons.
    int rowWidth = 0;
    for (auto* b : buttons)
        rowWidth += juce::jmax(80, getFont().getStringWidth(b->getButtonText()) + 24) + buttonGap;
    const int textWidth = juce::jmin(maximumTextWidth, getFont().getStringWidth(message));
    const int width = juce::jmax(minimumWidth, textWidth + 2 * margin, rowWidth + 2 * margin);
    const int lines = juce::jmax(1, (getFont().getStringWidth(message) + maximumTextWidth - 1) / maximumTextWidth);
    setSize(width, titleBarHeight + margin + lines * (int) getFont().getHeight() + margin + buttonHeight + margin);
    resized();
}

void AlertWindow::buttonPressed(int index)
{
    close();
    coveringWindow.toBack();
    if (caller != nullptr)
        caller->alertWindowClosed(*this, results[index]);
}

void AlertWindow::paint(juce::Graphics& g)
{
    WindowComponent::paint(g);
    auto area = getClientArea().reduced(margin);
    area.removeFromBottom(buttonHeight + margin / 2);
    g.setColour(juce::Colours::black);
    g.setFont(getFont());
    g.drawFittedText(message, area, juce::Justification::centred, 4, 1.0f);
}

void AlertWindow::resized()
{
    WindowComponent::resized();

    int rowWidth = 0;
    juce::Array<int> widths;
    for (auto* b : buttons)
    {
        widths.add(juce::jmax(80, getFont().getStringWidth(b->getButtonText()) + 24));
        rowWidth += widths.getLast();
    }
    rowWidth += buttonGap * juce::jmax(0, buttons.size() - 1);

    int x = (getWidth() - rowWidth) / 2;
    const int y = getHeight() - margin - buttonHeight;
    for (int i = 0; i < buttons.size(); ++i)
    {
        buttons[i]->setBounds(x, y, widths[i], buttonHeight);
        x += widths[i] + buttonGap;
    }
}
} // namespace K44
