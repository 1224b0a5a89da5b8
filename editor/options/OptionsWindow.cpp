#include "editor/options/OptionsWindow.h"

#include "editor/options/SettingsWidgets.h"

OptionsWindow::OptionsWindow()
    : WindowComponent("Options")
{
    tabs.setTabBarDepth(28);
    tabs.setOutline(0);
    tabs.addListener(this);
    addAndMakeVisible(tabs);
    setSize(width, height);
}

OptionsWindow::~OptionsWindow()
{
    tabs.removeListener(this);
}

void OptionsWindow::addPage(const juce::String& name, juce::Component* page, bool owned)
{
    tabs.addTab(name, juce::Colour(tabColour), page, owned);
}

juce::Component* OptionsWindow::getPage(const juce::String& name) const
{
    const int index = tabs.getTabNames().indexOf(name);
    return index >= 0 ? tabs.getTabContentComponent(index) : nullptr;
}

void OptionsWindow::showStateChanged()
{
    if (!isShown())
        return;
    for (int i = 0; i < tabs.getNumTabs(); ++i)
        if (auto* page = dynamic_cast<OptionsPage*>(tabs.getTabContentComponent(i)))
            page->refresh();
}

void OptionsWindow::tabChanged(TabbedComponentEx&)
{
    if (auto* page = dynamic_cast<OptionsPage*>(tabs.getCurrentContentComponent()))
        page->refresh();
}

void OptionsWindow::resized()
{
    WindowComponent::resized();
    tabs.setBounds(getClientArea());
}
