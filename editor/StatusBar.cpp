#include "editor/StatusBar.h"

#include "editor/DefaultLookAndFeel.h"

StatusBar::StatusBar()
    : font(DefaultLookAndFeel::getPanelFont(14.0f))
{
    setInterceptsMouseClicks(false, false);
    setSize(100, 20);
}

void StatusBar::setMessage(const juce::String& text, int newPriority, bool clearFirst)
{
    if (clearFirst)
        clear(anyPriority);

    if (text != message && newPriority >= priority)
    {
        message = text;
        priority = newPriority;
        stopTimer();
        repaint();
    }
}

void StatusBar::setTimedMessage(const juce::String& text, int newPriority, int milliseconds)
{
    if (text != message && newPriority >= priority)
    {
        message = text;
        priority = newPriority;
        if (milliseconds > 0)
            startTimer(milliseconds);
        else
            stopTimer();
        repaint();
    }
}

void StatusBar::clear(int clearPriority)
{
    if (clearPriority != anyPriority && clearPriority < priority)
        return;

    priority = 0;
    message.clear();
    stopTimer();
    repaint();
}

void StatusBar::paint(juce::Graphics& g)
{
    g.fillAll(findColour(DefaultLookAndFeel::statusBarBackgroundColourId));
    g.setColour(findColour(DefaultLookAndFeel::statusBarTextColourId));
    g.setFont(font);
    g.drawText(message, getLocalBounds().withTrimmedLeft(5), juce::Justification::centredLeft, true);
}

void StatusBar::lookAndFeelChanged()
{
    if (auto* lf = dynamic_cast<DefaultLookAndFeel*>(&getLookAndFeel()))
    {
        font = lf->getStatusBarFont();
        setSize(getWidth(), lf->getStatusBarHeight());
    }
    repaint();
}
